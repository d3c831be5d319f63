#include "catalogue/leitor_blocos.h"

#include "catalogue/marcas.h"
#include "platform/codec.h"
#include "startup/valor.h"

#include <algorithm>
#include <optional>

namespace quorel {

using namespace Qt::StringLiterals;

namespace {

constexpr std::string_view kAbreRoteiro = "[ROT<";
constexpr std::string_view kAbreAula = "[<";
constexpr std::string_view kFechaAula = "]\r\n";
constexpr std::string_view kFimLinha = "\r\n";
constexpr std::string_view kSeparador = "<SP\xC7>"; // between the fields of Linha; Ç is one byte

/// Part of the text: a section, or the value of a field.
struct Trecho
{
    Posicao begin = 0;
    Posicao end = 0;
    bool isEmpty() const { return begin >= end; }
};

/// Reads one text. Each kind of marker has its index over the whole text; a section is a range of places, and its
/// first occurrence of a marker is the text's first one from the section's begin on, if that lies inside.
class Leitor final
{
public:
    Leitor(std::string_view texto, PlantaBloco *planta);
    Bloco le();

private:
    void collectMarcas();
    std::optional<MarcaNumerada> roteiroAt(std::size_t at) const;
    std::optional<MarcaNumerada> aulaAt(std::size_t at) const;
    void noteSecao(quint32 roteiro, quint32 aula, const Trecho &secao);
    std::optional<Trecho> roteiroSection(quint32 i) const;
    void readHead(const Trecho &secao, RoteiroRec &roteiro);
    void readButton(const Trecho &secao, RoteiroRec &roteiro);
    void readAulas(const Trecho &secao, quint32 i, RoteiroRec &roteiro);
    void collectAulas(const Trecho &secao, std::span<const Posicao> abre, Posicao comprimento);
    void readAula(const Trecho &secao, AulaRec &aula);
    Trecho codigoDe(const Trecho &linha);

    Trecho between(const Trecho &secao, ProximaMarca &abre, ProximaMarca &fecha);
    QString text(const Trecho &trecho);
    bool spend(qsizetype characters);
    std::string_view view(const Trecho &trecho) const { return mTexto.substr(trecho.begin, trecho.end - trecho.begin); }

    std::string_view mTexto;
    PlantaBloco *mPlanta; ///< not owned; may be null
    quint32 mNumRoteiros = 0;
    PosicoesPorNumero mRoteiros; ///< "[ROT<" number ">]"
    PosicoesPorNumero mAulas; ///< "[<" number ">", whatever follows
    std::vector<Posicao> mAulaOpens; ///< of the present Roteiro: where lesson j's text begins, by j
    PosicoesPorNumero mAulaEnds; ///< of the present Roteiro: CR LF "[<" i ">" and the digits of a number
    std::vector<MarcaNumerada> mScratch;
    qsizetype mBudget; ///< characters that may still be kept
    bool mEnded = false; ///< a failure ended the reading

