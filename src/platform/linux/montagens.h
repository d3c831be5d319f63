#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace quorel {

/// A mounted volume.
struct Montagem
{
    QString root; ///< native path of the directory where it is mounted
    QString type; ///< "iso9660", "ext4"
};

/// The mounts of a table such as /proc/self/mounts, in its order; empty when it can't be read. Asks no volume, so a
/// dead server holds nothing up.
std::vector<Montagem> readMounts(const char *table);

/// Native roots of the optical volumes (iso9660, udf), in the table's order.
QStringList opticalRoots(const std::vector<Montagem> &mounts);

/// Native root of the volume that holds an absolute, clean native path; "/" when no other does.
QString volumeRoot(const std::vector<Montagem> &mounts, const QString &native);

/// Whether the kernel's routing tables (the texts of /proc/net/route and /proc/net/ipv6_route) hold an active default
/// route.
bool hasDefaultRoute(const QByteArray &ipv4, const QByteArray &ipv6);

} // namespace quorel
