#include "reports/periodo.h"

#include "platform/costuras.h"
#include "support/suporte.h"

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstPeriodo : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { reiniciaCosturas(); }
    void datesFromToday_data();
    void datesFromToday();
    void reads_data();
    void reads();
};

void TstPeriodo::init()
{
    failOnWarnings();
    costuras().now = [] { return QDateTime(QDate(2026, 2, 28), QTime(23, 59, 59)); };
}

void TstPeriodo::datesFromToday_data()
{
    QTest::addColumn<int>("dias");
    QTest::addColumn<QString>("expected");
    QTest::newRow("today, without its time") << 0 << "28/02/26";
    QTest::newRow("tomorrow is in another month") << 1 << "01/03/26";
    QTest::newRow("in another year") << -59 << "31/12/25";
}

void TstPeriodo::datesFromToday()
{
    QFETCH(int, dias);
    QFETCH(QString, expected);
    QCOMPARE(dataEmDias(dias), expected);
    QCOMPARE(lePeriodo(expected, expected).estado, EstadoPeriodo::Valido);
}

void TstPeriodo::reads_data()
{
    QTest::addColumn<QString>("inicial");
    QTest::addColumn<QString>("final");
    QTest::addColumn<Periodo>("expected");
    const auto add = [](const char *name, const QString &inicial, const QString &final, const Periodo &expected) {
        QTest::newRow(name) << inicial << final << expected;
    };
    const auto period = [](const QString &inicio, const QString &fim) {
        return Periodo{EstadoPeriodo::Valido, inicio, fim};
    };
    const Periodo incomplete;
    const Periodo bad{EstadoPeriodo::Invalido, {}, {}};
    add("day first", "29/01/26", "01/03/26", period("01/29/2026", "03/01/2026"));
    add("day first where month first were a date too", "02/03/26", "12/11/26", period("03/02/2026", "11/12/2026"));
    add("the last day before the first", "01/03/26", "01/02/26", period("03/01/2026", "02/01/2026"));
    add("29 February of a leap year", "29/02/24", "29/02/00", period("02/29/2024", "02/29/2000"));
    add("19 years ahead, 80 back", "01/01/45", "01/01/46", period("01/01/2045", "01/01/1946"));
    add("nothing typed", "__/__/__", "__/__/__", incomplete);
    add("the first not typed to the end", "01/02/2_", "01/02/26", incomplete);
    add("the last not typed to the end", "01/02/26", "_1/02/26", incomplete);
    add("incomplete counts before bad", "31/02/26", "01/__/26", incomplete);
    add("31 February", "31/02/26", "01/03/26", bad);
    add("a bad last day", "01/02/26", "29/02/26", bad);
    add("month first is no date", "02/13/26", "01/03/26", bad);
    add("year first is no date", "01/02/26", "99/01/01", bad);
    add("day 0", "00/02/26", "01/03/26", bad);
    add("month 0", "01/00/26", "01/03/26", bad);
    add("blanks in the mask", "01/02/  ", "01/03/26", bad);
    add("empty texts", "", "", bad);
}

void TstPeriodo::reads()
{
    QFETCH(QString, inicial);
    QFETCH(QString, final);
    QFETCH(Periodo, expected);
    QCOMPARE(lePeriodo(inicial, final), expected);
}

QTEST_GUILESS_MAIN(TstPeriodo)
#include "tst_periodo.moc"
