#include "apoio.h"
#include "passos.h"

#include "data/conexao.h"
#include "support/table.h"

#include <functional>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// Where a record set stands after each step, what it writes into the file and what it refuses.
class TstRecordset final : public TesteBD
{
    Q_OBJECT
private slots:
    void moves_data();
    void moves() { plays(); }
    void adds_data();
    void adds() { plays(); }
    void editsAndDeletes_data();
    void editsAndDeletes() { plays(); }
    void findsAndLists_data();
    void findsAndLists() { plays(); }
    void refuses_data();
    void refuses() { plays(); }
    void refusesWhileClosed_data();
    void refusesWhileClosed();
    void asksNothingWhileClosed();
    void failedOpenLeavesItClosed();
    void fieldsByNumberAndName();
    void bookmarksAreRowNumbers();
    void tellsItsFields();
    void secondTableIsReadOnly();
    void setWithoutItsKeyIsReadOnly_data();
    void setWithoutItsKeyIsReadOnly();

private:
    static std::shared_ptr<RecordSet> opens(const QString &sql);
};

std::shared_ptr<RecordSet> TstRecordset::opens(const QString &sql)
{
    auto set = std::make_shared<RecordSet>();
    set->open(gBD->Source(), sql);
    return set;
}

void TstRecordset::moves_data()
{
    rows<QString, QString>({
        {"opened", "", "1/3 0 a"},
        {"opened on nothing", "remove all; requery", "BOF EOF -1/0 0 3021; file "},
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
        {"bookmark of a deleted row", "next; remove; bookmark 2", "1/2 0 a; file 1a 3c"},
        {"bookmark behind a deleted row", "next; remove; bookmark 3", "2/2 0 c; file 1a 3c"},
        {"bookmark on nothing", "remove all; requery; bookmark 1", "BOF EOF -1/0 0 3021; file "},
        {"bookmark of a row just added", "add d; update; first; bookmark 4", "4/4 0 d; file 1a 2b 3c 4d"},
    });
}

void TstRecordset::adds_data()
{
    rows<QString, QString>({
        {"added", "add", "-1/4 2 Null"},
        {"added to nothing", "remove all; requery; add", "-1/1 2 Null; file "},
        {"added, first", "add; first", "1/4 2 a"},
        {"added, back", "add; previous", "3/4 2 c"},
        {"added, on", "add; next", "EOF -3/4 2 3021"},
        {"added, searched", "add b; first; find CL_Nome='b'", "2/4 2 b"},
        {"added, written", "add d; update", "4/4 0 d; file 1a 2b 3c 4d"},
        {"added with a key", "add d; set CL_Cod=50; update", "4/4 0 d; file 1a 2b 3c 50d"},
        {"added without a value", "add; update", "4/4 0 Null; file 1a 2b 3c 4-"},
        {"added, moved, written: stays there", "add d; first; update", "1/4 0 a; file 1a 2b 3c 4d"},
        {"added, moved, assigned: goes into it", "add; first; name z; update", "1/4 0 a; file 1a 2b 3c 4z"},
        {"added, cancelled: back where it stood", "next; add d; cancel; update", "2/3 0 b"},
        {"added twice: the first is dropped", "next; add d; add; update", "4/4 0 Null; file 1a 2b 3c 4-"},
        {"added twice, cancelled", "next; add; add; cancel", "2/3 0 b"},
        {"added, moved, cancelled: stays there", "next; add; first; cancel", "1/3 0 a"},
        {"added behind the end, cancelled", "end; add; cancel", "EOF -3/3 0 3021"},
        {"added to nothing, cancelled", "remove all; requery; add; cancel", "BOF EOF -1/0 0 3021; file "},
        {"added, deleted: the same", "add; remove", "1/3 0 a"},
        {"added, another deleted", "add; first; remove", "-1/3 2 3021; file 2b 3c"},
        {"the batch needs no current row", "add d; end; batch", "EOF -3/4 0 3021; file 1a 2b 3c 4d"},
        {"a number is never used again",
            "file INSERT INTO CL_Classes VALUES (9999, 'g', '', ''); requery; add d; update; remove; add e; update",
            "5/5 0 e; file 1a 2b 3c 9999g 10001e"},
        {"a number beyond a long is not kept",
            "file INSERT INTO CL_Classes VALUES (2147483647, 'z', '', ''); requery; add d; update",
            "-1/5 2 d; fails -2147217887; file 1a 2b 3c 2147483647z"},
        {"just added, edited", "add d; update; name z; update", "4/4 0 z; file 1a 2b 3c 4z"},
        {"just added, deleted", "add d; update; remove", "-1/3 4 3021"},
    });
}

