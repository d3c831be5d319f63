#include "autoria/blockcheck.h"
#include "autoria/lessontable.h"
#include "platform/caminho.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"
#include "startup/valor.h"

#include <algorithm>

namespace quorel {

using namespace Qt::StringLiterals;

constexpr qsizetype kLeastAula = 6; // a shorter Linha of the calculator is a code

static QString nameOf(const LugarBloco &section)
{
    return u"Aula %1 do Roteiro %2"_s.arg(section.aula).arg(section.roteiro);
}

/// Where the marker of an Aula's section stands.
qsizetype BlockCheck::opening(const LugarBloco &section) const
{
    return mEdb.lastIndexOf('[', section.begin - 1);
}

void BlockCheck::aula(const LugarBloco &section)
{
    const AulaRec &a = mBloco.roteiros[section.roteiro].Aulas[section.aula];
    if (a.Linha.isEmpty()) {
        const qsizetype at = placeOf(section, mLinha);
        add(at < 0 ? opening(section) : at, Severity::Error, u"linha"_s,
            nameOf(section)
                + (at < 0 ? u" sem Linha"_s
                          : u": a Linha está vazia ou nunca acaba (falta CR LF TAB e \"Tipo = \")"_s));
    } else if (a.Tipo == "Calc"_L1 && a.Linha.size() < kLeastAula) {
        if (!calcHolds(a.Linha))
            add(behind(section, mLinha), Severity::Error, u"chama"_s,
                nameOf(section) + u": o último Roteiro não tem a Aula de código "_s + a.Linha);
    } else {
        code(a, section);
        lesson(a, section);
    }
    type(a, section);
    lastAula(section);
}

void BlockCheck::code(const AulaRec &a, const LugarBloco &section)
{
    const qsizetype at = behind(section, mLinha) + a.Linha.indexOf(u')') + 1;
    if (a.Cod == "0"_L1) {
        add(at, Severity::Error, u"codigo"_s, nameOf(section) + u" com código ausente ou 0 no começo da Linha"_s);
        return;
    }
    const bool inCalc = mBloco.roteiros[section.roteiro].Nome == "CALC"_L1;
    const QString key = a.Cod + (inCalc ? u"C"_s : QString());
    const auto known = mAulaCodes.constFind(key);
    if (known == mAulaCodes.constEnd())
        mAulaCodes.insert(key, section);
    else
        add(at, inCalc ? Severity::Error : Severity::Warning, u"codigo-repetido"_s,
            nameOf(section) + u": código "_s + a.Cod + u" já usado na "_s + nameOf(*known)
                + (inCalc ? u"; em CALC só vale o primeiro"_s : QString()));
}

void BlockCheck::lesson(const AulaRec &a, const LugarBloco &section)
{
    const LessonCheck check = checkLesson(a.Linha, mFigSearch, mSoundSearch);
    const qsizetype begin = behind(section, mLinha);
    for (const LessonFault &fault : check.faults)
        add(begin + fault.at, fault.severity, fault.code, nameOf(section) + u": "_s + fault.text);
    mLastLesson = {section.roteiro, check.hasExercise};
}

/// The answer that comes with the last "next" of a Roteiro is not recorded.
void BlockCheck::lastAula(const LugarBloco &section)
{
    const RoteiroRec &r = mBloco.roteiros[section.roteiro];
    const AulaRec &a = r.Aulas[section.aula];
    const bool exercise = mLastLesson == std::pair(section.roteiro, true);
    mLastLesson = {};
    if (section.aula == r.Aulas.upperBound() && exercise && r.Nome != "CALC"_L1 && a.Tipo != "HTML"_L1)
        add(opening(section), Severity::Warning, u"ultima"_s,
            nameOf(section)
                + u" é a última e tem exercício: a resposta dela não é guardada. Ponha atrás dela uma página"_s);
}

/// Whether the last Roteiro, where the launcher looks a calculator's code up, has an Aula of that code.
bool BlockCheck::calcHolds(const QString &codigo)
{
    if (!mCalcCodes) {
        mCalcCodes.emplace();
        const Vetor<AulaRec> &aulas = mBloco.roteiros[mBloco.roteiros.upperBound()].Aulas;
        for (int j = 1; aulas.isDimensioned() && j <= aulas.upperBound(); ++j)
            mCalcCodes->insert(valorNumerico(aulas[j].Cod));
    }
    return mCalcCodes->contains(valorNumerico(codigo));
}

void BlockCheck::type(const AulaRec &a, const LugarBloco &section)
{
    const qsizetype at = placeOf(section, mTipo);
    if (at < 0)
        add(opening(section), Severity::Error, u"sem-tipo"_s, nameOf(section) + u" sem Tipo"_s);
    else if (a.Tipo.isEmpty())
        add(at, Severity::Error, u"sem-tipo"_s, nameOf(section) + u": Tipo vazio ou sem tabulação atrás dele"_s);
    else if (std::ranges::find(kProgramas, a.Tipo) == kProgramas.end())
        add(at + qsizetype(mTipo.size()), Severity::Error, u"programa"_s,
            nameOf(section) + u": tipo desconhecido: "_s + a.Tipo);
    else if (a.Tipo == "HTML"_L1 && mWithMedia && !a.Linha.isEmpty())
        html(a, section);
}

void BlockCheck::html(const AulaRec &a, const LugarBloco &section)
{
    constexpr int kFileField = 9;
    const QString name = gTexto.Campo(a.Linha, kFileField, u"<SPÇ>"_s, 1);
    const QString directory = gConfig.Config(u"DIRQUOREL"_s);
    // The shell asks for the first and opens the second.
    QStringList bases{gSistema.DirWindows() + u"\\QUOREL2001"_s};
    if (!directory.isEmpty())
        bases += directory;
    for (const QString &base : bases) {
        const QString path = base + u"\\Arqs\\"_s + name;
        if (name.isEmpty() || !gTexto.ArquivoExiste(path)) {
            add(behind(section, mLinha), Severity::Error, u"html"_s,
                nameOf(section) + u": arquivo da aula HTML não encontrado: "_s + nativePath(path));
            return;
        }
    }
}

} // namespace quorel
