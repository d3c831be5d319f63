#include "platform/caminho.h"

#include <QDir>

namespace quorel {

QString nativePath(const QString &caminho)
{
    if (caminho.contains(QChar::Null))
        return {};
    return QString(caminho).replace(u'/', u'\\');
}

/// End of the first two components of a network path, which are its volume.
static qsizetype shareEnd(const QString &path)
{
    const qsizetype server = path.indexOf(u'\\', 2);
    const qsizetype share = server < 0 ? -1 : path.indexOf(u'\\', server + 1);
    return share < 0 ? path.size() : share;
}

QString volumeOf(const QString &caminho)
{
    constexpr qsizetype kDrive = 2; // letter and colon
    const QString path = QDir::toNativeSeparators(QDir(nativePath(caminho)).absolutePath());
    return path.startsWith(QLatin1String("\\\\")) ? path.first(shareEnd(path)) : path.first(kDrive);
}

} // namespace quorel