void TstRecordset::editsAndDeletes_data()
{
    rows<QString, QString>({
        {"edited", "name z", "1/3 1 z"},
        {"edited, cancelled", "name z; cancel; next; previous", "1/3 0 a"},
        {"edited, written", "name z; update", "1/3 0 z; file 1z 2b 3c"},
        {"edited, moved: saved", "name z; next", "2/3 0 b; file 1z 2b 3c"},
        {"edited, bookmark: saved", "name z; bookmark 3", "3/3 0 c; file 1z 2b 3c"},
        {"edited, added: saved", "name z; add; cancel", "1/3 0 z; file 1z 2b 3c"},
        {"edited, searched: saved", "name z; find CL_Nome='z'", "1/3 0 z; file 1z 2b 3c"},
        {"edited, filtered: saved", "name z; filter CL_Cod=3", "1/1 0 c; file 1z 2b 3c"},
        {"edited, sorted: saved", "name z; sort CL_Nome DESC", "1/3 0 z; file 1z 2b 3c"},
        {"edited, deleted", "name z; remove; next; previous; batch", "BOF -2/2 0 3021; file 2b 3c"},
        {"key changed", "set CL_Cod=9; update; name z; update", "1/3 0 z; file 2b 3c 9z"},
        {"kept for the batch", "name z; resync; next; name y; resync; next; batch", "3/3 0 c; file 1z 2y 3c"},
        {"a batch is not written by a move", "name z; resync; next", "2/3 0 b"},
        {"nor dropped by cancelling", "name z; resync; cancel; batch", "1/3 0 z; file 1z 2b 3c"},
        {"but by cancelling the batch", "name z; resync; cancelbatch; batch", "1/3 0 a"},
        {"off the records there is none to cancel", "end; cancelbatch", "EOF -3/3 0 3021"},
        {"of a deleted row: nothing", "name z; resync; remove; batch", "-1/2 4 3021; file 2b 3c"},
        {"another program's change of the same column gives way",
            "name z; file UPDATE CL_Classes SET CL_Nome = 'o'; resync; batch", "1/3 0 z; file 1z 2o 3o"},

        {"deleted", "remove", "-1/2 4 3021; file 2b 3c"},
        {"deleted, cancelled: gone all the same", "remove; cancel; cancelbatch", "-1/2 4 3021; file 2b 3c"},
        {"deleted, on", "remove; next", "1/2 0 b; file 2b 3c"},
        {"deleted, back", "next; remove; previous", "1/2 0 a; file 1a 3c"},
        {"last deleted, on", "last; remove; next", "EOF -3/2 0 3021; file 1a 2b"},
        {"first deleted, back", "remove; previous", "BOF -2/2 0 3021; file 2b 3c"},
        {"deleted, sorted: out of it", "next; remove; sort CL_Nome DESC", "1/2 0 c; file 1a 3c"},
        {"deleted, searched from there", "next; remove; find CL_Nome>'a'", "2/2 0 c; file 1a 3c"},
        {"position behind a deleted row", "next; remove; last", "2/2 0 c; file 1a 3c"},
        {"all deleted", "remove all", "-1/0 4 3021; file "},
        {"all deleted, first", "remove all; first", "BOF EOF -1/0 0 3021; file "},
    });
}

