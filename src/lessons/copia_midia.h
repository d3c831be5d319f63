#pragma once

#include <QString>

namespace quorel {

/// Copies all figures and sounds that a lesson text names to gDirFiguras. What is not found, or names a place outside
/// gDirFiguras, is passed over in silence.
/// @param texto  a copy of the lesson's Linha; left with what follows "<VAA>". Empty does nothing.
void CopiaMidiaAula(QString &texto);

/// Copies a figure, named without directory and extension, to gDirFiguras + "\" + name + ".GIF".
/// Asks for the destination the first time; cancelled, it is a directory for temporary files for the rest of the run.
void CopiaFigura(const QString &nome);

/// Copies a sound, keeping its place in the collection, "\Som\" included. Asks as CopiaFigura() does.
void CopiaSom(const QString &nome);

} // namespace quorel
