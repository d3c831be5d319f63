#include "autoria/lessoncheck.h"

#include "autoria/model.h"
#include "linha/partes.h"

#include <algorithm>
#include <array>

namespace quorel {

using namespace Qt::StringLiterals;

namespace {

/// Marks written wrongly, and what was meant.
constexpr std::array<std::pair<QStringView, QStringView>, 9> kMistaken{
    {{u"<SPC>", u"<SPÇ>"}, {u"<PC>", u"<PÇ>"}, {u"<spç>", u"<SPÇ>"}, {u"<pç>", u"<PÇ>"}, {u"<SPÃ", u"<SPÇ>"},
        {u"<PÃ", u"<PÇ>"}, {u"<vaa>", u"<VAA>"}, {u"<voa>", u"<VOA>"}, {u"<op>", u"<OP>"}}};

class Lesson final
{
public:
    Lesson(QStringView linha, const MediaSearch &hasFig, const MediaSearch &hasSound)
        : mParts(parteLinha(linha)), mHasFig(hasFig), mHasSound(hasSound), mBegin(linha.data())
    { }

    LessonCheck run();

private:
    void mistakenMarks();
    void pieces();
    void blocks();
    void answers();
    void options();
    void rightOnes();
    void order();
    void count(QStringView head, int number, const QString &what);
    void media(QStringView name, const MediaSearch &search, const QString &code, const QString &what);
    void add(QStringView where, Severity severity, const QString &code, const QString &text)
    {
        mCheck.faults.push_back({where.data() == nullptr ? 0 : where.data() - mBegin, severity, code, text});
    }
    bool needsOptions() const { return mKind == Kind::Escolha || mKind == Kind::Marque || mKind == Kind::Ordene; }
    bool needsAnswer() const { return needsOptions() || mKind == Kind::Escreva; }

