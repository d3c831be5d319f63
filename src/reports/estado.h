#pragma once

#include <QString>

#include <vector>

namespace quorel {

/// A roteiro of a block file.
struct RoteiroArqRec
{
    qint32 Codigo = 0;
    QString Nome;
    bool operator==(const RoteiroArqRec &) const = default;
};

/// A block file of the index.
struct BlocoArqRec
{
    qint16 Ano = 0;
    QString Disciplina; ///< its name, as NomeDisciplina gives it
    QString Nivel;
    qint16 Mes = 0;
    std::vector<RoteiroArqRec> Roteiros; ///< from 0; element 0 empty, a gap for each roteiro left out
    bool operator==(const BlocoArqRec &) const = default;
};

extern std::vector<BlocoArqRec> gBlocosArq; ///< from 0; element 0 empty. With that one alone the index is to be built

// Lines of the form code, tab, name, CR LF, in the order of indexing.
extern QString gRotCiencias;
extern QString gRotMatematica;
extern QString gRotPortugues;
extern QString gRotDesenv;

/// The folder's state as at the start of the program.
void reiniciaReports();

} // namespace quorel
