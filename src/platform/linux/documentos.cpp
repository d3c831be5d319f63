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

static QUrl urlOf(const QString &document)
{
    if (document.contains("://"_L1) || document.startsWith("mailto:"_L1, Qt::CaseInsensitive))
        return QUrl(document);
    const QString native = nativePath(document);
    return QFileInfo::exists(native) ? QUrl::fromLocalFile(QFileInfo(native).absoluteFilePath()) : QUrl();
}

bool openDocumentNow(const DocumentRequest &request)
{
    const QUrl url = urlOf(request.document);
    if (url.isEmpty())
        return false;
    askViewersForX11();
    return QDesktopServices::openUrl(url);
}

} // namespace quorel
