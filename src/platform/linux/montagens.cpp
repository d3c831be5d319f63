#include "platform/linux/montagens.h"

#include <QFile>

#include <algorithm>
#include <memory>

#include <mntent.h>

namespace quorel {

using namespace Qt::StringLiterals;

std::vector<Montagem> readMounts(const char *table)
{
    constexpr int kLongestLine = 8192;
    std::vector<Montagem> mounts;
    const std::unique_ptr<FILE, int (*)(FILE *)> file(::setmntent(table, "re"), ::endmntent);
    std::vector<char> line(kLongestLine);
    mntent entry{};
    while (file && ::getmntent_r(file.get(), &entry, line.data(), kLongestLine))
        mounts.push_back({QFile::decodeName(entry.mnt_dir), QString::fromUtf8(entry.mnt_type)});
    return mounts;
}

QStringList opticalRoots(const std::vector<Montagem> &mounts)
{
    QStringList roots;
    for (const Montagem &mount : mounts) {
        if (mount.type == u"iso9660"_s || mount.type == u"udf"_s)
            roots.append(mount.root);
    }
    return roots;
}

QString volumeRoot(const std::vector<Montagem> &mounts, const QString &native)
{
    QString root = u"/"_s;
    for (const Montagem &mount : mounts) {
        const bool holds = native == mount.root || native.startsWith(mount.root + u'/');
        if (holds && mount.root.size() > root.size())
            root = mount.root;
    }
    return root;
}

/// Whether a row of a routing table is a default route in use.
/// @param destination, length  columns of the destination and of its mask or prefix length, all zeros for a default
/// @param flags  column of the flags, in hexadecimal
static bool isDefaultRoute(const QList<QByteArray> &row, qsizetype destination, qsizetype length, qsizetype flags)
{
    constexpr unsigned kUp = 0x1;
    constexpr unsigned kReject = 0x200;
    if (row.size() <= std::max({destination, length, flags}))
        return false;
    const auto isZero = [](const QByteArray &digits) { return digits.count('0') == digits.size(); };
    const unsigned bits = row[flags].toUInt(nullptr, 16);
    return isZero(row[destination]) && isZero(row[length]) && (bits & kUp) != 0 && (bits & kReject) == 0;
}

bool hasDefaultRoute(const QByteArray &ipv4, const QByteArray &ipv6)
{
    const auto rows = [](const QByteArray &table) { return table.split('\n'); };
    for (const QByteArray &line : rows(ipv4)) { // interface, destination, gateway, flags, …, mask
        if (isDefaultRoute(line.simplified().split(' '), 1, 7, 3))
            return true;
    }
    for (const QByteArray &line :
        rows(ipv6)) { // destination, length, source, length, next, metric, …, flags, interface
        const QList<QByteArray> row = line.simplified().split(' ');
        if (row.size() > 9 && row[9] != "lo" && isDefaultRoute(row, 0, 1, 8))
            return true;
    }
    return false;
}

} // namespace quorel
