#include "platform/linux/busdirectory.h"

#include <QByteArray>
#include <QFile>

#include <dirent.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <memory>

namespace quorel::bus {

using namespace Qt::StringLiterals;

static constexpr int kHandleShift = 32;
static constexpr mode_t kPrivate = 0700;
static constexpr mode_t kPermissions = 0777;
static constexpr int kBacklog = 128;
static constexpr qsizetype kLargestEntryFile = qsizetype{64} * 1024;
/// A directory's time moves in steps of the kernel's tick: a listing read within this time of the last change may have
/// missed one.
static constexpr qint64 kTimeStepNs = 50'000'000;
static constexpr char kSocketEnding[] = ".sock";
static constexpr char kEntryEnding[] = ".janelas";

pid_t processOf(Janela janela)
{
    return pid_t(janela >> kHandleShift);
}

Janela handleIn(pid_t process, quint32 n)
{
    return (Janela(process) << kHandleShift) | n;
}

static QByteArray fileOf(pid_t process, const char *ending)
{
    return QByteArray::number(process) + ending;
}

static bool ownDirectory(const QByteArray &path)
{
    struct stat st = {};
    return ::stat(path.constData(), &st) == 0 && S_ISDIR(st.st_mode) && st.st_uid == ::getuid();
}

static QByteArray directoryPath()
{
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    if (runtime.startsWith('/') && ownDirectory(runtime))
        return runtime + "/quorel";
    return "/tmp/quorel-" + QByteArray::number(::getuid());
}

QString BusDirectory::path()
{
    return QFile::decodeName(directoryPath());
}

/// Makes the directory where it is missing, and closes it to others where it is ours. None for a link, or another
/// user's.
static UnixFd openPrivate(const QByteArray &path)
{
    ::mkdir(path.constData(), kPrivate);
    const UnixFd place(::open(path.constData(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat st = {};
    if (!place || ::fstat(place.get(), &st) != 0 || st.st_uid != ::getuid())
        return UnixFd();
    const QByteArray same = "/proc/self/fd/" + QByteArray::number(place.get()); // whatever the path names by now
    if ((st.st_mode & kPermissions) != kPrivate && ::chmod(same.constData(), kPrivate) != 0)
        return UnixFd();
    return UnixFd(::openat(place.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

bool BusDirectory::isInPlace() const
{
    struct stat used = {}, named = {};
    return mDirectory && ::fstat(mDirectory.get(), &used) == 0 && ::lstat(directoryPath().constData(), &named) == 0
        && used.st_ino == named.st_ino && used.st_dev == named.st_dev && named.st_uid == ::getuid()
        && (named.st_mode & kPermissions) == kPrivate;
}

bool BusDirectory::open()
{
    if (isInPlace())
        return true;
    mDirectory = openPrivate(directoryPath());
    mModified = {};
    return bool(mDirectory);
}

bool BusDirectory::holdsOwn()
{
    const auto stands = [this](const char *ending) {
        struct stat st = {};
        return ::fstatat(mDirectory.get(), fileOf(::getpid(), ending).constData(), &st, AT_SYMLINK_NOFOLLOW) == 0;
    };
    return open() && stands(kSocketEnding) && stands(kEntryEnding);
}

static qint64 nanoseconds(const timespec &t)
{
    return qint64(t.tv_sec) * 1'000'000'000 + t.tv_nsec;
}

bool BusDirectory::changed()
{
    struct stat st = {};
    if (::fstat(mDirectory.get(), &st) != 0)
        return true;
    if (nanoseconds(st.st_mtim) == nanoseconds(mModified) && nanoseconds(mRead) - nanoseconds(mModified) > kTimeStepNs)
        return false;
    mModified = st.st_mtim;
    ::clock_gettime(CLOCK_REALTIME, &mRead);
    return true;
}

const std::vector<Entry> &BusDirectory::entries()
{
    if (!open())
        mEntries.clear();
    else if (changed())
        read();
    return mEntries;
}

void BusDirectory::read()
{
    mEntries.clear();
    const int again = ::openat(mDirectory.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (again < 0)
        return;
    const std::unique_ptr<DIR, int (*)(DIR *)> listing(::fdopendir(again), ::closedir);
    if (!listing)
        return;
    while (const dirent *found = ::readdir(listing.get())) {
        if (QByteArrayView(found->d_name).endsWith(kEntryEnding))
            readFile(found->d_name);
    }
    std::ranges::sort(mEntries, {}, &Entry::handle);
}

/// One line: handle, blank, handle of the top-level window or 0, blank, title.
static bool parseLine(QByteArrayView line, Entry &entry)
{
    const char *at = line.data();
    const char *end = at + line.size();
    for (Janela *number : {&entry.handle, &entry.parent}) {
        const auto [behind, error] = std::from_chars(at, end, *number);
        if (error != std::errc() || behind == end || *behind != ' ')
            return false;
        at = behind + 1;
    }
    entry.title = QString::fromUtf8(at, end - at);
    return entry.handle != 0;
}

void BusDirectory::readFile(const char *name)
{
    const pid_t process = pid_t(QByteArray(name).chopped(qsizetype(sizeof kEntryEnding) - 1).toInt());
    const int fd = ::openat(mDirectory.get(), name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    QFile file;
    struct stat st = {};
    if (process <= 0 || fd < 0 || !file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)
        || ::fstat(fd, &st) != 0 || st.st_uid != ::getuid()) // left there while others could enter
        return;
    const QByteArray text = file.read(kLargestEntryFile);
    for (const QByteArray &line : text.split('\n')) {
        Entry entry;
        if (parseLine(line, entry) && processOf(entry.handle) == process)
            mEntries.push_back(std::move(entry));
    }
}

static QByteArray textOf(const std::vector<Entry> &own)
{
    QByteArray text;
    for (const Entry &entry : own) {
        QByteArray title = entry.title.toUtf8();
        std::ranges::replace(title, '\n', ' ');
        text += QByteArray::number(quint64(entry.handle)) + ' ' + QByteArray::number(quint64(entry.parent)) + ' '
            + title + '\n';
    }
    return text;
}

bool BusDirectory::publish(const std::vector<Entry> &own)
{
    if (!open())
        return false;
    const QByteArray name = fileOf(::getpid(), kEntryEnding);
    if (own.empty())
        return ::unlinkat(mDirectory.get(), name.constData(), 0) == 0;
    const QByteArray fresh = fileOf(::getpid(), ".novo");
    ::unlinkat(mDirectory.get(), fresh.constData(), 0);
    const int fd = ::openat(mDirectory.get(), fresh.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    QFile file;
    if (fd < 0 || !file.open(fd, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle))
        return false;
    const QByteArray text = textOf(own);
    const bool written = file.write(text) == text.size() && file.flush();
    file.close();
    // Renamed into place, so that nobody reads half a list and the directory's time tells of the change.
    return written && ::renameat(mDirectory.get(), fresh.constData(), mDirectory.get(), name.constData()) == 0;
}

/// Through the open directory, whose own path may be longer than an address can hold.
static sockaddr_un addressIn(int directory, const QByteArray &name)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const QByteArray path = "/proc/self/fd/" + QByteArray::number(directory) + '/' + name;
    std::memcpy(address.sun_path, path.constData(), std::min(std::size_t(path.size()), sizeof address.sun_path - 1));
    return address;
}

UnixFd BusDirectory::listen()
{
    if (!open())
        return UnixFd();
    const QByteArray name = fileOf(::getpid(), kSocketEnding);
    ::unlinkat(mDirectory.get(), name.constData(), 0);
    UnixFd socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const sockaddr_un address = addressIn(mDirectory.get(), name);
    if (!socket || ::bind(socket.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
        || ::listen(socket.get(), kBacklog) != 0)
        return UnixFd();
    return socket;
}

BusDirectory::Connected BusDirectory::connect(pid_t process)
{
    if (!open())
        return {Reach::Busy, UnixFd()};
    UnixFd socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const sockaddr_un address = addressIn(mDirectory.get(), fileOf(process, kSocketEnding));
    if (!socket)
        return {Reach::Busy, UnixFd()};
    if (::connect(socket.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        return {errno == ECONNREFUSED || errno == ENOENT ? Reach::Gone : Reach::Busy, UnixFd()};
    pid_t listener = 0;
    if (!peerIsOurs(socket.get(), listener))
        return {Reach::Busy, UnixFd()};
    return {Reach::Connected, std::move(socket)};
}

void BusDirectory::remove(pid_t process)
{
    if (!open())
        return;
    for (const char *ending : {kEntryEnding, kSocketEnding, ".novo"})
        ::unlinkat(mDirectory.get(), fileOf(process, ending).constData(), 0);
}

bool peerIsOurs(int socket, pid_t &process)
{
    ucred peer = {};
    socklen_t size = sizeof peer;
    if (::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0)
        return false;
    process = peer.pid;
    return peer.uid == ::getuid();
}

} // namespace quorel::bus
