#pragma once

#include <QString>

namespace quorel {

/// The generic pupil and class, whose rows every register holds.
inline constexpr qint32 kGenerico = 9999;

extern QString gNivel; ///< level code as written on the command line, "F1"
extern QString gNomeNivel; ///< level name, "Fundamental I"; empty when the level was not given or is unknown
extern QString gArquivoCfg; ///< path of the configuration file
extern QString gLinhaComando; ///< the raw command line, as LeParametros() was given it
extern bool gEscolas; ///< the system serves several users
extern qint32 gClasse; ///< code of the current class, 0 for none
extern QString gNomeClasse; ///< name of the class, from the command line
extern qint32 gAluno; ///< code of the current pupil, 0 for none
extern QString gDirMM; ///< root of the media collection, as the last copy found it
extern QString gDirFiguras; ///< where pictures and sounds are copied; asked once a run

/// All of them, and gConfig, as they are before the start of the program; for tests.
void reiniciaStartup();

} // namespace quorel
