#pragma once

#include "platform/endereco.h"

#include "filho_teste.h"

#include <QProcess>
#include <QTest>

namespace quorel::teste {

using namespace Qt::StringLiterals;

/// A child in its event loop; it ends with its scope.
class Filho
{
public:
    explicit Filho(const QStringList &titles)
    {
        mProcess.setProcessChannelMode(QProcess::ForwardedChannels);
        mProcess.start(QStringLiteral(QUOREL_BIN "/filho_teste"), titles);
        if (!mProcess.waitForStarted()
            || !QTest::qWaitFor([&] { return findWindow(titles.last(), false) != 0; }, 20000))
            qFatal("the child does not come up");
        mJanela = findWindow(titles.first(), false);
    }
    ~Filho() { kill(); }
    void kill()
    {
        mProcess.kill();
        mProcess.waitForFinished();
    }
    Janela janela() const { return mJanela; }
    qint64 pid() const { return mProcess.processId(); }

private:
    QProcess mProcess;
    Janela mJanela = 0;
};

/// The shell's place on the bus, with what came to it.
struct Casa
{
    Casa()
    {
        endereco.replaceProc([this](Janela, quint32, quintptr sender, qintptr data) {
            const auto &copy = *reinterpret_cast<const CopyData *>(data);
            const QByteArray bytes(static_cast<const char *>(copy.bytes), copy.bytes ? qsizetype(copy.size) : 0);
            came.append(bytes);
            ++running;
            deepest = std::max(deepest, running);
            const qintptr result = handler ? handler(sender, quint32(copy.code)) : 1;
            --running;
            return result;
        });
        endereco.publish(u"Casa"_s);
    }
    qintptr send(Janela to, quint32 code, qint32 size = 0, QByteArrayView bytes = {})
    {
        return sendCopyData(to, endereco.handle(), code, size, bytes);
    }

    Endereco endereco;
    std::function<qintptr(Janela, quint32)> handler;
    QList<QByteArray> came;
    int running = 0;
    int deepest = 0;
};

} // namespace quorel::teste
