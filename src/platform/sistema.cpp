#include "platform/sistema.h"

#include "platform/caminho.h"
#include "platform/sistema_base.h"

#include <QDir>

namespace quorel {

static QString withoutTrailing(QString path)
{
    while (path.endsWith(u'\\'))
        path.chop(1);
    return path;
}

QString windowsDirectory()
{
    const QString chosen = qEnvironmentVariable("QUOREL_WINDIR");
    return withoutTrailing(chosen.isEmpty() ? systemWindowsDirectory() : backslashPath(chosen));
}

QString temporaryDirectory()
{
    return withoutTrailing(backslashPath(QDir::tempPath()));
}

} // namespace quorel
