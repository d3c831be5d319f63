#pragma once

#include <QString>
#include <QStringList>

namespace quorel {

/// The path as the operating system wants it. Paths inside the system are texts with backslashes, built by
/// concatenation; only file operations of the utility layer turn them, here.
/// On Linux "\" becomes "/"; when the exact name does not exist each component is found without regard to case, the
/// first in byte order where two differ only in case; components that exist nowhere keep the spelling given, so a new
/// file takes the existing directory's. Directory listings are cached by modification time.
/// Empty gives empty, and so does a text with a NUL, which names no file. Never fails.
QString nativePath(const QString &caminho);

/// The other way: a native path, typed or from a dialogue, in the system's form with backslashes.
QString backslashPath(const QString &native);

/// The "drive and colon" of a path. On Linux the root of the mounted volume that holds it, in backslash form without
/// its trailing one: empty for the root file system, "\media\cdrom" for a disc there.
QString volumeOf(const QString &caminho);

/// Names, without directory, of the plain files of a directory whose name ends in `ending` without regard to case,
/// in no fixed order. Empty when there is no such directory.
/// @param ending  ".edb"; empty means all files
QStringList fileNames(const QString &diretorio, const QString &ending);

} // namespace quorel
