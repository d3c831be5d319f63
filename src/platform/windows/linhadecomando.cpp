#include "platform/aplicacao.h"

#include <memory>

#include <qt_windows.h>
#include <shellapi.h>

namespace quorel {

QString rawCommandLine(int, char **)
{
    const QString line = QString::fromWCharArray(GetCommandLineW());
    const bool quoted = line.startsWith(u'"');
    const qsizetype end = line.indexOf(quoted ? u'"' : u' ', 1);
    return end < 0 ? QString() : line.sliced(end + 1).trimmed();
}

QStringList commandLineWords(int, char **)
{
    int count = 0;
    const std::unique_ptr<LPWSTR, HLOCAL (*)(HLOCAL)> words(CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
    QStringList all;
    for (int i = 0; words && i < count; ++i)
        all.append(QString::fromWCharArray(words.get()[i]));
    return all;
}

} // namespace quorel
