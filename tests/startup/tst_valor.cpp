#include "platform/erro.h"
#include "startup/valor.h"

#include <QTest>

using namespace quorel;
using namespace Qt::StringLiterals;

class TstValor : public QObject
{
    Q_OBJECT
private slots:
    void reads_data();
    void reads();
    void limits();
    void textsThatMustBeNumbers();
    void writes();
};

void TstValor::reads_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("empty") << u""_s << 0.0;
    QTest::newRow("a word") << u"abc"_s << 0.0;
    QTest::newRow("blanks before") << u" \t\r\n12"_s << 12.0;
    QTest::newRow("what follows is not read") << u"261<SP"_s << 261.0;
    QTest::newRow("one point") << u"-1.5.7"_s << -1.5;
    QTest::newRow("no exponent") << u"1e3"_s << 1.0;
    QTest::newRow("a comma ends it") << u"1,5"_s << 1.0;
    QTest::newRow("bare sign") << u"-"_s << 0.0;
    QTest::newRow("bare point") << u"."_s << 0.0;
    QTest::newRow("point first") << u"+.25"_s << 0.25;
    QTest::newRow("digits of other scripts") << u"٣"_s << 0.0;
    QTest::newRow("inner NUL") << u"7\0008"_s << 7.0;
    QTest::newRow("hundreds of digits") << QString(400, u'9') << std::numeric_limits<double>::max();
}

void TstValor::reads()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    QCOMPARE(valorNumerico(text), value);
}

static int failureOf(const std::function<void()> &work)
{
    try {
        work();
    } catch (const ErroExecucao &falha) {
        return falha.numero();
    }
    return 0;
}

void TstValor::limits()
{
    QCOMPARE(inteiro16(0.5), qint16(0)); // halves to even
    QCOMPARE(inteiro16(1.5), qint16(2));
    QCOMPARE(inteiro32(-2.5), -2);
    QCOMPARE(inteiro16(32767.4), qint16(32767));
    QCOMPARE(failureOf([] { inteiro16(32767.5); }), 6);
    QCOMPARE(failureOf([] { inteiro16(-32769); }), 6);
    QCOMPARE(inteiro32(2147483647), 2147483647);
    QCOMPARE(failureOf([] { inteiro32(2147483648.0); }), 6);
    QCOMPARE(failureOf([] { inteiro32(qQNaN()); }), 6);
    QCOMPARE(parteInteira(-1.9), -1);
    QCOMPARE(failureOf([] { parteInteira(1e10); }), 6);
}

void TstValor::textsThatMustBeNumbers()
{
    QCOMPARE(textoInteiro16(u" 12 "), qint16(12));
    QCOMPARE(textoInteiro32(u"-2.5"), -2);
    for (const QString &text : {u""_s, u"12a"_s, u"--1"_s, u"."_s})
        QCOMPARE(failureOf([&] { textoInteiro32(text); }), 13);
    QCOMPARE(failureOf([] { textoInteiro16(u"40000"); }), 6);
}

void TstValor::writes()
{
    QCOMPARE(textoDecimal(1e15), u"1000000000000000"_s);
    QCOMPARE(textoDecimal(0.25), u"0.25"_s);
    QCOMPARE(textoDecimal(-0.0), u"0"_s);
    QCOMPARE(textoDecimal(-261), u"-261"_s);
}

QTEST_APPLESS_MAIN(TstValor)
#include "tst_valor.moc"
