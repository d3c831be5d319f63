#include "reports/impressao.h"
#include "reports/visor.h"
#include "support/suporte.h"

#include "folha.h"

#include <QAbstractTextDocumentLayout>
#include <QDir>
#include <QHostAddress>
#include <QImage>
#include <QPrinter>
#include <QScrollBar>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextFrame>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstVisor : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void showsThePictureUnderItsVeryText();
    void loadsNothingElse_data();
    void loadsNothingElse();
    void distancesBeyondTheLayoutEnd_data();
    void distancesBeyondTheLayoutEnd();
    void tablesInTablesEnd_data();
    void tablesInTablesEnd();
    void aMissingPageIsEmpty();
    void narrowColumnsStayOnOneLine();
    void sheetsEndBetweenRows_data();
    void sheetsEndBetweenRows();

private:
    QTemporaryDir mDir;
    QString write(const QString &name, const QByteArray &page); ///< path with backslashes
    QString picture(const QString &name, const QColor &colour, const QSize &size = {40, 30});
};

QString TstVisor::write(const QString &name, const QByteArray &page)
{
    escreve(mDir.filePath(name), page);
    return barras(mDir.filePath(name));
}

QString TstVisor::picture(const QString &name, const QColor &colour, const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    if (!image.save(mDir.filePath(name), "PNG"))
        qFatal("no picture");
    return barras(mDir.filePath(name));
}

/// What an address would take apart; a system whose names go without "?" gets the rest.
static const QString kNomeDificil = QDir::separator() == u'/' ? u"50%41#1?x.TMP"_s : u"50%41#1x.TMP"_s;

static int pixelsOf(QWidget &widget, const QColor &colour)
{
    const QImage image = widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            n += image.pixelColor(x, y) == colour;
    return n;
}

void TstVisor::showsThePictureUnderItsVeryText()
{
    for (const QString &name : {u"a b.TMP"_s, kNomeDificil, u"ção.TMP"_s}) {
        const QString src = picture(name, Qt::red);
        const QString page = write(u"p.HTML"_s, "<HTML><img SRC=\"" + src.toLatin1() + "\"> olá</HTML>");
        WebBrowser www(10, nullptr);
        www.resize(300, 200);
        www.Navigate(page, {src});
        www.show();
        QCOMPARE(pixelsOf(www, Qt::red), 40 * 30);
    }
    // One that is three times as fine as the screen keeps its natural size.
    QImage fine(120, 90, QImage::Format_RGB32);
    fine.fill(Qt::red);
    fine.setDotsPerMeterX(11339);
    fine.setDotsPerMeterY(11339);
    QVERIFY(fine.save(mDir.filePath(u"fina.TMP"_s), "PNG"));
    const QString src = barras(mDir.filePath(u"fina.TMP"_s));
    WebBrowser www(10, nullptr);
    www.resize(300, 200);
    www.Navigate(write(u"p.HTML"_s, "<img SRC=\"" + src.toLatin1() + "\">"), {src});
    www.show();
    QCOMPARE(pixelsOf(www, Qt::red), 40 * 30);
}

void TstVisor::loadsNothingElse_data()
{
    QTest::addColumn<QString>("markup"); // %1 a server of ours, %2 a picture on the disc, native
    QTest::newRow("address") << u"<img src=\"http://127.0.0.1:%1/a.png\">"_s;
    QTest::newRow("share") << u"<img src=\"\\\\127.0.0.1\\a\\b.png\">"_s;
    QTest::newRow("local file") << u"<img src=\"%2\">"_s;
    QTest::newRow("file address") << u"<img src=\"file://%2\">"_s;
    QTest::newRow("background of a cell") << u"<table><tr><td style=\"background-image: url(%2)\">x</td></table>"_s;
    QTest::newRow("background of the page") << u"<body background=\"%2\">"_s;
    QTest::newRow("style sheet") << u"<link rel=\"stylesheet\" href=\"http://127.0.0.1:%1/a.css\">"_s;
    QTest::newRow("style sheet, local") << u"<link rel=\"stylesheet\" href=\"%2.css\"><p>x</p>"_s;
    QTest::newRow("no name") << u"<img src=\"\">"_s;
    QTest::newRow("link") << u"<a href=\"file://%2\">x</a>"_s;
}

void TstVisor::loadsNothingElse()
{
    QFETCH(QString, markup);
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    const QString other = mDir.filePath(u"outra.png"_s);
    picture(u"outra.png"_s, Qt::red);
    escreve(other + u".css"_s, "p { background-color: #ff0000 }");
    const QString page = write(u"p.HTML"_s,
        u"<HTML>Aluno: %1</HTML>"_s.arg(markup)
            .replace(u"%1"_s, QString::number(server.serverPort()))
            .replace(u"%2"_s, other)
            .toLatin1());
    WebBrowser www(0, nullptr);
    www.resize(300, 200);
    www.Navigate(page, {});
    www.show();
    QCOMPARE(pixelsOf(www, Qt::red), 0);
    QTest::mouseClick(www.viewport(), Qt::LeftButton, {}, {80, 12});
    QVERIFY(www.toPlainText().contains(u"Aluno:"_s));
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(mDir.filePath(u"p.pdf"_s));
    pintaPagina(QString::fromLatin1(le(mDir.filePath(u"p.HTML"_s))), {}, printer);
    QVERIFY(!le(mDir.filePath(u"p.pdf"_s)).isEmpty());
    QVERIFY(!server.waitForNewConnection(0));
}

