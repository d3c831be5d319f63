#include "autoria/blockwriter.h"
#include "autoria/lessontable.h"
#include "catalogue/catalogo.h"
#include "catalogue/leitor_blocos.h"
#include "platform/codec.h"

#include <algorithm>
#include <optional>

namespace quorel {

using namespace Qt::StringLiterals;

namespace {

/// Bytes that are taken from the front, piece by piece.
class Taker final
{
public:
    explicit Taker(QByteArrayView bytes) : mBytes(bytes) { }

    /// Whether these come next; they are taken then.
    bool take(QByteArrayView what)
    {
        const bool next = mBytes.startsWith(what);
        if (next)
            mBytes = mBytes.sliced(what.size());
        return next;
    }
    /// The text up to these, which are taken too. @param wanted  becomes false when they never come
    SourceText upTo(QByteArrayView end, bool &wanted)
    {
        const qsizetype at = mBytes.indexOf(end);
        wanted = wanted && at >= 0;
        if (!wanted)
            return {};
        SourceText text(decode1252(mBytes.first(at)));
        mBytes = mBytes.sliced(at + end.size());
        return text;
    }

private:
    QByteArrayView mBytes;
};

/// Fields between two marks; false where the text does not begin and end as it must.
bool between(QStringView &text, QStringView begin, QStringView end)
{
    if (!text.startsWith(begin) || !text.endsWith(end) || text.size() < begin.size() + end.size())
        return false;
    text = text.sliced(begin.size());
    text.chop(end.size());
    return true;
}

class LessonReader final
{
public:
    /// Reads a lesson text that makeBlock() could have written. The rest is left for the comparison of the bytes.
    static bool read(QStringView linha, const BlockWriter::State &state, AulaSource &aula);

private:
    static bool pages(QStringView text, AulaSource &aula);
    static bool options(QStringView text, AulaSource &aula);
};

bool LessonReader::pages(QStringView text, AulaSource &aula)
{
    enum Field { Cod = 0, Tipo = 1, Titulo = 7, Texto = 8, Fig = 10, Som = 11, kFields = 13 };
    aula.paginas.clear();
    for (const QStringView piece : text.split(QStringView(u"<PÇ>"))) {
        const QList<QStringView> fields = piece.split(QStringView(u"<SPÇ>"));
        if (fields.size() != kFields)
            return false;
        if (aula.paginas.empty()) {
            aula.cod = SourceText(fields[Cod].toString());
            const int kind = fields[Tipo].toInt();
            if (kind < int(Kind::Leia) || kind > int(Kind::Historia))
                return false;
            aula.kind = Kind(kind);
        }
        const auto field = [&fields](Field n) {
            return fields[n].isEmpty() ? SourceText() : SourceText(fields[n].toString());
        };
        aula.paginas.push_back({field(Titulo), field(Texto), field(Fig), field(Som)});
    }
    return true;
}

bool LessonReader::options(QStringView text, AulaSource &aula)
{
    enum Field { Texto = 1, Certa = 2, Fig = 8, kFields = 9 };
    const qsizetype bracket = text.indexOf(u')');
    if (bracket < 0)
        return false;
    text = text.sliced(bracket + 1);
    if (text.isEmpty())
        return true;
    for (const QStringView each : text.split(QStringView(u"<OP>"))) {
        const QList<QStringView> fields = each.split(u'\t');
        if (fields.size() != kFields)
            return false;
        OptionSource option;
        option.texto = SourceText(fields[Texto].toString());
        if (!fields[Fig].isEmpty())
            option.fig = SourceText(fields[Fig].toString());
        option.ordered = aula.kind == Kind::Ordene;
        option.certa = !option.ordered && fields[Certa] == u"1";
        option.lugar = option.ordered ? fields[Certa].toInt() : 0;
        aula.opcoes.push_back(std::move(option));
    }
    return true;
}

bool LessonReader::read(QStringView linha, const BlockWriter::State &state, AulaSource &aula)
{
    enum Field { Esperada = 6, Elogio = 7, Dica = 8, kFields = 9 };
    const qsizetype answers = linha.indexOf(u"<PÇ><VAA>");
    const qsizetype choices = linha.indexOf(u"<VOA>", qMax<qsizetype>(0, answers));
    if (!linha.startsWith(u"(1,") || answers < 0 || choices < answers)
        return false;
    const QStringView pieces = linha.first(answers);
    const QList<QStringView> answer = linha.sliced(answers, choices - answers).split(u'\t');
    QStringView option = linha.sliced(choices);
    const qsizetype bracket = pieces.indexOf(u')');
    if (bracket < 0 || answer.size() != kFields || !between(option, u"<VOA>", u"<VCM><CM>")
        || !pages(pieces.sliced(bracket + 1), aula) || !options(option, aula))
        return false;
    if (aula.cod.text == defaultCode(state.code, state.aula + 1))
        aula.cod = {};
    if (!answer[Esperada].isEmpty())
        aula.resposta = SourceText(answer[Esperada].toString());
    if (answer[Elogio] != defaultPraise(state.aula + 1))
        aula.elogio = SourceText(answer[Elogio].toString());
    if (!answer[Dica].isEmpty())
        aula.dica = SourceText(answer[Dica].toString());
    SourceText &titulo = aula.paginas.front().titulo;
    titulo = titulo.text == aula.nome.text ? SourceText() : SourceText(titulo.text);
    return true;
}

/// Takes a block file apart: whatever the writer would write with the same bytes becomes an item, the rest is raw.
class BlockReader final
{
public:
    explicit BlockReader(QByteArrayView edb) : mEdb(edb), mWriter(BlockFile(), {}) { }

