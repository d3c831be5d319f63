#include "platform/caminho.h"
#include "platform/linux/unixfd.h"
#include "platform/sistema.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace quorel {

using namespace Qt::StringLiterals;

/// The mode of a file's permissions, 0 when there is no such file.
static mode_t modeOf(const QByteArray &native)
{
    struct stat info;
    return ::stat(native.constData(), &info) == 0 ? info.st_mode : 0;
}

static bool isOnReadOnlyMedium(const QByteArray &native)
{
    struct statvfs medium;
    return ::statvfs(native.constData(), &medium) == 0 && (medium.f_flag & ST_RDONLY) != 0;
}

bool isReadOnly(const QString &caminho)
{
    constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    const QByteArray native = QFile::encodeName(nativePath(caminho));
    const mode_t mode = modeOf(native);
    if (mode == 0)
        return false;
    // A file that nobody may write is marked read-only, even for a user whom the kernel lets write everything.
    return (mode & kAnyWrite) == 0 || isOnReadOnlyMedium(native);
}

bool clearReadOnly(const QString &caminho)
{
    constexpr mode_t kPermissions = 07777;
    const QByteArray native = QFile::encodeName(nativePath(caminho));
    const mode_t mode = modeOf(native);
    if (mode == 0)
        return false;
    if (!isReadOnly(caminho))
        return true;
    return ::chmod(native.constData(), (mode & kPermissions) | S_IWUSR) == 0 && !isReadOnly(caminho);
}

/// Whether a refused lease means an open file here: a share refuses it for reasons of its own.
static bool knowsLeases(int file)
{
    constexpr std::array<long, 5> kLocal{
        EXT4_SUPER_MAGIC, XFS_SUPER_MAGIC, BTRFS_SUPER_MAGIC, TMPFS_MAGIC, OVERLAYFS_SUPER_MAGIC};
    struct statfs system;
    return ::fstatfs(file, &system) == 0
        && std::ranges::any_of(kLocal, [&](long magic) { return std::cmp_equal(magic, system.f_type); });
}

/// Asks for a lease, which its owner gets only while nobody else has the file open, whoever that is.
static bool refusesLease(const QByteArray &native)
{
    const bus::UnixFd file(::open(native.constData(), O_RDWR | O_CLOEXEC));
    if (!file || !knowsLeases(file.get()))
        return false;
    ::fcntl(file.get(), F_SETSIG, SIGURG); // which is ignored, should somebody open the file before it is closed here
    return ::fcntl(file.get(), F_SETLEASE, F_WRLCK) != 0 && errno == EAGAIN;
}

/// Looks through the open files of the processes that this user may see.
static bool isSeenOpen(const QByteArray &native)
{
    struct stat wanted;
    if (::stat(native.constData(), &wanted) != 0)
        return false;
    const QString own = QString::number(QCoreApplication::applicationPid());
    for (const QString &process : QDir(u"/proc"_s).entryList({u"[1-9]*"_s}, QDir::Dirs)) {
        QDirIterator files(u"/proc/%1/fd"_s.arg(process), QDir::Files | QDir::System);
        while (process != own && files.hasNext()) {
            struct stat open;
            if (::stat(QFile::encodeName(files.next()).constData(), &open) == 0 && open.st_dev == wanted.st_dev
                && open.st_ino == wanted.st_ino)
                return true;
        }
    }
    return false;
}

bool isOpenElsewhere(const QString &caminho)
{
    const QByteArray native = QFile::encodeName(nativePath(caminho));
    return refusesLease(native) || isSeenOpen(native);
}

} // namespace quorel
