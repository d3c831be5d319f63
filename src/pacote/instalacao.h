#pragma once

#include "pacote/destinos.h"
#include "pacote/pacote.h"
#include "pacote/recibo.h"

namespace quorel::pacote {

/// What there is where a file of a pack is to go.
enum class Estado {
    Novo, ///< nothing
    Igual, ///< the same bytes: nothing is written
    Outro, ///< another file, which is only replaced where that was asked
    Impedido, ///< a folder, or a place that leads elsewhere: nothing is written
};

/// What the installation of one file means in one place.
struct Passo
{
    const ArquivoRec *arquivo = nullptr; ///< of the pack, which outlives the plan
    QString caminho; ///< native; of Impedido what it would have been
    Estado estado = Estado::Novo;
    QString soma; ///< of what the pack brings, SHA-256 in hexadecimal
};

/// What an installation would do; nothing is written. Reads the pack whole, so that a damaged one is found before.
/// @return nothing for a damaged pack, told in `problemas`, or when `progresso` ended it
std::optional<std::vector<Passo>> planeja(
    const Pacote &pacote, const Destinos &destinos, QStringList &problemas, const Progresso &progresso = {});

struct ResultadoRec
{
    int postos = 0; ///< files written
    int iguais = 0;
    int deixados = 0; ///< not written, since another file is there or the place leads elsewhere
    QString falha; ///< a sentence; empty when all went well
};

/// Does what a plan tells. The receipt is written first, and each file whole or not at all, so that what was begun can
/// be taken away. What is replaced is kept beside the receipt.
/// @param substitui  also where another file is
ResultadoRec instala(const Pacote &pacote, const std::vector<Passo> &passos, const Destinos &destinos, bool substitui,
    const Progresso &progresso = {});

struct RetiradaRec
{
    int retirados = 0;
    int devolvidos = 0; ///< what the pack had replaced is back
    QStringList deixados; ///< native paths of files changed since, or needed by another pack
    QString falha; ///< a sentence; empty when all went well
};

/// Takes an installed pack away. A file that somebody has changed since stays, and so does one that another pack
/// brings too, which then is that one's.
RetiradaRec retira(const ReciboRec &recibo, const Destinos &destinos);

} // namespace quorel::pacote
