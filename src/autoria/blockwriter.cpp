#include "autoria/blockwriter.h"

#include "autoria/exacttext.h"
#include "autoria/lessontable.h"
#include "catalogue/catalogo.h"
#include "catalogue/marcas.h"
#include "platform/codec.h"

#include <algorithm>
#include <array>

namespace quorel {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView kLineEnd = u"\r\n";

/// What would be read as a mark of the file: in any text, in those of a lesson, in those of the head.
constexpr std::array<QStringView, 29> kMarks{u"Tipo = ", u"Jogo = ", u"[ROT<", u"[<", u"Linha =", u"Nome =", u"<SPÇ>",
    u"<PÇ>", u"<VAA>", u"<VOA>", u"<VCM>", u"<CM>", u"<OP>", u"<VETPECA>", u"<TIPO>", u"CMDEXEC", u"NomeRot =",
    u"CODROT:", u"FIG:", u"SOM:", u"<DESC>", u"</DESC>", u"NIVEL:", u"DISC:", u"BNCC:", u"<OBJ>", u"</OBJ>", u"<TM>",
    u"</TM>"};
constexpr std::size_t kMarksOfSections = 4;
constexpr std::size_t kMarksOfLessons = 16;

SourceText orElse(const SourceText &text, const QString &otherwise)
{
    return text.given ? text : SourceText(otherwise);
}

/// The place of a character of a text.
Place placeIn(const SourceText &text, qsizetype at, const Place &otherwise)
{
    const QStringView before = QStringView(text.text).first(at);
    const std::size_t line = std::size_t(before.count(kLineEnd));
    if (line >= text.places.size())
        return otherwise;
    const qsizetype begin = line == 0 ? 0 : before.lastIndexOf(kLineEnd) + kLineEnd.size();
    return {text.places[line].line, text.places[line].column + int(at - begin)};
}

} // namespace

void BlockWriter::add(const Place &place, const QString &code, const QString &text)
{
    mMade.findings.push_back({mPath, place, Severity::Error, code, text});
}

void BlockWriter::takeBack(qsizetype size, const State &state)
{
    mMade.edb.truncate(size);
    mState = state;
}

bool BlockWriter::separates() const
{
    return mHead.blankLines && (mState.last == State::Last::Head || mState.last == State::Last::Aula);
}

void BlockWriter::separate()
{
    if (separates())
        mMade.edb += "\r\n";
}

void BlockWriter::fixed(QByteArrayView bytes, const Place &place)
{
    mMade.places.add(mMade.edb.size(), place, false);
    mMade.edb += bytes;
}

void BlockWriter::value(const SourceText &text, Form form, const Place &place)
{
    const bool oneLine = form == Form::Line || form == Form::Type;
    if (const qsizetype at = text.text.indexOf(kLineEnd); oneLine && at >= 0)
        add(placeIn(text, at, place), u"quebra"_s, u"este valor fica numa linha só"_s);
    const bool whole = form == Form::WholeLesson || form == Form::Type;
    const std::size_t count = whole ? kMarksOfSections : form == Form::Lesson ? kMarksOfLessons : kMarks.size();
    // Every mark but the last of a lesson's has one of these.
    const bool suspect = std::ranges::any_of(QStringView(u"<[=:"), [&text](QChar c) { return text.text.contains(c); })
        || text.text.contains(kMarks[kMarksOfLessons - 1]);
    for (const QStringView mark : std::span(kMarks).first(suspect ? count : 0)) {
        if (const qsizetype at = text.text.indexOf(mark); at >= 0)
            add(placeIn(text, at, place), u"marca"_s,
                u"o texto contém \""_s + mark.toString() + u"\", que o programa toma por marca do arquivo"_s);
    }
    if (const qsizetype at = text.text.indexOf(u'\t'); at >= 0 && !whole)
        add(placeIn(text, at, place), u"tabulacao"_s, u"há uma tabulação no texto: ponha espaços no lugar dela"_s);

    std::size_t line = 0;
    qsizetype offset = mMade.edb.size();
    for (const QStringView each : QStringView(text.text).tokenize(kLineEnd)) {
        mMade.places.add(offset, line < text.places.size() ? text.places[line] : place, line < text.places.size());
        offset += each.size() + kLineEnd.size();
        ++line;
    }
    encode1252(text.text, mMade.edb);
}

void BlockWriter::field(QByteArrayView before, const SourceText &text, const Place &place)
{
    fixed(before, place);
    value(text, Form::Line, place);
    fixed("\r\n", place);
}

