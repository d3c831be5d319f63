#include "apoio.h"
#include "passos.h"

#include "data/bd.h"
#include "data/conexao.h"
#include "data/errobd.h"
#include "data/recordset.h"
#include "platform/costuras.h"
#include "support/suporte.h"

#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// Where a record set stands after each move, and what it refuses. The set holds the classes 1 to 3 named a, b, c.
class TstRecordset final : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Registro> mRegistro;
    std::shared_ptr<RecordSet> mSet;

private slots:
    void init();
    void cleanup();
    void stands_data();
    void stands();
    void refuses_data();
    void refuses();
    void refusesWhileClosed_data();
    void refusesWhileClosed();
    void asksNothingWhileClosed();
    void fieldsByNumberAndName();
    void failedOpenLeavesItClosed();
    void bookmarksAreRowNumbers();
    void givesText_data();
    void givesText();
    void tellsItsFields();
};

void TstRecordset::init()
{
    failOnWarnings();
    reiniciaCosturas();
    mRegistro = std::make_unique<Registro>();
    mRegistro->sql(u"INSERT INTO CL_Classes VALUES (1, 'a', 'x', ''), (2, 'b', 'x', ''), (3, 'c', 'y', '')"_s);
    mRegistro->open();
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"RS"_s);
    mSet = gBD->GetRecordSet(u"RS"_s);
}

void TstRecordset::cleanup()
{
    mSet.reset();
    gBD.reset();
    mRegistro.reset();
}

struct Linha
{
    const char *name;
    const char *steps;
    const char *state;
};