    BlockSource read();

private:
    void findMarks();
    void findStyle();
    void readHead();
    void readRoteiro(qsizetype end);
    void readAula(qsizetype end);
    bool readLesson(AulaSource aula, qsizetype end);
    bool keep(const ItemSource &item, qsizetype end);
    void keepRaw(qsizetype end);

    qsizetype at() { return mWriter.made().edb.size(); }

    QByteArrayView mEdb;
    BlockWriter mWriter; ///< what it has written is the beginning of mEdb
    BlockSource mSource;
    std::vector<LugarBloco> mMarks;
};

void BlockReader::findMarks()
{
    PlantaBloco plan;
    leBloco(mEdb, &plan);
    std::ranges::copy_if(plan.marcas, std::back_inserter(mMarks),
        [](const LugarBloco &mark) { return mark.roteiro > 0 && mark.aula >= 0; });
}

void BlockReader::findStyle()
{
    const auto aula = std::ranges::find_if(mMarks, [](const LugarBloco &mark) { return mark.aula > 0; });
    if (aula != mMarks.end()) {
        const qsizetype lineEnd = mEdb.indexOf('\n', aula->begin);
        mSource.head.tabs = lineEnd < 0 || mEdb.sliced(lineEnd + 1).startsWith('\t');
    }
    const auto behind = std::ranges::find_if(mMarks, [](const LugarBloco &mark) { return mark.aula > 1; });
    if (behind != mMarks.end())
        mSource.head.blankLines = mEdb.first(behind->begin).endsWith("\r\n\r\n");
}

/// Takes an item when the writer writes the very bytes that come next, without a fault.
bool BlockReader::keep(const ItemSource &item, qsizetype end)
{
    const qsizetype begin = at();
    const BlockWriter::State before = mWriter.state();
    std::visit([this](const auto &each) { mWriter.item(each); }, item);
    MadeBlock &made = mWriter.made();
    const QByteArrayView written = QByteArrayView(made.edb).sliced(begin);
    const bool same = made.findings.empty() && at() <= end && mEdb.sliced(begin).startsWith(written);
    made.findings.clear();
    if (same)
        mSource.items.push_back(item);
    else
        mWriter.takeBack(begin, before);
    return same;
}

void BlockReader::keepRaw(qsizetype end)
{
    if (end <= at())
        return;
    const QByteArray bytes = mEdb.sliced(at(), end - at()).toByteArray();
    mWriter.item(RawSource{{}, bytes, {}});
    auto *last = mSource.items.empty() ? nullptr : std::get_if<RawSource>(&mSource.items.back());
    if (last)
        last->bytes += bytes;
    else
        mSource.items.emplace_back(RawSource{{}, bytes, {}});
}

void BlockReader::readHead()
{
    Taker taker(mEdb);
    bool wanted = taker.take("<OBJ>");
    mSource.head.objetivo = taker.upTo("</OBJ>\r\n<TM>", wanted);
    mSource.head.tema = taker.upTo("</TM>\r\n", wanted);
    mWriter.head(mSource.head);
    MadeBlock &made = mWriter.made();
    if (wanted && made.findings.empty() && mEdb.startsWith(made.edb))
        return;
    made.findings.clear();
    mWriter.takeBack(0, {});
    mSource.head.objetivo = mSource.head.tema = {};
    mSource.head.written = false;
    mWriter.head(mSource.head);
    mSource.items.emplace_back(RawSource()); // even an empty one takes the head's place
}

void BlockReader::readRoteiro(qsizetype end)
{
    RoteiroSource item;
    const qsizetype mark = mEdb.indexOf('[', at());
    Taker taker(mEdb.sliced(mark, end - mark));
    bool wanted = taker.take("[ROT<" + QByteArray::number(mWriter.state().roteiro + 1) + ">]\r\nNomeRot =");
    item.nome = taker.upTo("\r\n", wanted);
    wanted = wanted && taker.take("CODROT:");
    item.cod = taker.upTo("\r\n", wanted);
    if (wanted && item.nome.text != "CALC"_L1) {
        const auto field = [&](QByteArrayView before, SourceText RoteiroSource::*into, QByteArrayView behind) {
            wanted = wanted && taker.take(before);
            item.*into = taker.upTo(behind, wanted);
        };
        field("FIG:", &RoteiroSource::fig, "\r\n");
        field("SOM:", &RoteiroSource::som, "\r\n");
        field("<DESC>", &RoteiroSource::desc, "</DESC>\r\n");
        field("NIVEL:", &RoteiroSource::nivel, "\r\n");
        field("DISC:", &RoteiroSource::disc, "\r\n");
        if (taker.take("BNCC:"))
            item.bncc = taker.upTo("\r\n", wanted);
    }
    if (!wanted || !keep(item, end))
        keepRaw(end);
}

bool BlockReader::readLesson(AulaSource aula, qsizetype end)
{
    const BlockWriter::State &state = mWriter.state();
    const QString linha = aula.linha.text;
    aula.linha = {};
    if (aula.programa == "Calc"_L1 && !linha.isEmpty() && !linha.contains(u"<SPÇ>")) {
        aula.chama = SourceText(linha);
        return keep(aula, end);
    }
    if (!LessonReader::read(linha, state, aula))
        return false;
    if (aula.programa == "HTML"_L1 && aula.paginas.size() == 1)
        std::swap(aula.arquivo, aula.paginas.front().texto);
    AulaSource ordered = aula;
    const auto place = [](const OptionSource &option) { return option.lugar; };
    std::ranges::stable_sort(ordered.opcoes, {}, place);
    for (OptionSource &option : ordered.opcoes)
        option.lugar = 0;
    return keep(ordered.opcoes.empty() || aula.kind == Kind::Ordene ? ordered : aula, end) || keep(aula, end);
}

void BlockReader::readAula(qsizetype end)
{
    const BlockWriter::State &state = mWriter.state();
    const QByteArray tab = mSource.head.tabs ? "\t" : "";
    AulaSource aula;
    const qsizetype mark = mEdb.indexOf('[', at());
    Taker taker(mEdb.sliced(mark, end - mark));
    bool wanted = taker.take(
        "[<" + QByteArray::number(state.roteiro) + '>' + QByteArray::number(state.aula + 1) + "]\r\n" + tab + "Nome =");
    aula.nome = taker.upTo("\r\n", wanted);
    wanted = wanted && taker.take(tab + "Linha =");
    aula.linha = taker.upTo("\r\n\tTipo = ", wanted);
    aula.tipo = taker.upTo("\r\n", wanted);
    if (taker.take(tab + "Jogo = "))
        aula.jogo = taker.upTo("#\r\n", wanted);
    for (const QStringView program : kProgramas) {
        if (aula.tipo.text == program.toString() + u"\t1"_s) {
            aula.programa = program.toString();
            aula.tipo = {};
        }
    }
    if (!wanted || (!readLesson(aula, end) && !keep(aula, end)))
        keepRaw(end);
}

BlockSource BlockReader::read()
{
    findMarks();
    findStyle();
    readHead();
    for (auto mark = mMarks.begin(); mark != mMarks.end(); ++mark) {
        const qsizetype end = std::next(mark) == mMarks.end() ? mEdb.size() : std::next(mark)->begin;
        const qsizetype gap = mark->begin - at();
        const bool separated = mWriter.separates() && gap == 2 && mEdb.sliced(at()).startsWith("\r\n");
        if (!separated)
            keepRaw(mark->begin);
        if (mark->aula == 0)
            readRoteiro(end);
        else
            readAula(end);
    }
    keepRaw(mEdb.size());
    return std::move(mSource);
}

/// What all Roteiros say alike stands in the head.
void gather(BlockSource &source)
{
    for (const auto &[own, common] :
        {std::pair{&RoteiroSource::nivel, &HeadSource::nivel}, std::pair{&RoteiroSource::disc, &HeadSource::disc}}) {
        for (ItemSource &item : source.items) {
            auto *roteiro = std::get_if<RoteiroSource>(&item);
            if (!roteiro || !(roteiro->*own).given)
                continue;
            if (!(source.head.*common).given)
                source.head.*common = roteiro->*own;
            if ((roteiro->*own).text == (source.head.*common).text)
                roteiro->*own = {};
        }
    }
}

} // namespace

QByteArray sourceOfBlock(QByteArrayView edb)
{
    BlockSource source = BlockReader(edb).read();
    gather(source);
    QByteArray text = writeSource(source);
    const MadeBlock again = makeBlock(text, {}, {});
    if (again.understood && again.edb == edb)
        return text;
    BlockSource raw;
    raw.head.written = false;
    raw.items.emplace_back(RawSource{{}, edb.toByteArray(), {}});
    return writeSource(raw);
}

} // namespace quorel
