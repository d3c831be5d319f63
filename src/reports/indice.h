#pragma once

#include "reports/estado.h"

#include <QByteArrayView>
#include <QHash>

#include <array>
#include <optional>

namespace quorel {

/// Indexes one block file: appends an element to gBlocosArq, and to the discipline's index string a line for each
/// Roteiro that has a code and a lesson. One pass over the text, however damaged it is.
/// @param texto    its bytes, of code page 1252
/// @param Arquivo  its name without directory: MMAADDNV.EDB
/// @throws ErroExecucao 13 when month, year or a code is no whole number, 6 when one is too large for its type or when
/// overlapping sections would take many times the file's size in memory. What was done up to there stays.
void InsereVet(QByteArrayView texto, const QString &Arquivo);

/// Indexes all block files of the levels F1 to F4, I1 and I2 below the configured directory, each level in the order of
/// the names. @throws as InsereVet; the rest is then not indexed
void indexaBlocos();

enum class DisciplinaRelatorio { Ciencias, Matematica, Portugues, Desenv };
inline constexpr int kNumDisciplinas = 4;

/// The four index strings, to be asked by code. It keeps the strings as they were when it was made.
class IndiceRoteiros final
{
public:
    struct Achado
    {
        DisciplinaRelatorio disciplina;
        QStringView nome; ///< valid as long as the index
        bool operator==(const Achado &) const = default;
    };

    IndiceRoteiros(); ///< linear in the size of the strings

    /// The Roteiro of a code: in Ciências first, then Português, Matemática, Desenv, and there the first line of that
    /// code. Kept: the first line of a string is not found, for lines are looked for behind a line end; only a second
    /// indexing brings it.
    std::optional<Achado> procura(qint32 codigo) const;

private:
    void addLines(DisciplinaRelatorio disciplina, QStringView linhas);

    std::array<QString, kNumDisciplinas> mTextos;
    QHash<qint32, Achado> mPorCodigo;
};

} // namespace quorel
