#pragma once

#include "catalogue/vetor.h"

#include <QString>

namespace quorel {

/// One lesson of a Roteiro.
struct AulaRec
{
    QString Cod; ///< the code in the first field of Linha, as the decimal text of its numeric value
    QString Nome;
    QString Linha; ///< the lesson text sent to the child program; may run over several lines
    QString Tipo; ///< lesson type, without what stands behind its tab
    QString Jogo; ///< empty when the section has none
    bool operator==(const AulaRec &) const = default;
};

/// One lesson route: a picture button and its lessons.
struct RoteiroRec
{
    qint32 Cod = 0; ///< stored in the log; 0 when the file gives none
    QString Nome; ///< may begin with a blank; exactly "CALC" is the pseudo-Roteiro without a button
    QString Fig;
    QString Som;
    QString Desc;
    QString Nivel;
    QString Disc;
    QString Titulo; ///< Nome + " - " + Desc; the text of the button's tip
    Vetor<AulaRec> Aulas; ///< element 0 unused; not dimensioned when the section was not found
    bool operator==(const RoteiroRec &) const = default;
};

/// One block file of the catalogue.
struct ArquivoRec
{
    qint16 Mes = 0; ///< running number of the month group, 1-based
    qint16 Ano = 0; ///< four digits
    QString Disciplina; ///< name; empty for an unknown code
    QString Arquivo; ///< full path, with backslashes
    QString Reserva; ///< nothing uses it
    QString Objetivo;
    bool operator==(const ArquivoRec &) const = default;
};

} // namespace quorel
