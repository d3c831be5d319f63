#include "reports/paginas.h"

#include "apoio.h"
#include "data/bd.h"
#include "data/consultas.h"
#include "platform/caminho.h"
#include "startup/estado.h"
#include "startup/lugares.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include <QFileInfo>
#include <QTemporaryDir>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

using LinhasDaFolha = std::vector<LinhaPlanilha>;

/// The pages, down to the bytes of the files.
class TstPaginas : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void theSheetsPage_data();
    void theSheetsPage();
    void theChartsPage();
    void missingNames();
    void cells_data();
    void cells();
    void whereThePageIsWritten();

private:
    std::unique_ptr<QTemporaryDir> mDir;
    std::unique_ptr<Registro> mRegistro;
};

static QByteArray expectedPage(const QString &nome)
{
    QByteArray page = le(QStringLiteral(QUOREL_SOURCE "/tests/reports/esperado/") + nome);
    if (page.isEmpty())
        qFatal("no page %s", qPrintable(nome));
    return page.replace("https://www.quorel.example/", makerAddress().toLatin1()); // as the build was told
}

static QByteArray writtenPage(const QString &pagina)
{
    return le(nativePath(gravaPagina(pagina)));
}

void TstPaginas::init()
{
    failOnWarnings();
    mDir = std::make_unique<QTemporaryDir>();
    gConfig = Quorel_Zeto();
    gConfig.SetaCFG(u"[zeto]\r\nZETO_MM="_s + barras(mDir->path()));
    mRegistro = std::make_unique<Registro>();
    mRegistro->sql(u"INSERT INTO AL_Alunos VALUES (3, 'João <i>'), (4, NULL);"
                   "INSERT INTO CL_Classes VALUES (7, '1ª A', NULL, NULL)"_s);
    mRegistro->open();
    gBD->Records_Set(consultas::alunosPorNome(), u"rsAlunos"_s, {}, kCursorKeyset);
    gBD->Records_Set(consultas::classesPorNome(), u"rsClasses"_s, {}, kCursorKeyset);
    gAluno = 3;
    gClasse = 7;
}

void TstPaginas::theSheetsPage_data()
{
    QTest::addColumn<LinhasDaFolha>("linhas"); // behind the header
    QTest::addColumn<QString>("arquivo");
    const LinhasDaFolha ciencias{{"Ciências"}, {"02/03/26 10:20:30", "A Água", "2", "1"},
        {"01/03/26", "A Água", "0", "1"}, {QString(), "*** TOTAL ***", "2", "2"}};
    LinhasDaFolha todas = ciencias;
    todas.insert(todas.end(), {{}, {QString(), "*** TOTAL GERAL***", "2", "2"}});
    QTest::newRow("one discipline") << ciencias << "ciencias.html";
    QTest::newRow("a title is cut at its first blank, a name passes as it is") << LinhasDaFolha{
        {"Desenv. Sensorio Motor"}, {"02/03/26 10:20:31", "<b>Cores & formas", "1", "0"},
        {QString(), "*** TOTAL ***", "1", "0"}} << "desenv.html";
    QTest::newRow("all disciplines") << todas << "todas.html";
}

void TstPaginas::theSheetsPage()
{
    QFETCH(LinhasDaFolha, linhas);
    QFETCH(QString, arquivo);
    linhas.insert(linhas.begin(), {"Data", "Nome do Roteiro", "Acertos", "Erros"});
    const CabecalhoPagina cabecalho = leCabecalho(u"01/03/26"_s, u"31/03/26"_s);
    QCOMPARE(writtenPage(paginaDesempenho(cabecalho, linhas)), expectedPage(arquivo));
}

void TstPaginas::theChartsPage()
{
    CabecalhoPagina cabecalho = leCabecalho(u"01/03/26"_s, u"31/03/26"_s);
    QCOMPARE(writtenPage(paginaGrafico(cabecalho, u"C:\\TEMP\\TMP1.TMP"_s)), expectedPage(u"grafico.html"_s));

    escreve(mDir->filePath(u"Fig/q/e/quorel.GIF"_s), "GIF89a");
    cabecalho = leCabecalho({}, {});
    QCOMPARE(cabecalho.figura, barras(mDir->path()) + u"\\Fig\\q\\e\\quorel.GIF"_s);
    QVERIFY(paginaGrafico(cabecalho, {}).contains(u"<img SRC=\""_s + cabecalho.figura + u"\"> \r\n"_s));
}