static constexpr Linha kStands[]{
    {"opened", "", "1/3 0 a"},
    {"opened on nothing", "file DELETE FROM CL_Classes; requery", "BOF EOF -1/0 0 3021"},
    {"last", "last", "3/3 0 c"},
    {"behind the last", "end", "EOF -3/3 0 3021"},
    {"back from there", "end; previous", "3/3 0 c"},
    {"before the first", "previous", "BOF -2/3 0 3021"},
    {"on from there", "previous; next", "1/3 0 a"},

    {"two on", "move 2 0", "3/3 0 c"},
    {"one on from the first", "last; move 1 1", "2/3 0 b"},
    {"one back from the last", "move -1 2", "2/3 0 b"},
    {"one back from a bookmark", "move -1 3", "2/3 0 b"},
    {"far beyond the end", "move 2000000000 0", "EOF -3/3 0 3021"},
    {"far before the beginning", "move -9 2", "BOF -2/3 0 3021"},

    {"bookmark", "bookmark 2", "2/3 0 b"},
    {"bookmark from the end", "end; bookmark 2", "2/3 0 b"},
    {"bookmark of no row", "last; bookmark 4", "1/3 0 a"},
    {"bookmark 0", "last; bookmark 0", "1/3 0 a"},
    {"bookmark that is no number", "last; bookmark x", "1/3 0 a"},
    {"bookmark of a deleted row", "next; remove; bookmark 2", "1/2 0 a"},
    {"bookmark behind a deleted row", "next; remove; bookmark 3", "2/2 0 c"},
    {"bookmark on nothing", "file DELETE FROM CL_Classes; requery; bookmark 1", "BOF EOF -1/0 0 3021"},
    {"bookmark of a row just added", "add d; update; first; bookmark 4", "4/4 0 d"},

    {"added", "add", "-1/4 2 Null"},
    {"added to nothing", "file DELETE FROM CL_Classes; requery; add", "-1/1 2 Null"},
    {"added, first", "add; first", "1/4 2 a"},
    {"added, back", "add; previous", "3/4 2 c"},
    {"added, on", "add; next", "EOF -3/4 2 3021"},
    {"added, searched", "add b; first; find CL_Nome='b'", "2/4 2 b"},
    {"added, written", "add d; update", "4/4 0 d"},
    {"added, moved, written: stays there", "add d; first; update", "1/4 0 a"},
    {"added, cancelled: back where it stood", "next; add; cancel", "2/3 0 b"},
    {"added twice, cancelled", "next; add; add; cancel", "2/3 0 b"},
    {"added, moved, cancelled: stays there", "next; add; first; cancel", "1/3 0 a"},
    {"added behind the end, cancelled", "end; add; cancel", "EOF -3/3 0 3021"},
    {"added to nothing, cancelled", "file DELETE FROM CL_Classes; requery; add; cancel", "BOF EOF -1/0 0 3021"},
    {"added, deleted: the same", "add; remove", "1/3 0 a"},
    {"added, another deleted", "add; first; remove", "-1/3 2 3021"},

    {"edited", "name z", "1/3 1 z"},
    {"edited, cancelled", "name z; cancel", "1/3 0 a"},
    {"edited, written", "name z; update", "1/3 0 z"},
    {"edited, moved: saved", "name z; next; requery", "1/3 0 z"},
    {"edited, added: saved", "name z; add; cancel", "1/3 0 z"},
    {"edited, searched: saved", "name z; find CL_Nome='z'", "1/3 0 z"},

    {"deleted", "remove", "-1/2 4 3021"},
    {"deleted, cancelled: gone all the same", "remove; cancel", "-1/2 4 3021"},
    {"deleted, on", "remove; next", "1/2 0 b"},
    {"deleted, back", "next; remove; previous", "1/2 0 a"},
    {"last deleted, on", "last; remove; next", "EOF -3/2 0 3021"},
    {"first deleted, back", "remove; previous", "BOF -2/2 0 3021"},
    {"deleted, searched from there", "next; remove; find CL_Nome>'a'", "2/2 0 c"},
    {"position behind a deleted row", "next; remove; last", "2/2 0 c"},
    {"all deleted", "remove all", "-1/0 4 3021"},
    {"all deleted, first", "remove all; first", "BOF EOF -1/0 0 3021"},
    {"all deleted, read again", "remove all; requery", "BOF EOF -1/0 0 3021"},

    {"filtered", "last; filter CL_Cod>1", "1/2 0 b"},
    {"filtered, last", "filter CL_Cod>1; last", "2/2 0 c"},
    {"filtered, nothing left", "filter CL_Cod>9", "BOF EOF -1/0 0 3021"},
    {"filter cleared", "filter CL_Cod>9; filter", "1/3 0 a"},
    {"filtered, bookmark of a hidden row", "filter CL_Cod>1; last; bookmark 1", "1/2 0 b"},
    {"filtered, bookmark", "filter CL_Cod>1; bookmark 3", "2/2 0 c"},
    {"filtered, searched for a hidden row", "filter CL_Cod>1; find CL_Nome='a'", "EOF -3/2 0 3021"},
    {"filtered, edited out: stays", "filter CL_Nome='b'; name z; update", "1/1 0 z"},
    {"until it is read again", "filter CL_Nome='b'; name z; update; requery", "BOF EOF -1/0 0 3021"},
    {"also when it is sorted", "filter CL_Nome='b'; name z; update; sort CL_Nome", "1/1 0 z"},
    {"filtered, added", "filter CL_Nome='b'; add d; update", "2/2 0 d"},
    {"filter stays when it is read again", "filter CL_Nome='b'; add d; update; requery", "1/1 0 b"},
    {"filtered, deleted", "filter CL_Nome='b'; remove; first", "BOF EOF -1/0 0 3021"},
    {"filter cleared after that", "filter CL_Nome='b'; remove; filter", "1/2 0 a"},

    {"found where it stands", "next; find CL_Nome='b'", "2/3 0 b"},
    {"not found behind it", "next; find CL_Nome='a'", "EOF -3/3 0 3021"},
    {"found from before the first", "previous; find CL_Nome='a'", "1/3 0 a"},
    {"sorted downwards", "sort CL_Nome DESC", "1/3 0 c"},
    {"sorted, bookmark", "sort CL_Nome DESC; bookmark 1", "3/3 0 a"},
    {"order stays when it is read again", "sort CL_Nome DESC; last; requery", "1/3 0 c"},
    {"read again", "last; requery", "1/3 0 a"},
};

void TstRecordset::stands_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("state");
    for (const auto &[name, steps, state] : kStands)
        QTest::newRow(name) << QString::fromLatin1(steps) << QString::fromLatin1(state);
}

void TstRecordset::stands()
{
    QFETCH(QString, steps);
    QFETCH(QString, state);
    play(*mSet, *mRegistro, steps);
    QCOMPARE(stateOf(*mSet), state);
}

