#include "cenario_graficos.h"

#include "data/bd.h"
#include "data/errobd.h"
#include "reports/estado.h"
#include "reports/grade.h"
#include "reports/grafico.h"
#include "startup/estado.h"
#include "support/suporte.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// Period, choice and views of the window, through its controls.
class TstFGraficos : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void controlsSayWhatTheyAreFor();
    void opensOnTheLastThirtyDays();
    void aPupilWithNothingLoggedIsGeneric();
    void aLineShowsItsDiscipline_data();
    void aLineShowsItsDiscipline();
    void allDisciplinesShowThree();
    void theBoxMustBeUntickedBeforeALineCounts();
    void aClickOnTheChosenLineRunsAgain();
    void aLineDraggedToCounts();
    void keysChooseAsTheMouseDoes();
    void datesThatAreNotComplete_data();
    void datesThatAreNotComplete();
    void aDateThatIsNoneIsSaid();
    void theLastDayEndsAtMidnight();
    void chartAndSheetTakeTurns();
    void theHourglassShowsMeanwhile();
    void aBlockAddedMeanwhileIsSeenAtTheNextLoad();
    void aFailureLeavesTheChartHidden();
    void chartTurnsOver();
    void hiddenItKeepsThePupilItWasOpenedFor();
    void closingByTheFrameUnloads();
    void finishedRoteirosAreAskedOfTheUnconnectedBank();
};

static bool visible(CenarioGraficos &c, const QString &nome)
{
    return child<QWidget>(c.janela(), nome).isVisible();
}

static QStringList sheet(CenarioGraficos &c)
{
    QStringList rows;
    for (const LinhaPlanilha &linha : child<GrdRot>(c.janela(), u"GrdRot"_s).linhas())
        rows << QStringList(linha.begin(), linha.end()).join(u'|');
    return rows;
}

static void logEverywhere(CenarioGraficos &c)
{
    c.log(u"2026-03-01 10:00:00"_s, 101, u"A:A:E:"_s);
    c.log(u"2026-03-02 10:00:00"_s, 102, u"A:"_s);
    c.log(u"2026-03-03 10:00:00"_s, 201, u"E:E:"_s);
    c.log(u"2026-03-04 10:00:00"_s, 301, u"A:A:A:A:"_s);
    c.log(u"2026-03-05 10:00:00"_s, 401, u"A:E:E:E:"_s);
}

void TstFGraficos::controlsSayWhatTheyAreFor()
{
    CenarioGraficos c;
    const std::vector<std::pair<QString, QString>> labels{{u"LblData(0)"_s, u"Data Inicial:"_s},
        {u"LblData(1)"_s, u"Data Final:"_s}, {u"LblGrafPla(0)"_s, u"Planilha"_s}, {u"LblGrafPla(1)"_s, u"Gráfico"_s}};
    for (const auto &[nome, texto] : labels)
        QCOMPARE(child<QLabel>(c.janela(), nome).text(), texto);
    for (const QString &nome : {u"MskDataInicial"_s, u"MskDataFinal"_s}) // until the window is loaded
        QCOMPARE(child<QLineEdit>(c.janela(), nome).displayText(), u"__/__/__"_s);
    QCOMPARE(child<QGroupBox>(c.janela(), u"FrmDesempenho"_s).title(), u"Disciplinas"_s);
    QCOMPARE(child<QCheckBox>(c.janela(), u"ChkDisciplinas"_s).text(), u"Seleciona Todas"_s);
    QCOMPARE(child<QPushButton>(c.janela(), u"CmdImprime"_s).toolTip(), u"Imprime"_s);
    QCOMPARE(child<QPushButton>(c.janela(), u"CmdFecha"_s).toolTip(), u"Fecha Histórico"_s);
}