void TstRecordset::findsAndLists_data()
{
    rows<QString, QString>({
        {"filtered", "last; filter CL_Cod>1", "1/2 0 b"},
        {"filtered, last", "filter CL_Cod>1; last", "2/2 0 c"},
        {"filtered, nothing left", "filter CL_Cod>9", "BOF EOF -1/0 0 3021"},
        {"filter cleared", "filter CL_Cod>9; filter", "1/3 0 a"},
        {"filtered, bookmark of a hidden row", "filter CL_Cod>1; last; bookmark 1", "1/2 0 b"},
        {"filtered, bookmark", "filter CL_Cod>1; bookmark 3", "2/2 0 c"},
        {"filtered, searched for a hidden row", "filter CL_Cod>1; find CL_Nome='a'", "EOF -3/2 0 3021"},
        {"filtered, edited out: stays", "filter CL_Nome='b'; name z; update", "1/1 0 z; file 1a 2z 3c"},
        {"until it is read again", "filter CL_Nome='b'; name z; update; requery", "BOF EOF -1/0 0 3021; file 1a 2z 3c"},
        {"also when it is sorted", "filter CL_Nome='b'; name z; update; sort CL_Nome", "1/1 0 z; file 1a 2z 3c"},
        {"filtered, added", "filter CL_Nome='b'; add d; update", "2/2 0 d; file 1a 2b 3c 4d"},
        {"filter stays when it is read again", "filter CL_Nome='b'; add d; update; requery",
            "1/1 0 b; file 1a 2b 3c 4d"},
        {"filtered, deleted", "filter CL_Nome='b'; remove; first", "BOF EOF -1/0 0 3021; file 1a 3c"},
        {"filter cleared after that", "filter CL_Nome='b'; remove; filter", "1/2 0 a; file 1a 3c"},

        {"found where it stands", "next; find CL_Nome='b'", "2/3 0 b"},
        {"not found behind it", "next; find CL_Nome='a'", "EOF -3/3 0 3021"},
        {"found from before the first", "previous; find CL_Nome='a'", "1/3 0 a"},
        {"sorted downwards", "sort CL_Nome DESC", "1/3 0 c"},
        {"sorted, bookmark", "sort CL_Nome DESC; bookmark 1", "3/3 0 a"},
        {"order stays when it is read again", "sort CL_Nome DESC; last; requery", "1/3 0 c"},
        {"read again", "last; requery", "1/3 0 a"},

        {"text of all", "text 0", "EOF -3/3 0 3021; gives 1,a,x,;2,b,x,;3,c,y,;"},
        {"of below all", "text -5", "EOF -3/3 0 3021; gives 1,a,x,;2,b,x,;3,c,y,;"},
        {"of two", "text 2", "3/3 0 c; gives 1,a,x,;2,b,x,;"},
        {"of more than there are", "next; text 9", "EOF -3/3 0 3021; gives 2,b,x,;3,c,y,;"},
        {"Null is empty in it", "null CL_Nome; text 1", "2/3 0 b; gives 1,,x,;; file 1- 2b 3c"},
        {"of what the filter lets through", "filter CL_Cod<>2; text 0", "EOF -3/2 0 3021; gives 1,a,x,;3,c,y,;"},
    });
}

