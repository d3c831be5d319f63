#include "platform/codec.h"

#include <QTest>

using namespace quorel;
using namespace Qt::StringLiterals;

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

static QByteArray allBytes()
{
    QByteArray bytes;
    for (int i = 0; i < 256; ++i)
        bytes.append(static_cast<char>(i));
    return bytes;
}

void TstCodec::everyByteComesBack()
{
    for (int shift = 0; shift < 16; ++shift) { // each byte at each place of a block
        const QByteArray bytes = QByteArray(shift, 'x') + allBytes() + "tail";
        const QString text = decode1252(bytes);
        QCOMPARE(text.size(), bytes.size());
        QCOMPARE(encode1252(text), bytes);
    }
}

void TstCodec::decodes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QByteArray() << QString();
    QTest::newRow("the markers' Ç is one byte") << QByteArray("<SP\xC7>") << u"<SPÇ>"_s;
    QTest::newRow("the page's own characters") << QByteArray("\x80\x85\x91\x99\x9F") << u"€…‘™Ÿ"_s;
    QTest::newRow("free bytes keep their number")
        << QByteArray("\x81\x8D\x8F\x90\x9D") << u"\u0081\u008D\u008F\u0090\u009D"_s;
    QTest::newRow("NUL stays") << QByteArray("a\0b", 3) << u"a\0b"_s;
    QTest::newRow("accent behind sixteen plain characters")
        << QByteArray("0123456789abcdef\xE9") << u"0123456789abcdefé"_s;
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
    QCOMPARE(text, u"é"_s);
    QCOMPARE(text.constData(), memory);

    QByteArray bytes("head:");
    encode1252(u"çã", bytes);
    QCOMPARE(bytes, QByteArray("head:\xE7\xE3"));
}

void TstCodec::outsideThePageIsAQuestionMark()
{
    QCOMPARE(encode1252(u"aЖ\u0080b"), QByteArray("a??b"));
    QCOMPARE(encode1252(u"\U0001F600"), QByteArray("??")); // two halves, two places
}

void TstCodec::upperKeepsTheLength()
{
    QCOMPARE(upper1252(u"maçã àþ ÷×ß šœžÿ µƒ ж"), u"MAÇÃ ÀÞ ÷×ß ŠŒŽŸ µƒ ж"_s);
    QCOMPARE(upper1252(u"áéíóúâêôãõüñ"), u"ÁÉÍÓÚÂÊÔÃÕÜÑ"_s);
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
