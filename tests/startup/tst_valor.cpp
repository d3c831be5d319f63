#include "startup/valor.h"
#include "support/failure.h"
#include "support/table.h"

using namespace quorel;
using namespace quorel::teste;

class TstValor : public QObject
{
    Q_OBJECT
private slots:
    void reads_data();
    void reads();
    void roundsWithinItsType();
    void textsThatMustBeNumbers();
    void writes();
};

void TstValor::reads_data()
{
    const Table<QString, double> row("text", "value");
    row("empty", "", 0);
    row("a word", "abc", 0);
    row("blanks before", " \t\r\n12", 12);
    row("what follows is not read", "261<SP", 261);
    row("one point", "-1.5.7", -1.5);
    row("no exponent", "1e3", 1);
    row("a comma ends it", "1,5", 1);
    row("bare sign", "-", 0);
    row("bare point", ".", 0);
    row("point first", "+.25", 0.25);
    row("digits of other scripts", "٣", 0);
    row("inner NUL", QStringLiteral("7\0008"), 7);
    row("hundreds of digits", QString(400, u'9'), std::numeric_limits<double>::max());
}

void TstValor::reads()
{
    QFETCH(QString, text);
    QTEST(valorNumerico(text), "value");
}

void TstValor::roundsWithinItsType()
{
    QCOMPARE(inteiro16(0.5), qint16(0)); // halves to even
    QCOMPARE(inteiro16(1.5), qint16(2));
    QCOMPARE(inteiro32(-2.5), -2);
    QCOMPARE(inteiro16(32767.4), qint16(32767));
    QCOMPARE(failureOf([] { inteiro16(32767.5); }), kFalhaEstouro);
    QCOMPARE(failureOf([] { inteiro16(-32769); }), kFalhaEstouro);
    QCOMPARE(inteiro32(2147483647), 2147483647);
    QCOMPARE(failureOf([] { inteiro32(2147483648.0); }), kFalhaEstouro);
    QCOMPARE(failureOf([] { inteiro32(qQNaN()); }), kFalhaEstouro);
    QCOMPARE(parteInteira(-1.9), -1);
    QCOMPARE(failureOf([] { parteInteira(1e10); }), kFalhaEstouro);
}

void TstValor::textsThatMustBeNumbers()
{
    QCOMPARE(textoInteiro16(u" 12 "), qint16(12));
    QCOMPARE(textoInteiro32(u"-2.5"), -2);
    for (const QString text : {"", "12a", "--1", "."})
        QCOMPARE(failureOf([&] { textoInteiro32(text); }), kFalhaTipo);
    QCOMPARE(failureOf([] { textoInteiro16(u"40000"); }), kFalhaEstouro);
}

void TstValor::writes()
{
    QCOMPARE(textoDecimal(1e15), "1000000000000000");
    QCOMPARE(textoDecimal(0.25), "0.25");
    QCOMPARE(textoDecimal(-0.0), "0");
    QCOMPARE(textoDecimal(-261), "-261");
}

QTEST_APPLESS_MAIN(TstValor)
#include "tst_valor.moc"
