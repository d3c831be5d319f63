#include "platform/caminho.h"
#include "platform/programas.h"
#include "platform/windows/texto.h"

#include <QFileInfo>

#include <shellapi.h>

namespace quorel {

static bool isAddress(const QString &document)
{
    return document.contains(QLatin1String("://"))
        || document.startsWith(QLatin1String("mailto:"), Qt::CaseInsensitive);
}

bool openDocumentNow(const DocumentRequest &request)
{
    constexpr INT_PTR kLastFailure = 32; // what is above says that it was opened
    const QString document = isAddress(request.document) ? request.document : nativePath(request.document);
    if (document.isEmpty())
        return false;
    // A directory that is none would be one for the viewer to start in, and it would not start.
    const QString directory = nativePath(request.directory);
    const bool usable = !directory.isEmpty() && QFileInfo(directory).isDir();
    const auto result = reinterpret_cast<INT_PTR>(
        ShellExecuteW(HWND(request.owner), request.verb.isEmpty() ? nullptr : win::wide(request.verb),
            win::wide(document), nullptr, usable ? win::wide(directory) : nullptr, int(request.show)));
    return result > kLastFailure;
}

} // namespace quorel
