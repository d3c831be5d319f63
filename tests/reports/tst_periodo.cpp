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
    void datesFromToday();
    void reads_data();
    void reads();
};

void TstPeriodo::init()
{
    failOnWarnings();
    costuras().now = [] { return QDateTime(QDate(2026, 2, 28), QTime(23, 59, 59)); };
}

void TstPeriodo::datesFromToday()
{
    QCOMPARE(dataEmDias(0), u"28/02/26"_s); // without its time
    QCOMPARE(dataEmDias(1), u"01/03/26"_s);
    QCOMPARE(dataEmDias(-59), u"31/12/25"_s);
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
    add("day first, also where month first were a date too", "29/01/26", "12/11/26",
        period("01/29/2026", "11/12/2026"));
    add("the last day before the first", "01/03/26", "01/02/26", period("03/01/2026", "02/01/2026"));
    add("nothing typed", "__/__/__", "__/__/__", incomplete);
    add("the first not typed to the end", "01/02/2_", "01/02/26", incomplete);
    add("incomplete counts before bad", "31/02/26", "_1/01/26", incomplete);
    add("31 February", "31/02/26", "01/03/26", bad);
    add("a bad last day", "01/02/26", "29/02/26", bad);
    add("blanks in the mask", "01/02/  ", "01/03/26", bad);
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
