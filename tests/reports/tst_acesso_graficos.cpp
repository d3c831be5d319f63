#include "cenario_graficos.h"

#include "support/acesso.h"

#include <QAccessible>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The window for those who use the keyboard, or hear it.
class TstAcessoGraficos : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void everyControlHasAName();
    void tabReachesWhatShows_data();
    void tabReachesWhatShows();
    void textsFitTheirControls();
    void pagesOfTheWindowAreDrawnOnADarkDesktopToo();
};

void TstAcessoGraficos::everyControlHasAName()
{
    CenarioGraficos c;
    c.janela().mostra();
    todosTemNome(c.janela());
    QCOMPARE(QAccessible::queryAccessibleInterface(&c.grafico())->role(), QAccessible::Chart);
    QAccessibleInterface *line = QAccessible::queryAccessibleInterface(&c.lista())->child(3);
    QCOMPARE(line->text(QAccessible::Name), u"Desenv. Sensorio Motor"_s); // without tabs and number
}

void TstAcessoGraficos::tabReachesWhatShows_data()
{
    QTest::addColumn<QString>("passos");
    QTest::addColumn<QString>("expected"); // in alphabetical order
    const QString filter = u"ChkDisciplinas CmdFecha CmdGrafPlan(0) CmdGrafPlan(1) CmdImprime %1LstDisciplinas"
                           " MskDataFinal MskDataInicial"_s;
    QTest::newRow("filter alone") << QString() << filter.arg(QString());
    QTest::newRow("chart") << u"ChkDisciplinas"_s << filter.arg(u"CrtGrafico "_s);
    QTest::newRow("sheet") << u"ChkDisciplinas; CmdGrafPlan(1)"_s << filter.arg(u"GrdRot "_s);
    QTest::newRow("chart over the sheet")
        << u"ChkDisciplinas; CmdGrafPlan(1); ChkDisciplinas; ChkDisciplinas"_s << filter.arg(u"CrtGrafico "_s);
    QTest::newRow("preview") << u"ChkDisciplinas; CmdImprime"_s << u"CmdFecha CmdImprime WWW"_s;
}

void TstAcessoGraficos::tabReachesWhatShows()
{
    QFETCH(QString, passos);
    QFETCH(QString, expected);
    CenarioGraficos c;
    c.janela().mostra();
    c.faz(passos);
    child<QWidget>(c.janela(), u"CmdFecha"_s).setFocus();
    QStringList names = voltaDoTab(c.janela());
    names.sort();
    QCOMPARE(names.join(u' '), expected);
}

void TstAcessoGraficos::textsFitTheirControls()
{
    CenarioGraficos c;
    c.logEmTodas();
    c.janela().mostra();
    c.clicaLinha(0);
    textosCabem(c.janela());
    QVERIFY(c.lista().visualItemRect(c.lista().item(3)).bottom() <= c.lista().viewport()->height());
    cabe(*c.lista().viewport(), u"Desenv. Sensorio Motor"_s, 8);
    const auto &grade = child<QTableView>(c.janela(), u"GrdRot"_s);
    int widths = 0;
    for (int column = 0; column < 4; ++column) {
        const QString title = grade.model()->headerData(column, Qt::Horizontal).toString();
        QVERIFY2(grade.horizontalHeader()->sectionSizeHint(column) <= grade.columnWidth(column), qPrintable(title));
        widths += grade.columnWidth(column);
    }
    QVERIFY(widths <= grade.viewport()->width());
    QVERIFY(grade.fontMetrics().horizontalAdvance(u"20/03/26 12:00:00"_s) <= grade.columnWidth(0) - 8);
    for (const QString &nome : {u"MskDataInicial"_s, u"MskDataFinal"_s})
        cabe(child<QLineEdit>(c.janela(), nome), u"00/00/00"_s, 12);
}

void TstAcessoGraficos::pagesOfTheWindowAreDrawnOnADarkDesktopToo()
{
    QApplication::setPalette(QPalette(Qt::white, Qt::black));
    CenarioGraficos c;
    c.janela().mostra();
    c.faz(u"linha=0; CmdGrafPlan(1); CmdImprime"_s);
    const QPalette grade = child<QWidget>(c.janela(), u"GrdRot"_s).palette();
    QVERIFY(grade.color(QPalette::Base).lightness() > 200);
    QVERIFY(grade.color(QPalette::Text).lightness() < 80);
    QVERIFY(child<QWidget>(c.janela(), u"WWW"_s).palette().color(QPalette::Text).lightness() < 80);
    QApplication::setPalette(QPalette());
}

QTEST_MAIN(TstAcessoGraficos)
#include "tst_acesso_graficos.moc"
