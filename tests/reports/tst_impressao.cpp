#include "cenario_graficos.h"

#include "platform/caminho.h"
#include "reports/grade.h"
#include "reports/grafico.h"
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
#include <QTemporaryDir>
#include <QTimer>

#include <array>
#include <map>

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
    void sheetChartPageAndPaperAgree_data();
    void sheetChartPageAndPaperAgree();
    void theChartOnPaperIsTheOneOnView();
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

void TstImpressao::sheetChartPageAndPaperAgree_data()
{
    QTest::addColumn<int>("linha"); // of LstDisciplinas; -1 for all
    QTest::addColumn<std::vector<int>>("disciplinas"); // in the order of the sheet, by the hundreds of their codes
    QTest::newRow("Ciências") << 0 << std::vector{1};
    QTest::newRow("Matemática") << 1 << std::vector{2};
    QTest::newRow("Português") << 2 << std::vector{3};
    QTest::newRow("Desenv. Sensorio Motor") << 3 << std::vector{4};
    QTest::newRow("all") << -1 << std::vector{1, 2, 3};
}

/// What the log of this test amounts to in a discipline.
struct Soma
{
    QStringList linhas; ///< "acertos erros", newest first
    int acertos = 0;
    int erros = 0;
};

/// Forty runs of five Roteiros, no two days alike. @return by the hundreds of the codes
static std::map<int, Soma> logManyRuns(CenarioGraficos &c)
{
    constexpr std::array kCodigos{101, 201, 102, 301, 401};
    std::map<int, Soma> somas;
    for (int i = 0; i < 40; ++i) {
        const int codigo = kCodigos[std::size_t(i) % kCodigos.size()];
        const int acertos = i % 7 * 3;
        const int erros = i % 4 + i / 30 * 11;
        c.log(u"2026-03-%1 08:00:%2"_s.arg(i / 3 + 1, 2, 10, QChar(u'0')).arg(i, 2, 10, QChar(u'0')), codigo,
            u"A:"_s.repeated(acertos) + u"E:"_s.repeated(erros));
        Soma &soma = somas[codigo / 100];
        soma.linhas.prepend(u"%1 %2"_s.arg(acertos).arg(erros));
        soma.acertos += acertos;
        soma.erros += erros;
    }
    return somas;
}

/// The figures that a text of rows holds: the two numbers at the end of each line that has some.
static QStringList figuresOf(const QStringList &rows)
{
    static const QRegularExpression form(u"\\D (\\d+ \\d+)$"_s);
    QStringList figures;
    for (const QString &row : rows) {
        if (const auto match = form.match(row.simplified()); match.hasMatch())
            figures << match.captured(1);
    }
    return figures;
}

static QStringList rowsOnView(CenarioGraficos &c)
{
    const QAbstractItemModel &modelo = *child<GrdRot>(c.janela(), u"GrdRot"_s).model();
    QStringList rows;
    for (int row = 0; row < modelo.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < modelo.columnCount(); ++column)
            cells << modelo.index(row, column).data().toString();
        rows << cells.join(u' ');
    }
    return rows;
}

static QStringList rowsOfPage(const QString &arquivo)
{
    QString page = QString::fromLatin1(le(QDir::temp().filePath(arquivo)));
    page.remove(u"\r\n"_s).replace(QRegularExpression(u"<TD[^>]*>"_s), u" "_s).remove(u"</TD>"_s);
    return page.split(u"</TR>"_s);
}

void TstImpressao::sheetChartPageAndPaperAgree()
{
    QFETCH(int, linha);
    QFETCH(std::vector<int>, disciplinas);
    CenarioGraficos c;
    std::map<int, Soma> somas = logManyRuns(c);
    c.janela().mostra();
    if (linha < 0)
        c.clica(u"ChkDisciplinas"_s);
    else
        c.clicaLinha(linha);
    QStringList expected; // each line, each total, and with all disciplines the grand total
    Soma geral;
    const FiguraGrafico &figura = child<CrtGrafico>(c.janela(), u"CrtGrafico"_s).figura();
    QCOMPARE(figura.series.size(), disciplinas.size());
    for (std::size_t serie = 0; serie < disciplinas.size(); ++serie) {
        const Soma &soma = somas[disciplinas[serie]];
        expected << soma.linhas << u"%1 %2"_s.arg(soma.acertos).arg(soma.erros);
        geral.acertos += soma.acertos;
        geral.erros += soma.erros;
        QCOMPARE(int(figura.valor(0, serie)), soma.acertos);
        QCOMPARE(int(figura.valor(1, serie)), soma.erros);
    }
    if (linha < 0)
        expected << u"%1 %2"_s.arg(geral.acertos).arg(geral.erros);
    QCOMPARE(figuresOf(rowsOnView(c)), expected);
    c.clica(u"CmdGrafPlan(1)"_s);
    const QStringList before = temporaries();
    c.clica(u"CmdImprime"_s);
    const QStringList pages = appeared(before).filter(QRegularExpression(u"\\.HTML$"_s));
    QCOMPARE(pages.size(), 1);
    QCOMPARE(figuresOf(rowsOfPage(pages.front())), expected);
    const QString paper = printTo(c, QDir::temp().filePath(u"papel.pdf"_s));
    QVERIFY2(paper.contains(u"Aluno: Ana"_s) && paper.contains(u"Data Inicial: 18/02/26 -- Data Final: 21/03/26"_s),
        qPrintable(paper));
    QCOMPARE(figuresOf(paper.split(u'\n')), expected);
}

/// Largest difference of two pictures of one size, in levels of a colour, looked at from afar: on paper a picture may
/// be a JPEG, whose edges are not the same.
static int difference(const QImage &near, const QImage &other)
{
    constexpr int kLonge = 8;
    const auto far = [](const QImage &image) {
        return image.scaled(image.size() / kLonge, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const QImage a = far(near);
    const QImage b = far(other);
    int most = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QColor p = a.pixelColor(x, y);
            const QColor q = b.pixelColor(x, y);
            most = std::max(
                {most, std::abs(p.red() - q.red()), std::abs(p.green() - q.green()), std::abs(p.blue() - q.blue())});
        }
    }
    return most;
}

void TstImpressao::theChartOnPaperIsTheOneOnView()
{
    constexpr int kPerda = 20; // levels of 255
    CenarioGraficos c;
    run(c);
    const auto &chart = child<CrtGrafico>(c.janela(), u"CrtGrafico"_s);
    const QImage onView = chartImage(chart.size(), chart.figura(), AparenciaGrafico(chart.chartType()));
    c.clica(u"CmdImprime"_s);
    const QString paper = printTo(c, QDir::temp().filePath(u"papel.pdf"_s));
    QVERIFY2(paper.contains(u"Aluno: Ana"_s) && paper.contains(u"Data Inicial: 18/02/26 -- Data Final: 21/03/26"_s),
        qPrintable(paper));
    const QTemporaryDir pictures;
    const QStringList arguments{u"-png"_s, QDir::temp().filePath(u"papel.pdf"_s), pictures.filePath(u"figura"_s)};
    QCOMPARE(QProcess::execute(u"pdfimages"_s, arguments), 0);
    bool found = false;
    for (const QString &name : QDir(pictures.path()).entryList(QDir::Files)) {
        const QImage picture(pictures.filePath(name));
        found = found || (picture.size() == onView.size() && difference(picture, onView) < kPerda);
    }
    QVERIFY(found);
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
    QTest::newRow("behind more tables than can be laid out")
        << u"<table cellpadding=2000000000><tr><td>"_s.repeated(20) + u"<img src=\"%2\" width=90>"_s;
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
