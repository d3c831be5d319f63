#include "apoio.h"

#include "data/bd.h"
#include "data/datas.h"
#include "data/dialeto.h"
#include "data/errobd.h"
#include "platform/costuras.h"
#include "support/suporte.h"

#include <QTest>

#include <ctime>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// Dates as texts, in a zone whose summer time began at midnight: that hour is no local time, yet a date all the same.
class TstDatas final : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void reads_data();
    void reads();
    void refuses_data();
    void refuses();
    void storedForm_data();
    void storedForm();
    void passesThroughTheRegister_data();
    void passesThroughTheRegister();
    void literalIsMidnight();
};

void TstDatas::initTestCase()
{
    qputenv("TZ", "America/Sao_Paulo");
    tzset();
}

void TstDatas::init()
{
    failOnWarnings();
    reiniciaCosturas();
    costuras().now = [] { return QDateTime({2026, 11, 25}, {8, 0}); };
}

void TstDatas::reads_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("written"); // as text again
    const auto row = [](const char *text, const char *stored, const char *written) {
        QTest::newRow(text) << QString::fromLatin1(text) << QString::fromLatin1(stored) << QString::fromLatin1(written);
    };
    row("24/11/26", "2026-11-24 00:00:00", "24/11/26");
    row(" 1/2/03 ", "2003-02-01 00:00:00", "01/02/03");
    row("24/11/2026 23:59:59", "2026-11-24 23:59:59", "24/11/26 23:59:59");
    row("24/11/26 9:05", "2026-11-24 09:05:00", "24/11/26 09:05:00");
    row("24/11/26 00:00:00", "2026-11-24 00:00:00", "24/11/26");
    row("01/01/45", "2045-01-01 00:00:00", "01/01/45"); // 19 years ahead
    row("31/12/46", "1946-12-31 00:00:00", "31/12/46"); // 20 ahead is 80 back
    row("01/01/00", "2000-01-01 00:00:00", "01/01/00");
    row("29/02/2028", "2028-02-29 00:00:00", "29/02/28");
    row("01/01/0100", "0100-01-01 00:00:00", "01/01/00");
    row("31/12/9999 23:59:59", "9999-12-31 23:59:59", "31/12/99 23:59:59");
    row("04/11/18", "2018-11-04 00:00:00", "04/11/18"); // the midnight that the clocks left out
    row("04/11/18 00:59:59", "2018-11-04 00:59:59", "04/11/18 00:59:59");
    row("17/02/18 23:30", "2018-02-17 23:30:00", "17/02/18 23:30:00"); // was twice
}

void TstDatas::reads()
{
    QFETCH(QString, text);
    QFETCH(QString, stored);
    QFETCH(QString, written);
    const auto date = readDate(text);
    QVERIFY(date);
    QCOMPARE(storedDate(*date), stored);
    QCOMPARE(dateText(*date), written);
    QCOMPARE(readStoredDate(stored), date);
}

void TstDatas::refuses_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"", "24/11", "31/02/26", "29/02/27", "11/24/26", "24-11-26", "24/11/026", "00/01/26",
             "01/00/26", "01/01/0099", "24/11/26 24:00", "24/11/26 10", "24/11/26 10:60", "24/11/26 10:00:60",
             "24/11/26x", "__/__/__", "2026-11-24", "24/11/10000"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void TstDatas::refuses()
{
    QFETCH(QString, text);
    QVERIFY(!readDate(text));
}

void TstDatas::storedForm_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"", "2026-11-24", "2026-11-24 10:00", "2026-11-24 10:00:00.5", "2026-11-24T10:00:00",
             "2026-11-24 10:00:00 ", "2026-13-01 00:00:00", "26-11-24 10:00:00", "2026-11-24 24:00:00", "x"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

/// What is not exactly the stored form stays the text that it is.
void TstDatas::storedForm()
{
    QFETCH(QString, text);
    QVERIFY(!readStoredDate(text));
    const Registro registro;
    registro.sql(u"INSERT INTO CLxAL (CLxAL_DataIngr) VALUES ('%1')"_s.arg(text));
    registro.open();
    gBD->Records_Set(u"Select * From CLxAL"_s, u"RS"_s);
    QCOMPARE(gBD->Campo(u"CLxAL_DataIngr"_s, u"RS"_s), QVariant(text));
}

void TstDatas::passesThroughTheRegister_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("stored"); // empty: refused
    QTest::newRow("local time") << QVariant(QDateTime({2026, 11, 24}, {10, 0, 0, 999})) << u"2026-11-24 10:00:00"_s;
    QTest::newRow("a day") << QVariant(QDate(2026, 11, 24)) << u"2026-11-24 00:00:00"_s;
    QTest::newRow("a day whose midnight the clocks left out") << QVariant(u"04/11/18"_s) << u"2018-11-04 00:00:00"_s;
    QTest::newRow("a day like that, no text") << QVariant(QDate(2018, 11, 4)) << u"2018-11-04 00:00:00"_s;
    QTest::newRow("first") << QVariant(u"01/01/0100"_s) << u"0100-01-01 00:00:00"_s;
    QTest::newRow("last") << QVariant(u"31/12/9999 23:59:59"_s) << u"9999-12-31 23:59:59"_s;
    QTest::newRow("before the first") << QVariant(wallClock({99, 12, 31}, {0, 0})) << QString();
    QTest::newRow("behind the last") << QVariant(wallClock({10000, 1, 1}, {0, 0})) << QString();
    QTest::newRow("month first") << QVariant(u"11/24/26"_s) << QString();
    QTest::newRow("a number") << QVariant(45000) << QString();
}

void TstDatas::passesThroughTheRegister()
{
    QFETCH(QVariant, value);
    QFETCH(QString, stored);
    const Registro registro;
    registro.open();
    gBD->Records_Set(u"Select * From CLxAL"_s, u"RS"_s);
    gBD->RegistroAdiciona(u"RS"_s);
    {
        const auto boxes = stored.isEmpty() ? std::make_unique<BoxScript>(std::initializer_list<Resposta>{Resposta::Ok})
                                            : std::make_unique<BoxScript>();
        gBD->RegistroTroca(u"CLxAL_DataIngr"_s, value, u"RS"_s);
        gBD->RegistroAtualiza(u"RS"_s);
    }
    gBD->ReAtualizaRecordSet(u"RS"_s);
    const QVariant read = gBD->Campo(u"CLxAL_DataIngr"_s, u"RS"_s);
    QCOMPARE(storedDate(read.toDateTime()), stored);
    gBD->Fechar();
    QCOMPARE(
        registro.sql(u"SELECT CLxAL_DataIngr FROM CLxAL"_s), stored.isEmpty() ? QStringList() : QStringList{stored});
}

void TstDatas::literalIsMidnight()
{
    const Dialeto dialeto{u"1"_s, u"0"_s, {}, [](QStringView) { return false; }};
    QCOMPARE(translated(u"#11/04/2018#", dialeto), u"'2018-11-04 00:00:00'"_s);
}

QTEST_MAIN(TstDatas)
#include "tst_datas.moc"
