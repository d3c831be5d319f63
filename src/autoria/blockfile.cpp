#include "autoria/blockfile.h"

#include "platform/caminho.h"
#include "platform/codec.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace quorel {

using namespace Qt::StringLiterals;

constexpr qsizetype kDigits = 4; // month and year
constexpr qsizetype kLetters = 2; // of a discipline

BlockFile blockFile(const QString &path)
{
    const QFileInfo info(path);
    const QString base = upper1252(info.completeBaseName());
    QString nivel = upper1252(QFileInfo(info.absolutePath()).fileName());
    if (nivel.isEmpty() || !base.endsWith(nivel))
        nivel = base.sliced(qMin(base.size(), kDigits + kLetters));
    return {path, info.fileName(), nivel};
}

QString BlockFile::disciplina() const
{
    const QString base = upper1252(QFileInfo(name).completeBaseName());
    const qsizetype at = base.size() - nivel.size() - kLetters;
    return nivel.isEmpty() || !base.endsWith(nivel) || at < 0 ? QString() : base.sliced(at, kLetters);
}

std::optional<QList<BlockFile>> blockFilesOf(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return std::nullopt;
    if (!info.isDir())
        return QList<BlockFile>{blockFile(path)};
    QStringList names = fileNames(backslashPath(info.absoluteFilePath()), u".edb"_s);
    if (names.isEmpty())
        return std::nullopt;
    std::ranges::sort(names); // by the characters' codes, as the catalogue does
    QList<BlockFile> files;
    const QString base = path.endsWith(u'/') ? path : path + u'/';
    for (const QString &name : names)
        files += blockFile(base + name);
    return files;
}

std::optional<QByteArray> readWhole(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

} // namespace quorel