void TstRecordset::refuses_data()
{
    rows<QString, QString>({
        {"on behind the end", "end; next", "EOF -3/3 0 3021; fails 3021"},
        {"back before the beginning", "previous; previous", "BOF -2/3 0 3021; fails 3021"},
        {"first of nothing", "remove all; requery; first", "BOF EOF -1/0 0 3021; fails 3021; file "},
        {"last of nothing", "remove all; requery; last", "BOF EOF -1/0 0 3021; fails 3021; file "},
        {"assigning behind the end", "end; name z", "EOF -3/3 0 3021; fails 3021"},
        {"assigning before the beginning", "previous; name z", "BOF -2/3 0 3021; fails 3021"},
        {"deleting behind the end", "end; remove", "EOF -3/3 0 3021; fails 3021"},
        {"assigning what is deleted", "remove; name z", "-1/2 4 3021; fails 3021; file 2b 3c"},
        {"deleting it again", "remove; remove", "-1/2 4 3021; fails 3021; file 2b 3c"},
        {"text behind the end", "end; text", "EOF -3/3 0 3021; fails 3021"},
        {"re-reading behind the end", "end; resync", "EOF -3/3 0 3021; fails 3021"},
        {"reading all again while editing", "name z; requery", "1/3 1 z; fails 3219"},
        {"reading all again while adding", "add; first; requery", "1/4 2 a; fails 3219"},
        {"reading all again with a batch", "name z; resync; requery", "1/3 0 z; fails 3219"},
        {"a field that is not there", "read AL_Nome", "1/3 0 a; fails 3265"},
        {"deleting more than the current one", "remove 3", "1/3 0 a; fails 3001"},
        {"cache of nothing", "cache 0", "1/3 0 a; fails 3001"},
        {"order that is none", "sort CL_Nome UP", "1/3 0 a; fails 3001"},
        {"order without a column", "sort CL_Nome,", "1/3 0 a; fails 3001"},
        {"order of a column that is not there", "sort AL_Nome", "1/3 0 a; fails 3265"},
        {"filter on a column that is not there", "filter AL_Nome='a'", "1/3 0 a; fails 3265"},
        {"closing twice", "close; close", "closed; fails 3704"},
        {"writing a row that is gone", "name z; file DELETE FROM CL_Classes; update",
            "1/3 1 z; fails -2147467259; file "},
        {"deleting a row that is gone", "file DELETE FROM CL_Classes; remove", "1/3 0 a; fails -2147467259; file "},
        {"re-reading a row that is gone", "file DELETE FROM CL_Classes; resync", "1/3 0 a; fails -2147467259; file "},
        {"a key that is there", "add; set CL_Cod=2; update", "-1/4 2 Null; fails -2147467259"},
        {"a filter's column that went away",
            "filter CL_Prof='x'; file ALTER TABLE CL_Classes RENAME COLUMN CL_Prof TO Outra; requery",
            "1/2 0 a; fails 3265"},
        {"an order's column that went away",
            "sort CL_Prof; file ALTER TABLE CL_Classes RENAME COLUMN CL_Prof TO Outra; requery", "1/3 0 a; fails 3265"},
    });
}

void TstRecordset::refusesWhileClosed_data()
{
    texts({"read 0", "read CL_Nome", "set CL_Nome=z", "first", "last", "next", "previous", "move 1 0", "move 1 3",
        "bookmark 1", "add", "update", "batch", "cancel", "cancelbatch", "remove", "resync", "requery", "find CL_Cod=1",
        "filter CL_Cod=1", "filter", "sort CL_Cod", "cache 1", "text", "close"});
}

void TstRecordset::refusesWhileClosed()
{
    const QString text = rowName();
    RecordSet fresh;
    QCOMPARE(failureOf([&] { teste::play(wordsOn(fresh, *mRegistro), text); }), int(kErroFechado));
    mSet->Close();
    QCOMPARE(failureOf([&] { play(text); }), int(kErroFechado));
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
    QVERIFY(!set.isOpen());
    set.open(gBD->Source(), u"Select CL_Nome From CL_Classes"_s);
    QCOMPARE(stateOf(set), u"1/3 0 a"_s);
    QCOMPARE(failureOf([&] { play(u"file DROP TABLE CL_Classes; requery"_s); }), int(kErroTabela));
}

void TstRecordset::fieldsByNumberAndName()
{
    QCOMPARE(mSet->value(u"cl_nome"_s), QVariant(u"a"_s));
    QCOMPARE(mSet->value(qint16(1)), QVariant(u"a"_s));
    for (const QVariant &none : {QVariant(-1), QVariant(4), QVariant(), QVariant(u"1"_s), QVariant(u""_s)})
        QCOMPARE(failureOf([&] { mSet->value(none); }), int(kErroNome));
}

