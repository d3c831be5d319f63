#include "cenario_graficos.h"

#include "data/errobd.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTimer>

#include <array>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// Period, choice and views of the window, through its controls.
class TstFGraficos : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void opensOnTheLastThirtyDays();
    void choosing_data();
    void choosing();
    void aPupilWithNothingLoggedIsGeneric();
    void allDisciplinesShowThreeSeries();
    void aClickOnTheChosenLineRunsAgain();
    void aLineDraggedToCounts();
    void keysChooseAsTheMouseDoes();
    void aDateThatIsNoneIsSaid();
    void theHourglassShowsMeanwhile();
    void aBlockAddedMeanwhileIsSeenAtTheNextLoad();
    void aFailureLeavesTheChartHidden();
    void chartTurnsOver();
    void hiddenItStaysLoadedUntilItIsClosed();
    void finishedRoteirosAreAskedOfTheUnconnectedBank();
};

static QString bloco(const QString &arquivo)
{
    return qEnvironmentVariable("QUOREL_WINDIR") + u"/QUOREL2001/DBBLOCOS/F2/"_s + arquivo;
}

void TstFGraficos::opensOnTheLastThirtyDays()
{
    CenarioGraficos c;
    c.log(u"2020-01-01 00:00:00"_s, 101, u"A:"_s); // long ago, but enough for the name
    gBlocosArq.resize(3);
    c.faz(u"MskDataInicial?__/__/__; MskDataFinal?__/__/__"_s);
    c.janela().mostra();
    QCOMPARE(c.janela().windowTitle(), u"Gráfico de Desempenho | Ana"_s);
    c.faz(u"MskDataInicial?18/02/26; MskDataFinal?21/03/26; GrdRot?não; CrtGrafico?não; WWW?não"_s);
    QCOMPARE(gBlocosArq.size(), std::size_t(1));
    QStringList lines;
    for (int i = 0; i < c.lista().count(); ++i)
        lines << c.lista().item(i)->text().replace(u"\t\t\t\t\t"_s, u"|"_s);
    QCOMPARE(lines, (QStringList{"Ciências|4", "Matemática|1", "Português|3", "Desenv. Sensorio Motor|6"}));
}

void TstFGraficos::choosing_data()
{
    QTest::addColumn<QString>("passos");
    const auto add = [](const char *name, const QString &passos) { QTest::newRow(name) << passos; };
    const QString todas =
        u"Acertos: Ciências 3, Matemática 0, Português 4. Erros: Ciências 1, Matemática 2, Português 0."_s;
    const QString ciencias = u"linha=0; figuras?Acertos: Ciências 3. Erros: Ciências 1.; "_s;
    add("Ciências", ciencias + "CrtGrafico?sim; GrdRot?não");
    add("Matemática", "linha=1; figuras?Acertos: Matemática 0. Erros: Matemática 2.");
    add("Português", "linha=2; figuras?Acertos: Português 4. Erros: Português 0.");
    add("Desenv.", "linha=3; figuras?Acertos: Desenv. Sensorio Motor 1. Erros: Desenv. Sensorio Motor 3.");
    add("all; unticked, what the window shows stays",
        "ChkDisciplinas; figuras?" + todas + "; ChkDisciplinas; figuras?" + todas + "; CrtGrafico?sim");
    add("the box must be unticked before a line counts, though it shows as chosen",
        "linha=1; linha?1; ChkDisciplinas; linha?; linha=2; linha?2; figuras?" + todas + "; ChkDisciplinas; figuras?"
            + todas + "; linha=2; figuras?Acertos: Português 4. Erros: Português 0.");
    add("an incomplete date is passed over at the next choice, the chart hidden",
        ciencias
            + "MskDataInicial=3102; CrtGrafico?sim; linha=1; CrtGrafico?não;"
              " figuras?Acertos: Ciências 3. Erros: Ciências 1.");
    add("the dates limit the rows",
        "MskDataInicial=020326; MskDataFinal=030326; linha=0; figuras?Acertos: Ciências 1. Erros: Ciências 0.");
    add("the first day behind the last: no row",
        "MskDataInicial=110326; MskDataFinal=030326; linha=0; linhas?1; figuras?Acertos: Ciências 0. Erros: Ciências "
        "0.");
    add("chart and sheet take turns; a run shows the chart over the sheet, which counts as visible",
        "linha=0; CmdGrafPlan(1); GrdRot?sim; CrtGrafico?não; linha=0; GrdRot?sim; CrtGrafico?sim; CmdGrafPlan(0);"
        " GrdRot?não; CrtGrafico?sim");
}

