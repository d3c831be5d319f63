#include "platform/caminho.h"

#include "platform/codec.h"
#include "platform/linux/montagens.h"

#include <QDir>
#include <QFile>
#include <QHash>

#include <chrono>
#include <climits>
#include <memory>

#include <dirent.h>
#include <sys/stat.h>

namespace quorel {

using namespace Qt::StringLiterals;
using std::chrono::nanoseconds;

/// A change right after a listing may carry the same modification time, so a listing is sure of what it lacks only
/// when it was made this long after that time. File systems of discs and sticks count in steps of two seconds.
static constexpr nanoseconds kSureAfter = std::chrono::seconds(2);

/// The names of one directory, as they were at one moment.
struct Listing
{
    dev_t device = 0;
    ino_t inode = 0;
    nanoseconds modified{}; ///< the directory's, taken before the names were read
    nanoseconds readAt{};
    QHash<QString, QByteArray> names; ///< from the name in upper case to the first in byte order that is spelled so
};

static bool statOf(const QByteArray &path, struct stat &info)
{
    return ::stat(path.isEmpty() ? "." : path.constData(), &info) == 0;
}

static bool exists(const QByteArray &path)
{
    struct stat info;
    return statOf(path, info);
}

static nanoseconds modificationOf(const struct stat &info)
{
    return std::chrono::seconds(info.st_mtim.tv_sec) + nanoseconds(info.st_mtim.tv_nsec);
}

static Listing readListing(const QByteArray &directory, const struct stat &info)
{
    Listing listing{info.st_dev, info.st_ino, modificationOf(info), {}, {}};
    listing.readAt = std::chrono::system_clock::now().time_since_epoch();
    const std::unique_ptr<DIR, int (*)(DIR *)> dir(
        ::opendir(directory.isEmpty() ? "." : directory.constData()), ::closedir);
    if (!dir)
        return listing;
    while (const dirent *entry = ::readdir(dir.get())) {
        const QByteArray name(entry->d_name);
        QByteArray &kept = listing.names[upper1252(QFile::decodeName(name))];
        if (kept.isEmpty() || name < kept)
            kept = name;
    }
    return listing;
}

/// The spelling under which a directory holds a name, empty when it holds none.
static QByteArray spellingIn(const QByteArray &directory, const QByteArray &prefix, const QByteArray &name)
{
    static QHash<QByteArray, Listing> cache;
    constexpr qsizetype kMaxListings = 1000; // the shards of a media tree are a few hundred
    struct stat info;
    if (!statOf(directory, info) || !S_ISDIR(info.st_mode))
        return {};
    const QString wanted = upper1252(QFile::decodeName(name));
    const auto cached = cache.constFind(directory);
    if (cached != cache.constEnd() && cached->device == info.st_dev && cached->inode == info.st_ino
        && cached->modified == modificationOf(info)) {
        QByteArray found = cached->names.value(wanted);
        if (!found.isEmpty() && exists(prefix + found))
            return found;
        if (found.isEmpty() && cached->readAt - cached->modified > kSureAfter)
            return {};
    }
    if (cache.size() >= kMaxListings)
        cache.clear();
    return cache.insert(directory, readListing(directory, info))->names.value(wanted);
}

/// The path with each component spelled as the directories hold it; no trailing slash comes in.
static QByteArray resolve(const QByteArray &path)
{
    if (path.isEmpty() || exists(path))
        return path;
    const qsizetype slash = path.lastIndexOf('/');
    const QByteArray name = path.sliced(slash + 1);
    qsizetype end = slash;
    while (end > 0 && path[end - 1] == '/')
        --end;
    const QByteArray parent = resolve(path.first(std::max<qsizetype>(end, 0)));
    const QByteArray prefix = slash < 0 ? QByteArray() : parent + '/';
    const QByteArray found = spellingIn(slash == 0 || end == 0 ? prefix : parent, prefix, name);
    return prefix + (found.isEmpty() ? name : found);
}

QString nativePath(const QString &caminho)
{
    if (caminho.isEmpty() || caminho.contains(QChar::Null))
        return {};
    QString plain = QString(caminho).replace(u'\\', u'/');
    const QByteArray path = QFile::encodeName(plain);
    if (path.size() >= PATH_MAX || exists(path))
        return plain;
    qsizetype end = path.size();
    while (end > 0 && path[end - 1] == '/')
        --end;
    return QFile::decodeName(resolve(path.first(end)) + path.sliced(end));
}

QString volumeOf(const QString &caminho)
{
    const QString native = QDir::cleanPath(QDir(nativePath(caminho)).absolutePath());
    const QString root = volumeRoot(readMounts("/proc/self/mounts"), native);
    return root == u"/"_s ? QString() : backslashPath(root);
}

} // namespace quorel
