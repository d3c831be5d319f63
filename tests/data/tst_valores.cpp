#include "apoio.h"
#include "passos.h"

#include "data/datas.h"
#include "platform/costuras.h"
#include "support/table.h"

#include <ctime>
#include <limits>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// Values and their columns' types, on a table with a column of each; dates in a zone whose summer time began at
/// midnight: that hour is no local time, yet a date all the same.
class TstValores final : public TesteBD
{
    Q_OBJECT
public:
    TstValores()
        : TesteBD(u"CREATE TABLE T (Id INTEGER PRIMARY KEY AUTOINCREMENT, Longo INTEGER, Duplo REAL, Data DATETIME,"
                  "Logico BOOLEAN, Texto VARCHAR DEFAULT 'padrão', Memo TEXT, Bytes BLOB);"
                  "INSERT INTO T (Longo, Texto) VALUES (7, 'velho')"_s,
            u"Select * From T"_s)
    { }

private slots:
    void initTestCase();
    void init();
    void converts_data();
    void converts();
    void refusesValues_data();
    void refusesValues();
    void textsComeBackUnharmed_data();
    void textsComeBackUnharmed();
    void onlyAssignedColumnsAreWritten();
    void longTextsAndManyRows();
    void readsDates_data();
    void readsDates();
    void refusesDates_data();
    void refusesDates();
    void storedForm_data();
    void storedForm();
    void numberBeyondALong();
};

void TstValores::initTestCase()
{
    qputenv("TZ", "America/Sao_Paulo");
    tzset();
}

void TstValores::init()
{
    TesteBD::init();
    costuras().now = [] { return QDateTime({2026, 11, 25}, {8, 0}); };
}

/// Values given, and what is kept of each.
using Pares = QList<std::pair<QVariant, QVariant>>;

void TstValores::converts_data()
{
    const QVariant null(QMetaType::fromType<QString>());
    const QDateTime ten = wallClock({2026, 11, 24}, {10, 0, 1});
    const QDateTime missing = wallClock({2018, 11, 4}, {0, 0}); // the clocks left that midnight out
    rows<Pares>({
        {"Longo",
            {{5.5, 6}, {6.5, 6}, {u" -12 "_s, -12}, {true, -1}, {2147483647.0, std::numeric_limits<qint32>::max()},
                {-2147483648.0, std::numeric_limits<qint32>::min()}, {null, null}}}, // halves go to even
        {"Duplo", {{u"1.25"_s, 1.25}, {3, 3.0}}},
        {"Data",
            {{ten, ten}, {u"24/11/26 10:00:01"_s, ten}, {QDateTime({2026, 11, 24}, {10, 0, 1, 999}), ten},
                {QDate(2026, 11, 24), wallClock({2026, 11, 24}, {0, 0})}, {u"04/11/18"_s, missing},
                {QDate(2018, 11, 4), missing}, {u"01/01/0100"_s, wallClock({100, 1, 1}, {0, 0})},
                {u"31/12/9999 23:59:59"_s, wallClock({9999, 12, 31}, {23, 59, 59})}}},
        {"Logico",
            {{true, true}, {0, false}, {-1, true}, {u"Verdadeiro"_s, true}, {u"false"_s, false}, {u"0"_s, false}}},
        {"Texto",
            {{12.0, u"12"_s}, {1e15, u"1000000000000000"_s}, {1e-7, u"0.0000001"_s}, {0.1, u"0.1"_s}, // no exponent
                {true, u"True"_s}, {ten, u"24/11/26 10:00:01"_s}, {u""_s, u""_s}}},
        {"Memo", {{u"x"_s, u"x"_s}, {12, u"12"_s}}},
        {"Bytes", {{QByteArray("\0\xff", 2), QByteArray("\0\xff", 2)}, {QByteArray(""), QByteArray("")}}},
    });
}

/// A value is converted when it is assigned, and comes back as it was then.
void TstValores::converts()
{
    const auto [pairs] = row<Pares>();
    for (const auto &[value, kept] : pairs) {
        mSet->setValue(rowName(), value);
        play(u"update; requery"_s);
        const QVariant found = mSet->value(rowName());
        QVERIFY2(found == kept && found.typeId() == kept.typeId() && found.isNull() == kept.isNull(),
            qPrintable(value.toString() + u" became "_s + found.toString()));
    }
}

