#include "reports/indice.h"

#include "catalogue/catalogo.h"
#include "catalogue/marcas.h"
#include "platform/caminho.h"
#include "platform/codec.h"
#include "platform/erro.h"
#include "reports/textos.h"
#include "startup/lugares.h"
#include "startup/quorel_zeto.h"
#include "startup/texto_util.h"
#include "startup/valor.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <vector>

namespace quorel {

using namespace Qt::StringLiterals;

namespace {

constexpr std::string_view kAbreRoteiro = "[ROT<";
constexpr std::string_view kFechaRoteiro = ">]";
constexpr std::string_view kAbreAula = "[<";
constexpr std::string_view kFechaPrimeira = ">1]"; // of a Roteiro's first lesson

/// Head of a Roteiro: from behind its opening marker to its first lesson.
struct Trecho
{
    Posicao begin = 0;
    Posicao end = 0;
};

/// Finds the heads of the Roteiros of one text and the two fields of a head.
class LeitorDeRoteiros final
{
public:
    explicit LeitorDeRoteiros(std::string_view texto);

    quint32 count() const { return mCount; } ///< of "[ROT<"
    std::optional<Trecho> head(quint32 j) const; ///< of Roteiro j, from 1; nothing when it has none or no lesson
    QString codigo(const Trecho &trecho) { return between(trecho, mCodigo); }
    QString nome(const Trecho &trecho) { return between(trecho, mNome); }

private:
    void collect(std::size_t at, std::string_view opens, std::string_view closes, std::vector<MarcaNumerada> &into);
    QString between(const Trecho &trecho, ProximaMarca &abre);

