#pragma once

#include <QString>

namespace quorel {

class Janelas;

/// Everything that happens between the start of the process and the message loop, in its fixed order: the question of
/// a first instance, command line and configuration, register, catalogue, windows, teacher's list, generic pupil.
/// May end the program: on a No, or for a level without block files.
/// @param linhaDeComando  as one text, without the program's name
/// @param janelas         made but not loaded; fPrincip is on the screen when this returns
void iniciaPrograma(const QString &linhaDeComando, Janelas &janelas);

} // namespace quorel
