#include "platform/caminho.h"

#include "platform/codec.h"

#include <QDir>

namespace quorel {

QString backslashPath(const QString &native)
{
    return QString(native).replace(u'/', u'\\');
}

QStringList fileNames(const QString &diretorio, const QString &ending)
{
    const QString native = nativePath(diretorio);
    if (native.isEmpty())
        return {};
    QStringList names = QDir(native).entryList(QDir::Files, QDir::NoSort);
    names.removeIf([&](const QString &name) { return !equalNoCase(QStringView(name).right(ending.size()), ending); });
    return names;
}

} // namespace quorel
