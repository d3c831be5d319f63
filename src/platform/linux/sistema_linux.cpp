#include "platform/sistema.h"

#include "platform/aplicacao.h"
#include "platform/caminho.h"
#include "platform/linux/montagens.h"
#include "platform/sistema_base.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <pwd.h>
#include <unistd.h>

namespace quorel {

using namespace Qt::StringLiterals;

QStringList commandLineWords(int argc, char **argv)
{
    QStringList words;
    for (int i = 0; i < argc; ++i)
        words.append(QString::fromUtf8(argv[i]));
    return words;
}

QString rawCommandLine(int argc, char **argv)
{
    return commandLineWords(argc, argv).mid(1).join(u' ');
}

QString systemWindowsDirectory()
{
    return backslashPath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/quorel"_s);
}

QString systemAccountName()
{
    const passwd *account = getpwuid(geteuid());
    return account ? QString::fromLocal8Bit(account->pw_name) : QString::number(geteuid());
}

QString machineDirectory()
{
    return u"/var/lib/quorel"_s;
}

QStringList driveRoots(int tipo)
{
    QStringList roots;
    if (tipo != kOpticalDrive)
        return roots;
    for (const QString &root : opticalRoots(readMounts("/proc/self/mounts")))
        roots.append(backslashPath(root.endsWith(u'/') ? root : root + u'/'));
    return roots;
}

QString proposedCopies()
{
    return backslashPath(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + u"/FigurasQuorel"_s);
}

QString proposedMedia()
{
    const QString root = driveRoots(kOpticalDrive).value(0, windowsDirectory() + u'\\');
    return root + u"zeto_mm"_s;
}

int waveOutputCount()
{
    return static_cast<int>(QDir(u"/dev/snd"_s).entryList({u"pcmC*D*p"_s}, QDir::System).size());
}

static QByteArray wholeFile(const QString &native)
{
    QFile file(native);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool dialUpConnected()
{
    return hasDefaultRoute(wholeFile(u"/proc/net/route"_s), wholeFile(u"/proc/net/ipv6_route"_s));
}

} // namespace quorel
