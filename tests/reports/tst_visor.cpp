#include "reports/impressao.h"
#include "reports/visor.h"
#include "support/suporte.h"

#include "folha.h"

#include <QAbstractTextDocumentLayout>
#include <QDir>
#include <QHostAddress>
#include <QImage>
#include <QPrinter>
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
    void showsThePictureUnderItsVeryText_data();
    void showsThePictureUnderItsVeryText();
    void loadsNothingElse_data();
    void loadsNothingElse();
    void whatCannotBeLaidOutEnds_data();
    void whatCannotBeLaidOutEnds();
    void aMissingPageIsEmpty();
    void narrowColumnsStayOnOneLine();
    void sheetsEndBetweenRows_data();
    void sheetsEndBetweenRows();

private:
    QTemporaryDir mDir;
    QString write(const QString &name, const QByteArray &page); ///< path with backslashes
    QString picture(const QString &name, int fineness = 1); ///< red, 40 by 30 pixels of a screen; path likewise
};

QString TstVisor::write(const QString &name, const QByteArray &page)
{
    escreve(mDir.filePath(name), page);
    return barras(mDir.filePath(name));
}

QString TstVisor::picture(const QString &name, int fineness)
{
    QImage image(40 * fineness, 30 * fineness, QImage::Format_RGB32);
    image.fill(Qt::red);
    image.setDotsPerMeterX(3780 * fineness);
    image.setDotsPerMeterY(3780 * fineness);
    if (!image.save(mDir.filePath(name), "PNG"))
        qFatal("no picture");
    return barras(mDir.filePath(name));
}

void TstVisor::showsThePictureUnderItsVeryText_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("fineness");
    QTest::newRow("a blank") << "a b.TMP" << 1;
    // A system whose names go without "?" gets the rest.
    QTest::newRow("what an address would take apart")
        << (QDir::separator() == u'/' ? u"50%41#1?x.TMP"_s : u"50%41#1x.TMP"_s) << 1;
    QTest::newRow("accents") << "ção.TMP" << 1;
    QTest::newRow("three times as fine as the screen: its natural size") << "fina.TMP" << 3;
}

void TstVisor::showsThePictureUnderItsVeryText()
{
    QFETCH(QString, name);
    QFETCH(int, fineness);
    const QString src = picture(name, fineness);
    WebBrowser www(10, nullptr);
    www.resize(300, 200);
    www.Navigate(write(u"p.HTML"_s, "<HTML><img SRC=\"" + src.toLatin1() + "\"> olá</HTML>"), {src});
    www.show();
    QCOMPARE(pixelsOf(www.grab().toImage(), Qt::red), 40 * 30);
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
    picture(u"outra.png"_s);
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
    QCOMPARE(pixelsOf(www.grab().toImage(), Qt::red), 0);
    QTest::mouseClick(www.viewport(), Qt::LeftButton, {}, {80, 12});
    QVERIFY(www.toPlainText().contains(u"Aluno:"_s));
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(mDir.filePath(u"p.pdf"_s));
    pintaPagina(QString::fromLatin1(le(mDir.filePath(u"p.HTML"_s))), {}, printer);
    QVERIFY(!le(mDir.filePath(u"p.pdf"_s)).isEmpty());
    QVERIFY(!server.waitForNewConnection(0));
}

void TstVisor::whatCannotBeLaidOutEnds_data()
{
    QTest::addColumn<QString>("table");
    QTest::newRow("padding") << u"<table cellpadding=2000000000><tr><td>"_s;
    QTest::newRow("spacing") << u"<table cellspacing=2000000000><tr><td>"_s;
    QTest::newRow("padding of a cell") << u"<table><tr><td style='padding:2000000000px'>"_s;
    QTest::newRow("margin") << u"<table style='margin:2000000000px'><tr><td>"_s;
    QTest::newRow("margin of a floating table") << u"<table style='float:left;margin:2000000000px'><tr><td>"_s;
    QTest::newRow("below 0") << u"<table cellpadding=-2000000000 style='margin:-2000000000px'><tr><td>"_s;
    QTest::newRow("of a table in a table")
        << u"<table><tr><td><table style='padding:2000000000px' cellspacing=2000000000><tr><td>"_s;
    for (const int depth : {3, 4, 20, 1000}) // up to 3 as they are
        QTest::addRow("%d tables in tables", depth) << u"<table><tr><td>"_s.repeated(depth);
}

void TstVisor::whatCannotBeLaidOutEnds()
{
    QFETCH(QString, table);
    DocumentoPagina page({});
    page.setTextWidth(500);
    page.setTexto(u"<table border=1><tr>Aluno: "_s + table + u"Zoé</td><td>Classe</td></table></table>"_s);
    QVERIFY(page.toPlainText().contains(u"Zoé"_s) && page.toPlainText().contains(u"Classe"_s));
    const double height = page.documentLayout()->documentSize().height();
    QVERIFY2(height > 0 && height < 100000, qPrintable(QString::number(height)));
    QVERIFY(!page.cortes().empty());
    int found = 0;
    for (QTextFrame *frame = page.rootFrame(); frame; ++found)
        frame = frame->childFrames().value(0);
    QVERIFY2(found <= 5, qPrintable(QString::number(found))); // the page itself and four tables
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
    QTest::addColumn<double>("tabela"); // where the table ends whose head stands from 20 to 40
    QTest::addColumn<Edges>("expected");
    QTest::newRow("one sheet") << Edges{10, 20} << 0.0 << Edges{0, 20};
    QTest::newRow("just full") << Edges{50, 100} << 0.0 << Edges{0, 100};
    QTest::newRow("a row goes to the next sheet whole") << Edges{60, 110} << 0.0 << Edges{0, 60, 110};
    QTest::newRow("taller than a sheet") << Edges{10, 250, 260} << 0.0 << Edges{0, 10, 110, 210, 260};
    QTest::newRow("nothing") << Edges{0} << 0.0 << Edges{0, 0};
    QTest::newRow("a head of 20 takes its room on the sheets after it, as far as its table reaches")
        << Edges{20, 40, 100, 180, 250, 299, 350, 399} << 299.0 << Edges{0, 100, 180, 250, 299, 399};
}

void TstVisor::sheetsEndBetweenRows()
{
    using Edges = std::vector<double>;
    QFETCH(Edges, cortes);
    QFETCH(double, tabela);
    QFETCH(Edges, expected);
    QCOMPARE(folhas(cortes, 100, {20, 40, tabela}), expected);
}

QTEST_MAIN(TstVisor)
#include "tst_visor.moc"