void TstFGraficos::opensOnTheLastThirtyDays()
{
    CenarioGraficos c;
    c.log(u"2020-01-01 00:00:00"_s, 101, u"A:"_s); // long ago, but enough for the name
    gBlocosArq.resize(3);
    c.janela().mostra();
    QCOMPARE(c.janela().windowTitle(), u"Gráfico de Desempenho | Ana"_s);
    QCOMPARE(child<QLineEdit>(c.janela(), u"MskDataInicial"_s).displayText(), u"18/02/26"_s);
    QCOMPARE(child<QLineEdit>(c.janela(), u"MskDataFinal"_s).displayText(), u"21/03/26"_s);
    QCOMPARE(gBlocosArq.size(), std::size_t(1));
    auto &lista = child<QListWidget>(c.janela(), u"LstDisciplinas"_s);
    QStringList lines;
    for (int i = 0; i < lista.count(); ++i)
        lines << lista.item(i)->text();
    QCOMPARE(lines,
        (QStringList{u"Ciências\t\t\t\t\t4"_s, u"Matemática\t\t\t\t\t1"_s, u"Português\t\t\t\t\t3"_s,
            u"Desenv. Sensorio Motor\t\t\t\t\t6"_s}));
    for (const QString &hidden : {u"GrdRot"_s, u"CrtGrafico"_s, u"WWW"_s})
        QVERIFY2(!visible(c, hidden), qPrintable(hidden));
}

void TstFGraficos::aPupilWithNothingLoggedIsGeneric()
{
    CenarioGraficos c;
    c.janela().mostra();
    QCOMPARE(c.janela().windowTitle(), u"Gráfico de Desempenho | Aluno Genérico"_s);
    c.clicaLinha(0);
    QCOMPARE(sheet(c), QStringList{u"Data|Nome do Roteiro|Acertos|Erros"_s});
    QCOMPARE(c.figuras(), u"Acertos: Ciências 0. Erros: Ciências 0."_s);
    QVERIFY(visible(c, u"CrtGrafico"_s));
}

void TstFGraficos::aLineShowsItsDiscipline_data()
{
    QTest::addColumn<int>("linha");
    QTest::addColumn<QString>("figuras");
    QTest::newRow("Ciências") << 0 << u"Acertos: Ciências 3. Erros: Ciências 1."_s;
    QTest::newRow("Matemática") << 1 << u"Acertos: Matemática 0. Erros: Matemática 2."_s;
    QTest::newRow("Português") << 2 << u"Acertos: Português 4. Erros: Português 0."_s;
    QTest::newRow("Desenv.") << 3 << u"Acertos: Desenv. Sensorio Motor 1. Erros: Desenv. Sensorio Motor 3."_s;
}

void TstFGraficos::aLineShowsItsDiscipline()
{
    QFETCH(int, linha);
    QFETCH(QString, figuras);
    CenarioGraficos c;
    logEverywhere(c);
    c.janela().mostra();
    c.clicaLinha(linha);
    QCOMPARE(c.figuras(), figuras);
    const auto &chart = child<CrtGrafico>(c.janela(), u"CrtGrafico"_s);
    QCOMPARE(chart.figura().series.front().cor, QColor(150, 225, 255));
    QVERIFY(chart.figura().series.front().solida);
    QVERIFY(visible(c, u"CrtGrafico"_s));
    QVERIFY(!visible(c, u"GrdRot"_s));
    QVERIFY(!QApplication::overrideCursor());
}

void TstFGraficos::allDisciplinesShowThree()
{
    CenarioGraficos c;
    logEverywhere(c);
    c.janela().mostra();
    c.clica(u"ChkDisciplinas"_s);
    QCOMPARE(c.figuras(),
        u"Acertos: Ciências 3, Matemática 0, Português 4. Erros: Ciências 1, Matemática 2, Português 0."_s);
    const auto &series = child<CrtGrafico>(c.janela(), u"CrtGrafico"_s).figura().series;
    QCOMPARE(series[1].cor, QColor(225, 255, 15));
    QCOMPARE(series[2].cor, QColor(255, 105, 100));
    QVERIFY(series[0].solida && !series[1].solida && !series[2].solida);
    QCOMPARE(sheet(c).last(), u"|*** TOTAL GERAL***|7|3"_s);
    QCOMPARE(sheet(c)[1], u"Ciências|||"_s);
    QCOMPARE(sheet(c)[2], u"02/03/26 10:00:00|Plantas|1|0"_s);
    c.clica(u"ChkDisciplinas"_s); // unticked: what the window shows stays
    QVERIFY(visible(c, u"CrtGrafico"_s));
    QCOMPARE(c.janela().findChild<CrtGrafico *>()->figura().series.size(), std::size_t(3));
}

