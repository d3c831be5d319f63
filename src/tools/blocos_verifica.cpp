#include "tools/blocos_verifica.h"

#include "catalogue/catalogo.h"
#include "catalogue/leitor_blocos.h"
#include "catalogue/marcas.h"
#include "catalogue/vistas.h"
#include "platform/caminho.h"
#include "platform/erro.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"
#include "startup/valor.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <optional>

namespace quorel::blocos {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QStringView, 8> kTipos{
    u"Zeto", u"Desenho", u"Vrel", u"Livros", u"Dicionario", u"Calc", u"Calculadora", u"HTML"};

constexpr qsizetype kMinimoDeAula = 6; ///< a shorter Linha of the calculator is a code

QString nameOf(const LugarBloco &lugar)
{
    return lugar.aula == 0 ? u"Roteiro %1"_s.arg(lugar.roteiro)
                           : u"Aula %1 do Roteiro %2"_s.arg(lugar.aula).arg(lugar.roteiro);
}

/// The examination of one file.
class Exame final
{
public:
    Exame(const ArquivoDeBloco &arquivo, const QByteArray &texto, bool comArquivos, QHash<int, QString> &codigos)
        : mArquivo(arquivo), mTexto(texto), mComArquivos(comArquivos), mCodigos(codigos),
          mBloco(leBloco(texto, &mPlanta))
    { }

    std::vector<Achado> run();

private:
    void nameAndLineEnds();
    void openings();
    void missingNumbers();
    void order();
    void roteiro(int i, const LugarBloco &secao);
    void roteiroCode(int i, const LugarBloco &secao);
    void media(const RoteiroRec &r, const LugarBloco &secao);
    void aula(const LugarBloco &secao);
    void aulaType(const AulaRec &a, const LugarBloco &secao, const QString &qual);
    void html(const AulaRec &a, const LugarBloco &secao, const QString &qual);
    bool calcHolds(const QString &codigo);

    /// Whether a failure ended the reading before this Roteiro.
    bool isBehindStop(int i) const { return i > mBloco.lidos && mBloco.lidos < mBloco.roteiros.upperBound(); }
    qint64 placeOfStop();
    qint64 placeOf(const LugarBloco &secao, ProximaMarca &marca) const;
    int lineOf(qint64 lugar);
    void add(qint64 lugar, const QString &texto) { mAchados.push_back({mArquivo.caminho, lineOf(lugar), texto}); }

    const ArquivoDeBloco &mArquivo;
    const QByteArray &mTexto;
    bool mComArquivos;
    QHash<int, QString> &mCodigos;
    PlantaBloco mPlanta;
    Bloco mBloco;
    std::vector<Achado> mAchados;
    std::vector<qint64> mLinhas; ///< places of the line feeds
    QSet<std::pair<int, int>> mOpened; ///< Roteiro and Aula of every marker
    QSet<QString> mCodigosCalc;
    std::optional<QSet<double>> mCodigosDoUltimo; ///< of the Aulas of the last Roteiro, once they are asked for

