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

/// The sheet of the log rows that gBD holds under "rsLogAulas", from the current one on, in their order; the set ends
/// behind the last one. A row's answers stand behind the first "<rot>" of its LG_Resp. Rows without a code, or of a
/// Roteiro that the index doesn't know, add nothing. A number past 32767, or a name with a tab where a number is then
/// looked for, ends the sheet (see completa). Builds the index of the block files first when gBlocosArq has its empty
/// element alone.
/// @return nothing when building the index failed: the sheet on view is then left as it is. Never throws
std::optional<Planilha> montaPlanilha(const EscolhaDisciplinas &escolha);

} // namespace quorel