void BlockWriter::head(const HeadSource &head)
{
    mHead = head;
    if (!head.written)
        return;
    fixed("<OBJ>", {});
    value(head.objetivo, Form::Lines, {});
    fixed("</OBJ>\r\n<TM>", {});
    value(head.tema, Form::Lines, {});
    fixed("</TM>\r\n", {});
    mState.last = State::Last::Head;
}

void BlockWriter::item(const RoteiroSource &roteiro)
{
    const Place &at = roteiro.place;
    separate();
    mState = {State::Last::Roteiro, mState.roteiro + 1, 0, roteiro.cod.text};
    fixed("[ROT<" + QByteArray::number(mState.roteiro) + ">]\r\n", at);
    field("NomeRot =", roteiro.nome, at);
    field("CODROT:", roteiro.cod, at);
    if (roteiro.nome.text == "CALC"_L1)
        return;
    field("FIG:", roteiro.fig, at);
    field("SOM:", roteiro.som, at);
    fixed("<DESC>", at);
    value(roteiro.desc, Form::Lines, at);
    fixed("</DESC>\r\n", at);
    field("NIVEL:", roteiro.nivel.given ? roteiro.nivel : orElse(mHead.nivel, mDestination.nivel), at);
    field(
        "DISC:", roteiro.disc.given ? roteiro.disc : orElse(mHead.disc, NomeDisciplina(mDestination.disciplina())), at);
    if (roteiro.bncc.given)
        field("BNCC:", roteiro.bncc, at);
}

void BlockWriter::item(const AulaSource &aula)
{
    const Place &at = aula.place;
    separate();
    mState.last = State::Last::Aula;
    ++mState.aula;
    const QByteArray tab = mHead.tabs ? "\t" : "";
    fixed("[<" + QByteArray::number(mState.roteiro) + '>' + QByteArray::number(mState.aula) + "]\r\n", at);
    field(tab + "Nome =", aula.nome, at);
    fixed(tab + "Linha =", at);
    lesson(aula);
    fixed("\r\n\tTipo = ", at);
    value(aula.tipo.given ? aula.tipo : SourceText(aula.programa + u"\t1"_s), Form::Type, at);
    fixed("\r\n", at);
    if (!aula.jogo.given)
        return;
    fixed(tab + "Jogo = ", at);
    value(aula.jogo, Form::Line, at);
    fixed("#\r\n", at);
    if (const qsizetype sign = aula.jogo.text.indexOf(u'#'); sign >= 0)
        add(placeIn(aula.jogo, sign, at), u"marca"_s, u"o texto contém \"#\", que acaba o nome do jogo"_s);
}

void BlockWriter::lesson(const AulaSource &aula)
{
    if (aula.linha.given)
        return value(aula.linha, Form::WholeLesson, aula.place);
    if (aula.chama.given)
        return value(aula.chama, Form::Line, aula.place);
    const SourceText codigo = orElse(aula.cod, defaultCode(mState.code, mState.aula));
    fixed("(1," + QByteArray::number(aula.paginas.size()) + ')', aula.place);
    for (std::size_t n = 0; n < aula.paginas.size(); ++n)
        piece(aula, n, codigo);
    answers(aula, codigo);
    options(aula, codigo.text);
    fixed("<VCM><CM>", aula.place);
}

/// Code, kind, shown, four that are kept free, heading, text, one free, figure, sound, one free.
void BlockWriter::piece(const AulaSource &aula, std::size_t n, const SourceText &codigo)
{
    const PageSource &page = aula.paginas[n];
    const Place &at = aula.place;
    const QByteArray space = encode1252(u"<SPÇ>");
    const QByteArray kind = QByteArray::number(int(aula.kind == Kind::None ? Kind::Leia : aula.kind));
    if (n == 0)
        value(codigo, Form::Lesson, at);
    else
        fixed(QByteArray::number(n + 1), at);
    fixed(space + kind + space + '1' + space + '0' + space + '0' + space + '0' + space + '0' + space, at);
    value(n == 0 ? orElse(page.titulo, aula.nome.text) : page.titulo, Form::Lesson, at);
    fixed(space, at);
    value(aula.arquivo.given ? aula.arquivo : page.texto, Form::Lesson, at);
    fixed(space + space, at);
    value(page.fig, Form::Lesson, at);
    fixed(space, at);
    value(page.som, Form::Lesson, at);
    fixed(space + encode1252(u"<PÇ>"), at);
}