void TstPaginas::missingNames()
{
    gAluno = 4;
    gClasse = 8;
    const CabecalhoPagina cabecalho = leCabecalho(u"01/03/26"_s, u"__/__/__"_s);
    const QString dates =
        u"\r\n<BR>\r\n</FONT>\r\n<FONT SIZE=4>\r\n<BR>\r\nData Inicial: 01/03/26 -- Data Final: __/__/__"
        "\r\n<BR>\r\n<BR>\r\n"_s;
    QVERIFY(paginaGrafico(cabecalho, {}).contains(u"\r\nAluno: Genérico  Classe: Genérico"_s + dates));
    QVERIFY(paginaDesempenho(cabecalho, {}).contains(u"\r\nAluno:   Classe: "_s + dates));
}

/// The rows of the table of a sheet's page.
static QString tableOf(const LinhasDaFolha &linhas)
{
    const QString heading = paginaDesempenho({}, {});
    const QString page = paginaDesempenho({}, linhas);
    const QString end = u"</TR>\r\n</TABLE>\r\n</DIV></FONT>\r\n</BODY></HTML>"_s;
    if (!heading.endsWith(end) || !page.endsWith(end) || !page.startsWith(heading.chopped(end.size())))
        return u"another frame"_s;
    return page.chopped(end.size()).sliced(heading.size() - end.size());
}

void TstPaginas::cells_data()
{
    QTest::addColumn<LinhaPlanilha>("linha");
    QTest::addColumn<QString>("expected");
    const auto add = [](const char *name, const LinhaPlanilha &linha, const QString &expected) {
        QTest::newRow(name) << linha << expected;
    };
    const QString opened = u"<TD ALIGN=LEFT WIDTH=18>\r\n"_s;
    const QString name = u"<TD ALIGN=LEFT WIDTH=400>\r\n%1\r\n</TD>\r\n"_s;
    const QString count = u"<TD ALIGN=CENTER>\r\n%1\r\n</TD>\r\n"_s;
    const QString end = u"</TD>\r\n"_s;
    const QString rowEnd = u"</TR>\r\n<TR>\r\n"_s;
    add("an empty row: its last cell opens", {}, opened + rowEnd);
    add("a row that a failure cut off: a cell before an empty one is nothing", {"01/03/26 10:00:00"},
        opened + "01/03/26\r\n" + end + opened + rowEnd);
    add("five equals signs are an empty cell, and in the last place end no row",
        {"=====", "x TOTALIZA", "=====", "====="}, opened + name.arg("x TOTALIZA") + opened);
    add("total in small letters is none", {QString(), "Total", QString(), "1"},
        name.arg("Total") + count.arg("1") + rowEnd);
    add("only the first column is cut at a blank; tags pass", {"a b", "c d<img src=x>", "1 2", "&"},
        opened + "a\r\n" + end + name.arg("c d<img src=x>") + count.arg("1 2") + count.arg("&") + rowEnd);
}

void TstPaginas::cells()
{
    QFETCH(LinhaPlanilha, linha);
    QFETCH(QString, expected);
    QCOMPARE(tableOf({linha}), expected);
}

void TstPaginas::whereThePageIsWritten()
{
    const QString caminho = gravaPagina(u"Olá, \u4E16 \U0001F600"_s);
    QVERIFY(QFileInfo(caminho.section(u'\\', -1)).fileName().startsWith(u"TMP"_s));
    QVERIFY(caminho.endsWith(u".HTML"_s));
    QCOMPARE(le(nativePath(caminho)), QByteArray("Ol\xE1, &#19990; &#128512;"));
    // The file that gave its name stays, empty.
    const QString source = QString(caminho).replace(u".HTML"_s, u".TMP"_s);
    QVERIFY(QFileInfo::exists(nativePath(source)));
    QCOMPARE(le(nativePath(source)), QByteArray());
    QVERIFY(gravaPagina({}) != caminho);
}

QTEST_MAIN(TstPaginas)
#include "tst_paginas.moc"
