#pragma once

#include "catalogue/registros.h"

#include <QString>

namespace quorel {

/// Name of a discipline.
/// @param codigo  two letters in any case, or a number from 1 to 10 in decimal
/// @return empty for anything else
QString NomeDisciplina(const QString &codigo);

/// Lists the level's block files into gArquivos and builds the month options through VistaMeses. A level without any
/// shows its message and ends the program.
/// @throws ErroExecucao 13 for a name that does not begin with two digits, 6 for a year beyond 16 bits
void MontaCatalogo();

/// Opens fBlocos for a month and a discipline: with the Roteiros of the first file of both, or with the title
/// "ROTEIROS NÃO DISPONÍVEIS" and gRoteiros as it was. Turns of events happen inside.
/// @param mes         running number of the month group, 1-based
/// @param disciplina  1 to 10; any other number has no file
/// @throws ErroExecucao 9 before MontaCatalogo()
void AbreDisciplina(qint16 mes, qint16 disciplina);

/// Nome + " - " + objective of the first file of the selected month and that discipline, case ignored; empty when there
/// is none. @throws ErroExecucao 9 before MontaCatalogo()
QString ObjetivoDisciplina(const QString &nome);

/// Numbers the month groups in the order of the files' names.
class ContadorDeMeses final
{
public:
    /// @param grupo  the two digits of the next file; 00 as the first begins no group
    /// @return whether a new month begins with it
    bool next(int grupo)
    {
        const bool isNew = grupo != mGrupo;
        mGrupo = grupo;
        mMes += isNew ? 1 : 0;
        return isNew;
    }
    int mes() const { return mMes; } ///< running number of the present one, 1-based; 0 before the first

private:
    int mGrupo = 0;
    int mMes = 0;
};

/// What the name and the head of a block file say of it.
struct CabecaBloco
{
    int grupo = 0; ///< the two digits of the month group
    qint16 ano = 0; ///< four digits
    QString disciplina; ///< name; empty for an unknown code, or when the level in the name is not `nivel`
    QString objetivo;
    QString tema; ///< caption of the month option
};

/// Reads a name of the form MMAADDNV.EDB, then the head of the file; no more of it is read than that takes.
/// @param nome     without directory; @param nivel  as the user gave it: in lower case no discipline is found
/// @param caminho  the file, with backslashes; a missing one has empty texts
/// @throws ErroExecucao 13 unless the name begins with two digits, 6 for a year beyond 16 bits
CabecaBloco leCabeca(const QString &nome, const QString &nivel, const QString &caminho);

} // namespace quorel
