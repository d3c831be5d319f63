#include "reports/paginas.h"

#include "data/bd.h"
#include "platform/codec.h"
#include "platform/erro.h"
#include "reports/html.h"
#include "startup/estado.h"
#include "startup/lugares.h"
#include "startup/quorel_zeto.h"
#include "startup/texto_util.h"

namespace quorel {

using namespace Qt::StringLiterals;

static const QString kSemLargura;

static QString nomeNoCadastro(QString criterio, const QString &alias, const QString &campo)
{
    QString nome;
    ignora([&] { nome = gBD->Pesquisa(criterio, alias, campo, true); });
    return nome;
}

CabecalhoPagina leCabecalho(const QString &dataInicial, const QString &dataFinal)
{
    CabecalhoPagina cabecalho;
    cabecalho.figura = gConfig.N_Fig(u"quorel"_s);
    cabecalho.aluno = nomeNoCadastro(u"AL_Cod= "_s + QString::number(gAluno), u"rsalunos"_s, u"AL_Nome"_s);
    cabecalho.classe = nomeNoCadastro(u"CL_Cod= "_s + QString::number(gClasse), u"rsClasses"_s, u"CL_Nome"_s);
    cabecalho.dataInicial = dataInicial;
    cabecalho.dataFinal = dataFinal;
    return cabecalho;
}

/// What both pages begin with. The table, its row and the block around it stay open.
static void writeHeading(Html &html, const CabecalhoPagina &cabecalho)
{
    html.InicializaHtml(u"OVRA"_s, u"#FFFFFF"_s);
    html.LogoTipo(cabecalho.figura, u"OVRA - Oficina de Vivências em Recursos de Aprendizagem"_s, makerAddress());
    html.Pula_Linha(1);
    html.Negrito();
    html.Font(u"6"_s);
    html.Txt(u"Desempenho"_s, true);
    html.xFont();
    html.xNegrito();
    html.Alinhamento(0);
    html.Font(u"1"_s);
    html.Borda(true, 1, kSemLargura);
    html.BordaLinha();
    html.Font(u"4"_s);
    html.Txt(u"Aluno: "_s + cabecalho.aluno + u"  Classe: "_s + cabecalho.classe, true);
    html.xFont();
    html.Font(u"4"_s);
    html.Pula_Linha(1);
    html.Txt(u"Data Inicial: "_s + cabecalho.dataInicial + u" -- Data Final: "_s + cabecalho.dataFinal, true);
    html.Pula_Linha(1);
}

QString paginaGrafico(const CabecalhoPagina &cabecalho, const QString &arqGrafico)
{
    // Kept: a missing name is written out on this page alone; the sheet's page leaves it empty.
    CabecalhoPagina comNomes = cabecalho;
    for (QString *nome : {&comNomes.aluno, &comNomes.classe}) {
        if (nome->isEmpty())
            *nome = u"Genérico"_s;
    }
    Html html;
    writeHeading(html, comNomes);
    html.Img(arqGrafico, 0, 0);
    // Kept: table, row, font and block stay open; the pages are compared as they are written.
    html.FinalizaHtml();
    return html.html();
}

/// Numbers of BordaColuna.
enum AlinhamentoColuna : qint32 { kCentro = 0, kEsquerda = 2 };

static const QString kLarguraData = u"18"_s;
static const QString kLarguraNome = u"400"_s;

static void openCell(Html &html, std::size_t column)
{
    if (column == 0)
        html.BordaColuna(kEsquerda, kLarguraData, kSemLargura);
    else if (column == 1)
        html.BordaColuna(kEsquerda, kLarguraNome, kSemLargura);
    else
        html.BordaColuna(kCentro, kSemLargura, kSemLargura);
}

static const QString kSemValor = u"====="_s; ///< counts as an empty cell

static void writeCell(Html &html, const LinhaPlanilha &linha, std::size_t column)
{
    QString text = linha[column];
    if (text.isEmpty() || text == kSemValor) {
        // Kept: this cell is opened and never closed, on a total row for the date, on others for their last column.
        if (column + 1 == linha.size() || linha[column + 1].contains(u"TOTAL"_s))
            html.BordaColuna(kEsquerda, kLarguraData, kSemLargura);
        return;
    }
    // A date loses its time. Kept: so does a title its later words.
    if (column == 0)
        text = gTexto.TextoAntes(text, u" "_s, false);
    openCell(html, column);
    html.Txt(text, false);
    html.xBordaColuna();
}

QString paginaDesempenho(const CabecalhoPagina &cabecalho, const std::vector<LinhaPlanilha> &linhas)
{
    Html html;
    writeHeading(html, cabecalho);
    html.xFont();
    for (const LinhaPlanilha &linha : linhas) {
        for (std::size_t column = 0; column < linha.size(); ++column)
            writeCell(html, linha, column);
        if (linha.back() != kSemValor) {
            html.xBordaLinha();
            html.BordaLinha();
        }
    }
    html.xBordaLinha();
    html.xBorda();
    html.xAlinhamento(0);
    html.xFont();
    html.FinalizaHtml();
    return html.html();
}

/// The page with what its file's code page lacks (an emoji in a name) written as browsers read it.
static QString withReferences(const QString &page)
{
    constexpr char16_t kLastOfOneByte = 0xff; // what comes before has one byte, if it has any
    QString written;
    written.reserve(page.size());
    for (qsizetype i = 0; i < page.size(); ++i) {
        const QStringView rest = QStringView(page).sliced(i);
        const bool pair = rest.size() > 1 && rest[0].isHighSurrogate() && rest[1].isLowSurrogate();
        if (pair)
            written += u"&#%1;"_s.arg(QChar::surrogateToUcs4(rest[0], rest[1]));
        else if (rest[0] > QChar(kLastOfOneByte) && encode1252(rest.first(1)) == "?")
            written += u"&#%1;"_s.arg(rest[0].unicode());
        else
            written += rest[0];
        i += pair;
    }
    return written;
}

QString gravaPagina(const QString &pagina)
{
    QString arquivo = gTexto.ArquivoTemporario(u"TMP"_s).replace(u".TMP"_s, u".HTML"_s);
    gTexto.GravaArquivo(arquivo, withReferences(pagina), 0, 0);
    return arquivo;
}

} // namespace quorel