    ProximaMarca mFimLinha{mTexto, kFimLinha};
    ProximaMarca mNomeRot{mTexto, "NomeRot ="};
    ProximaMarca mCodRot{mTexto, "CODROT:"};
    ProximaMarca mFig{mTexto, "FIG:"};
    ProximaMarca mSom{mTexto, "SOM:"};
    ProximaMarca mDesc{mTexto, "<DESC>"};
    ProximaMarca mFimDesc{mTexto, "</DESC>"};
    ProximaMarca mNivel{mTexto, "NIVEL:"};
    ProximaMarca mDisc{mTexto, "DISC:"};
    ProximaMarca mNome{mTexto, "Nome ="};
    ProximaMarca mLinha{mTexto, "Linha ="};
    ProximaMarca mFimDaLinha{mTexto, "\r\n\tTipo = "};
    ProximaMarca mTipo{mTexto, "Tipo = "};
    ProximaMarca mTab{mTexto, "\t"};
    ProximaMarca mJogo{mTexto, "Jogo = "};
    ProximaMarca mFimJogo{mTexto, "#"};
    ProximaMarca mFimCampo{mTexto, kSeparador};
};

// Sections of a damaged file may overlap, each with the rest of the text as a value. What is kept is therefore limited
// to a few times the text, far above what any file needs whose sections follow one another.
constexpr qsizetype kBudgetBase = 1 << 20;
constexpr qsizetype kBudgetPerByte = 8;

Leitor::Leitor(std::string_view texto, PlantaBloco *planta)
    : mTexto(texto.substr(0, kNenhum - 1)), mPlanta(planta),
      mBudget(kBudgetBase + kBudgetPerByte * qsizetype(mTexto.size()))
{ }

Bloco Leitor::le()
{
    collectMarcas();
    Bloco bloco;
    bloco.roteiros.dimension(int(mNumRoteiros));
    int last = 0;
    for (quint32 i = 1; i <= mNumRoteiros && !mEnded; ++i) {
        const std::optional<Trecho> secao = roteiroSection(i);
        if (secao && spend((int(i) - last) * qsizetype(sizeof(RoteiroRec) / sizeof(QChar)))) {
            last = int(i);
            noteSecao(i, 0, *secao);
            RoteiroRec &roteiro = bloco.roteiros.edit(int(i));
            readHead(*secao, roteiro);
            if (!mEnded)
                bloco.lidos = int(i);
            readAulas(*secao, i, roteiro);
        } else if (!mEnded) {
            bloco.lidos = int(i);
        }
    }
    return bloco;
}

Posicao digitsOf(quint32 numero)
{
    Posicao digitos = 1;
    for (; numero > 9; numero /= 10)
        ++digitos;
    return digitos;
}

/// Length of "[<" i ">".
Posicao abreAula(quint32 i)
{
    return Posicao(kAbreAula.size()) + digitsOf(i) + 1;
}

/// The number of the lesson that opens behind "[<" i ">".
/// @return digits 0 unless a bracket and a line end follow it
NumeroLido aulaQueAbre(std::string_view rest)
{
    const NumeroLido lido = readNumero(rest);
    return rest.substr(lido.digitos).starts_with(kFechaAula) ? lido : NumeroLido();
}

/// Finds all numbered markers in one pass from bracket to bracket.
void Leitor::collectMarcas()
{
    std::vector<MarcaNumerada> roteiros;
    std::vector<MarcaNumerada> aulas;
    for (std::size_t at = mTexto.find('['); at != std::string_view::npos; at = mTexto.find('[', at + 1)) {
        if (mTexto.substr(at).starts_with(kAbreRoteiro)) {
            ++mNumRoteiros;
            const std::optional<MarcaNumerada> marca = roteiroAt(at);
            if (marca)
                roteiros.push_back(*marca);
            if (mPlanta)
                mPlanta->marcas.push_back({marca ? int(marca->numero) : 0, 0, qint64(at), 0});
        } else if (const std::optional<MarcaNumerada> marca = aulaAt(at)) {
            aulas.push_back(*marca);
            const NumeroLido aula = aulaQueAbre(mTexto.substr(at + abreAula(marca->numero)));
            if (mPlanta)
                mPlanta->marcas.push_back(
                    {int(marca->numero), aula.digitos > 0 ? int(aula.numero) : -1, qint64(at), 0});
        }
    }
    mRoteiros.build(roteiros, mNumRoteiros + 1);
    mAulas.build(aulas, mNumRoteiros);
}

/// "[ROT<" number ">]"
std::optional<MarcaNumerada> Leitor::roteiroAt(std::size_t at) const
{
    const std::string_view rest = mTexto.substr(at + kAbreRoteiro.size());
    const NumeroLido lido = readNumero(rest);
    if (lido.digitos == 0 || !rest.substr(lido.digitos).starts_with(">]"))
        return std::nullopt;
    return MarcaNumerada{lido.numero, Posicao(at)};
}

/// "[<" number ">", whatever follows
std::optional<MarcaNumerada> Leitor::aulaAt(std::size_t at) const
{
    if (!mTexto.substr(at).starts_with(kAbreAula))
        return std::nullopt;
    const std::string_view rest = mTexto.substr(at + kAbreAula.size());
    const NumeroLido lido = readNumero(rest);
    if (lido.digitos == 0 || !rest.substr(lido.digitos).starts_with('>'))
        return std::nullopt;
    return MarcaNumerada{lido.numero, Posicao(at)};
}

void Leitor::noteSecao(quint32 roteiro, quint32 aula, const Trecho &secao)
{
    if (mPlanta)
        mPlanta->secoes.push_back({int(roteiro), int(aula), qint64(secao.begin), qint64(secao.end)});
}

/// The text of section i, without its opening marker; nothing when the section is missing or empty.
std::optional<Trecho> Leitor::roteiroSection(quint32 i) const
{
    constexpr Posicao kFechaRoteiro = 2; // ">]"
    const Posicao opens = mRoteiros.firstFrom(i, 0);
    if (opens == kNenhum)
        return std::nullopt;
    Trecho secao{opens + Posicao(kAbreRoteiro.size()) + digitsOf(i) + kFechaRoteiro, Posicao(mTexto.size())};
    const Posicao next = mRoteiros.firstFrom(i + 1, secao.begin);
    // Kept: where the next section follows at once, this one runs to the end of the text and reads that one's fields.
    if (next != kNenhum && next != secao.begin)
        secao.end = next;
    return secao.isEmpty() ? std::nullopt : std::optional(secao);
}

/// The value between the first occurrence of one marker and the next of another; empty when one of them is missing.
Trecho Leitor::between(const Trecho &secao, ProximaMarca &abre, ProximaMarca &fecha)
{
    const Posicao opens = abre.find(secao.begin);
    if (opens == kNenhum || opens + abre.size() > secao.end)
        return {};
    const Posicao begin = opens + abre.size();
    const Posicao end = fecha.find(begin);
    if (end == kNenhum || end + fecha.size() > secao.end)
        return {};
    return {begin, end};
}

bool Leitor::spend(qsizetype characters)
{
    mBudget -= characters;
    if (mBudget < 0)
        mEnded = true;
    return !mEnded;
}

QString Leitor::text(const Trecho &trecho)
{
    if (trecho.isEmpty() || !spend(qsizetype(trecho.end - trecho.begin)))
        return {};
    const std::string_view bytes = view(trecho);
    return decode1252(QByteArrayView(bytes.data(), qsizetype(bytes.size())));
}

void Leitor::readHead(const Trecho &secao, RoteiroRec &roteiro)
{
    roteiro.Nome = text(between(secao, mNomeRot, mFimLinha));
    try {
        roteiro.Cod = inteiro32(valorNumerico(text(between(secao, mCodRot, mFimLinha))));
    } catch (const ErroExecucao &) { // too large
        mEnded = true;
    }
    // Kept: compared exactly; with a blank behind the "=" it is an ordinary Roteiro.
    if (!mEnded && roteiro.Nome != "CALC"_L1)
        readButton(secao, roteiro);
}

void Leitor::readButton(const Trecho &secao, RoteiroRec &roteiro)
{
    roteiro.Fig = text(between(secao, mFig, mFimLinha));
    roteiro.Som = text(between(secao, mSom, mFimLinha));
    Trecho desc = between(secao, mDesc, mFimDesc);
    while (!desc.isEmpty() && mTexto[desc.begin] == ' ')
        ++desc.begin;
    while (!desc.isEmpty() && mTexto[desc.end - 1] == ' ')
        --desc.end;
    roteiro.Desc = text(desc);
    roteiro.Nivel = text(between(secao, mNivel, mFimLinha));
    roteiro.Disc = text(between(secao, mDisc, mFimLinha));
    if (spend(roteiro.Nome.size() + roteiro.Desc.size()))
        roteiro.Titulo = roteiro.Nome + " - "_L1 + roteiro.Desc;
}

void Leitor::readAulas(const Trecho &secao, quint32 i, RoteiroRec &roteiro)
{
    if (mEnded)
        return;
    const std::span<const Posicao> todas = mAulas.of(i);
    const Posicao comprimento = abreAula(i);
    const auto first = std::lower_bound(todas.begin(), todas.end(), secao.begin);
    const auto last = std::partition_point(first, todas.end(), [&](Posicao l) { return l + comprimento <= secao.end; });
    const std::span<const Posicao> abre(first, last);
    const quint32 numAulas = quint32(abre.size());
    roteiro.Aulas.dimension(int(numAulas));
    if (abre.empty())
        return;
    collectAulas(secao, abre, comprimento);
    quint32 stored = 0;
    for (quint32 j = 1; j <= numAulas && !mEnded; ++j) {
        Trecho aula{mAulaOpens[j], secao.end};
        if (aula.begin == kNenhum || aula.isEmpty())
            continue;
        const Posicao next = mAulaEnds.firstFrom(j + 1, aula.begin);
        if (next != kNenhum && next != aula.begin)
            aula.end = next;
        if (!spend(qsizetype(j - stored) * qsizetype(sizeof(AulaRec) / sizeof(QChar))))
            return;
        stored = j;
        noteSecao(i, j, aula);
        readAula(aula, roteiro.Aulas.edit(int(j)));
    }
}

/// Where the lessons of a Roteiro begin and end.
/// @param abre  places of "[<" i ">", each `comprimento` long
void Leitor::collectAulas(const Trecho &secao, std::span<const Posicao> abre, Posicao comprimento)
{
    const quint32 numAulas = quint32(abre.size());
    mAulaOpens.assign(std::size_t(numAulas) + 1, kNenhum);
    mScratch.clear();
    for (const Posicao posicao : abre) {
        const std::string_view rest = view({posicao + comprimento, secao.end});
        const NumeroLido lido = aulaQueAbre(rest);
        if (lido.digitos > 0 && lido.numero <= numAulas && mAulaOpens[lido.numero] == kNenhum)
            mAulaOpens[lido.numero] = posicao + comprimento + lido.digitos + Posicao(kFechaAula.size());
        if (posicao < secao.begin + kFimLinha.size()
            || mTexto.substr(posicao - kFimLinha.size(), kFimLinha.size()) != kFimLinha)
            continue;
        // Kept: the end marker has no closing bracket, so lesson 1 also ends before lesson 20.
        quint64 prefix = 0;
        for (const char c : rest) {
            if (c < '0' || c > '9' || (prefix == 0 && c == '0'))
                break;
            prefix = prefix * 10 + quint64(c - '0');
            if (prefix > numAulas + 1)
                break;
            mScratch.push_back({quint32(prefix), posicao - Posicao(kFimLinha.size())});
        }
    }
    mAulaEnds.build(mScratch, numAulas + 1);
}

void Leitor::readAula(const Trecho &secao, AulaRec &aula)
{
    aula.Nome = text(between(secao, mNome, mFimLinha));
    const Trecho linha = between(secao, mLinha, mFimDaLinha);
    aula.Linha = text(linha);
    Trecho tipo = between(secao, mTipo, mTab);
    if (!tipo.isEmpty()) {
        const Posicao fimLinha = mFimLinha.find(tipo.begin);
        if (fimLinha != kNenhum && fimLinha + kFimLinha.size() <= tipo.end)
            tipo.end = fimLinha;
    }
    aula.Tipo = text(tipo);
    aula.Jogo = text(between(secao, mJogo, mFimJogo));

    aula.Cod = textoDecimal(valorNumerico(text(codigoDe(linha))));
}

/// What stands behind the ")" in the first field of a Linha.
Trecho Leitor::codigoDe(const Trecho &linha)
{
    if (linha.isEmpty())
        return {};
    const Posicao end = mFimCampo.find(linha.begin);
    if (end == kNenhum || end + mFimCampo.size() > linha.end)
        return {};
    const std::size_t parentese = view({linha.begin, end}).find(')');
    return parentese == std::string_view::npos ? Trecho() : Trecho{linha.begin + Posicao(parentese) + 1, end};
}

std::string_view viewOf(QByteArrayView bytes)
{
    return {bytes.data(), std::size_t(bytes.size())};
}

} // namespace

Bloco leBloco(QByteArrayView texto, PlantaBloco *planta)
{
    return Leitor(viewOf(texto), planta).le();
}

QString textoEntre(QByteArrayView texto, QByteArrayView antes, QByteArrayView depois)
{
    const std::string_view inteiro = viewOf(texto);
    const std::size_t opens = inteiro.find(viewOf(antes));
    if (opens == std::string_view::npos)
        return {};
    const std::size_t begin = opens + viewOf(antes).size();
    const std::size_t end = inteiro.find(viewOf(depois), begin);
    if (end == std::string_view::npos)
        return {};
    return decode1252(texto.sliced(qsizetype(begin), qsizetype(end - begin)));
}

} // namespace quorel
