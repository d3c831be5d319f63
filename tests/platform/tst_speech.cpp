#include "platform/speech.h"

#include "support/speech_server.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QSignalSpy>
#include <QTest>

using namespace quorel;
using namespace quorel::teste;

class TstSpeech : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void saysWhatItIsGiven();
    void aVoiceThatIsNone_data();
    void aVoiceThatIsNone();

private:
    std::unique_ptr<ScratchDir> mDir;
    std::unique_ptr<SpeechServer> mServer;
};

void TstSpeech::init()
{
    failOnWarnings();
    mDir = std::make_unique<ScratchDir>();
    mServer = std::make_unique<SpeechServer>(mDir->native("/s"));
}

void TstSpeech::saysWhatItIsGiven()
{
    Speech voice;
    voice.say("some antes de haver voz");
    voice.say("Qual é?\n.ponto\r\n..\n");
    QVERIFY(!voice.isAvailable());
    QTRY_COMPARE(mServer->heard, QByteArrayList{"Qual é?|..ponto|...||"});
    QVERIFY(voice.isAvailable());
    const int before = mServer->cancelled;
    voice.say("outro");
    QTRY_COMPARE(mServer->heard.size(), 2);
    QCOMPARE(mServer->heard.last(), "outro|");
    QCOMPARE(mServer->cancelled, before + 1);
    voice.stop();
    QTRY_COMPARE(mServer->cancelled, before + 2);
}

void TstSpeech::aVoiceThatIsNone_data()
{
    const Table<QByteArray, QByteArray, QByteArray, QByteArray> row("modules", "voices", "silent", "dies");
    const QByteArray one = "250-espeak-ng\r\n250 OK\r\n", pt = "249-a\tpt\tnone\r\n249 OK\r\n";
    row("no module speaks", "250 OK\r\n", pt, "", "");
    row("only foreign voices", one, "249-pt-BR\ten\tnone\r\n249 OK\r\n", "", "");
    row("a list that is refused", one, "500 ERR\r\n", "", "");
    row("a line without an end", one, QByteArray(80000, 'x'), "", "");
    row("hangs while it is asked", one, pt, "LIST", "");
    row("hangs in the middle of a word", one, pt, "SPEAK", "");
    row("dies in the middle of a word", one, pt, "", "SPEAK");
}

void TstSpeech::aVoiceThatIsNone()
{
    QFETCH(QByteArray, modules);
    QFETCH(QByteArray, voices);
    QFETCH(QByteArray, silent);
    QFETCH(QByteArray, dies);
    mServer->modules = modules;
    mServer->voices = voices;
    mServer->silentAt = silent;
    mServer->diesAt = dies;
    Speech voice;
    bool ended = false;
    connect(&voice, &Speech::lost, this, [&ended] { ended = true; });
    voice.say("oi");
    QTRY_VERIFY(ended);
    QVERIFY(!voice.isAvailable());
    voice.say("de novo"); // at once: nobody is asked again so soon, and nothing waits
    QVERIFY(mServer->heard.isEmpty());
}

QTEST_MAIN(TstSpeech)
#include "tst_speech.moc"