    PartesDaLinha mParts;
    const MediaSearch &mHasFig;
    const MediaSearch &mHasSound;
    const QChar *mBegin;
    Kind mKind = Kind::None;
    std::vector<QStringView> mRows, mFields;
    std::vector<QStringView> mMarked; ///< the third field of each option: right or wrong, or its place
    LessonCheck mCheck;
};

void Lesson::mistakenMarks()
{
    const QStringView linha = mParts.linha;
    for (qsizetype at = linha.indexOf(u'<'); at >= 0; at = linha.indexOf(u'<', at + 1)) {
        const QStringView rest = linha.sliced(at);
        const auto *wrong =
            std::ranges::find_if(kMistaken, [rest](const auto &pair) { return beginsWith(rest, pair.first); });
        if (wrong != kMistaken.end()) {
            add(rest, Severity::Error, u"marca"_s,
                u"\"%1\" em lugar de \"%2\""_s.arg(wrong->first.toString(), wrong->second.toString()));
            return; // one is enough: the others are of the same hand
        }
    }
}

/// The number that a block announces.
void Lesson::count(QStringView head, int number, const QString &what)
{
    if (head.isEmpty())
        return;
    const QStringView inner = head.sliced(1, head.size() - 2);
    const QStringView last = inner.sliced(inner.lastIndexOf(u',') + 1).trimmed();
    bool isNumber = false;
    const int said = last.toInt(&isNumber);
    if (!isNumber || said != number)
        add(head, Severity::Warning, u"contagem"_s,
            u"%1 não é o número de %2, que é %3"_s.arg(head.toString(), what, QString::number(number)));
}

void Lesson::media(QStringView name, const MediaSearch &search, const QString &code, const QString &what)
{
    const QStringView clean = name.trimmed();
    if (!clean.isEmpty() && search && !search(clean.toString()))
        add(clean, Severity::Warning, code, what + clean.toString());
}

void Lesson::pieces()
{
    std::vector<QStringView> pieces;
    splitAtMark(mParts.pecas, kMarcaPeca, pieces);
    int number = 0;
    for (const QStringView piece : pieces) {
        if (piece.size() <= kVazio)
            continue;
        splitAtMark(piece, kMarcaCampo, mFields);
        if (++number == 1) {
            const QStringView kind = fieldOf(mFields, PecaTipo).trimmed();
            const int said = kind.toInt();
            if (said >= int(Kind::Leia) && said <= int(Kind::Historia))
                mKind = Kind(said);
            else
                add(kind.isEmpty() ? piece : kind, Severity::Note, u"tipo"_s,
                    u"tipo de exercício %1: o programa que acompanha o sistema tem os de 1 a 7"_s.arg(
                        kind.isEmpty() ? u"vazio"_s : kind.toString()));
        }
        media(fieldOf(mFields, PecaFig), mHasFig, u"figura"_s, u"figura não encontrada: "_s);
        media(fieldOf(mFields, PecaSom), mHasSound, u"som"_s, u"som não encontrado: "_s);
    }
    const bool runsOn = !mParts.comRespostas && needsAnswer(); // into what should be answers and options
    if (!runsOn)
        count(mParts.cabecaPecas, number, u"páginas"_s);
}

/// An exercise without its answer block or its option block.
void Lesson::blocks()
{
    const QStringView end = mParts.linha.sliced(mParts.linha.size());
    if (!mParts.comRespostas && needsAnswer())
        add(end, Severity::Error, u"sem-vaa"_s, u"falta <VAA>, o começo das respostas"_s);
    else if (mParts.comRespostas && !mParts.comOpcoes)
        add(mParts.respostas, needsOptions() ? Severity::Error : Severity::Warning, u"sem-voa"_s,
            u"falta <VOA>, o começo das opções"_s);
}

void Lesson::answers()
{
    splitAtTab(mParts.respostas, mFields);
    const bool blanks = mParts.comRespostas && mFields.size() == 1 && mParts.respostas.contains(u"  ");
    if (blanks)
        add(mParts.respostas, Severity::Error, u"tabulacao"_s,
            u"há espaços em lugar das tabulações entre as respostas"_s);
    if (mKind != Kind::Escreva || !mParts.comRespostas)
        return;
    QStringView expected = fieldOf(mFields, RespostaEsperada);
    mCheck.hasExercise = std::ranges::any_of(expected, [](QChar c) { return c != u'|' && !c.isSpace(); });
    if (!mCheck.hasExercise && !blanks)
        add(expected.data() ? expected : mParts.respostas, Severity::Error, u"sem-resposta"_s,
            u"falta a resposta esperada"_s);
}

void Lesson::options()
{
    splitAtMark(mParts.opcoes, kMarcaOpcao, mRows);
    bool blanks = false;
    for (const QStringView each : mRows) {
        if (each.size() <= kVazio)
            continue;
        splitAtTab(each, mFields);
        if (mFields.size() == 1 && each.trimmed().contains(u' ')) {
            if (!blanks)
                add(each, Severity::Error, u"tabulacao"_s, u"há espaços em lugar das tabulações nas opções"_s);
            blanks = true;
        }
        mMarked.push_back(fieldOf(mFields, OpcaoCerta).trimmed());
        if (fieldOf(mFields, OpcaoTexto).trimmed().isEmpty() && fieldOf(mFields, OpcaoFig).trimmed().isEmpty()
            && !blanks)
            add(each, Severity::Warning, u"opcao-vazia"_s, u"opção sem texto e sem figura: não é mostrada"_s);
        media(fieldOf(mFields, OpcaoFig), mHasFig, u"figura"_s, u"figura não encontrada: "_s);
    }
    if (mParts.comOpcoes)
        count(mParts.cabecaOpcoes, int(mMarked.size()), u"opções"_s);
    if (mParts.comOpcoes && !blanks) {
        if (mKind == Kind::Ordene)
            order();
        else
            rightOnes();
    }
}

void Lesson::rightOnes()
{
    const auto right = std::ranges::count(mMarked, QStringView(u"1"));
    const QStringView where = mParts.cabecaOpcoes.isEmpty() ? mParts.opcoes : mParts.cabecaOpcoes;
    const bool asked = mKind == Kind::Escolha || mKind == Kind::Marque || (mKind == Kind::Historia && !mMarked.empty());
    mCheck.hasExercise = mCheck.hasExercise || (right > 0 && (asked || mKind == Kind::None));
    if (asked && right == 0)
        add(where, Severity::Error, u"sem-certa"_s, u"nenhuma opção está marcada como certa"_s);
    else if (mKind == Kind::Escolha && right > 1)
        add(where, Severity::Note, u"varias-certas"_s, u"há %1 opções certas: qualquer uma serve"_s.arg(right));
    else if ((mKind == Kind::Leia || mKind == Kind::Desenhe) && !mMarked.empty())
        add(where, Severity::Warning, u"opcoes-a-mais"_s, u"este tipo de exercício não mostra opções"_s);
}

void Lesson::order()
{
    const QStringView where = mParts.cabecaOpcoes.isEmpty() ? mParts.opcoes : mParts.cabecaOpcoes;
    std::vector<int> places;
    for (const QStringView each : mMarked)
        places.push_back(each.toInt());
    mCheck.hasExercise = places.size() > 1;
    const bool given = std::ranges::is_sorted(places);
    std::ranges::sort(places);
    bool whole = places.size() > 1;
    for (std::size_t n = 0; n < places.size(); ++n)
        whole = whole && places[n] == int(n) + 1;
    if (!whole)
        add(where, Severity::Error, u"ordem"_s, u"os lugares das opções não são 1, 2, 3… até a última"_s);
    else if (given)
        add(where, Severity::Warning, u"ja-em-ordem"_s, u"as opções já aparecem na ordem certa"_s);
}

LessonCheck Lesson::run()
{
    mistakenMarks();
    if (!mParts.comCampos)
        return std::move(mCheck);
    pieces();
    blocks();
    answers();
    options();
    return std::move(mCheck);
}

} // namespace

LessonCheck checkLesson(QStringView linha, const MediaSearch &hasFig, const MediaSearch &hasSound)
{
    return Lesson(linha, hasFig, hasSound).run();
}

} // namespace quorel
