#pragma once

#include "platform/endereco.h"
#include "support/suporte.h"
#include "support/table.h"

#include "filho_teste.h"

#include <QDir>

namespace quorel::teste {

inline constexpr int kPatience = 20000; ///< ms until something that has to come counts as missing

/// A child in its event loop, found by its titles, the window's first; it ends with its scope.
struct Filho
{
    explicit Filho(const QStringList &titles, const QStringList &options = {})
        : process(QUOREL_BIN "/filho_teste", options + titles)
    {
        const QString &title = titles.first();
        const bool onBus = !options.join(' ').contains("--fora");
        const auto found = [&] {
            janela = onBus ? publishedWindowOf(Janela(pid) << 32, title) : findWindow(title, false);
            return janela != 0;
        };
        if (!QTest::qWaitFor(found, kPatience))
            qFatal("the child does not come up");
    }
    /// How many files it has in the directory of the bus.
    qsizetype files() const
    {
        const QDir bus(qEnvironmentVariable("XDG_RUNTIME_DIR") + "/quorel");
        return bus.entryList({QString("%1.*").arg(pid)}, QDir::AllEntries | QDir::System).size();
    }

    ChildProcess process;
    const qint64 pid = process.processId();
    Janela janela = 0;
};

/// The shell's place on the bus, with what came to it.
struct Casa
{
    Casa()
    {
        endereco.replaceProc([this](Janela, quint32, quintptr sender, qintptr data) {
            const auto &copy = *reinterpret_cast<const CopyData *>(data);
            came << QByteArray(static_cast<const char *>(copy.bytes), copy.bytes ? qsizetype(copy.size) : 0);
            deepest = std::max(deepest, ++running);
            const qintptr result = handler ? handler(sender, quint32(copy.code)) : 1;
            --running;
            return result;
        });
        endereco.publish("Casa");
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
