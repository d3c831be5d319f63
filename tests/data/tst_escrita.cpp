#include "apoio.h"
#include "passos.h"

#include "data/bd.h"
#include "data/conexao.h"
#include "data/datas.h"
#include "data/errobd.h"
#include "data/recordset.h"
#include "platform/costuras.h"
#include "support/suporte.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// What record sets write into the file: values by their column's type, only what was assigned, keys, batches.
class TstEscrita final : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Registro> mRegistro;
    std::shared_ptr<RecordSet> opens(const QString &sql) const;

private slots:
    void init();
    void cleanup();
    void converts_data();
    void converts();
    void writes_data();
    void writes();
    void textsComeBackUnharmed_data();
    void textsComeBackUnharmed();
    void numbersAreNeverUsedAgain();
    void keyBeyondALongIsNotKept();
    void onlyAssignedColumnsAreWritten();
    void secondTableIsReadOnly();
    void setWithoutItsKeyIsReadOnly_data();
    void setWithoutItsKeyIsReadOnly();
    void longTextsAndManyRows();
};

void TstEscrita::init()
{
    failOnWarnings();
    reiniciaCosturas();
    mRegistro = std::make_unique<Registro>();
    mRegistro->sql(u"INSERT INTO CL_Classes VALUES (1, 'a', 'x', ''), (2, 'b', 'x', ''), (3, 'c', 'y', '');"
                   "CREATE TABLE T (Id INTEGER PRIMARY KEY AUTOINCREMENT, Longo INTEGER, Duplo REAL, Data DATETIME, "
                   "Logico BOOLEAN,"
                   "Texto VARCHAR DEFAULT 'padrão', Memo TEXT, Bytes BLOB);"
                   "INSERT INTO T (Longo, Texto) VALUES (7, 'velho')"_s);
    mRegistro->open();
}

void TstEscrita::cleanup()
{
    gBD.reset();
    mRegistro.reset();
}

std::shared_ptr<RecordSet> TstEscrita::opens(const QString &sql) const
{
    auto set = std::make_shared<RecordSet>();
    set->open(gBD->Source(), sql);
    return set;
}

void TstEscrita::converts_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("kept"); // invalid: refused
    const QVariant refused;
    const auto row = [](const char *field, const QVariant &value, const QVariant &kept) {
        QTest::addRow("%s %s %s", field, value.typeName() ? value.typeName() : "nothing",
            value.toString().left(20).toUtf8().constData())
            << QString::fromLatin1(field) << value << kept;
    };
    const QDateTime date = wallClock({2026, 11, 24}, {10, 0, 1});
    row("Longo", 5, 5);
    row("Longo", 5.5, 6); // halves to even
    row("Longo", 6.5, 6);
    row("Longo", u" -12 "_s, -12);
    row("Longo", true, -1);
    row("Longo", 2147483647.0, std::numeric_limits<qint32>::max());
    row("Longo", -2147483648.0, std::numeric_limits<qint32>::min());
    row("Longo", 2147483648.0, refused);
    row("Longo", -2147483649.0, refused);
    row("Longo", std::numeric_limits<double>::quiet_NaN(), refused);
    row("Longo", u""_s, refused);
    row("Longo", u"12x"_s, refused);
    row("Longo", date, refused);
    row("Longo", QByteArray("1"), refused);
    row("Duplo", u"1.25"_s, 1.25);
    row("Duplo", 3, 3.0);
    row("Duplo", std::numeric_limits<double>::infinity(), refused);
    row("Duplo", u"1,25"_s, refused);
    row("Data", date, date);
    row("Data", u"24/11/26 10:00:01"_s, date);
    row("Data", u""_s, refused);
    row("Data", QDateTime(), refused);
    row("Data", true, refused);
    row("Logico", true, true);
    row("Logico", 0, false);
    row("Logico", -1, true);
    row("Logico", u"Verdadeiro"_s, true);
    row("Logico", u"false"_s, false);
    row("Logico", u"0"_s, false);
    row("Logico", u"sim"_s, refused);
    row("Texto", 12.0, u"12"_s);
    row("Texto", 1e15, u"1000000000000000"_s); // without exponent
    row("Texto", 1e-7, u"0.0000001"_s);
    row("Texto", 0.1, u"0.1"_s);
    row("Texto", true, u"True"_s);
    row("Texto", date, u"24/11/26 10:00:01"_s);
    row("Texto", u""_s, u""_s);
    row("Texto", QString(QChar(0xd800)), refused); // half a character
    row("Texto", QByteArray("x"), refused);
    row("Memo", u"x"_s, u"x"_s);
    row("Bytes", QByteArray("\0\xff", 2), QByteArray("\0\xff", 2));
    row("Bytes", QByteArray(""), QByteArray(""));
    row("Bytes", u"x"_s, refused);
    row("Longo", QVariant(QMetaType::fromType<QString>()), QVariant(QMetaType::fromType<QString>())); // Null
}