void TstRecordset::refuses_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<int>("number");
    const auto row = [](const char *name, int number, const char *steps) {
        QTest::newRow(name) << QString::fromLatin1(steps) << number;
    };
    row("on behind the end", kErroSemRegistro, "end; next");
    row("back before the beginning", kErroSemRegistro, "previous; previous");
    row("first of nothing", kErroSemRegistro, "file DELETE FROM CL_Classes; requery; first");
    row("last of nothing", kErroSemRegistro, "file DELETE FROM CL_Classes; requery; last");
    row("assigning behind the end", kErroSemRegistro, "end; name z");
    row("assigning before the beginning", kErroSemRegistro, "previous; name z");
    row("deleting behind the end", kErroSemRegistro, "end; remove");
    row("assigning what is deleted", kErroSemRegistro, "remove; name z");
    row("deleting it again", kErroSemRegistro, "remove; remove");
    row("text behind the end", kErroSemRegistro, "end; text");
    row("re-reading behind the end", kErroSemRegistro, "end; resync");
    row("reading all again while editing", kErroContexto, "name z; requery");
    row("reading all again while adding", kErroContexto, "add; first; requery");
    row("reading all again with a batch", kErroContexto, "name z; resync; requery");
    row("a field that is not there", kErroNome, "read AL_Nome");
    row("deleting more than the current one", kErroCriterio, "remove 3");
    row("cache of nothing", kErroCriterio, "cache 0");
    row("order that is none", kErroCriterio, "sort CL_Nome UP");
    row("order without a column", kErroCriterio, "sort CL_Nome,");
    row("order of a column that is not there", kErroNome, "sort AL_Nome");
    row("filter on a column that is not there", kErroNome, "filter AL_Nome='a'");
    row("closing twice", kErroFechado, "close; close");
    row("writing a row that is gone", kErroArmazem, "name z; file DELETE FROM CL_Classes; update");
    row("deleting a row that is gone", kErroArmazem, "file DELETE FROM CL_Classes; remove");
    row("re-reading a row that is gone", kErroArmazem, "file DELETE FROM CL_Classes; resync");
    row("a key that is there", kErroArmazem, "add; set CL_Cod=2; update");
    row("a filter's column that went away", kErroNome,
        "filter CL_Prof='x'; file ALTER TABLE CL_Classes RENAME COLUMN CL_Prof TO Outra; requery");
    row("an order's column that went away", kErroNome,
        "sort CL_Prof; file ALTER TABLE CL_Classes RENAME COLUMN CL_Prof TO Outra; requery");
    row("a table that went away", kErroTabela, "file DROP TABLE CL_Classes; requery");
}

/// A refusal leaves the file and the set's rows as they were.
void TstRecordset::refuses()
{
    QFETCH(QString, steps);
    QFETCH(int, number);
    QCOMPARE(failureOf([&] { play(*mSet, *mRegistro, steps); }), number);
    if (mSet->isOpen()) {
        mSet->CancelBatch();
        QVERIFY(mSet->EditMode() == kEdicaoNenhuma || mSet->EditMode() == kEdicaoExcluido);
    }
    mSet.reset();
    gBD.reset();
    QVERIFY(!mRegistro->sql(u"SELECT name FROM sqlite_schema"_s).isEmpty());
}

void TstRecordset::refusesWhileClosed_data()
{
    QTest::addColumn<QString>("step");
    for (const char *step : {"read 0", "read CL_Nome", "set CL_Nome=z", "first", "last", "next", "previous", "move 1 0",
             "move 1 3", "bookmark 1", "add", "update", "batch", "cancel", "cancelbatch", "remove", "resync", "requery",
             "find CL_Cod=1", "filter CL_Cod=1", "filter", "sort CL_Cod", "cache 1", "text", "close"})
        QTest::newRow(step) << QString::fromLatin1(step);
}

void TstRecordset::refusesWhileClosed()
{
    QFETCH(QString, step);
    RecordSet fresh;
    QCOMPARE(failureOf([&] { play(fresh, *mRegistro, step); }), int(kErroFechado));
    mSet->Close();
    QCOMPARE(failureOf([&] { play(*mSet, *mRegistro, step); }), int(kErroFechado));
}

void TstRecordset::asksNothingWhileClosed()
{
    RecordSet set;
    const std::function<void()> questions[]{[&] { set.BOF(); }, [&] { set.EOF_(); }, [&] { set.RecordCount(); },
        [&] { set.AbsolutePosition(); }, [&] { set.EditMode(); }, [&] { set.Bookmark(); }, [&] { set.field(0); }};
    for (const auto &question : questions)
        QCOMPARE(failureOf(question), int(kErroFechado));
}

void TstRecordset::failedOpenLeavesItClosed()
{
    RecordSet set;
    QCOMPARE(failureOf([&] { set.open(nullptr, u"Select * From CL_Classes"_s); }), int(kErroSemConexao));
    QCOMPARE(failureOf([&] { set.open(gBD->Source(), u"Select * From Nada"_s); }), int(kErroTabela));
    QCOMPARE(failureOf([&] { set.open(gBD->Source(), u"Select Nada From CL_Classes"_s); }), int(kErroSql));
    QVERIFY(!set.isOpen());
    set.open(gBD->Source(), u"Select CL_Nome From CL_Classes"_s);
    QCOMPARE(stateOf(set), u"1/3 0 a"_s);
}