    // Sections of a damaged file may overlap: each marker is sought in one pass over the text for all of them.
    std::string_view mVista{mTexto.constData(), std::size_t(mTexto.size())};
    ProximaMarca mCodRot{mVista, "CODROT:"};
    ProximaMarca mFig{mVista, "FIG:"};
    ProximaMarca mSom{mVista, "SOM:"};
    ProximaMarca mLinha{mVista, "Linha ="};
    ProximaMarca mTipo{mVista, "Tipo = "};
};

int Exame::lineOf(qint64 lugar)
{
    if (mLinhas.empty()) {
        for (qsizetype at = mTexto.indexOf('\n'); at >= 0; at = mTexto.indexOf('\n', at + 1))
            mLinhas.push_back(at);
    }
    return 1 + int(std::lower_bound(mLinhas.begin(), mLinhas.end(), lugar) - mLinhas.begin());
}

qint64 Exame::placeOf(const LugarBloco &secao, ProximaMarca &marca) const
{
    const Posicao at = marca.find(Posicao(secao.begin));
    return at == kNenhum || qint64(at) + marca.size() > secao.end ? -1 : qint64(at);
}

qint64 Exame::placeOfStop()
{
    if (mPlanta.secoes.empty())
        return 0;
    const LugarBloco &last = mPlanta.secoes.back();
    return qMax(last.begin, last.aula == 0 ? placeOf(last, mCodRot) : -1);
}

std::vector<Achado> Exame::run()
{
    nameAndLineEnds();
    openings();
    missingNumbers();
    order();
    for (const LugarBloco &secao : mPlanta.secoes) {
        if (isBehindStop(secao.roteiro))
            continue;
        if (secao.aula == 0)
            roteiro(secao.roteiro, secao);
        else
            aula(secao);
    }
    if (isBehindStop(mBloco.lidos + 1))
        add(placeOfStop(),
            u"a leitura acaba no Roteiro %1: código que não cabe em 32 bits, ou seções que se sobrepõem demais"_s.arg(
                mBloco.lidos + 1));
    std::stable_sort(
        mAchados.begin(), mAchados.end(), [](const Achado &a, const Achado &b) { return a.linha < b.linha; });
    return std::move(mAchados);
}

void Exame::nameAndLineEnds()
{
    try {
        const CabecaBloco cabeca = leCabeca(mArquivo.nome, mArquivo.nivel, backslashPath(mArquivo.caminho));
        if (cabeca.disciplina.isEmpty())
            add(0,
                u"o nome do arquivo não traz um código de disciplina conhecido antes do nível %1"_s.arg(
                    mArquivo.nivel));
    } catch (const ErroExecucao &) {
        add(0, u"o catálogo não lê o nome do arquivo: tem de começar com dois algarismos do mês e dois do ano"_s);
    }
    for (qsizetype at = mTexto.indexOf('\n'); at >= 0; at = mTexto.indexOf('\n', at + 1)) {
        if (at == 0 || mTexto[at - 1] != '\r') {
            add(at, u"linha que termina só com LF, sem CR"_s);
            break;
        }
    }
}

/// Markers that open nothing: without a number, a second time, outside their section or beyond the count.
void Exame::openings()
{
    QSet<std::pair<int, int>> read;
    for (const LugarBloco &secao : mPlanta.secoes)
        read.insert({secao.roteiro, secao.aula});
    for (const LugarBloco &marca : mPlanta.marcas) {
        const QString qual = nameOf(marca);
        if (marca.roteiro == 0)
            add(marca.begin, u"marca [ROT< sem número, ou sem >] atrás dele"_s);
        else if (marca.aula < 0)
            add(marca.begin,
                u"marca [<%1> sem número de Aula, ou sem ] e fim de linha atrás dele"_s.arg(marca.roteiro));
        else if (mOpened.contains({marca.roteiro, marca.aula}))
            add(marca.begin, qual + u" aparece outra vez: só vale a primeira"_s);
        else if (!read.contains({marca.roteiro, marca.aula}) && !isBehindStop(marca.roteiro))
            add(marca.begin, qual + u": o programa nunca lê esta seção"_s);
        mOpened.insert({marca.roteiro, marca.aula});
    }
}

void Exame::missingNumbers()
{
    for (int i = 1; i <= mBloco.roteiros.upperBound(); ++i) {
        if (!mOpened.contains({i, 0}))
            add(0, u"falta o Roteiro %1 na numeração"_s.arg(i));
    }
    for (const LugarBloco &secao : mPlanta.secoes) {
        const Vetor<AulaRec> &aulas = mBloco.roteiros[secao.roteiro].Aulas;
        if (secao.aula != 0 || !aulas.isDimensioned())
            continue;
        for (int j = 1; j <= aulas.upperBound(); ++j) {
            if (!mOpened.contains({secao.roteiro, j}))
                add(secao.begin, u"falta a Aula %1 na numeração do Roteiro %2"_s.arg(j).arg(secao.roteiro));
        }
    }
}

/// A section that holds the opening of another one: the next number does not follow it.
void Exame::order()
{
    std::vector<LugarBloco> roteiros;
    std::copy_if(mPlanta.marcas.begin(), mPlanta.marcas.end(), std::back_inserter(roteiros),
        [](const LugarBloco &marca) { return marca.aula == 0; });
    for (const LugarBloco &secao : mPlanta.secoes) {
        if (secao.aula != 0)
            continue;
        const auto next = std::lower_bound(roteiros.begin(), roteiros.end(), secao.begin,
            [](const LugarBloco &marca, qint64 lugar) { return marca.begin < lugar; });
        if (next != roteiros.end() && next->begin < secao.end)
            add(secao.begin,
                u"a seção do Roteiro %1 contém a de outro: o número seguinte não vem logo depois"_s.arg(secao.roteiro));
    }
}

void Exame::roteiro(int i, const LugarBloco &secao)
{
    const RoteiroRec &r = mBloco.roteiros[i];
    if (r.Nome == "CALC"_L1) {
        if (i != mBloco.roteiros.upperBound())
            add(secao.begin, u"CALC não é o último Roteiro: a calculadora não acha as suas Aulas"_s);
        return;
    }
    if (r.Nome.trimmed() == "CALC"_L1)
        add(secao.begin, u"CALC com branco antes ou depois é um Roteiro comum"_s);
    if (r.Nome.isEmpty())
        add(secao.begin, u"Roteiro %1 sem nome (NomeRot =)"_s.arg(i));
    roteiroCode(i, secao);
    if (i > kNumBotoes)
        add(secao.begin, u"Roteiro %1 não tem botão: a janela mostra %2"_s.arg(i).arg(kNumBotoes));
    if (mComArquivos)
        media(r, secao);
}

void Exame::roteiroCode(int i, const LugarBloco &secao)
{
    const int cod = mBloco.roteiros[i].Cod;
    const qint64 lugar = qMax(secao.begin, placeOf(secao, mCodRot));
    if (cod == 0) {
        add(lugar, u"Roteiro %1 com código (CODROT:) ausente ou 0"_s.arg(i));
        return;
    }
    if (mCodigos.contains(cod))
        add(lugar, u"código %1 já usado em %2"_s.arg(cod).arg(mCodigos[cod]));
    else
        mCodigos[cod] = u"%1:%2"_s.arg(mArquivo.caminho).arg(lineOf(lugar));
}

void Exame::media(const RoteiroRec &r, const LugarBloco &secao)
{
    if (!r.Fig.isEmpty() && gConfig.N_Fig(r.Fig).isEmpty())
        add(placeOf(secao, mFig), u"figura não encontrada: %1"_s.arg(r.Fig));
    if (!r.Som.isEmpty() && gConfig.N_Som(r.Som).isEmpty())
        add(placeOf(secao, mSom), u"som não encontrado: %1"_s.arg(r.Som));
}

void Exame::aula(const LugarBloco &secao)
{
    const RoteiroRec &r = mBloco.roteiros[secao.roteiro];
    const AulaRec &a = r.Aulas[secao.aula];
    const QString qual = nameOf(secao);
    if (a.Linha.isEmpty()) {
        const qint64 lugar = placeOf(secao, mLinha);
        add(qMax(secao.begin, lugar),
            lugar < 0 ? qual + u" sem Linha"_s
                      : qual + u": a Linha está vazia ou nunca acaba (falta CR LF TAB e \"Tipo = \")"_s);
    } else if (a.Tipo == "Calc"_L1 && a.Linha.size() < kMinimoDeAula) {
        if (!calcHolds(a.Linha))
            add(placeOf(secao, mLinha), qual + u": o último Roteiro não tem a Aula de código %1"_s.arg(a.Linha));
    } else if (a.Cod == "0"_L1) {
        add(placeOf(secao, mLinha), qual + u" com código ausente ou 0 no começo da Linha"_s);
    } else if (r.Nome == "CALC"_L1) {
        if (mCodigosCalc.contains(a.Cod))
            add(placeOf(secao, mLinha), qual + u": código %1 já usado em CALC, só vale o primeiro"_s.arg(a.Cod));
        mCodigosCalc.insert(a.Cod);
    }
    aulaType(a, secao, qual);
}

/// Whether the last Roteiro, where the launcher looks a calculator's code up, has an Aula of that code.
bool Exame::calcHolds(const QString &codigo)
{
    if (!mCodigosDoUltimo) {
        mCodigosDoUltimo.emplace();
        const Vetor<AulaRec> &aulas = mBloco.roteiros[mBloco.roteiros.upperBound()].Aulas;
        for (int j = 1; aulas.isDimensioned() && j <= aulas.upperBound(); ++j)
            mCodigosDoUltimo->insert(valorNumerico(aulas[j].Cod));
    }
    return mCodigosDoUltimo->contains(valorNumerico(codigo));
}

void Exame::aulaType(const AulaRec &a, const LugarBloco &secao, const QString &qual)
{
    const qint64 lugar = placeOf(secao, mTipo);
    if (lugar < 0)
        add(secao.begin, qual + u" sem Tipo"_s);
    else if (a.Tipo.isEmpty())
        add(lugar, qual + u": Tipo vazio ou sem tabulação atrás dele"_s);
    else if (std::find(kTipos.begin(), kTipos.end(), a.Tipo) == kTipos.end())
        add(lugar, qual + u": tipo desconhecido: %1"_s.arg(a.Tipo));
    else if (a.Tipo == "HTML"_L1 && mComArquivos)
        html(a, secao, qual);
}

void Exame::html(const AulaRec &a, const LugarBloco &secao, const QString &qual)
{
    constexpr int kCampoArquivo = 9;
    const QString nome = gTexto.Campo(a.Linha, kCampoArquivo, u"<SPÇ>"_s, 1);
    const QString diretorio = gConfig.Config(u"DIRQUOREL"_s);
    // The shell asks for the first and opens the second.
    QStringList bases{gSistema.DirWindows() + u"\\QUOREL2001"_s};
    if (!diretorio.isEmpty())
        bases += diretorio;
    for (const QString &base : bases) {
        const QString caminho = base + u"\\Arqs\\"_s + nome;
        if (nome.isEmpty() || !gTexto.ArquivoExiste(caminho)) {
            add(placeOf(secao, mLinha), qual + u": arquivo da aula HTML não encontrado: "_s + nativePath(caminho));
            return;
        }
    }
}

} // namespace

std::vector<Achado> Verificador::verifica(const ArquivoDeBloco &arquivo, const QByteArray &texto)
{
    return Exame(arquivo, texto, mComArquivos, mCodigos).run();
}

} // namespace quorel::blocos
