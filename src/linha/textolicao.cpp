#include "linha/textolicao.h"

#include "linha/partes.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

/// Lines end in "\n", and other control characters, which no font shows, are blanks.
QString shown(QStringView text)
{
    QString clean = text.toString();
    clean.replace("\r\n"_L1, "\n"_L1);
    std::replace_if(
        clean.begin(), clean.end(), [](QChar c) { return c < u' ' && c != u'\n' && c != u'\t'; }, u' ');
    return clean.trimmed();
}

/// The pieces as the text gives them; those of the second list are not meant to be seen.
struct Pecas
{
    std::vector<PecaRec> mostradas;
    std::vector<PecaRec> ocultas;
    QString codigo;
    int tipo = 0;
};

Pecas readPieces(QStringView block)
{
    Pecas pecas;
    bool first = true;
    std::vector<QStringView> pieces;
    std::vector<QStringView> fields;
    splitAtMark(block, kMarcaPeca, pieces);
    for (const QStringView piece : pieces) {
        if (piece.size() <= kVazio || pecas.mostradas.size() + pecas.ocultas.size() == kMaxPecas)
            continue;
        splitAtMark(piece, kMarcaCampo, fields);
        if (first) {
            pecas.codigo = fieldOf(fields, PecaCod).trimmed().toString();
            pecas.tipo = fieldOf(fields, PecaTipo).trimmed().toInt();
            first = false;
        }
        PecaRec rec{shown(fieldOf(fields, PecaTitulo)), shown(fieldOf(fields, PecaTexto)),
            fieldOf(fields, PecaFig).trimmed().toString(), fieldOf(fields, PecaSom).trimmed().toString()};
        const bool mostrada = fieldOf(fields, PecaMostrada).trimmed() == u"1";
        (mostrada ? pecas.mostradas : pecas.ocultas).push_back(std::move(rec));
    }
    return pecas;
}

std::vector<OpcaoRec> readOptions(QStringView block)
{
    std::vector<OpcaoRec> opcoes;
    std::vector<QStringView> options;
    std::vector<QStringView> fields;
    splitAtMark(block, kMarcaOpcao, options);
    for (const QStringView option : options) {
        if (option.size() <= kVazio || opcoes.size() == kMaxOpcoes)
            continue;
        splitAtTab(option, fields);
        const QStringView certa = fieldOf(fields, OpcaoCerta).trimmed();
        OpcaoRec rec{shown(fieldOf(fields, OpcaoTexto)), fieldOf(fields, OpcaoFig).trimmed().toString(), certa == u"1",
            std::max(0, certa.toInt())};
        if (!rec.Texto.isEmpty() || !rec.Fig.isEmpty())
            opcoes.push_back(std::move(rec));
    }
    return opcoes;
}

QStringList readExpected(QStringView field)
{
    QStringList expected;
    for (const QStringView answer : field.tokenize(u'|')) {
        if (const QString clean = shown(answer); !clean.isEmpty())
            expected.push_back(clean);
    }
    return expected;
}

/// The kind that the lesson can really be played as.
TipoExercicio playable(int wanted, const LicaoRec &licao)
{
    const auto certas = std::ranges::count_if(licao.Opcoes, &OpcaoRec::Certa);
    const auto ordered = std::ranges::count_if(licao.Opcoes, [](const OpcaoRec &o) { return o.Lugar > 0; });
    const bool known = wanted >= int(TipoExercicio::Pagina) && wanted <= int(TipoExercicio::Historia);
    if (!known)
        return certas == 0 ? TipoExercicio::Pagina : certas == 1 ? TipoExercicio::Uma : TipoExercicio::Todas;
    switch (const auto tipo = TipoExercicio(wanted)) {
    case TipoExercicio::Uma:
    case TipoExercicio::Todas:
        return certas > 0 ? tipo : TipoExercicio::Pagina;
    case TipoExercicio::Digitada:
        return licao.Esperadas.isEmpty() ? TipoExercicio::Pagina : tipo;
    case TipoExercicio::Ordem:
        return ordered > 1 && ordered == std::ssize(licao.Opcoes) ? tipo : TipoExercicio::Pagina;
    default:
        return tipo;
    }
}

/// Options that the kind does nothing with are not kept.
bool usesOptions(const LicaoRec &licao)
{
    switch (licao.Tipo) {
    case TipoExercicio::Uma:
    case TipoExercicio::Todas:
    case TipoExercicio::Ordem:
        return true;
    case TipoExercicio::Historia:
        return std::ranges::any_of(licao.Opcoes, &OpcaoRec::Certa);
    default:
        return false;
    }
}

} // namespace

LicaoRec leLicao(QStringView linha)
{
    LicaoRec licao;
    const PartesDaLinha partes = parteLinha(linha);
    licao.Avulsa = partes.avulsa;
    Pecas pecas;
    if (partes.comCampos) {
        pecas = readPieces(partes.pecas);
    } else {
        std::vector<QStringView> pieces;
        splitAtMark(partes.pecas, kMarcaPeca, pieces);
        pecas.mostradas.emplace_back().Texto = shown(pieces.front());
    }
    licao.Codigo = pecas.codigo;
    licao.Pecas = std::move(pecas.mostradas.empty() ? pecas.ocultas : pecas.mostradas);
    if (licao.Pecas.empty())
        licao.Pecas.emplace_back();

    std::vector<QStringView> fields;
    splitAtTab(partes.respostas, fields);
    licao.Esperadas = readExpected(fieldOf(fields, RespostaEsperada));
    licao.Elogio = shown(fieldOf(fields, RespostaElogio));
    licao.Dica = shown(fieldOf(fields, RespostaDica));
    licao.Opcoes = readOptions(partes.opcoes);
    licao.Tipo = playable(pecas.tipo, licao);
    if (!usesOptions(licao))
        licao.Opcoes.clear();
    return licao;
}

bool temResposta(const LicaoRec &licao)
{
    return !licao.Opcoes.empty() || licao.Tipo == TipoExercicio::Digitada;
}

} // namespace quorel
