#pragma once

#include <QString>

namespace quorel {

/// Reads the command line into gNivel, gNomeNivel, gEscolas, gClasse, gNomeClasse, gArquivoCfg, and makes gConfig from
/// the configuration that it names, else from the first optical disc, else from a default one that it writes.
/// "/?" shows a help box and goes on. Unknown switches and missing files are passed over.
/// @param linhaComando  without the program's name, quotes kept
/// @throws ErroExecucao 6 for a /CLASSE: beyond 32 bits
void LeParametros(const QString &linhaComando);

/// How large everything is to be drawn, in per cent: by /ZOOM:, else by the key ZOOM of the file that /CFG: names.
/// Asked before the start, and keeps nothing.
/// @return 0 for automatic, as for what is no number from 75 to 200
int askedZoom(const QString &linhaComando);

/// Writes the default configuration to the Windows directory + "\QUOREL2001\zeto_cnf.txt", over whatever it held.
/// Asks gConfig for the register's directory when the command line named a configuration.
void GravaCnfPadrao();

} // namespace quorel
