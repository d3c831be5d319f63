#include "platform/speech.h"

#include "support/suporte.h"
#include "support/table.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace quorel;
using namespace quorel::teste;

/// A server of the speech protocol whose voices and faults the row chooses.
class Server final : public QObject
{
public:
    explicit Server(const QString &path)
    {
        QLocalServer::removeServer(path);
        mServer.listen(path);
        connect(&mServer, &QLocalServer::newConnection, this, [this] {
            mClient = mServer.nextPendingConnection();
            connect(mClient, &QLocalSocket::readyRead, this, [this] { serve(); });
        });
    }

    QByteArray modules = "250-espeak-ng\r\n250 OK\r\n", voices = "249-Maria\tpt-BR\tnone\r\n249 OK\r\n";
    QByteArray silentAt; ///< the command that gets no answer
    QByteArray diesAt; ///< the command at which it closes
    QByteArrayList heard; ///< texts, as they were spelled on the way
    int cancelled = 0;

private:
    void serve()
    {
        while (mClient && mClient->canReadLine()) {
            const QByteArray line = mClient->readLine().chopped(2);
            if (mText)
                text(line);
            else if (!diesAt.isEmpty() && line.startsWith(diesAt))
                mClient->abort();
            else if (silentAt.isEmpty() || !line.startsWith(silentAt))
                mClient->write(answerTo(line));
        }
    }

    void text(const QByteArray &line)
    {
        mText = line != ".";
        if (mText)
            heard.last() += line + '|';
        else
            mClient->write("225-7\r\n225 OK MESSAGE QUEUED\r\n701-7\r\n701-0\r\n701 BEGIN\r\n");
    }

    QByteArray answerTo(const QByteArray &line)
    {
        if (line == "LIST OUTPUT_MODULES")
            return modules;
        if (line == "LIST SYNTHESIS_VOICES")
            return voices;
        if (line == "CANCEL SELF")
            ++cancelled;
        mText = line == "SPEAK";
        if (mText)
            heard.append(QByteArray());
        return mText ? "230 OK RECEIVING DATA\r\n" : "210 OK\r\n";
    }

    QLocalServer mServer;
    QPointer<QLocalSocket> mClient;
    bool mText = false;
};

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
    std::unique_ptr<Server> mServer;
};

void TstSpeech::init()
{
    failOnWarnings();
    mDir = std::make_unique<ScratchDir>();
    mServer = std::make_unique<Server>(mDir->native("/s"));
    qputenv("SPEECHD_ADDRESS", "unix_socket:" + mDir->native("/s").toUtf8());
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