/// A value is converted when it is assigned; one that does not fit leaves the field alone.
void TstEscrita::converts()
{
    QFETCH(QString, field);
    QFETCH(QVariant, value);
    QFETCH(QVariant, kept);
    const auto set = opens(u"Select * From T"_s);
    const QVariant before = set->value(field);
    const int failure = failureOf([&] { set->setValue(field, value); });
    if (!kept.isValid()) {
        QCOMPARE(failure, int(kErroValor));
        QCOMPARE(set->value(field), before);
        QCOMPARE(set->EditMode(), qint32(kEdicaoNenhuma));
        return;
    }
    QCOMPARE(failure, 0);
    set->Update();
    set->Requery();
    QCOMPARE(set->value(field).isNull(), kept.isNull());
    QCOMPARE(set->value(field).typeId(), kept.typeId());
    QCOMPARE(set->value(field), kept);
}

void TstEscrita::writes_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("rows"); // code and name
    const auto row = [](const char *name, const char *steps, const char *rows) {
        QTest::newRow(name) << QString::fromUtf8(steps) << QString::fromLatin1(rows);
    };
    row("added", "add d; update", "1a 2b 3c 4d");
    row("added with a key", "add d; set CL_Cod=50; update", "1a 2b 3c 50d");
    row("added without a value", "add; update", "1a 2b 3c 4-");
    row("added, never written", "add d; first; end", "1a 2b 3c");
    row("added, cancelled", "add d; cancel; update", "1a 2b 3c");
    row("added twice: the first is dropped", "add d; add; update", "1a 2b 3c 4-");
    row("what is assigned after a move goes into the added one", "add; first; name z; update", "1a 2b 3c 4z");
    row("the batch needs no current row", "add d; end; batch", "1a 2b 3c 4d");
    row("added by a batch", "add d; batch", "1a 2b 3c 4d");
    row("edited", "next; name z; update", "1a 2z 3c");
    row("edited, moved", "name z; next", "1z 2b 3c");
    row("edited, bookmark", "name z; bookmark 3", "1z 2b 3c");
    row("edited, filtered", "name z; filter CL_Cod=3", "1z 2b 3c");
    row("edited, sorted", "name z; sort CL_Nome", "1z 2b 3c");
    row("edited, added", "name z; add; cancel", "1z 2b 3c");
    row("edited, cancelled", "name z; cancel; next", "1a 2b 3c");
    row("edited, nothing said", "name z", "1a 2b 3c");
    row("key changed", "set CL_Cod=9; update; name z; update", "2b 3c 9z");
    row("kept for the batch", "name z; resync; next; name y; resync; next; batch", "1z 2y 3c");
    row("a batch is not written by a move", "name z; resync; next", "1a 2b 3c");
    row("nor dropped by cancelling", "name z; resync; cancel; batch", "1z 2b 3c");
    row("but by cancelling the batch", "name z; resync; cancelbatch; batch", "1a 2b 3c");
    row("another program's change of the same column gives way",
        "name z; file UPDATE CL_Classes SET CL_Nome = 'o'; "
        "resync; batch",
        "1z 2o 3o");
    row("deleted at once", "next; remove", "1a 3c");
    row("deleted, cancelled", "next; remove; cancel; cancelbatch", "1a 3c");
    row("edited, deleted", "name z; remove; next; previous; batch", "2b 3c");
    row("edited and kept, deleted", "name z; resync; remove; batch", "2b 3c");
    row("deleted on, on", "remove; next; remove; next; remove", "");
    row("just added, edited", "add d; update; name z; update", "1a 2b 3c 4z");
    row("just added, deleted", "add d; update; remove", "1a 2b 3c");
    row("closed while editing", "name z; close", "1a 2b 3c");
}

