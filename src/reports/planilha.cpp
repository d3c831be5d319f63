#include "reports/planilha.h"

#include "data/bd.h"
#include "data/campos.h"
#include "platform/erro.h"
#include "reports/indice.h"
#include "reports/textos.h"
#include "startup/texto_util.h"
#include "startup/valor.h"

namespace quorel {

using namespace Qt::StringLiterals;

namespace {

/// The lines of each discipline: date, name, right and wrong answers, tabs between them.
using ListasPorDisciplina = std::array<QStringList, kNumDisciplinas>;

const QString &tituloDe(DisciplinaRelatorio disciplina)
{
    static const std::array<QString, kNumDisciplinas> titulos{kCiencias, kMatematica, kPortugues, kDesenv};
    return titulos[std::size_t(disciplina)];
}

ListasPorDisciplina separaPorDisciplina(const std::vector<LinhaLog> &log, const IndiceRoteiros &indice)
{
    ListasPorDisciplina listas;
    for (const LinhaLog &linha : log) {
        const auto achado = linha.codigo > 0 ? indice.procura(linha.codigo) : std::nullopt;
        if (!achado)
            continue;
        const QString respostas = gTexto.TextoDepois(linha.respostas, u"<rot>"_s);
        const QStringList campos{linha.data, achado->nome.toString(), QString::number(respostas.count(u'A')),
            QString::number(respostas.count(u'E'))};
        listas[std::size_t(achado->disciplina)] << campos.join(u'\t');
    }
    return listas;
}

/// Adds to a 16-bit counter. @throws ErroExecucao 6
void soma(qint16 &contador, qint16 valor)
{
    contador = inteiro16(contador + valor);
}

/// Fills the sheet step by step, so that a failure leaves what was done before it.
class Montagem final
{
public:
    explicit Montagem(Planilha &planilha) : mPlanilha(planilha) { }

    /// One discipline: title, lines, total. Nothing when it has no line.
    void addDisciplina(const QString &titulo, const QStringList &lista, int fatia);
    void addTotalGeral();

private:
    void addLinha(const QString &linha, Marcas &marcas);
    void addRow(LinhaPlanilha celulas) { mPlanilha.linhas.push_back(std::move(celulas)); }

    Planilha &mPlanilha;
    Marcas mTotalGeral;
};

LinhaPlanilha linhaDeTotal(const QString &rotulo, const Marcas &marcas)
{
    return {QString(), rotulo, QString::number(marcas.acertos), QString::number(marcas.erros)};
}

void Montagem::addLinha(const QString &linha, Marcas &marcas)
{
    const auto field = [&linha](int n) { return gTexto.Campo(linha, n, u"\t"_s, 1); };
    addRow({field(1), field(2), QString(), QString()});
    const QString acertos = field(3);
    soma(marcas.acertos, textoInteiro16(acertos));
    mPlanilha.linhas.back()[2] = acertos;
    const QString erros = field(4);
    soma(marcas.erros, textoInteiro16(erros));
    mPlanilha.linhas.back()[3] = erros;
}

void Montagem::addDisciplina(const QString &titulo, const QStringList &lista, int fatia)
{
    if (lista.isEmpty())
        return;
    Marcas marcas;
    addRow({titulo, QString(), QString(), QString()});
    for (const QString &linha : lista)
        addLinha(linha, marcas);
    addRow(linhaDeTotal(u"*** TOTAL ***"_s, marcas));
    mPlanilha.resumo[std::size_t(fatia)] = marcas;
    soma(mTotalGeral.acertos, marcas.acertos);
    soma(mTotalGeral.erros, marcas.erros);
}

void Montagem::addTotalGeral()
{
    addRow({});
    addRow(linhaDeTotal(u"*** TOTAL GERAL***"_s, mTotalGeral));
}

void preenche(const ListasPorDisciplina &listas, const EscolhaDisciplinas &escolha, Planilha &planilha)
{
    using enum DisciplinaRelatorio;
    Montagem montagem(planilha);
    const auto add = [&](DisciplinaRelatorio disciplina, int fatia) {
        montagem.addDisciplina(tituloDe(disciplina), listas[std::size_t(disciplina)], fatia);
    };
    if (escolha.todas) {
        // Kept: the summary has three slots, so Desenv. Sensorio Motor is not among "all".
        int fatia = 0;
        for (const DisciplinaRelatorio disciplina : {Ciencias, Matematica, Portugues})
            add(disciplina, fatia++);
        montagem.addTotalGeral();
        return;
    }
    const QString nome = gTexto.Campo(escolha.linha, 1, u"\t"_s, 1);
    for (const DisciplinaRelatorio disciplina : {Ciencias, Matematica, Portugues, Desenv}) {
        if (nome == tituloDe(disciplina))
            add(disciplina, 0);
    }
}

/// The log rows from the current one to the last.
std::vector<LinhaLog> leLog()
{
    std::vector<LinhaLog> log;
    while (!gBD->FimDeArquivo(kLogAulas)) {
        LinhaLog linha;
        linha.codigo = gBD->Campo(u"RO_COD"_s, kLogAulas).toInt(); // a Null comes as an empty text
        if (linha.codigo > 0) {
            linha.respostas = variantText(gBD->Campo(u"LG_Resp"_s, kLogAulas));
            linha.data = variantText(gBD->Campo(u"LG_DATA"_s, kLogAulas));
        }
        log.push_back(std::move(linha));
        gBD->MoveProximoRegistro(kLogAulas);
    }
    return log;
}

Planilha soCabecalho()
{
    return {{{u"Data"_s, u"Nome do Roteiro"_s, u"Acertos"_s, u"Erros"_s}}, {}, false};
}

} // namespace

Planilha contaMarcas(const std::vector<LinhaLog> &log, const IndiceRoteiros &indice, const EscolhaDisciplinas &escolha)
{
    Planilha planilha = soCabecalho();
    try {
        if (!log.empty()) // without any row not even a total is shown
            preenche(separaPorDisciplina(log, indice), escolha, planilha);
        planilha.completa = true;
    } catch (const ErroExecucao &) { // completa tells it
    }
    return planilha;
}

std::optional<Planilha> montaPlanilha(const EscolhaDisciplinas &escolha)
{
    try {
        if (gBlocosArq.size() == 1)
            indexaBlocos();
    } catch (const ErroExecucao &) {
        return std::nullopt;
    }
    try {
        const bool anyRow = gBD->NumeroTotalDeRegistros(kLogAulas) > 0;
        const std::vector<LinhaLog> log = anyRow ? leLog() : std::vector<LinhaLog>();
        return contaMarcas(log, IndiceRoteiros(), escolha);
    } catch (const ErroExecucao &) { // of the record set: the sheet is already cleared
        return soCabecalho();
    }
}

} // namespace quorel
