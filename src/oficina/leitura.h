#pragma once

#include "autoria/checker.h"
#include "licao/programa.h"
#include "linha/textolicao.h"

#include <optional>

namespace quorel {

/// Where an Aula begins in a source, and which it is.
struct LugarDaAula
{
    int linha = 0; ///< from 1
    int roteiro = 0; ///< from 1
    int aula = 0; ///< from 1
    bool operator==(const LugarDaAula &) const = default;
};

/// One lesson as the pupil gets it.
struct AulaVista
{
    Programa programa = Programa::Zeto;
    QString pagina; ///< file of an HTML lesson, which no player shows; empty otherwise
    LicaoRec licao;
    bool primeira = false, ultima = false; ///< of its Roteiro
    bool operator==(const AulaVista &) const = default;
};

/// A source, read for looking at it.
struct LeituraDaFonte
{
    bool entendida = false; ///< false: an error leaves nothing to show
    Findings achados; ///< in the order of the places
    std::vector<LugarDaAula> lugares; ///< in the order of the lines
    std::vector<std::vector<AulaVista>> roteiros; ///< from 0
};

/// @param caminho  of the source, for the findings @param destino  of the block file, which gives level and discipline
/// @param comMidia  look for figures and sounds through gConfig
LeituraDaFonte leFonte(const QString &texto, const QString &caminho, const QString &destino, bool comMidia);

/// The Aula of a line: the last one that begins there or above; in a Roteiro's head its first one. Null for none.
const LugarDaAula *aulaDaLinha(const LeituraDaFonte &leitura, int linha);

} // namespace quorel
