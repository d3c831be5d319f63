#pragma once

#include "pacote/nomes.h"

#include <QStringList>

namespace quorel::pacote {

/// Directories that the parts of a pack go to, with backslashes and without a trailing one.
struct Destinos
{
    QString blocos; ///< levels lie below it
    QString midia; ///< Fig, Som, Video lie below it
    QStringList html; ///< each page goes to all of them
    QString recibos; ///< what is installed, for the way back
    bool operator==(const Destinos &) const = default;
};

/// Where the configuration leads: DBBLOCOS, ZETO_MM, DIRQUOREL, each with its fallback in the Windows directory. Pages
/// go to the Windows directory too: the shell asks there whether a page exists, and opens it where DIRQUOREL says.
Destinos destinosDaConfiguracao();

/// The same in one directory, for looking at a pack without installing it.
Destinos destinosEm(const QString &diretorio);

/// The directories that a file goes to.
QStringList basesDe(const Destinos &destinos, Genero genero);

/// The native path of one with backslashes, with "/" on every system: paths of packs are compared.
QString caminhoNativo(const QString &caminho);

/// Native path, with "/", of a file below a base, or empty when its folder is not truly below it: a link there leads
/// elsewhere.
/// @param lugar  with backslashes, of a name that generoDe() knows
QString caminhoSeguro(const QString &base, const QString &lugar);

} // namespace quorel::pacote
