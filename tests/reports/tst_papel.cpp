#include "reports/impressao.h"
#include "support/suporte.h"

#include "folha.h"

#include <QPrinter>
#include <QProcess>
#include <QTemporaryDir>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// What stands on the paper, read back by another program.
class TstPapel : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void aLongPageLosesNoRowOnPaper();

private:
    QTemporaryDir mDir;
};

static QStringList printedPages(const QString &pdf)
{
    QProcess reader;
    reader.start(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s});
    if (!reader.waitForFinished() || reader.exitCode() != 0)
        qFatal("pdftotext: %s", qPrintable(reader.errorString()));
    QStringList pages = QString::fromUtf8(reader.readAllStandardOutput()).split(u'\f');
    pages.removeLast(); // behind the last form feed
    return pages;
}

void TstPapel::aLongPageLosesNoRowOnPaper()
{
    constexpr int kRows = 150;
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setOutputFileName(mDir.filePath(u"longa.pdf"_s));
    pintaPagina(QString::fromLatin1(sheetPage(kRows)), {}, printer);
    const QStringList pages = printedPages(mDir.filePath(u"longa.pdf"_s));
    QVERIFY(pages.size() > 2);
    int row = 0;
    for (const QString &page : pages) {
        for (const QString &line : page.split(u'\n', Qt::SkipEmptyParts))
            QCOMPARE(line.simplified(), u"24/11/26 Roteiro nº %1 12 3"_s.arg(++row));
    }
    QCOMPARE(row, kRows);
}

QTEST_MAIN(TstPapel)
#include "tst_papel.moc"