void TstFGraficos::choosing()
{
    QFETCH(QString, passos);
    BoxScript none;
    CenarioGraficos c;
    c.logEmTodas();
    c.janela().mostra();
    c.faz(passos);
}

void TstFGraficos::aPupilWithNothingLoggedIsGeneric()
{
    CenarioGraficos c;
    c.janela().mostra();
    QCOMPARE(c.janela().windowTitle(), u"Gráfico de Desempenho | Aluno Genérico"_s);
    c.faz(u"linha=0; figuras?Acertos: Ciências 0. Erros: Ciências 0.; CrtGrafico?sim"_s);
    QCOMPARE(c.planilha(), QStringList{u"Data|Nome do Roteiro|Acertos|Erros"_s});
}

void TstFGraficos::allDisciplinesShowThreeSeries()
{
    CenarioGraficos c;
    c.logEmTodas();
    c.janela().mostra();
    c.faz(u"ChkDisciplinas"_s);
    const std::vector<SerieGrafico> &series = c.grafico().figura().series;
    const std::array cores{QColor(150, 225, 255), QColor(225, 255, 15), QColor(255, 105, 100)};
    QCOMPARE(series.size(), cores.size());
    for (std::size_t i = 0; i < cores.size(); ++i) {
        QCOMPARE(series[i].cor, cores[i]);
        QCOMPARE(series[i].solida, i == 0); // the others have a colour alone
    }
    QCOMPARE(c.planilha().mid(1, 2), (QStringList{"Ciências|||", "02/03/26 10:00:00|Plantas|1|0"}));
    QCOMPARE(c.planilha().last(), u"|*** TOTAL GERAL***|7|3"_s);
}

void TstFGraficos::aClickOnTheChosenLineRunsAgain()
{
    CenarioGraficos c;
    c.janela().mostra();
    c.clicaLinha(0);
    c.log(u"2026-03-10 09:00:00"_s, 101, u"A:A:"_s);
    c.faz(u"linha=0; figuras?Acertos: Ciências 2. Erros: Ciências 0."_s);
    c.log(u"2026-03-11 09:00:00"_s, 101, u"E:"_s);
    c.clicaLinha(0, Qt::ControlModifier);
    c.faz(u"figuras?Acertos: Ciências 2. Erros: Ciências 1."_s);
    gAluno = 9999; // read afresh
    c.faz(u"linha=0; figuras?Acertos: Ciências 0. Erros: Ciências 0."_s);
}

void TstFGraficos::aLineDraggedToCounts()
{
    CenarioGraficos c;
    c.logEmTodas();
    c.janela().mostra();
    c.clicaLinha(0);
    QListWidget &lista = c.lista();
    QTest::mousePress(lista.viewport(), Qt::LeftButton, {}, lista.visualItemRect(lista.item(1)).center());
    QTest::mouseRelease(lista.viewport(), Qt::LeftButton, {}, {-30, 5}); // beside the list
    QCOMPARE(lista.currentRow(), 1);
    QCOMPARE(c.mostra(u"figuras"_s), u"Acertos: Matemática 0. Erros: Matemática 2."_s);
}