void TstRecordset::fieldsByNumberAndName()
{
    QCOMPARE(mSet->value(u"cl_nome"_s), QVariant(u"a"_s));
    QCOMPARE(mSet->value(1), QVariant(u"a"_s));
    QCOMPARE(mSet->value(qint16(0)), QVariant(1));
    for (const QVariant &none : {QVariant(-1), QVariant(4), QVariant(), QVariant(u"1"_s), QVariant(u""_s)})
        QCOMPARE(failureOf([&] { mSet->value(none); }), int(kErroNome));
}

void TstRecordset::bookmarksAreRowNumbers()
{
    mSet->setSort(u"CL_Nome DESC"_s);
    QCOMPARE(mSet->visibleBookmarks(), (std::vector<qint32>{3, 2, 1}));
    QCOMPARE(mSet->Bookmark(), 3);
    play(*mSet, *mRegistro, u"add d"_s);
    QCOMPARE(mSet->visibleBookmarks(), (std::vector<qint32>{3, 2, 1})); // lists don't show what is pending
    QCOMPARE(mSet->Bookmark(), 4);
    mSet->Update();
    mSet->MoveFirst();
    mSet->Delete(1);
    QCOMPARE(mSet->visibleBookmarks(), (std::vector<qint32>{2, 1, 4}));
    QCOMPARE(mSet->valueAt(4, 1), QVariant(u"d"_s));
    QVERIFY(!mSet->valueAt(5, 1).isValid());
    QVERIFY(!mSet->valueAt(1, 4).isValid());
    mSet->Requery(); // numbered anew
    QCOMPARE(mSet->visibleBookmarks(), (std::vector<qint32>{3, 2, 1}));
}

void TstRecordset::givesText_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<int>("lines");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("state");
    const QString all = u"1,a,x,;2,b,x,;3,c,y,;"_s;
    QTest::newRow("all") << u""_s << 0 << all << u"EOF -3/3 0 3021"_s;
    QTest::newRow("below all") << u""_s << -5 << all << u"EOF -3/3 0 3021"_s;
    QTest::newRow("two") << u""_s << 2 << u"1,a,x,;2,b,x,;"_s << u"3/3 0 c"_s;
    QTest::newRow("more than there are") << u"next"_s << 9 << u"2,b,x,;3,c,y,;"_s << u"EOF -3/3 0 3021"_s;
    QTest::newRow("Null is empty") << u"null CL_Nome"_s << 1 << u"1,,x,;"_s << u"2/3 0 b"_s;
    QTest::newRow("what the filter lets through")
        << u"filter CL_Cod<>2"_s << 0 << u"1,a,x,;3,c,y,;"_s << u"EOF -3/2 0 3021"_s;
}

void TstRecordset::givesText()
{
    QFETCH(QString, steps);
    QFETCH(int, lines);
    QFETCH(QString, text);
    QFETCH(QString, state);
    play(*mSet, *mRegistro, steps);
    QCOMPARE(mSet->GetString(lines, u","_s, u";"_s), text);
    QCOMPARE(stateOf(*mSet), state);
}

void TstRecordset::tellsItsFields()
{
    mRegistro->sql(u"CREATE TABLE T (Id INTEGER PRIMARY KEY AUTOINCREMENT, A VARCHAR(8), B TEXT, C DATETIME, D BOOLEAN,"
                   "E REAL, F BLOB)"_s);
    RecordSet set;
    set.open(gBD->Source(), u"Select Id as Codigo, A, B, C, D, E, F, 1 + 1 as G From T"_s);
    QList<int> types;
    for (int i = 0; i < set.fieldCount(); ++i)
        types << static_cast<int>(set.field(i).tipo);
    QCOMPARE(types, (QList<int>{3, 202, 203, 7, 11, 5, 205, 12}));
    QCOMPARE(set.field(0).nome, u"Codigo"_s); // its alias
    QCOMPARE(set.fieldNumber(u"CODIGO"_s), 0);
    QVERIFY(set.field(0).numera && !set.field(1).numera);
    QVERIFY(set.writable(6) && !set.writable(7)); // a computed one can't be
}

QTEST_MAIN(TstRecordset)
#include "tst_recordset.moc"
