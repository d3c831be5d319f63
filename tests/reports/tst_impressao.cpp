#include "cenario_graficos.h"

#include "folha.h"
#include "reports/impressao.h"
#include "reports/paginas.h"
#include "reports/visor.h"

#include <QDir>
#include <QHostAddress>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QTcpServer>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// From the button to the paper, which another program reads back.
class TstImpressao : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void theChartIsPreviewedAndItsFilesGo();
    void theSheetsPageStays();
    void closedInThePreviewItComesBackSo();
    void paperHasTheSheet_data();
    void paperHasTheSheet();
    void paperHasTheChart();
    void aLongPageHasItsHeadAndEveryRowOnPaper();
    void cancellingTheDialoguePrintsNothing();
    void aNameOfTagsLoadsNothing();
};

static QString temporary(const QString &name)
{
    return QDir::temp().filePath(name);
}

/// The pages, pictures and names of such in the temporary directory, those of before left out.
static QStringList appeared(const QStringList &before = {})
{
    QStringList now = QDir::temp().entryList({u"TMP*"_s}, QDir::Files, QDir::Name);
    for (const QString &old : before)
        now.removeOne(old);
    return now;
}

static void showAll(CenarioGraficos &c)
{
    c.logEmTodas();
    c.janela().mostra();
    c.faz(u"ChkDisciplinas"_s);
}

static QString shown(CenarioGraficos &c)
{
    QStringList names;
    for (const QWidget *widget : c.janela().findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        if (widget->isVisible())
            names << widget->objectName();
    }
    names.sort();
    return names.join(u' ');
}

static const QString kNormal = u"CmdFecha CmdGrafPlan(0) CmdGrafPlan(1) CmdImprime CrtGrafico FrmDesempenho GrdRot "
                               "LblData(0) LblData(1) LblGrafPla(0) LblGrafPla(1) MskDataFinal MskDataInicial"_s;
static const QString kPreview = u"CmdFecha CmdImprime WWW"_s;

static WebBrowser &www(CenarioGraficos &c)
{
    return child<WebBrowser>(c.janela(), u"WWW"_s);
}

void TstImpressao::theChartIsPreviewedAndItsFilesGo()
{
    CenarioGraficos c;
    showAll(c);
    const QStringList before = appeared();
    c.faz(u"CmdImprime"_s);
    QCOMPARE(shown(c), kPreview);
    QCOMPARE(c.janela().size(), QSize(550, 553));
    QCOMPARE(www(c).geometry(), QRect(3, 1, 543, 527));
    QVERIFY(www(c).toPlainText().contains(u"Aluno: Ana Classe: 1º ano A"_s));
    QCOMPARE(appeared(before).size(), 3); // picture, the page's ".TMP", the page
    QVERIFY(pixelsOf(www(c).grab().toImage(), QColor(150, 225, 255)) > 500); // of the first series, from the picture
    BoxScript boxes{Resposta::Nao};
    c.faz(u"CmdImprime"_s);
    QCOMPARE(boxes.last(),
        (Caixa{.texto = u"Deseja Imprimir esta página ?"_s,
            .titulo = u"Confirmar Impressão"_s,
            .botoes = Botoes::SimNao}));
    QCOMPARE(appeared(before).size(), 1); // the ".TMP" that the page is named after
    QCOMPARE(c.janela().size(), QSize(472, 476));
    QCOMPARE(shown(c), kNormal); // the sheet too, though it was hidden before
}

void TstImpressao::theSheetsPageStays()
{
    CenarioGraficos c;
    showAll(c);
    const QStringList before = appeared();
    c.faz(u"CmdGrafPlan(1); CmdImprime"_s);
    QVERIFY(www(c).toPlainText().contains(u"*** TOTAL GERAL***"_s));
    QCOMPARE(appeared(before).size(), 2);
    BoxScript boxes{Resposta::Nao, Resposta::Nao};
    c.faz(u"CmdImprime"_s);
    QCOMPARE(appeared(before).size(), 2);
    c.faz(u"CmdImprime"_s); // both views are back, and then it is the chart that prints
    QVERIFY(!www(c).toPlainText().contains(u"TOTAL"_s));
    c.faz(u"CmdImprime"_s);
}

void TstImpressao::closedInThePreviewItComesBackSo()
{
    BoxScript boxes{Resposta::Nao};
    CenarioGraficos c;
    showAll(c);
    c.faz(u"CmdImprime; CmdFecha"_s);
    c.janela().mostra();
    QCOMPARE(shown(c), kPreview);
    c.faz(u"CmdImprime"_s);
    QCOMPARE(shown(c), kNormal);
}

/// The second press of the print button, yes to its question, and an answer to the system's dialogue.
static void print(CenarioGraficos &c, const std::function<void(QPrintDialog &)> &answer)
{
    const NextWindow<QPrintDialog> next(answer);
    BoxScript boxes{Resposta::Sim};
    c.faz(u"CmdImprime"_s);
    QVERIFY(next.came());
}

/// What a program prints; the test ends where it fails.
static QString printed(const QString &program, const QStringList &arguments)
{
    QProcess reader;
    reader.start(program, arguments);
    if (!reader.waitForFinished() || reader.exitCode() != 0)
        qFatal("%s: %s", qPrintable(program), qPrintable(reader.errorString()));
    return QString::fromUtf8(reader.readAllStandardOutput());
}

/// The text of a PDF file, as it stands on its sheets.
static QStringList sheetsOf(const QString &pdf)
{
    QStringList sheets = printed(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s}).split(u'\f');
    sheets.removeLast(); // behind the last form feed
    return sheets;
}

