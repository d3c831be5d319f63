#include "platform/caminho.h"
#include "platform/programas.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace quorel {

using namespace Qt::StringLiterals;

/// In a Wayland session a viewer opens its window there, where nobody else can see the title; asked so, the usual ones
/// open it under X11.
static void askViewersForX11()
{
    if (!qEnvironmentVariableIsSet("WAYLAND_DISPLAY") && qgetenv("XDG_SESSION_TYPE") != "wayland")
        return;
    qputenv("MOZ_ENABLE_WAYLAND", "0");
    qputenv("GDK_BACKEND", "x11");
}

/// A document named without its directory lies in the one that is asked for; for any other document that is of no use.
static QUrl urlOf(const QString &document, const QString &directory)
{
    if (document.contains("://"_L1) || document.startsWith("mailto:"_L1, Qt::CaseInsensitive))
        return QUrl(document);
    if (document.isEmpty())
        return {};
    const bool bare = !document.contains(u'\\') && !document.contains(u'/') && directory.contains(u'\\');
    const QString native = nativePath(bare ? directory + u'\\' + document : document);
    return QFileInfo::exists(native) ? QUrl::fromLocalFile(QFileInfo(native).absoluteFilePath()) : QUrl();
}

bool openDocumentNow(const DocumentRequest &request)
{
    const QUrl url = urlOf(request.document, request.directory);
    if (url.isEmpty())
        return false;
    askViewersForX11();
    return QDesktopServices::openUrl(url);
}

} // namespace quorel