    std::string_view mTexto;
    quint32 mCount = 0;
    PosicoesPorNumero mRoteiros; ///< "[ROT<" number ">]"
    PosicoesPorNumero mPrimeiras; ///< "[<" number ">1]"
    ProximaMarca mCodigo{mTexto, "CODROT:"};
    ProximaMarca mNome{mTexto, "NomeRot ="};
    ProximaMarca mFimLinha{mTexto, "\r\n"};
    qsizetype mBudget; ///< characters that may still be kept
};

// The heads of a damaged file may overlap, each with the rest of the text as a name. What is kept is therefore limited
// to a few times the text, far above what any file needs whose sections follow one another.
constexpr qsizetype kBudgetBase = 1 << 20;
constexpr qsizetype kBudgetPerByte = 8;

LeitorDeRoteiros::LeitorDeRoteiros(std::string_view texto)
    : mTexto(texto.substr(0, kNenhum - 1)), mBudget(kBudgetBase + kBudgetPerByte * qsizetype(mTexto.size()))
{
    std::vector<MarcaNumerada> roteiros;
    std::vector<MarcaNumerada> primeiras;
    for (std::size_t at = mTexto.find('['); at != std::string_view::npos; at = mTexto.find('[', at + 1)) {
        const std::string_view rest = mTexto.substr(at);
        if (rest.starts_with(kAbreRoteiro)) {
            ++mCount;
            collect(at, kAbreRoteiro, kFechaRoteiro, roteiros);
        } else if (rest.starts_with(kAbreAula)) {
            collect(at, kAbreAula, kFechaPrimeira, primeiras);
        }
    }
    mRoteiros.build(roteiros, mCount);
    mPrimeiras.build(primeiras, mCount);
}

void LeitorDeRoteiros::collect(
    std::size_t at, std::string_view opens, std::string_view closes, std::vector<MarcaNumerada> &into)
{
    const std::string_view rest = mTexto.substr(at + opens.size());
    const NumeroLido lido = readNumero(rest);
    if (lido.digitos > 0 && rest.substr(lido.digitos).starts_with(closes))
        into.push_back({lido.numero, Posicao(at)});
}

std::optional<Trecho> LeitorDeRoteiros::head(quint32 j) const
{
    const Posicao opens = mRoteiros.firstFrom(j, 0);
    const Posicao lesson = mPrimeiras.firstFrom(j, 0);
    if (opens == kNenhum || lesson == kNenhum || lesson < opens)
        return std::nullopt;
    const Posicao digits = Posicao(QByteArray::number(j).size());
    return Trecho{opens + Posicao(kAbreRoteiro.size() + kFechaRoteiro.size()) + digits, lesson};
}

/// From behind the first occurrence of a marker to the next line end; empty when one of them is missing.
QString LeitorDeRoteiros::between(const Trecho &trecho, ProximaMarca &abre)
{
    const Posicao opens = abre.find(trecho.begin);
    if (opens == kNenhum || opens + abre.size() > trecho.end)
        return {};
    const Posicao begin = opens + abre.size();
    const Posicao end = mFimLinha.find(begin);
    if (end == kNenhum || end + mFimLinha.size() > trecho.end)
        return {};
    mBudget -= qsizetype(end - begin);
    if (mBudget < 0)
        throw ErroExecucao(kFalhaEstouro);
    return decode1252(QByteArrayView(mTexto.data() + begin, qsizetype(end - begin)));
}

struct NomeDeBloco
{
    QString disciplina; ///< code
    QString nivel;
    QString ano;
};

/// The fields of a file name that are counted from the end of its base name; short names have less of them.
NomeDeBloco camposDoNome(const QString &arquivo)
{
    constexpr qsizetype kCampo = 2; // characters
    const qsizetype point = arquivo.lastIndexOf(u'.');
    QString base = point < 0 ? arquivo : arquivo.first(point);
    const auto take = [&base] {
        QString field = base.right(kCampo);
        base.chop(kCampo);
        return field;
    };
    NomeDeBloco campos;
    campos.nivel = take();
    campos.disciplina = take();
    campos.ano = take();
    return campos;
}

/// By DisciplinaRelatorio: the catalogue's name of a discipline and its index string.
struct Indice
{
    QStringView nome;
    QString *texto;
};
const std::array<Indice, kNumDisciplinas> kIndices{{
    {u"Ciências", &gRotCiencias},
    {u"Matemática", &gRotMatematica},
    {u"Português", &gRotPortugues},
    {u"Desenvolvimento Sensório Motor", &gRotDesenv},
}};

qint32 codigoInteiro(const QString &codigo)
{
    const qint32 inteiro = textoInteiro32(codigo);
    if (inteiro != valorNumerico(codigo))
        throw ErroExecucao(kFalhaTipo);
    return inteiro;
}

void indexaRoteiro(quint32 j, const QString &codigo, const QString &nome, BlocoArqRec &bloco)
{
    bloco.Roteiros.resize(std::size_t(j) + 1);
    RoteiroArqRec &roteiro = bloco.Roteiros[j];
    roteiro.Codigo = codigoInteiro(codigo);
    roteiro.Nome = nome;
    for (const Indice &indice : kIndices) {
        if (bloco.Disciplina == indice.nome)
            *indice.texto += codigo + u'\t' + nome + kFimLinha;
    }
}

} // namespace

void InsereVet(QByteArrayView texto, const QString &Arquivo)
{
    gBlocosArq.emplace_back();
    BlocoArqRec &bloco = gBlocosArq.back();
    const NomeDeBloco campos = camposDoNome(Arquivo);
    LeitorDeRoteiros leitor(std::string_view(texto.data(), std::size_t(texto.size())));
    bloco.Mes = textoInteiro16(Arquivo.left(2));
    bloco.Disciplina = NomeDisciplina(campos.disciplina);
    bloco.Nivel = campos.nivel;
    bloco.Ano = textoInteiro16(campos.ano);
    for (quint32 j = 1; j <= leitor.count(); ++j) {
        const std::optional<Trecho> head = leitor.head(j);
        const QString codigo = head ? leitor.codigo(*head) : QString();
        if (!codigo.isEmpty() && codigo != "0"_L1)
            indexaRoteiro(j, codigo, leitor.nome(*head), bloco);
    }
}

void indexaBlocos()
{
    QString base = gConfig.Config(u"DBBLOCOS"_s);
    if (base.isEmpty())
        base = installationDirectory() + u"\\DBBLOCOS"_s;
    for (const QString &nivel : {u"F1"_s, u"F2"_s, u"F3"_s, u"F4"_s, u"I1"_s, u"I2"_s}) {
        const QString diretorio = base + u'\\' + nivel;
        QStringList nomes = fileNames(diretorio, u".edb"_s);
        // The order decides which of two lines of one code is the first.
        std::ranges::sort(nomes, {}, [](const QString &nome) { return upper1252(nome); });
        for (const QString &nome : nomes)
            InsereVet(gTexto.LeBytes(diretorio + u'\\' + nome), nome);
    }
}

IndiceRoteiros::IndiceRoteiros()
{
    using enum DisciplinaRelatorio;
    // A code that stands in two strings is the first one's; the order is not that of the sheet.
    for (const DisciplinaRelatorio disciplina : {Ciencias, Portugues, Matematica, Desenv}) {
        QString &texto = mTextos[std::size_t(disciplina)];
        texto = *kIndices[std::size_t(disciplina)].texto;
        addLines(disciplina, texto);
    }
}

/// Codes are looked for in their plain decimal form: "007" and " 7" are never asked for. 0 for these, and what is none.
static qint32 plainNumber(QStringView code)
{
    constexpr qint64 kMax = std::numeric_limits<qint32>::max();
    qint64 number = 0;
    for (const QChar c : code) {
        if (c < u'0' || c > u'9' || (number == 0 && c == u'0') || number > kMax)
            return 0;
        number = number * 10 + (c.unicode() - u'0');
    }
    return number > kMax ? 0 : static_cast<qint32>(number);
}

void IndiceRoteiros::addLines(DisciplinaRelatorio disciplina, QStringView linhas)
{
    qsizetype lineEnd = linhas.indexOf(kFimLinha); // Kept: of the first line, which is passed over
    while (lineEnd >= 0) {
        const QStringView rest = linhas.sliced(lineEnd + kFimLinha.size());
        lineEnd = rest.indexOf(kFimLinha);
        const QStringView line = lineEnd < 0 ? rest : rest.first(lineEnd);
        linhas = rest;
        const qsizetype tab = line.indexOf(u'\t');
        const QStringView code = line.first(qMax(tab, 0));
        const qint32 codigo = plainNumber(code);
        if (codigo > 0 && !mPorCodigo.contains(codigo))
            mPorCodigo.insert(codigo, {disciplina, lineEnd < 0 ? QStringView() : line.sliced(tab + 1)});
    }
}

std::optional<IndiceRoteiros::Achado> IndiceRoteiros::procura(qint32 codigo) const
{
    const auto found = mPorCodigo.constFind(codigo);
    return found == mPorCodigo.cend() ? std::nullopt : std::optional(*found);
}

} // namespace quorel