/// @return the text on paper, which stays in papel.pdf
static QString paperOf(CenarioGraficos &c)
{
    const QString pdf = temporary(u"papel.pdf"_s);
    QFile::remove(pdf);
    print(c, [&pdf](QPrintDialog &dialog) {
        child<QLineEdit>(dialog, u"filename"_s).setText(pdf);
        dialog.accept();
    });
    return sheetsOf(pdf).join(u'\n');
}

static bool hasHead(const QString &paper)
{
    return paper.contains(u"Aluno: Ana"_s) && paper.contains(u"Data Inicial: 18/02/26 -- Data Final: 21/03/26"_s);
}

void TstImpressao::paperHasTheSheet_data()
{
    QTest::addColumn<QString>("passo");
    QTest::addColumn<QString>(
        "figures"); // right and wrong of each line, each total, with all disciplines the grand total
    const auto add = [](const char *name, const QString &passo, const QString &figures) {
        QTest::newRow(name) << passo << figures;
    };
    add("Desenv. Sensorio Motor", "linha=3", "1 3, 1 3");
    add("all", "ChkDisciplinas", "1 0, 2 1, 3 1, 0 2, 0 2, 4 0, 4 0, 7 3");
}

void TstImpressao::paperHasTheSheet()
{
    QFETCH(QString, passo);
    QFETCH(QString, figures);
    CenarioGraficos c;
    c.logEmTodas();
    c.janela().mostra();
    c.faz(passo + u"; CmdGrafPlan(1); CmdImprime"_s);
    const QString paper = paperOf(c);
    QVERIFY2(hasHead(paper), qPrintable(paper));
    QStringList found; // the two numbers at the end of each line that has some
    static const QRegularExpression form(u"\\D (\\d+ \\d+)$"_s);
    for (const QString &line : paper.split(u'\n')) {
        if (const auto match = form.match(line.simplified()); match.hasMatch())
            found << match.captured(1);
    }
    QCOMPARE(found.join(u", "_s), figures);
}

// The preview's tests look at the picture itself.
void TstImpressao::paperHasTheChart()
{
    CenarioGraficos c;
    showAll(c);
    const QSize size = chartImage(c.grafico().size(), c.grafico().figura(), kBidimensional).size();
    c.faz(u"CmdImprime"_s);
    QVERIFY(hasHead(paperOf(c)));
    const QString pictures = printed(u"pdfimages"_s, {u"-list"_s, temporary(u"papel.pdf"_s)});
    const QRegularExpression form(u"\\b%1 +%2\\b"_s.arg(size.width()).arg(size.height()));
    QVERIFY2(form.match(pictures).hasMatch(), qPrintable(pictures));
}

void TstImpressao::aLongPageHasItsHeadAndEveryRowOnPaper()
{
    constexpr int kRows = 150;
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setOutputFileName(temporary(u"longa.pdf"_s));
    std::vector<LinhaPlanilha> lines;
    lines.push_back({u"Data"_s, u"Nome do Roteiro"_s, u"Acertos"_s, u"Erros"_s});
    lines.push_back({u"Matemática"_s});
    for (int row = 1; row <= kRows; ++row)
        lines.push_back({u"24/11/26 10:00:00"_s, u"Roteiro nº %1"_s.arg(row), u"12"_s, u"3"_s});
    lines.push_back({QString(), u"*** TOTAL ***"_s, u"1800"_s, u"450"_s});
    pintaPagina(paginaDesempenho({}, lines), {}, printer);
    const QStringList sheets = sheetsOf(temporary(u"longa.pdf"_s));
    QVERIFY(sheets.size() > 2);
    int row = 0;
    for (const QString &sheet : sheets) {
        QCOMPARE(sheet.simplified().count(u"Data Nome do Roteiro Acertos Erros"_s), 1);
        for (const QString &line : sheet.split(u'\n').filter(u"24/11/26"_s))
            QCOMPARE(line.simplified(), u"24/11/26 Roteiro nº %1 12 3"_s.arg(++row));
    }
    QCOMPARE(row, kRows);
}

void TstImpressao::cancellingTheDialoguePrintsNothing()
{
    CenarioGraficos c;
    showAll(c);
    c.faz(u"CmdImprime"_s);
    print(c, [](QPrintDialog &dialog) { dialog.reject(); });
    QCOMPARE(shown(c), kNormal);
}

void TstImpressao::aNameOfTagsLoadsNothing()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    const QString file = temporary(u"vermelha.png"_s);
    QImage red(90, 90, QImage::Format_RGB32);
    red.fill(QColor(255, 0, 1));
    QVERIFY(red.save(file));
    const QString address = u"<img src=\"http://127.0.0.1:%1/x.png\">"_s.arg(server.serverPort());
    const QString tables = u"<table cellpadding=2000000000><tr><td>"_s.repeated(20); // more than can be laid out
    CenarioGraficos c(address + u"<img src=\"%1\" width=90>"_s.arg(file) + tables + u"Zoé"_s);
    showAll(c);
    c.faz(u"CmdImprime"_s);
    QVERIFY(www(c).toPlainText().contains(u"Zoé"_s));
    QCOMPARE(pixelsOf(www(c).grab().toImage(), QColor(255, 0, 1)), 0);
    QVERIFY(paperOf(c).contains(u"Zoé"_s));
    QVERIFY(!server.waitForNewConnection(0));
}

QTEST_MAIN(TstImpressao)
#include "tst_impressao.moc"
