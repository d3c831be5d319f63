#pragma once

#include <QByteArray>
#include <QString>

namespace quorel {

/// Where figures and sounds lie; with backslashes, without a trailing one.
QString mediaRoot();

/// Where the lookup finds a figure, a sound of that name below the media root of gConfig; with backslashes.
QString figurePlace(const QString &name); ///< a .BMP
QString soundPlace(const QString &name);

/// Writes a file there, whole or not at all, with the folders that it needs.
/// @return native path; empty, and a sentence, on failure
QString putMedia(const QString &place, const QByteArray &bytes, QString &fault);

/// Makes gConfig of a configuration file, or of the installed one. Without any the fallbacks of the keys lead to the
/// installed directories.
/// @param cfg  native; empty for the installed one @return false, and gConfig empty, where there is neither
bool loadConfiguration(const QString &cfg);

} // namespace quorel
