#include "lessons/destino_midia.h"

#include "platform/caminho.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace quorel {

static QString normalised(const QString &caminho)
{
    QString slashes = caminho;
    slashes.replace(u'\\', u'/');
    return QDir::cleanPath(slashes);
}

/// Names that open a device on some systems, whatever extension follows them.
static bool isDeviceName(QStringView component)
{
    constexpr std::array kDevices{"CON"_L1, "PRN"_L1, "AUX"_L1, "NUL"_L1, "CONIN$"_L1, "CONOUT$"_L1};
    const QStringView stem = component.left(component.contains(u'.') ? component.indexOf(u'.') : component.size());
    const QStringView name = stem.trimmed();
    if (std::ranges::any_of(kDevices, [&](QLatin1StringView d) { return name.compare(d, Qt::CaseInsensitive) == 0; }))
        return true;
    const QStringView port = name.left(3); // COM1 to COM9, LPT1 to LPT9, also with raised digits
    return name.size() == 4
        && (port.compare("COM"_L1, Qt::CaseInsensitive) == 0 || port.compare("LPT"_L1, Qt::CaseInsensitive) == 0)
        && u"123456789¹²³"_s.contains(name.back());
}

bool isSafeDestination(const QString &destino, const QString &diretorio)
{
    const QString base = normalised(diretorio);
    const QString path = normalised(destino);
    // The current directory, normalised, is a dot that the paths below it lose.
    const QString inside = base == u"."_s ? QString() : base.endsWith(u'/') ? base : base + u'/';
    if (!path.startsWith(inside) || QDir::isAbsolutePath(path) != QDir::isAbsolutePath(base))
        return false;
    return std::ranges::none_of(QStringView(path).sliced(inside.size()).split(u'/'), [](QStringView component) {
        return component == u".." || component.contains(u':') || isDeviceName(component);
    });
}

bool copyFile(const QString &origem, const QString &destino)
{
    const QString from = nativePath(origem);
    const QString to = nativePath(destino);
    const QString real = QFileInfo(to).canonicalFilePath();
    if (!real.isEmpty() && real == QFileInfo(from).canonicalFilePath())
        return false;
    constexpr qint64 kPiece = 1 << 16; // bytes
    QFile source(from);
    QSaveFile target(to);
    if (!source.open(QIODevice::ReadOnly) || !target.open(QIODevice::WriteOnly))
        return false;
    while (!source.atEnd()) {
        const QByteArray piece = source.read(kPiece);
        if (piece.isEmpty() || target.write(piece) != piece.size())
            return false;
    }
    return target.commit();
}

bool isDirectory(const QString &caminho)
{
    return !caminho.isEmpty() && QFileInfo(nativePath(caminho)).isDir();
}

void makeDirectory(const QString &caminho)
{
    if (!caminho.isEmpty())
        QDir().mkdir(nativePath(caminho));
}

void makePath(const QString &caminho)
{
    if (!caminho.isEmpty())
        QDir().mkpath(nativePath(caminho));
}

QString parentOf(const QString &caminho)
{
    const qsizetype end = caminho.lastIndexOf(u'\\');
    return end < 0 ? QString() : caminho.left(end);
}

} // namespace quorel