void TstEscrita::writes()
{
    QFETCH(QString, steps);
    QFETCH(QString, rows);
    {
        const auto set = opens(u"Select * From CL_Classes"_s);
        play(*set, *mRegistro, steps);
    }
    gBD.reset();
    QCOMPARE(
        mRegistro->sql(u"SELECT CL_Cod || coalesce(CL_Nome, '-') FROM CL_Classes ORDER BY CL_Cod"_s).join(u' '), rows);
}

void TstEscrita::textsComeBackUnharmed_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("apostrophes") << u"D'Ávila ''x'' \"y\""_s;
    QTest::newRow("percent, marks of queries") << u"100% _ * ? ?1 :a @b $c ; -- /* #11/24/2026# [x]"_s;
    QTest::newRow("a NUL within") << u"antes"_s + QChar(0) + u"depois"_s;
    QTest::newRow("a NUL alone") << QString(QChar(0));
    QTest::newRow("emoji") << u"Ana \U0001F600 \U0001F468‍\U0001F469‍\U0001F467"_s;
    QTest::newRow("outside the code page") << u"Ωλ жук 漢字 ﷽"_s;
    QTest::newRow("line breaks and tabs") << u"a\r\nb\tc\n"_s;
    QTest::newRow("blanks at both ends") << u"  a  "_s;
    QTest::newRow("the last characters") << QString(QChar(0xffff)) + u"\U0010FFFF"_s;
    QTest::newRow("empty") << u""_s;
    for (const int size : {4095, 4096, 65535, 65536, 65537})
        QTest::addRow("%d characters", size) << QString(size - 1, u'ç') + u'!';
}

void TstEscrita::textsComeBackUnharmed()
{
    QFETCH(QString, text);
    const BoxScript boxes;
    gBD->Records_Set(u"Select * From LG_LogAulas"_s, u"RS"_s);
    gBD->RegistroAdiciona(u"RS"_s);
    gBD->RegistroTroca(u"LG_Resp"_s, text, u"RS"_s);
    gBD->RegistroAtualiza(u"RS"_s);
    QCOMPARE(gBD->Campo(u"LG_Resp"_s, u"RS"_s), QVariant(text));
    gBD->ReAtualizaRecordSet(u"RS"_s);
    QCOMPARE(gBD->Campo(u"LG_Resp"_s, u"RS"_s), QVariant(text));
    gBD->Fechar();
    QCOMPARE(mRegistro->sql(u"SELECT LG_Resp FROM LG_LogAulas"_s), QStringList{text});
}

void TstEscrita::numbersAreNeverUsedAgain()
{
    mRegistro->sql(u"INSERT INTO CL_Classes (CL_Cod) VALUES (9999)"_s);
    const auto set = opens(u"Select * From CL_Classes"_s);
    play(*set, *mRegistro, u"add d; update"_s);
    QCOMPARE(set->value(0), QVariant(10000));
    play(*set, *mRegistro, u"remove; add e; update"_s);
    QCOMPARE(set->value(0), QVariant(10001));
    play(*set, *mRegistro, u"requery; last"_s);
    QCOMPARE(set->value(0), QVariant(10001));
}

void TstEscrita::keyBeyondALongIsNotKept()
{
    mRegistro->sql(u"INSERT INTO CL_Classes (CL_Cod) VALUES (2147483647)"_s);
    const auto set = opens(u"Select * From CL_Classes"_s);
    QCOMPARE(failureOf([&] { play(*set, *mRegistro, u"add d; update"_s); }), int(kErroValor));
    QCOMPARE(set->EditMode(), qint32(kEdicaoInclusao));
    QCOMPARE(set->value(u"CL_Nome"_s), QVariant(u"d"_s));
    play(*set, *mRegistro, u"set CL_Cod=7; update"_s);
    QCOMPARE(set->RecordCount(), 5);
    gBD.reset();
    QCOMPARE(
        mRegistro->sql(u"SELECT CL_Cod FROM CL_Classes WHERE CL_Cod > 3"_s), (QStringList{u"7"_s, u"2147483647"_s}));
}

