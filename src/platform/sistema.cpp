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

QString accountName()
{
    QString name = systemAccountName();
    for (QChar &c : name) {
        const bool plain = c.unicode() < 128 && (c.isLetterOrNumber() || c == u'-' || c == u'_' || c == u'.'); // ASCII
        if (!plain)
            c = u'_';
    }
    return name.isEmpty() ? QStringLiteral("conta") : name;
}

QString temporaryDirectory()
{
    return withoutTrailing(backslashPath(QDir::tempPath()));
}

} // namespace quorel