void TstFGraficos::theBoxMustBeUntickedBeforeALineCounts()
{
    CenarioGraficos c;
    logEverywhere(c);
    c.janela().mostra();
    auto &lista = child<QListWidget>(c.janela(), u"LstDisciplinas"_s);
    c.clicaLinha(1);
    c.clica(u"ChkDisciplinas"_s);
    QVERIFY(lista.selectedItems().isEmpty());
    const QString all = c.figuras();
    c.clicaLinha(2);
    QCOMPARE(lista.selectedItems().size(), 1); // it shows as chosen all the same
    QVERIFY(child<QCheckBox>(c.janela(), u"ChkDisciplinas"_s).isChecked());
    QCOMPARE(c.figuras(), all);
    c.clica(u"ChkDisciplinas"_s);
    QCOMPARE(c.figuras(), all);
    c.clicaLinha(2);
    QCOMPARE(c.figuras(), u"Acertos: Português 4. Erros: Português 0."_s);
}

void TstFGraficos::aClickOnTheChosenLineRunsAgain()
{
    CenarioGraficos c;
    c.janela().mostra();
    c.clicaLinha(0);
    c.log(u"2026-03-10 09:00:00"_s, 101, u"A:A:"_s);
    c.clicaLinha(0);
    QCOMPARE(c.figuras(), u"Acertos: Ciências 2. Erros: Ciências 0."_s);
    auto &lista = child<QListWidget>(c.janela(), u"LstDisciplinas"_s);
    c.log(u"2026-03-11 09:00:00"_s, 101, u"E:"_s);
    QTest::mouseClick( // with Ctrl too
        lista.viewport(), Qt::LeftButton, Qt::ControlModifier, lista.visualItemRect(lista.item(0)).center());
    QCOMPARE(c.figuras(), u"Acertos: Ciências 2. Erros: Ciências 1."_s);
    gAluno = 9999; // read afresh
    c.clicaLinha(0);
    QCOMPARE(c.figuras(), u"Acertos: Ciências 0. Erros: Ciências 0."_s);
}

void TstFGraficos::aLineDraggedToCounts()
{
    CenarioGraficos c;
    logEverywhere(c);
    c.janela().mostra();
    c.clicaLinha(0);
    auto &lista = child<QListWidget>(c.janela(), u"LstDisciplinas"_s);
    QTest::mousePress(lista.viewport(), Qt::LeftButton, {}, lista.visualItemRect(lista.item(1)).center());
    QTest::mouseRelease(lista.viewport(), Qt::LeftButton, {}, {-30, 5}); // beside the list
    QCOMPARE(lista.currentRow(), 1);
    QCOMPARE(c.figuras(), u"Acertos: Matemática 0. Erros: Matemática 2."_s);
}

void TstFGraficos::keysChooseAsTheMouseDoes()
{
    CenarioGraficos c;
    logEverywhere(c);
    c.janela().mostra();
    auto &lista = child<QListWidget>(c.janela(), u"LstDisciplinas"_s);
    lista.setFocus();
    QTest::keyClick(&lista, Qt::Key_Down);
    QTest::keyClick(&lista, Qt::Key_Down);
    QVERIFY(!lista.selectedItems().isEmpty());
    QVERIFY(c.figuras().contains(lista.currentItem()->text().section(u'\t', 0, 0)));
    c.log(u"2026-03-10 09:00:00"_s, 201, u"A:"_s);
    const QString before = c.figuras();
    lista.setCurrentRow(1);
    QTest::keyClick(&lista, Qt::Key_Space);
    QCOMPARE(c.figuras(), u"Acertos: Matemática 1. Erros: Matemática 2."_s);
    QTest::keyClick(&child<QCheckBox>(c.janela(), u"ChkDisciplinas"_s), Qt::Key_Space);
    QVERIFY(c.figuras().contains(u"Português 4"_s));
}

static void type(CenarioGraficos &c, const QString &nome, const QString &digits)
{
    auto &box = child<QLineEdit>(c.janela(), nome);
    box.clear();
    box.setCursorPosition(0);
    QTest::keyClicks(&box, digits);
}

void TstFGraficos::datesThatAreNotComplete_data()
{
    QTest::addColumn<QString>("inicial");
    QTest::addColumn<QString>("final");
    QTest::newRow("empty") << u""_s << u"210326"_s;
    QTest::newRow("half") << u"010326"_s << u"2103"_s;
    QTest::newRow("half beside a bad one") << u"3102"_s << u"310226"_s;
}

