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
    void aNewSheetForgetsTheTitlesOfTheOld();
};

static const LinhaPlanilha kHeader{u"Data"_s, u"Nome do Roteiro"_s, u"Acertos"_s, u"Erros"_s};

void TstGrade::howARowLooks_data()
{
    QTest::addColumn<LinhaPlanilha>("linha");
    QTest::addColumn<int>("wide"); // columns that the first cell covers
    QTest::addColumn<bool>("bold");
    QTest::addColumn<QString>("tip"); // of the name
    QTest::newRow("title") << LinhaPlanilha{u"Desenv. Sensorio Motor"_s, {}, {}, {}} << 4 << true << QString();
    QTest::newRow("a run") << LinhaPlanilha{u"01/03/26 10:00:00"_s, u"Rimas <b>"_s, u"2"_s, u"1"_s} << 1 << false
                           << u"<qt>Rimas &lt;b&gt;</qt>"_s;
    QTest::newRow("a roteiro without a name shows its figures all the same")
        << LinhaPlanilha{u"01/03/26"_s, {}, u"2"_s, u"1"_s} << 1 << false << QString();
    QTest::newRow("total") << LinhaPlanilha{QString(), u"*** TOTAL ***"_s, u"2"_s, u"1"_s} << 1 << true
                           << u"<qt>*** TOTAL ***</qt>"_s;
    QTest::newRow("empty row") << LinhaPlanilha{} << 1 << false << QString();
}

void TstGrade::howARowLooks()
{
    QFETCH(LinhaPlanilha, linha);
    QFETCH(int, wide);
    QFETCH(bool, bold);
    QFETCH(QString, tip);
    GrdRot grade(nullptr);
    grade.setLinhas({kHeader, linha});
    const QAbstractItemModel &modelo = *grade.model();
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

void TstGrade::aNewSheetForgetsTheTitlesOfTheOld()
{
    GrdRot grade(nullptr);
    grade.setLinhas({kHeader, {u"Ciências"_s, {}, {}, {}}});
    grade.setLinhas({kHeader, {u"01/03/26"_s, u"Rimas"_s, u"2"_s, u"1"_s}});
    QCOMPARE(grade.columnSpan(0, 0), 1);
}

QTEST_MAIN(TstGrade)
#include "tst_grade.moc"
