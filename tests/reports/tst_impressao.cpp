#include "cenario_graficos.h"

#include "platform/caminho.h"
#include "reports/grade.h"
#include "reports/visor.h"
#include "support/suporte.h"

#include <QApplication>
#include <QDir>
#include <QHostAddress>
#include <QLineEdit>
#include <QPrintDialog>
#include <QProcess>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTimer>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// From the button to the paper.
class TstImpressao : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void theChartIsPreviewedAndItsFilesGo();
    void theSheetsPageStays();
    void beforeAnyChoiceTheFixedRowPrints();
    void closedInThePreviewItComesBackSo();
    void printedFiguresAgree_data();
    void printedFiguresAgree();
    void cancellingTheDialoguePrintsNothing();
    void aNameThatIsATagLoadsNothing_data();
    void aNameThatIsATagLoadsNothing();
};

static QStringList temporaries()
{
    QStringList files = QDir::temp().entryList({u"TMP*"_s}, QDir::Files);
    files.sort();
    return files;
}

static QStringList appeared(const QStringList &before)
{
    QStringList now = temporaries();
    for (const QString &old : before)
        now.removeOne(old);
    return now;
}

static void run(CenarioGraficos &c)
{
    c.log(u"2026-03-01 10:00:00"_s, 101, u"A:A:E:"_s);
    c.log(u"2026-03-03 10:00:00"_s, 201, u"E:E:"_s);
    c.log(u"2026-03-04 10:00:00"_s, 301, u"A:A:A:A:"_s);
    c.janela().mostra();
    c.clica(u"ChkDisciplinas"_s);
}

static QStringList shown(CenarioGraficos &c)
{
    QStringList names;
    for (const QWidget *widget : c.janela().findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        if (widget->isVisible())
            names << widget->objectName();
    }
    names.sort();
    return names;
}

static const QStringList kNormal{u"CmdFecha"_s, u"CmdGrafPlan(0)"_s, u"CmdGrafPlan(1)"_s, u"CmdImprime"_s,
    u"CrtGrafico"_s, u"FrmDesempenho"_s, u"GrdRot"_s, u"LblData(0)"_s, u"LblData(1)"_s, u"LblGrafPla(0)"_s,
    u"LblGrafPla(1)"_s, u"MskDataFinal"_s, u"MskDataInicial"_s};
static const QStringList kPreview{u"CmdFecha"_s, u"CmdImprime"_s, u"WWW"_s};

void TstImpressao::theChartIsPreviewedAndItsFilesGo()
{
    CenarioGraficos c;
    run(c);
    const QStringList before = temporaries();
    c.clica(u"CmdImprime"_s);
    QCOMPARE(shown(c), kPreview);
    const auto &www = child<WebBrowser>(c.janela(), u"WWW"_s);
    QCOMPARE(c.janela().size(), QSize(550, 553));
    QCOMPARE(www.geometry(), QRect(3, 1, 543, 527));
    QVERIFY(www.toPlainText().contains(u"Aluno: Ana Classe: 1º ano A"_s));
    const QStringList files = appeared(before); // picture, the page's ".TMP", the page
    QCOMPARE(files.size(), 3);
    QCOMPARE(files.filter(QRegularExpression(u"\\.HTML$"_s)).size(), 1);
    const QImage page = child<QWidget>(c.janela(), u"WWW"_s).grab().toImage();
    int bars = 0; // of the first series, from the picture
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            bars += page.pixelColor(x, y) == QColor(150, 225, 255);
    QVERIFY(bars > 500);
    BoxScript boxes{Resposta::Nao};
    c.clica(u"CmdImprime"_s);
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
    run(c);
    c.clica(u"CmdGrafPlan(1)"_s);
    const QStringList before = temporaries();
    c.clica(u"CmdImprime"_s);
    QVERIFY(child<WebBrowser>(c.janela(), u"WWW"_s).toPlainText().contains(u"*** TOTAL GERAL***"_s));
    QCOMPARE(appeared(before).size(), 2);
    BoxScript boxes{Resposta::Nao, Resposta::Nao};
    c.clica(u"CmdImprime"_s);
    QCOMPARE(appeared(before).size(), 2);
    c.clica(u"CmdImprime"_s); // both views are back, and then it is the chart that prints
    QVERIFY(!child<WebBrowser>(c.janela(), u"WWW"_s).toPlainText().contains(u"TOTAL"_s));
    c.clica(u"CmdImprime"_s);
}

void TstImpressao::beforeAnyChoiceTheFixedRowPrints()
{
    CenarioGraficos c;
    c.janela().mostra();
    const QStringList before = temporaries();
    c.clica(u"CmdImprime"_s);
    const QStringList pages = appeared(before).filter(QRegularExpression(u"\\.HTML$"_s));
    QCOMPARE(pages.size(), 1);
    QVERIFY(le(QDir::temp().filePath(pages.front()))
                .endsWith("</FONT>\r\n<TD ALIGN=LEFT WIDTH=18>\r\n</TR>\r\n<TR>\r\n</TR>\r\n</TABLE>\r\n</DIV></FONT>"
                          "\r\n</BODY></HTML>"));
}