void TstValores::refusesValues_data()
{
    const QDateTime now = wallClock({2026, 11, 24}, {10, 0, 1});
    rows<QVariantList>({
        {"Longo",
            {2147483648.0, -2147483649.0, std::numeric_limits<double>::quiet_NaN(), u""_s, u"12x"_s, now,
                QByteArray("1")}},
        {"Duplo", {std::numeric_limits<double>::infinity(), u"1,25"_s}},
        {"Data",
            {wallClock({99, 12, 31}, {0, 0}), wallClock({10000, 1, 1}, {0, 0}), u"11/24/26"_s, u""_s, QDateTime(), true,
                45000}},
        {"Logico", {u"sim"_s}},
        {"Texto", {QString(QChar(0xd800)), QByteArray("x")}}, // half a character
        {"Bytes", {u"x"_s}},
    });
}

/// One that does not fit leaves the field alone.
void TstValores::refusesValues()
{
    const auto [values] = row<QVariantList>();
    const QVariant before = mSet->value(rowName());
    for (const QVariant &value : values) {
        QVERIFY2(failureOf([&] { mSet->setValue(rowName(), value); }) == kErroValor, qPrintable(value.toString()));
        QCOMPARE(mSet->value(rowName()), before);
        QCOMPARE(mSet->EditMode(), qint32(kEdicaoNenhuma));
    }
}

void TstValores::textsComeBackUnharmed_data()
{
    rows<QString>({
        {"apostrophes", u"D'Ávila ''x'' \"y\""_s},
        {"percent, marks of queries", u"100% _ * ? ?1 :a @b $c ; -- /* #11/24/2026# [x]"_s},
        {"emoji", u"Ana \U0001F600 \U0001F468‍\U0001F469‍\U0001F467"_s},
        {"outside the code page", u"Ωλ жук 漢字 ﷽"_s},
        {"line breaks and tabs", u"a\r\nb\tc\n"_s},
        {"blanks at both ends", u"  a  "_s},
        {"the last characters", QString(QChar(0xffff)) + u"\U0010FFFF"_s},
        {"empty", u""_s},
    });
    for (const int size : {4095, 4096, 65535, 65536, 65537})
        QTest::addRow("%d characters", size) << std::tuple(QString(size - 1, u'ç') + u'!');
}

void TstValores::textsComeBackUnharmed()
{
    const auto [text] = row<QString>();
    gBD->Records_Set(u"Select * From LG_LogAulas"_s, u"RS"_s);
    gBD->RegistroAdiciona(u"RS"_s);
    gBD->RegistroTroca(u"LG_Resp"_s, text, u"RS"_s);
    gBD->RegistroAtualiza(u"RS"_s);
    QCOMPARE(gBD->Campo(u"LG_Resp"_s, u"RS"_s), QVariant(text));
    gBD->ReAtualizaRecordSet(u"RS"_s);
    QCOMPARE(gBD->Campo(u"LG_Resp"_s, u"RS"_s), QVariant(text));
    QCOMPARE(inFile(u"SELECT LG_Resp FROM LG_LogAulas"_s), text);
}

void TstValores::onlyAssignedColumnsAreWritten()
{
    play(u"set Longo=8; file UPDATE T SET Memo = 'de outro'; update; add; set Longo=9; update"_s);
    QCOMPARE(inFile(u"SELECT Longo, Texto, Memo FROM T"_s), u"8|velho|de outro\n9|padrão|NULL"_s);
}

