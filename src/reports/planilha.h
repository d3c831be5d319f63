#pragma once

#include <QDateTime>
#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace quorel {

/// A row of the sheet: date, name of the Roteiro, right answers, wrong answers.
using LinhaPlanilha = std::array<QString, 4>;

/// Right and wrong answers of a discipline.
struct Marcas
{
    qint16 acertos = 0;
    qint16 erros = 0;
    bool operator==(const Marcas &) const = default;
};

/// The summary that the chart is drawn from. With all disciplines: Ciências, Matemática, Português; else the chosen one
/// and twice nothing.
inline constexpr int kFatias = 3;
using Resumo = std::array<Marcas, kFatias>;

/// Sheet and summary of a period.
struct Planilha
{
    std::vector<LinhaPlanilha> linhas; ///< the header first; without cells to spare
    Resumo resumo;
    bool completa = false; ///< false: a failure ended it. Rows and marks stay as far as they got; no chart is drawn
    bool operator==(const Planilha &) const = default;
};

/// What is shown.
struct EscolhaDisciplinas
{
    bool todas = false; ///< mTodas
    QString linha; ///< the chosen line of LstDisciplinas, its name before the first tab; not looked at with todas
};

/// A row of the log.
struct LinhaLog
{
    qint32 codigo = 0; ///< of the Roteiro
    QString respostas; ///< LG_Resp; its answers stand behind the first "<rot>"
    QString data; ///< as the sheet shows it
};

/// The figures of log rows, in the order of these, by the index as it stands. Rows without a code, or of a Roteiro that
/// the index doesn't know, add nothing. A number past 32767, or a name with a tab where a number is then looked for,
/// ends it (see completa).
Planilha contaMarcas(const std::vector<LinhaLog> &log, const EscolhaDisciplinas &escolha);

/// The sheet of the log rows that gBD holds under "rsLogAulas", which end behind the last one. Builds the index of the
/// block files first when gBlocosArq has its empty element alone.
/// @return nothing when building the index failed: the sheet on view is then left as it is. Never throws
std::optional<Planilha> montaPlanilha(const EscolhaDisciplinas &escolha);

} // namespace quorel
