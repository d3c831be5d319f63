#include "reports/planilha.h"

#include "data/bd.h"
#include "data/campos.h"
#include "data/recordset.h"
#include "platform/erro.h"
#include "reports/indice.h"
#include "reports/textos.h"
#include "startup/texto_util.h"
#include "startup/valor.h"

namespace quorel {

using namespace Qt::StringLiterals;

namespace {

/// Of a log row: date and name, and the right and wrong answers as numbers.
struct LinhaContada
{
    QString data;
    QString nome;
    qsizetype acertos;
    qsizetype erros;
};
using ListasPorDisciplina = std::array<std::vector<LinhaContada>, kNumDisciplinas>;

const QString &tituloDe(DisciplinaRelatorio disciplina)
{
    static const std::array<QString, kNumDisciplinas> titulos{kCiencias, kMatematica, kPortugues, kDesenv};
    return titulos[std::size_t(disciplina)];
}

/// A field as it would be found again between tabs; the text itself, shared, where it has no blanks around it.
QString campo(const QString &texto)
{
    const QStringView inner = semBrancos(texto);
    return inner.size() == texto.size() ? texto : inner.toString();
}

/// Puts log rows into the lists of their disciplines.
class Separacao final
{
public:
    Separacao() = default;

    /// What the index knows of a row's code; nothing for a row that adds nothing.
    std::optional<IndiceRoteiros::Achado> roteiro(qint32 codigo) const
    {
        return codigo > 0 ? mIndice.procura(codigo) : std::nullopt;
    }
    void add(const IndiceRoteiros::Achado &roteiro, const QString &respostas, const QString &data)
    {
        const qsizetype rot = respostas.indexOf(u"<rot>"_s);
        const QStringView letras = QStringView(respostas).sliced(rot < 0 ? respostas.size() : rot);
        mListas[std::size_t(roteiro.disciplina)].push_back(
            {campo(data), semBrancos(roteiro.nome).toString(), letras.count(u'A'), letras.count(u'E')});
    }
    const ListasPorDisciplina &listas() const { return mListas; }

private:
    IndiceRoteiros mIndice;
    ListasPorDisciplina mListas;
};

/// A count as the sheet shows it; most are small, and a report has two a row.
QString textoDaConta(qsizetype conta)
{
    static const auto pequenas = [] {
        std::array<QString, 32> textos;
        for (std::size_t i = 0; i < textos.size(); ++i)
            textos[i] = QString::number(i);
        return textos;
    }();
    return conta < std::ssize(pequenas) ? pequenas[std::size_t(conta)] : QString::number(conta);
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
    void addDisciplina(const QString &titulo, const std::vector<LinhaContada> &lista, int fatia);
    void addTotalGeral();

private:
    void addLinha(const LinhaContada &linha, Marcas &marcas);
    void addPartida(const QString &linha, Marcas &marcas);
    void addRow(LinhaPlanilha celulas) { mPlanilha.linhas.push_back(std::move(celulas)); }

    Planilha &mPlanilha;
    Marcas mTotalGeral;
};

LinhaPlanilha linhaDeTotal(const QString &rotulo, const Marcas &marcas)
{
    return {QString(), rotulo, QString::number(marcas.acertos), QString::number(marcas.erros)};
}

void Montagem::addLinha(const LinhaContada &linha, Marcas &marcas)
{
    const QString acertos = textoDaConta(linha.acertos);
    const QString erros = textoDaConta(linha.erros);
    if (linha.data.contains(u'\t') || linha.nome.contains(u'\t')) {
        addPartida(linha.data + u'\t' + linha.nome + u'\t' + acertos + u'\t' + erros, marcas);
        return;
    }
    addRow({linha.data, linha.nome, QString(), QString()});
    soma(marcas.acertos, inteiro16(double(linha.acertos)));
    mPlanilha.linhas.back()[2] = acertos;
    soma(marcas.erros, inteiro16(double(linha.erros)));
    mPlanilha.linhas.back()[3] = erros;
}

// Kept: the four fields are found again by their tabs, so that one in a name moves the rest, and may end the sheet.
void Montagem::addPartida(const QString &linha, Marcas &marcas)
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

void Montagem::addDisciplina(const QString &titulo, const std::vector<LinhaContada> &lista, int fatia)
{
    if (lista.empty())
        return;
    Marcas marcas;
    addRow({titulo, QString(), QString(), QString()});
    for (const LinhaContada &linha : lista)
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

/// The log rows from the current one to the last. @throws ErroExecucao 6 for a code beyond 32 bits
void leLog(RecordSet &set, Separacao &separacao)
{
    const int codigo = set.fieldNumber(u"RO_COD"_s);
    const int respostas = set.fieldNumber(u"LG_Resp"_s);
    const int data = set.fieldNumber(u"LG_DATA"_s);
    for (; !set.EOF_(); set.MoveNext()) {
        if (const auto roteiro = separacao.roteiro(inteiro32(set.value(codigo).toDouble()))) // a Null is 0
            separacao.add(*roteiro, variantText(set.value(respostas)), variantText(set.value(data)));
    }
}

} // namespace

std::optional<Planilha> montaPlanilha(const EscolhaDisciplinas &escolha)
{
    try {
        if (gBlocosArq.size() == 1)
            indexaBlocos();
    } catch (const ErroExecucao &) {
        return std::nullopt;
    }
    Planilha planilha{{{u"Data"_s, u"Nome do Roteiro"_s, u"Acertos"_s, u"Erros"_s}}, {}, false};
    try {
        if (gBD->NumeroTotalDeRegistros(kLogAulas) > 0) { // else not even a total is shown
            Separacao separacao;
            leLog(*gBD->GetRecordSet(kLogAulas), separacao);
            preenche(separacao.listas(), escolha, planilha);
        }
        planilha.completa = true;
    } catch (const ErroExecucao &) { // completa tells it
    }
    return planilha;
}

} // namespace quorel