/// Cells lie in chunks and texts in blocks: values on both sides of their edges.
void TstValores::longTextsAndManyRows()
{
    mRegistro->sql(
        u"DELETE FROM T; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000)"
        "INSERT INTO T (Longo, Texto, Memo) SELECT i, 'linha ' || i,"
        "CASE WHEN i % 500 = 0 THEN printf('%.*c', 70000, 'x') ELSE printf('%.*c', i % 97, 'y') END FROM n"_s);
    mSet->Requery();
    QCOMPARE(mSet->RecordCount(), 3000);
    for (int i = 1; !mSet->EOF_(); mSet->MoveNext(), ++i) {
        QCOMPARE(mSet->value(u"Longo"_s), QVariant(i));
        QCOMPARE(mSet->value(u"Texto"_s), QVariant(u"linha %1"_s.arg(i)));
        const qsizetype length = mSet->value(u"Memo"_s).toString().size();
        QCOMPARE(length, i % 500 == 0 ? 70000 : qMax(i % 97, 1)); // printf gives one character at least
    }
}

void TstValores::readsDates_data()
{
    rows<QString, QString>({
        // stored; as text again
        {"24/11/26", "2026-11-24 00:00:00", "24/11/26"}, {" 1/2/03 ", "2003-02-01 00:00:00", "01/02/03"},
        {"24/11/2026 23:59:59", "2026-11-24 23:59:59", "24/11/26 23:59:59"},
        {"24/11/26 9:05", "2026-11-24 09:05:00", "24/11/26 09:05:00"},
        {"24/11/26 00:00:00", "2026-11-24 00:00:00", "24/11/26"},
        {"01/01/45", "2045-01-01 00:00:00", "01/01/45"}, // 19 years ahead
        {"31/12/46", "1946-12-31 00:00:00", "31/12/46"}, // 20 ahead is 80 back
        {"01/01/00", "2000-01-01 00:00:00", "01/01/00"}, {"29/02/2028", "2028-02-29 00:00:00", "29/02/28"},
        {"01/01/0100", "0100-01-01 00:00:00", "01/01/00"},
        {"31/12/9999 23:59:59", "9999-12-31 23:59:59", "31/12/99 23:59:59"},
        {"04/11/18", "2018-11-04 00:00:00", "04/11/18"}, // the midnight that the clocks left out
        {"04/11/18 00:59:59", "2018-11-04 00:59:59", "04/11/18 00:59:59"},
        {"17/02/18 23:30", "2018-02-17 23:30:00", "17/02/18 23:30:00"}, // was twice
    });
}

void TstValores::readsDates()
{
    const auto [stored, written] = row<QString, QString>();
    const auto date = readDate(rowName());
    QVERIFY(date);
    QCOMPARE(storedDate(*date), stored);
    QCOMPARE(dateText(*date), written);
    QCOMPARE(readStoredDate(stored), date);
}

void TstValores::refusesDates_data()
{
    texts({"", "24/11", "31/02/26", "29/02/27", "11/24/26", "24-11-26", "24/11/026", "00/01/26", "01/00/26",
        "01/01/0099", "24/11/26 24:00", "24/11/26 10", "24/11/26 10:60", "24/11/26 10:00:60", "24/11/26x", "__/__/__",
        "2026-11-24", "24/11/10000"});
}

void TstValores::refusesDates()
{
    const QString text = rowName();
    QVERIFY(!readDate(text));
}

void TstValores::storedForm_data()
{
    texts({"", "2026-11-24", "2026-11-24 10:00", "2026-11-24 10:00:00.5", "2026-11-24T10:00:00", "2026-11-24 10:00:00 ",
        "2026-13-01 00:00:00", "26-11-24 10:00:00", "2026-11-24 24:00:00", "x"});
}

/// What is not exactly the stored form stays the text that it is.
void TstValores::storedForm()
{
    const QString text = rowName();
    QVERIFY(!readStoredDate(text));
    play(u"file UPDATE T SET Data = '%1'; requery"_s.arg(text));
    QCOMPARE(gBD->Campo(u"Data"_s, u"RS"_s), QVariant(text));
}

/// As another program may leave it.
void TstValores::numberBeyondALong()
{
    play(u"file UPDATE T SET Longo = 2147483648; requery"_s);
    QCOMPARE(gBD->Campo(u"Longo"_s, u"RS"_s), QVariant(qlonglong(2147483648)));
}

QTEST_MAIN(TstValores)
#include "tst_valores.moc"
