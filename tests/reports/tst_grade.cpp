#include "reports/grade.h"

#include "support/suporte.h"

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The grid that shows the sheet.
class TstGrade : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void howARowLooks_data();
    void howARowLooks();
    void atFirstItHasItsFixedRowAlone();
};

void TstGrade::howARowLooks_data()
{
    QTest::addColumn<LinhaPlanilha>("linha");
    QTest::addColumn<int>("wide"); // columns that the first cell covers
    QTest::addColumn<bool>("bold");
    QTest::addColumn<QString>("tip"); // of the name
    const auto add = [](const char *name, const LinhaPlanilha &linha, int wide, bool bold, const QString &tip = {}) {
        QTest::newRow(name) << linha << wide << bold << tip;
    };
    add("title", {"Desenv. Sensorio Motor"}, 4, true);
    add("a run", {"01/03/26 10:00:00", "Rimas <b>", "2", "1"}, 1, false, "<qt>Rimas &lt;b&gt;</qt>");
    add("a roteiro without a name shows its figures all the same", {"01/03/26", {}, "2", "1"}, 1, false);
    add("total", {QString(), "*** TOTAL ***", "2", "1"}, 1, true, "<qt>*** TOTAL ***</qt>");
    add("empty row", {}, 1, false);
}

void TstGrade::howARowLooks()
{
    QFETCH(LinhaPlanilha, linha);
    QFETCH(int, wide);
    QFETCH(bool, bold);
    QFETCH(QString, tip);
    GrdRot grade(nullptr);
    const LinhaPlanilha header{u"Data"_s, u"Nome do Roteiro"_s, u"Acertos"_s, u"Erros"_s};
    grade.setLinhas({header, {u"Ciências"_s, {}, {}, {}}}); // a title that the new sheet forgets
    grade.setLinhas({header, linha});
    const QAbstractItemModel &modelo = *grade.model();
    QCOMPARE(modelo.headerData(3, Qt::Horizontal).toString(), u"Erros"_s);
    QCOMPARE(grade.columnSpan(0, 0), wide);
    for (int column = 0; column < modelo.columnCount(); ++column) {
        const QModelIndex cell = modelo.index(0, column);
        QCOMPARE(cell.data().toString(), linha[std::size_t(column)]);
        QCOMPARE(cell.data(Qt::FontRole).value<QFont>().bold(), bold);
    }
    QCOMPARE(modelo.index(0, 1).data(Qt::ToolTipRole).toString(), tip);
}

void TstGrade::atFirstItHasItsFixedRowAlone()
{
    const GrdRot grade(nullptr);
    QCOMPARE(grade.linhas(), std::vector<LinhaPlanilha>(1));
    QCOMPARE(grade.model()->rowCount(), 0); // the fixed row is the header
    QCOMPARE(grade.model()->headerData(1, Qt::Horizontal).toString(), QString());
}

QTEST_MAIN(TstGrade)
#include "tst_grade.moc"