void TstImpressao::closedInThePreviewItComesBackSo()
{
    BoxScript boxes{Resposta::Nao};
    CenarioGraficos c;
    run(c);
    c.clica(u"CmdImprime"_s);
    c.clica(u"CmdFecha"_s);
    c.janela().mostra();
    QCOMPARE(shown(c), kPreview);
    c.clica(u"CmdImprime"_s);
    QCOMPARE(shown(c), kNormal);
}

// Waits for the system's print dialogue and answers it.
template <typename Answer>
static void whenAsked(QTimer &timer, Answer answer)
{
    timer.setInterval(10);
    QObject::connect(&timer, &QTimer::timeout, &timer, [&timer, answer] {
        if (auto *dialog = qobject_cast<QPrintDialog *>(QApplication::activeModalWidget())) {
            timer.stop();
            answer(*dialog);
        }
    });
    timer.start();
}

static QString printTo(CenarioGraficos &c, const QString &pdf)
{
    QFile::remove(pdf);
    QTimer timer;
    whenAsked(timer, [pdf](QPrintDialog &dialog) {
        child<QLineEdit>(dialog, u"filename"_s).setText(pdf);
        dialog.accept();
    });
    BoxScript boxes{Resposta::Sim};
    c.clica(u"CmdImprime"_s);
    QProcess reader;
    reader.start(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s});
    if (!reader.waitForFinished() || reader.exitCode() != 0)
        qFatal("pdftotext: %s", qPrintable(reader.errorString()));
    return QString::fromUtf8(reader.readAllStandardOutput());
}

void TstImpressao::printedFiguresAgree_data()
{
    QTest::addColumn<bool>("planilha");
    QTest::newRow("sheet") << true;
    QTest::newRow("chart") << false;
}

void TstImpressao::printedFiguresAgree()
{
    QFETCH(bool, planilha);
    CenarioGraficos c;
    run(c);
    c.clica(planilha ? u"CmdGrafPlan(1)"_s : u"CmdGrafPlan(0)"_s);
    c.clica(u"CmdImprime"_s);
    const QString paper = printTo(c, QDir::temp().filePath(u"papel.pdf"_s));
    QVERIFY2(paper.contains(u"Aluno: Ana"_s) && paper.contains(u"Data Inicial: 18/02/26 -- Data Final: 21/03/26"_s),
        qPrintable(paper));
    if (!planilha)
        return;
    // What the printed table says, as the sheet on the screen and the chart say it.
    QStringList rows;
    for (const QString &line : paper.split(u'\n'))
        rows << line.simplified();
    for (const LinhaPlanilha &linha : child<GrdRot>(c.janela(), u"GrdRot"_s).linhas()) {
        const QString text = QStringList{linha[0].section(u' ', 0, 0), linha[1], linha[2], linha[3]}.join(u' ');
        QVERIFY2(rows.contains(text.simplified()), qPrintable(text));
    }
    QVERIFY(rows.contains(u"*** TOTAL GERAL*** 6 3"_s));
    QCOMPARE(c.figuras(),
        u"Acertos: Ciências 2, Matemática 0, Português 4. Erros: Ciências 1, Matemática 2, Português 0."_s);
}

void TstImpressao::cancellingTheDialoguePrintsNothing()
{
    CenarioGraficos c;
    run(c);
    c.clica(u"CmdImprime"_s);
    QTimer timer;
    bool asked = false;
    whenAsked(timer, [&asked](QPrintDialog &dialog) {
        asked = true;
        dialog.reject();
    });
    BoxScript boxes{Resposta::Sim};
    c.clica(u"CmdImprime"_s);
    QVERIFY(asked);
    QCOMPARE(shown(c), kNormal);
}

void TstImpressao::aNameThatIsATagLoadsNothing_data()
{
    QTest::addColumn<QString>("aluno"); // %1 a server of ours, %2 a red picture
    QTest::newRow("address") << u"<img src=\"http://127.0.0.1:%1/x.png\">"_s;
    QTest::newRow("share") << u"<img src=\"\\\\127.0.0.1@%1\\x\\y.png\">"_s;
    QTest::newRow("local file") << u"<img src=\"%2\" width=90>"_s;
}

void TstImpressao::aNameThatIsATagLoadsNothing()
{
    QFETCH(QString, aluno);
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    const QString file = QDir::temp().filePath(u"vermelha.png"_s);
    QImage red(90, 90, QImage::Format_RGB32);
    red.fill(QColor(255, 0, 1));
    QVERIFY(red.save(file));
    CenarioGraficos c(
        QString(aluno).replace(u"%1"_s, QString::number(server.serverPort())).replace(u"%2"_s, file) + u"Zoé"_s);
    run(c);
    c.clica(u"CmdImprime"_s);
    auto &www = child<WebBrowser>(c.janela(), u"WWW"_s);
    QVERIFY(www.toPlainText().contains(u"Zoé"_s));
    const QImage page = www.grab().toImage();
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            QVERIFY(page.pixelColor(x, y) != QColor(255, 0, 1));
    QVERIFY(printTo(c, QDir::temp().filePath(u"papel.pdf"_s)).contains(u"Zoé"_s));
    QVERIFY(!server.waitForNewConnection(0));
}

QTEST_MAIN(TstImpressao)
#include "tst_impressao.moc"
