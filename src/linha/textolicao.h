#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace quorel {

/// What the pupil does with a lesson; the numbers are those of the lesson's text.
enum class TipoExercicio : int {
    Pagina = 1, ///< reads
    Uma, ///< chooses one option
    Todas, ///< chooses all the right options
    Digitada, ///< types the answer
    Ordem, ///< puts the options in order
    Desenho, ///< draws freely
    Historia, ///< reads pages; a question may follow on the last one
};

/// One piece of a lesson: a page of a book, a part of a page elsewhere.
struct PecaRec
{
    QString Titulo; ///< heading; may be empty
    QString Texto; ///< lines end in "\n"; may be empty
    QString Fig; ///< figure name; empty when there is none
    QString Som; ///< sound name; likewise
    bool operator==(const PecaRec &) const = default;
};

struct OpcaoRec
{
    QString Texto;
    QString Fig; ///< figure name; empty when there is none
    bool Certa = false;
    int Lugar = 0; ///< 1-based place in the order; 0 when the text gives none
    bool operator==(const OpcaoRec &) const = default;
};

struct LicaoRec
{
    bool Avulsa = false; ///< runs outside a Roteiro: there is nothing to go on to
    QString Codigo; ///< may be empty
    TipoExercicio Tipo = TipoExercicio::Pagina;
    std::vector<PecaRec> Pecas; ///< those that are shown, never none
    std::vector<OpcaoRec> Opcoes; ///< empty unless the exercise works on options
    QStringList Esperadas; ///< answers that are right, of Digitada; no blanks at either end
    QString Elogio; ///< said after a right answer; may be empty
    QString Dica; ///< said after a wrong one; may be empty
    bool operator==(const LicaoRec &) const = default;
};

/// More pieces and options than that aren't shown: nobody reads them, and a damaged text may hold thousands.
inline constexpr int kMaxPecas = 300;
inline constexpr int kMaxOpcoes = 40;

/// Reads the text of a lesson. Never fails: what is missing stays empty, a text without the marks of a lesson is one
/// piece that shows it as it stands, an unknown kind is guessed from the options, and an exercise that lacks what it
/// works on (no option that is right, no expected answer) is a page to read.
LicaoRec leLicao(QStringView linha);

/// Whether the exercise can be answered right or wrong.
bool temResposta(const LicaoRec &licao);

} // namespace quorel
