#include "platform/codec.h"
#include "support/table.h"

using namespace quorel;
using namespace quorel::teste;

class TstCodec : public QObject
{
    Q_OBJECT
private slots:
    void everyByteComesBack();
    void decodes_data();
    void decodes();
    void buffersAreUsedAgain();
    void outsideThePageIsAQuestionMark();
    void upperKeepsTheLength();
    void equalWithoutCase();
};

void TstCodec::everyByteComesBack()
{
    QByteArray all(256, '\0');
    std::iota(all.begin(), all.end(), '\0');
    for (int shift = 0; shift < 16; ++shift) { // each byte at each place of a block
        const QByteArray bytes = QByteArray(shift, 'x') + all + "tail";
        const QString text = decode1252(bytes);
        QCOMPARE(text.size(), bytes.size());
        QCOMPARE(encode1252(text), bytes);
    }
}

void TstCodec::decodes_data()
{
    const Table<QByteArray, QString> row("bytes", "text");
    row("empty", "", "");
    row("the markers' Ç is one byte", "<SP\xC7>", "<SPÇ>");
    row("the page's own characters", "\x80\x85\x91\x99\x9F", "€…‘™Ÿ");
    row("free bytes keep their number", "\x81\x8D\x8F\x90\x9D", "\u0081\u008D\u008F\u0090\u009D");
    row("NUL stays", QByteArray("a\0b", 3), QStringLiteral("a\0b"));
    row("accent behind sixteen plain characters", "0123456789abcdef\xE9", "0123456789abcdefé");
}

void TstCodec::decodes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QCOMPARE(decode1252(bytes), text);
    QCOMPARE(encode1252(text), bytes);
}

void TstCodec::buffersAreUsedAgain()
{
    QString text;
    text.reserve(100);
    const QChar *memory = text.constData();
    decode1252("a long first text", text);
    decode1252("\xE9", text);
    QCOMPARE(text, "é");
    QCOMPARE(text.constData(), memory);

    QByteArray bytes("head:");
    encode1252(u"çã", bytes);
    QCOMPARE(bytes, "head:\xE7\xE3");
}

void TstCodec::outsideThePageIsAQuestionMark()
{
    QCOMPARE(encode1252(u"aЖ\u0080b"), "a??b");
    QCOMPARE(encode1252(u"\U0001F600"), "??"); // two halves, two places
}

void TstCodec::upperKeepsTheLength()
{
    QCOMPARE(upper1252(u"maçã àþ ÷×ß šœžÿ µƒ ж"), QString("MAÇÃ ÀÞ ÷×ß ŠŒŽŸ µƒ ж"));
    QCOMPARE(upper1252(u"áéíóúâêôãõüñ"), "ÁÉÍÓÚÂÊÔÃÕÜÑ");
}

void TstCodec::equalWithoutCase()
{
    QVERIFY(equalNoCase(u"Ação", u"AÇÃO"));
    QVERIFY(!equalNoCase(u"acao", u"ação"));
    QVERIFY(!equalNoCase(u"a", u"ab"));
    QVERIFY(equalNoCase(u"", QStringView()));
}

QTEST_APPLESS_MAIN(TstCodec)
#include "tst_codec.moc"