void TstFGraficos::keysChooseAsTheMouseDoes()
{
    CenarioGraficos c;
    c.logEmTodas();
    c.janela().mostra();
    c.lista().setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&c.janela()));
    for (int row = 0; row < 2; ++row) { // none is skipped, the first neither
        QTest::keyClick(&c.lista(), Qt::Key_Down);
        QCOMPARE(c.lista().selectedItems(), QList{c.lista().item(row)});
    }
    QVERIFY(c.mostra(u"figuras"_s).contains(c.lista().currentItem()->text().section(u'\t', 0, 0)));
    c.log(u"2026-03-10 09:00:00"_s, 201, u"A:"_s);
    c.lista().setCurrentRow(1);
    QTest::keyClick(&c.lista(), Qt::Key_Space);
    QCOMPARE(c.mostra(u"figuras"_s), u"Acertos: Matemática 1. Erros: Matemática 2."_s);
    QTest::keyClick(&child<QCheckBox>(c.janela(), u"ChkDisciplinas"_s), Qt::Key_Space);
    QVERIFY(c.mostra(u"figuras"_s).contains(u"Português 4"_s));
}

void TstFGraficos::aDateThatIsNoneIsSaid()
{
    BoxScript boxes{Resposta::Ok};
    CenarioGraficos c;
    c.janela().mostra();
    QVERIFY(QTest::qWaitForWindowActive(&c.janela()));
    c.faz(u"MskDataFinal=310226; MskDataFinal?31/02/26; linha=1; CrtGrafico?não"_s);
    QCOMPARE(boxes.last(), Caixa{.texto = u"Data Inválida"_s});
    QVERIFY(child<QLineEdit>(c.janela(), u"MskDataInicial"_s).hasFocus());
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
    escreve(bloco(u"0326MAF2.edb"_s), "[ROT<1>]\r\nNomeRot =Novo\r\nCODROT:250\r\n[<1>1]\r\n");
    c.log(u"2026-03-10 09:00:00"_s, 250, u"A:E:E:"_s);
    c.faz(u"linha=1; figuras?Acertos: Matemática 0. Erros: Matemática 0."_s);
    c.fazOutra();
    c.janela().mostra();
    c.faz(u"linha=1; figuras?Acertos: Matemática 1. Erros: Matemática 2."_s);
}

void TstFGraficos::aFailureLeavesTheChartHidden()
{
    CenarioGraficos c;
    c.janela().mostra();
    c.clicaLinha(0);
    c.log(u"2026-03-10 09:00:00"_s, 101, QString(40000, u'A')); // more than a counter holds
    c.faz(u"linha=0; CrtGrafico?não"_s);
    QVERIFY(!QApplication::overrideCursor());
    escreve(bloco(u"XX26CIF2.edb"_s), "x");
    gBlocosArq.assign(1, {});
    c.faz(u"linha=1; CrtGrafico?não"_s);
}

void TstFGraficos::chartTurnsOver()
{
    CenarioGraficos c;
    c.janela().mostra();
    c.clicaLinha(0);
    CrtGrafico &chart = c.grafico();
    const int before = chart.chartType();
    QTest::mouseDClick(&chart, Qt::LeftButton);
    QCOMPARE(chart.chartType(), 1 - before);
    QTest::keyClick(&chart, Qt::Key_Space);
    QCOMPARE(chart.chartType(), before);
    chart.setChartType(5); // anything else than 1 becomes 1
    QTest::keyClick(&chart, Qt::Key_Space);
    QCOMPARE(chart.chartType(), 1);
}

void TstFGraficos::hiddenItStaysLoadedUntilItIsClosed()
{
    CenarioGraficos c;
    c.logEmTodas();
    c.mostraEFaz([&] { c.faz(u"linha=0; CmdFecha"_s); });
    QVERIFY(!c.janela().isVisible());
    QVERIFY(!c.janela().foiDescarregada());
    gAluno = 9999;
    c.faz(u"MskDataInicial=020326"_s);
    c.mostraEFaz([&] {
        QCOMPARE(c.janela().windowTitle(), u"Gráfico de Desempenho | Ana"_s);
        QCOMPARE(c.lista().count(), 4);
        c.faz(u"MskDataInicial?02/03/26; CrtGrafico?sim; figuras?Acertos: Ciências 3. Erros: Ciências 1.; CmdFecha"_s);
    });
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
