#include "support/sistema.h"

#include <QFile>

#include <csignal>

namespace quorel::teste {

const int kCorrente = 300;
const bool kOpenFilesMove = true;
const bool kMeetInADirectory = true;

static constexpr auto kReadOnly = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;

namespace {

struct Permission
{
    Q_DISABLE_COPY_MOVE(Permission)
    explicit Permission(const QString &native) : file(native) { }
    ~Permission() { QFile::setPermissions(file, kReadOnly | QFile::WriteOwner); }
    const QString file;
};

} // namespace

std::shared_ptr<void> impedeEscrita(const QString &native)
{
    if (!QFile::setPermissions(native, kReadOnly))
        qFatal("can't take the permission from %s", qPrintable(native));
    if (QFile(native).open(QIODevice::ReadWrite))
        return nullptr;
    return std::make_shared<Permission>(native);
}

void mataProcesso(qint64 process)
{
    ::kill(pid_t(process), SIGKILL);
}

QPoint cantoDe(const QWidget &window)
{
    return window.pos();
}

bool sempreNaFrente(const QWidget &window)
{
    return window.windowFlags().testFlag(Qt::WindowStaysOnTopHint);
}

} // namespace quorel::teste