void TstVisor::distancesBeyondTheLayoutEnd_data()
{
    QTest::addColumn<QString>("table");
    QTest::newRow("padding") << u"<table cellpadding=2000000000><tr><td>x"_s;
    QTest::newRow("spacing") << u"<table cellspacing=2000000000><tr><td>x"_s;
    QTest::newRow("padding of a cell") << u"<table><tr><td style='padding:2000000000px'>x"_s;
    QTest::newRow("margin") << u"<table style='margin:2000000000px'><tr><td>x"_s;
    QTest::newRow("margin of a floating table") << u"<table style='float:left;margin:2000000000px'><tr><td>x"_s;
    QTest::newRow("below 0") << u"<table cellpadding=-2000000000 style='margin:-2000000000px'><tr><td>x"_s;
    QTest::newRow("of a table in a table")
        << u"<table><tr><td><table style='padding:2000000000px' cellspacing=2000000000><tr><td>x"_s;
}

void TstVisor::distancesBeyondTheLayoutEnd()
{
    QFETCH(QString, table);
    const QString text = u"<table border=1><tr>Aluno: "_s + table + u"</table> Zoé</table>"_s;
    DocumentoPagina page({});
    page.setTextWidth(500);
    page.setTexto(text);
    QVERIFY(page.toPlainText().contains(u"Zoé"_s));
    QVERIFY(page.documentLayout()->documentSize().height() < 10000);
    QVERIFY(!page.cortes().empty());
}

void TstVisor::tablesInTablesEnd_data()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("3, as they are") << 3;
    QTest::newRow("4, the last one as text") << 4;
    QTest::newRow("20") << 20;
    QTest::newRow("1000") << 1000;
}

void TstVisor::tablesInTablesEnd()
{
    QFETCH(int, depth);
    DocumentoPagina page({});
    page.setTextWidth(500);
    page.setTexto(u"<table border=1><tr>Aluno: "_s + u"<table><tr><td>"_s.repeated(depth)
        + u"Zoé</td><td>Classe</td></table></table>"_s);
    const QString text = page.toPlainText();
    QVERIFY(text.contains(u"Zoé"_s) && text.contains(u"Classe"_s));
    int found = 0;
    for (QTextFrame *frame = page.rootFrame(); frame; ++found)
        frame = frame->childFrames().value(0);
    QVERIFY2(found <= 5, qPrintable(QString::number(found))); // the page itself and four tables
    QVERIFY(page.documentLayout()->documentSize().height() > 0);
}

void TstVisor::aMissingPageIsEmpty()
{
    WebBrowser www(0, nullptr);
    www.Navigate(write(u"p.HTML"_s, "<b>texto</b>"), {});
    QCOMPARE(www.toPlainText(), u"texto"_s);
    www.Navigate(barras(mDir.filePath(u"não há.HTML"_s)), {barras(mDir.filePath(u"nem figura"_s)), QString()});
    QCOMPARE(www.toPlainText(), QString());
}

void TstVisor::narrowColumnsStayOnOneLine()
{
    const QByteArray longName = sheetPage(1).replace("Roteiro", QByteArray("nome ").repeated(60));
    DocumentoPagina page({});
    page.setTextWidth(500);
    page.setTexto(QString::fromLatin1(longName));
    QVERIFY(page.documentLayout()->documentSize().width() <= 500);
    for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
        if (block.text().startsWith(u"nome"))
            QVERIFY(block.layout()->lineCount() > 2);
        else if (!block.text().isEmpty())
            QCOMPARE(block.layout()->lineCount(), 1);
    }
}

void TstVisor::sheetsEndBetweenRows_data()
{
    using Edges = std::vector<double>;
    QTest::addColumn<Edges>("cortes");
    QTest::addColumn<Edges>("expected");
    QTest::newRow("one sheet") << Edges{10, 20} << Edges{0, 20};
    QTest::newRow("just full") << Edges{50, 100} << Edges{0, 100};
    QTest::newRow("a row goes to the next sheet whole") << Edges{60, 110} << Edges{0, 60, 110};
    QTest::newRow("taller than a sheet") << Edges{10, 250, 260} << Edges{0, 10, 110, 210, 260};
    QTest::newRow("nothing") << Edges{0} << Edges{0, 0};
}

void TstVisor::sheetsEndBetweenRows()
{
    using Edges = std::vector<double>;
    QFETCH(Edges, cortes);
    QFETCH(Edges, expected);
    QCOMPARE(folhas(cortes, 100), expected);
}

QTEST_MAIN(TstVisor)
#include "tst_visor.moc"