void BlockWriter::answers(const AulaSource &aula, const SourceText &codigo)
{
    const Place &at = aula.place;
    fixed("<VAA>(1)", at);
    value(codigo, Form::Lesson, at);
    fixed("\t1\t1\t1\t0\t0\t", at);
    value(aula.resposta, Form::Lesson, at);
    fixed("\t", at);
    value(orElse(aula.elogio, defaultPraise(mState.aula)), Form::Lesson, at);
    fixed("\t", at);
    value(aula.dica, Form::Lesson, at);
}

void BlockWriter::options(const AulaSource &aula, const QString &codigo)
{
    const Place &at = aula.place;
    const std::vector<OptionSource> &given = aula.opcoes;
    // Options that tell their places stay as they stand.
    const bool turned = aula.kind == Kind::Ordene
        && std::ranges::none_of(given, [](const OptionSource &option) { return option.lugar > 0; });
    const std::size_t turn = turned ? std::size_t(turnOf(codigo, std::ssize(given))) : 0;
    fixed("<VOA>(" + QByteArray::number(given.size()) + ')', at);
    for (std::size_t n = 0; n < given.size(); ++n) {
        const std::size_t from = (n + turn) % given.size();
        const OptionSource &option = given[from];
        const int ordinal = option.lugar > 0 ? option.lugar : int(from) + 1;
        fixed((n == 0 ? "" : "<OP>") + QByteArray::number(n + 1) + '\t', at);
        value(option.texto, Form::Lesson, at);
        fixed('\t' + QByteArray::number(option.ordered ? ordinal : int(option.certa)) + "\t\t\t\t\t\t", at);
        value(option.fig, Form::Lesson, at);
    }
}

void BlockWriter::item(const RawSource &raw)
{
    mMade.places.add(mMade.edb.size(), raw.place, false);
    for (const auto &[offset, place] : raw.places)
        mMade.places.add(mMade.edb.size() + offset, {place.line, place.column + 1}, true);
    mMade.edb += raw.bytes;
    mState.last = State::Last::Raw;
    // What is numbered behind goes on from the last numbers in it.
    const std::string_view all(raw.bytes.constData(), std::size_t(raw.bytes.size()));
    constexpr std::string_view kOpens = "[ROT<";
    std::size_t from = 0;
    if (const std::size_t at = all.rfind(kOpens); at != std::string_view::npos) {
        mState.roteiro = int(readNumero(all.substr(at + kOpens.size())).numero);
        mState.aula = 0;
        mState.code.clear();
        from = at;
    }
    const std::string opensAula = "[<" + std::to_string(mState.roteiro) + '>';
    if (const std::size_t at = all.rfind(opensAula); at != std::string_view::npos && at >= from)
        mState.aula = int(readNumero(all.substr(at + opensAula.size())).numero);
    constexpr std::string_view kCode = "CODROT:";
    if (const std::size_t at = all.find(kCode, from); at != std::string_view::npos) {
        const std::size_t begin = at + kCode.size();
        const std::size_t end = std::min(all.find_first_not_of("0123456789", begin), all.size());
        mState.code = QString::fromLatin1(all.data() + begin, qsizetype(end - begin));
    }
}

MadeBlock makeBlock(const BlockSource &source, const BlockFile &destination)
{
    BlockWriter writer(destination, {});
    writer.head(source.head);
    for (const ItemSource &item : source.items)
        std::visit([&writer](const auto &each) { writer.item(each); }, item);
    MadeBlock made = std::move(writer.made());
    made.understood = made.findings.empty();
    return made;
}

MadeBlock makeBlock(QByteArrayView utf8, const QString &path, const BlockFile &destination)
{
    Findings findings;
    const BlockSource source = readSource(utf8, path, findings);
    MadeBlock made = makeBlock(source, destination);
    for (Finding &finding : made.findings)
        finding.file = path;
    made.findings.insert(made.findings.begin(), findings.begin(), findings.end());
    made.understood = made.findings.empty();
    return made;
}

void PlaceMap::add(qsizetype offset, const Place &place, bool spread)
{
    mSegments.push_back({offset, place, spread});
}

Place PlaceMap::at(qsizetype offset) const
{
    const auto behind = std::ranges::upper_bound(mSegments, offset, {}, &Segment::offset);
    if (behind == mSegments.begin())
        return {};
    const Segment &segment = *std::prev(behind);
    if (!segment.spread)
        return segment.place;
    return {segment.place.line, segment.place.column + int(offset - segment.offset)};
}

} // namespace quorel
