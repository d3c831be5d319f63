#pragma once

#include <QLocalServer>
#include <QLocalSocket>
#include <QPointer>

namespace quorel::teste {

/// A server of the speech protocol whose voices and faults the row chooses.
class SpeechServer final : public QObject
{
public:
    /// @param path  of its socket; speech of this process finds it there
    explicit SpeechServer(const QString &path)
    {
        qputenv("SPEECHD_ADDRESS", "unix_socket:" + path.toUtf8());
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

} // namespace quorel::teste