void TstEscrita::onlyAssignedColumnsAreWritten()
{
    const auto set = opens(u"Select * From T"_s);
    play(*set, *mRegistro, u"set Longo=8; file UPDATE T SET Memo = 'de outro'; update"_s);
    play(*set, *mRegistro, u"add; set Longo=9; update; requery; last"_s);
    QCOMPARE(set->value(u"Texto"_s), QVariant(u"padrão"_s));
    gBD.reset();
    QCOMPARE(mRegistro->sql(u"SELECT Longo, Texto, Memo FROM T"_s),
        (QStringList{u"8|velho|de outro"_s, u"9|padrão|NULL"_s}));
}

void TstEscrita::secondTableIsReadOnly()
{
    mRegistro->sql(u"INSERT INTO AL_Alunos VALUES (5, 'Ana'); INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (5, 2)"_s);
    const auto set = opens(u"SELECT AL_Alunos.AL_Cod, AL_Alunos.AL_Nome, CLxAL.AL_Cod, CLxAL.CL_Cod "
                           "FROM AL_Alunos INNER JOIN CLxAL ON AL_Alunos.AL_Cod = CLxAL.AL_Cod"_s);
    QCOMPARE(failureOf([&] { set->setValue(u"CL_Cod"_s, 3); }), int(kErroArmazem));
    QCOMPARE(set->EditMode(), qint32(kEdicaoNenhuma));
    play(*set, *mRegistro, u"set AL_Nome=Bia; resync; batch"_s);
    QCOMPARE(set->value(u"CL_Cod"_s), QVariant(2));
    gBD.reset();
    QCOMPARE(mRegistro->sql(u"SELECT AL_Nome FROM AL_Alunos"_s), QStringList{u"Bia"_s});
}

void TstEscrita::setWithoutItsKeyIsReadOnly_data()
{
    QTest::addColumn<QString>("sql");
    QTest::newRow("a join that begins with a table without its key")
        << u"SELECT CLxAL.AL_Cod, AL_Alunos.AL_Cod, AL_Alunos.AL_Nome "
           "FROM AL_Alunos INNER JOIN CLxAL ON AL_Alunos.AL_Cod = CLxAL.AL_Cod"_s;
    QTest::newRow("no key") << u"Select CL_Cod From CLxAL"_s;
    QTest::newRow("computed") << u"Select max(AL_Cod) From CLxAL"_s;
}

void TstEscrita::setWithoutItsKeyIsReadOnly()
{
    QFETCH(QString, sql);
    mRegistro->sql(u"INSERT INTO AL_Alunos VALUES (5, 'Ana'); INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (5, 2)"_s);
    const auto set = opens(sql);
    for (const QString &steps : {u"add"_s, u"remove"_s, u"resync"_s, u"null 0"_s})
        QVERIFY2(failureOf([&] { play(*set, *mRegistro, steps); }) != 0, qPrintable(steps));
    QCOMPARE(failureOf([&] { set->AddNew(); }), int(kErroArmazem));
    QCOMPARE(failureOf([&] { set->setValue(0, 1); }), int(kErroArmazem));
    QCOMPARE(set->EditMode(), qint32(kEdicaoNenhuma));
}

/// Cells lie in chunks and texts in blocks: values on both sides of their edges.
void TstEscrita::longTextsAndManyRows()
{
    mRegistro->sql(
        u"DELETE FROM T; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000)"
        "INSERT INTO T (Longo, Texto, Memo) SELECT i, 'linha ' || i,"
        "CASE WHEN i % 500 = 0 THEN printf('%.*c', 70000, 'x') ELSE printf('%.*c', i % 97, 'y') END FROM n"_s);
    const auto set = opens(u"Select * From T"_s);
    QCOMPARE(set->RecordCount(), 3000);
    for (int i = 1; !set->EOF_(); set->MoveNext(), ++i) {
        QCOMPARE(set->value(u"Longo"_s), QVariant(i));
        QCOMPARE(set->value(u"Texto"_s), QVariant(u"linha %1"_s.arg(i)));
        const qsizetype length = set->value(u"Memo"_s).toString().size();
        QCOMPARE(length, i % 500 == 0 ? 70000 : qMax(i % 97, 1)); // printf gives one character at least
    }
}

QTEST_MAIN(TstEscrita)
#include "tst_escrita.moc"