void TstRecordset::bookmarksAreRowNumbers()
{
    using Marks = std::vector<qint32>;
    play(u"sort CL_Nome DESC; add d"_s);
    QCOMPARE(mSet->visibleBookmarks(), (Marks{3, 2, 1})); // lists don't show what is pending
    QCOMPARE(mSet->Bookmark(), 4);
    play(u"update; first; remove"_s);
    QCOMPARE(mSet->visibleBookmarks(), (Marks{2, 1, 4}));
    QCOMPARE(mSet->valueAt(4, 1), QVariant(u"d"_s));
    QVERIFY(!mSet->valueAt(5, 1).isValid());
    QVERIFY(!mSet->valueAt(1, 4).isValid());
    play(u"requery"_s); // numbered anew
    QCOMPARE(mSet->visibleBookmarks(), (Marks{3, 2, 1}));
}

void TstRecordset::tellsItsFields()
{
    mRegistro->sql(u"CREATE TABLE T (Id INTEGER PRIMARY KEY AUTOINCREMENT, A VARCHAR(8), B TEXT, C DATETIME, D BOOLEAN,"
                   "E REAL, F BLOB)"_s);
    const auto set = opens(u"Select Id as Codigo, A, B, C, D, E, F, 1 + 1 as G From T"_s);
    QList<int> types;
    for (int i = 0; i < set->fieldCount(); ++i)
        types << static_cast<int>(set->field(i).tipo);
    QCOMPARE(types, (QList<int>{3, 202, 203, 7, 11, 5, 205, 12}));
    QCOMPARE(set->field(0).nome, u"Codigo"_s); // its alias
    QCOMPARE(set->fieldNumber(u"CODIGO"_s), 0);
    QVERIFY(set->field(0).numera && !set->field(1).numera);
    QVERIFY(set->writable(6) && !set->writable(7)); // a computed one can't be
}

static const QString kAna = u"INSERT INTO AL_Alunos VALUES (5, 'Ana'); INSERT INTO CLxAL VALUES (5, 2, NULL, 1)"_s;

void TstRecordset::secondTableIsReadOnly()
{
    mRegistro->sql(kAna);
    const auto set = opens(u"SELECT AL_Alunos.AL_Cod, AL_Alunos.AL_Nome, CLxAL.AL_Cod, CLxAL.CL_Cod "
                           "FROM AL_Alunos INNER JOIN CLxAL ON AL_Alunos.AL_Cod = CLxAL.AL_Cod"_s);
    QCOMPARE(failureOf([&] { set->setValue(u"CL_Cod"_s, 3); }), int(kErroArmazem));
    QCOMPARE(set->EditMode(), qint32(kEdicaoNenhuma));
    teste::play(wordsOn(*set, *mRegistro), u"set AL_Nome=Bia; resync; batch"_s);
    QCOMPARE(set->value(u"CL_Cod"_s), QVariant(2));
    QCOMPARE(inFile(u"SELECT AL_Nome FROM AL_Alunos"_s), u"Bia"_s);
}

void TstRecordset::setWithoutItsKeyIsReadOnly_data()
{
    texts({"SELECT CLxAL.AL_Cod, AL_Alunos.AL_Cod, AL_Alunos.AL_Nome FROM AL_Alunos INNER JOIN CLxAL "
           "ON AL_Alunos.AL_Cod = CLxAL.AL_Cod", // its first table's key is missing
        "Select CL_Cod From CLxAL", "Select max(AL_Cod) From CLxAL"});
}

void TstRecordset::setWithoutItsKeyIsReadOnly()
{
    const QString text = rowName();
    mRegistro->sql(kAna);
    const auto set = opens(text);
    for (const QString &step : {u"add"_s, u"remove"_s, u"resync"_s})
        QVERIFY2(failureOf([&] { teste::play(wordsOn(*set, *mRegistro), step); }) != 0, qPrintable(step));
    QCOMPARE(failureOf([&] { set->AddNew(); }), int(kErroArmazem));
    QCOMPARE(failureOf([&] { set->setValue(0, 1); }), int(kErroArmazem));
    QCOMPARE(set->EditMode(), qint32(kEdicaoNenhuma));
}

QTEST_MAIN(TstRecordset)
#include "tst_recordset.moc"