void TstFGraficos::datesThatAreNotComplete()
{
    QFETCH(QString, inicial);
    QFETCH(QString, final);
    BoxScript none;
    CenarioGraficos c;
    logEverywhere(c);
    c.janela().mostra();
    c.clicaLinha(0);
    const QString before = c.figuras();
    type(c, u"MskDataInicial"_s, inicial);
    type(c, u"MskDataFinal"_s, final);
    QVERIFY(visible(c, u"CrtGrafico"_s)); // typing changes nothing
    c.clicaLinha(1);
    QVERIFY(!visible(c, u"CrtGrafico"_s));
    QCOMPARE(c.figuras(), before);
}

void TstFGraficos::aDateThatIsNoneIsSaid()
{
    BoxScript boxes{Resposta::Ok};
    CenarioGraficos c;
    c.janela().mostra();
    QVERIFY(QTest::qWaitForWindowActive(&c.janela()));
    type(c, u"MskDataFinal"_s, u"310226"_s);
    QCOMPARE(child<QLineEdit>(c.janela(), u"MskDataFinal"_s).displayText(), u"31/02/26"_s);
    c.clicaLinha(1);
    QCOMPARE(boxes.last(), Caixa{.texto = u"Data Inválida"_s});
    QVERIFY(child<QLineEdit>(c.janela(), u"MskDataInicial"_s).hasFocus());
    QVERIFY(!visible(c, u"CrtGrafico"_s));
}

void TstFGraficos::theLastDayEndsAtMidnight()
{
    CenarioGraficos c;
    c.log(u"2026-03-04 23:59:59"_s, 101, u"A:"_s);
    c.log(u"2026-03-05 00:00:00"_s, 101, u"A:A:"_s);
    c.log(u"2026-03-10 00:00:00"_s, 101, u"A:A:A:A:"_s);
    c.log(u"2026-03-10 00:00:01"_s, 101, u"A:A:A:A:A:A:A:A:"_s);
    c.janela().mostra();
    type(c, u"MskDataInicial"_s, u"050326"_s);
    type(c, u"MskDataFinal"_s, u"100326"_s);
    c.clicaLinha(0);
    QCOMPARE(c.figuras(), u"Acertos: Ciências 6. Erros: Ciências 0."_s);
    QCOMPARE(sheet(c)[2], u"10/03/26|Água limpa|4|0"_s);
    type(c, u"MskDataInicial"_s, u"110326"_s); // behind the final one: nothing, no box
    c.clicaLinha(0);
    QCOMPARE(sheet(c).size(), 1);
    QCOMPARE(c.figuras(), u"Acertos: Ciências 0. Erros: Ciências 0."_s);
}

void TstFGraficos::chartAndSheetTakeTurns()
{
    CenarioGraficos c;
    logEverywhere(c);
    c.janela().mostra();
    c.clicaLinha(0);
    c.clica(u"CmdGrafPlan(1)"_s);
    QVERIFY(visible(c, u"GrdRot"_s) && !visible(c, u"CrtGrafico"_s));
    const auto &grade = child<GrdRot>(c.janela(), u"GrdRot"_s);
    QCOMPARE(grade.model()->index(1, 1).data().toString(), u"Plantas"_s);
    QCOMPARE(grade.model()->headerData(3, Qt::Horizontal).toString(), u"Erros"_s);
    c.clicaLinha(0); // the run shows the chart over the sheet, which counts as visible
    QVERIFY(visible(c, u"GrdRot"_s) && visible(c, u"CrtGrafico"_s));
    c.clica(u"CmdGrafPlan(0)"_s);
    QVERIFY(!visible(c, u"GrdRot"_s) && visible(c, u"CrtGrafico"_s));
}

void TstFGraficos::theHourglassShowsMeanwhile()
{
    CenarioGraficos c;
    c.janela().mostra();
    Qt::CursorShape shape = Qt::ArrowCursor;
    QTimer::singleShot(0, &c.janela(), [&shape] { // opening the log lets events run
        if (const QCursor *cursor = QApplication::overrideCursor())
            shape = cursor->shape();
    });
    c.janela().Processar();
    QCOMPARE(shape, Qt::WaitCursor);
    QVERIFY(!QApplication::overrideCursor());
}

