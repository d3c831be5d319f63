#pragma once

#include <QString>

namespace quorel {

/// Whether a name out of a lesson text may be written: the path, normalised, lies below the directory, and none of its
/// components there is a reserved device name or holds a colon. Paths with backslashes.
bool isSafeDestination(const QString &destino, const QString &diretorio);

/// Copies over an existing file, through a temporary name beside it, so that the destination is never half a file.
/// @return false when it failed (the destination is then as it was), or when both are the same file
bool copyFile(const QString &origem, const QString &destino);

bool isDirectory(const QString &caminho); ///< empty is none

/// Makes one directory, not those above it. An existing one, an empty text or a failure is passed over.
void makeDirectory(const QString &caminho);

/// Makes a directory and those above it, likewise.
void makePath(const QString &caminho);

/// The directory of a path without its trailing backslash; empty when it has none.
QString parentOf(const QString &caminho);

} // namespace quorel