void TstFGraficos::aBlockAddedMeanwhileIsSeenAtTheNextLoad()
{
    CenarioGraficos c;
    c.janela().mostra();
    c.clicaLinha(1);
    escreve(qEnvironmentVariable("QUOREL_WINDIR") + u"/QUOREL2001/DBBLOCOS/F2/0326MAF2.edb"_s,
        "[ROT<1>]\r\nNomeRot =Novo\r\nCODROT:250\r\n[<1>1]\r\n");
    c.log(u"2026-03-10 09:00:00"_s, 250, u"A:E:E:"_s);
    c.clicaLinha(1);
    QCOMPARE(c.figuras(), u"Acertos: Matemática 0. Erros: Matemática 0."_s);
    JanelaAtiva ativa;
    FGraficos outra(ativa);
    outra.mostra();
    auto &lista = child<QListWidget>(outra, u"LstDisciplinas"_s);
    QTest::mouseClick(lista.viewport(), Qt::LeftButton, {}, lista.visualItemRect(lista.item(1)).center());
    QCOMPARE(child<CrtGrafico>(outra, u"CrtGrafico"_s).accessibleDescription(),
        u"Acertos: Matemática 1. Erros: Matemática 2."_s);
}

void TstFGraficos::aFailureLeavesTheChartHidden()
{
    CenarioGraficos c;
    c.janela().mostra();
    c.clicaLinha(0);
    c.log(u"2026-03-10 09:00:00"_s, 101, QString(40000, u'A')); // more than a counter holds
    c.clicaLinha(0);
    QVERIFY(!visible(c, u"CrtGrafico"_s));
    QVERIFY(!QApplication::overrideCursor());
    escreve(qEnvironmentVariable("QUOREL_WINDIR") + u"/QUOREL2001/DBBLOCOS/F2/XX26CIF2.edb"_s, "x");
    gBlocosArq.assign(1, {});
    c.clicaLinha(1);
    QVERIFY(!visible(c, u"CrtGrafico"_s));
}

void TstFGraficos::chartTurnsOver()
{
    CenarioGraficos c;
    c.janela().mostra();
    c.clicaLinha(0);
    auto &chart = child<CrtGrafico>(c.janela(), u"CrtGrafico"_s);
    const int before = chart.chartType();
    QTest::mouseDClick(&chart, Qt::LeftButton);
    QCOMPARE(chart.chartType(), 1 - before);
    QTest::keyClick(&chart, Qt::Key_Space);
    QCOMPARE(chart.chartType(), before);
    chart.setChartType(5); // anything else than 1 becomes 1
    QTest::keyClick(&chart, Qt::Key_Space);
    QCOMPARE(chart.chartType(), 1);
}

void TstFGraficos::hiddenItKeepsThePupilItWasOpenedFor()
{
    CenarioGraficos c;
    logEverywhere(c);
    c.sql(u"INSERT INTO AL_Alunos VALUES (21, 'Bento')"_s);
    c.mostraEFaz([&] {
        c.clicaLinha(0);
        c.clica(u"CmdFecha"_s);
    });
    QVERIFY(!c.janela().isVisible());
    QVERIFY(!c.janela().foiDescarregada());
    gAluno = 21;
    type(c, u"MskDataInicial"_s, u"020326"_s);
    c.mostraEFaz([&] {
        QCOMPARE(c.janela().windowTitle(), u"Gráfico de Desempenho | Ana"_s);
        QCOMPARE(child<QLineEdit>(c.janela(), u"MskDataInicial"_s).displayText(), u"02/03/26"_s);
        QCOMPARE(child<QListWidget>(c.janela(), u"LstDisciplinas"_s).count(), 4);
        QVERIFY(visible(c, u"CrtGrafico"_s));
        c.clica(u"CmdFecha"_s);
    });
    QCOMPARE(c.figuras(), u"Acertos: Ciências 3. Erros: Ciências 1."_s);
}

void TstFGraficos::closingByTheFrameUnloads()
{
    CenarioGraficos c;
    c.mostraEFaz([&] { c.janela().close(); });
    QVERIFY(!c.janela().isVisible());
    QVERIFY(c.janela().foiDescarregada());
}

void TstFGraficos::finishedRoteirosAreAskedOfTheUnconnectedBank()
{
    BoxScript boxes{Resposta::Ok};
    CenarioGraficos c;
    QVERIFY_THROWS_EXCEPTION(ErroBD, c.janela().AbreRSTUDO(u"3"_s, QString()));
    QCOMPARE(boxes.last().titulo, u"RSTudo"_s);
    QVERIFY(boxes.last().texto.contains(u"Where (((ROxCL.CL_Cod) Is Not Null And (ROxCL.CL_Cod) =3)) AND  (("_s));
}

QTEST_MAIN(TstFGraficos)
#include "tst_fgraficos.moc"
