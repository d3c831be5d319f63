#include "lessons/dismissal.h"
#include "lessons/espia.h"
#include "lessons/executa_aula.h"
#include "lessons/programas_filhos.h"
#include "platform/endereco.h"
#include "support/sistema.h"

#include "cenario.h"

#include <QScopeGuard>

using namespace quorel;
using namespace quorel::teste;

class TstExecutaAula final : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void childLeadsThroughARoteiro_data();
    void childLeadsThroughARoteiro();
    void eachTypeHasItsProgram_data();
    void eachTypeHasItsProgram();
    void aMessageInsideTheTurnOfAHandler();
    void badChildren_data();
    void badChildren();
    void unknownTypeSaysSo();
    void codesAreLookedUpInTheLastRoteiro();
    void comicsAdvanceWhenTheirViewerCloses();
    void comicsOfAConfiguredDirectory_data();
    void comicsOfAConfiguredDirectory();

private:
    static void executa(QString aula, QString tipo) { ExecutaAula(aula, tipo); }
    QStringList got(CodigoMensagem code) const
    {
        return mFilhos->lines().filter(QRegularExpression(QString("^%1 ").arg(int(code))));
    }
    static void endChildren()
    {
        despedeFilhos();
        for (const Janela janela : {gJanelaZeto, gJanelaLivros, gJanelaVrel, gJanelaCalc, gJanelaDesenho})
            QTRY_VERIFY_WITH_TIMEOUT(janela == 0 || !EnviaTexto(janela, janelaBlocos(), 4711, ""), kPatience);
    }
    std::unique_ptr<Cenario> mCenario;
    std::unique_ptr<Filhos> mFilhos;
};

void TstExecutaAula::init()
{
    mCenario = std::make_unique<Cenario>();
    mFilhos = std::make_unique<Filhos>();
}

void TstExecutaAula::cleanup()
{
    endChildren();
    mCenario.reset();
    setSendLimit(5000);
    // Some systems keep a program's file for as long as it takes to end.
    QTRY_VERIFY_WITH_TIMEOUT(QDir(mFilhos->native()).removeRecursively(), kPatience);
}

void TstExecutaAula::childLeadsThroughARoteiro_data()
{
    const Table<QStringList, QString> row("linhas", "respostas");
    row("from its event loop", {"FORA:A", "FORA:E", "FORA:last"}, "A:E:");
    const QString large(100000, u'x');
    row("a lesson of 100 KB", {"FORA:" + large, "FORA:"}, large + ':');
    row("flood, unknown codes, an oversized text: the answer still counts", {"ENXURRADA:A", "FORA:"}, "A:");
    row("a text without NUL", {"SEMNUL", "FORA:"}, "abc:");
    row("a long chain of lessons, each from inside the handler of the one before", QStringList(kCorrente, "DENTRO:A"),
        QString("A:").repeated(kCorrente - 1));
}

void TstExecutaAula::childLeadsThroughARoteiro()
{
    QFETCH(QStringList, linhas);
    umRoteiro(linhas, "Zeto");
    iniciaRoteiro(1);
    QVERIFY(gJanelaZeto != 0);
    QTRY_VERIFY_WITH_TIMEOUT(!gEmRoteiro, kPatience);
    QCOMPARE(gAulaAtual, linhas.size() + 1);
    QVERIFY(gRespostas.isEmpty());
    QTEST(mCenario->largest, "respostas");
    QTRY_COMPARE_WITH_TIMEOUT(got(MSG_CONTROLE), QStringList{"2122 ESCONDE"}, kPatience);
    QCOMPARE(mFilhos->lines().first(), mFilhos->inicio() + " Zeto /cnf:\\cnf\\zeto_cnf.txt /Hook:");
    QCOMPARE(mFilhos->lines().filter("inicio").size(), 1);
    QCOMPARE(got(MSG_AULA), linhas.replaceInStrings(QRegularExpression("^"), "2060 "));
    endChildren();
    QCOMPARE(got(MSG_SAI).size(), 1);
}

void TstExecutaAula::eachTypeHasItsProgram_data()
{
    // The places are those of the window and its inner one when the lesson comes.
    const Table<QString, QString, bool, QString, QString> row("tipo", "comando", "externo", "linha", "lugar");
    const QString lesson = "2060 licao1", corner = "0,0 400x300 / 10,20 200x100";
    row("Zeto: its size is taken, and the inner window's", "Zeto", "Zeto /cnf:", false, lesson,
        "300,200 120x80 / 10,20 50x40 na frente");
    row("Desenho", "Desenho", "Desenho /cfg:", false, lesson, corner);
    row("Vrel", "Vrel", "Vrel /cfg:", false, lesson, corner);
    row("Dicionario: the inner window in front", "Dicionario", "Livros /cfg:", false, lesson, corner + " na frente");
    row("Livros, commanded", "Livros", "Livros /cfg:", true, lesson + "CMDEXEC", corner + " na frente");
    row("Calculadora", "Calculadora", "Calc /cfg:", false, lesson, corner);
}

void TstExecutaAula::eachTypeHasItsProgram()
{
    QFETCH(QString, tipo);
    QFETCH(QString, comando);
    QFETCH(bool, externo);
    QFETCH(QString, linha);
    umRoteiro({"a", "b", "c"}, tipo);
    gAulaAtual = 2;
    for (int i = 0; i < 2; ++i) { // the second time the program that runs is found
        gExecExterno = externo;
        QString aula = "licao1", ownTipo = tipo;
        ExecutaAula(aula, ownTipo);
        QCOMPARE(ownTipo, comando.section(' ', 0, 0));
        QVERIFY(!gExecExterno); // cleared by Livros
    }
    const QString started = mFilhos->inicio() + ' ' + comando + "\\cnf\\zeto_cnf.txt /Hook:";
    QCOMPARE(mFilhos->lines(), (QStringList{started, linha, linha}));
    QTEST(mFilhos->places(), "lugar");
    QVERIFY(gJanelaFilha != 0);
}

/// While the answer of one program is handled, in the turn of events before its next lesson, another program's comes.
void TstExecutaAula::aMessageInsideTheTurnOfAHandler()
{
    umRoteiro({"um", "dois", "três", "quatro"}, "Zeto");
    iniciaRoteiro(1);
    executa("MUDA", "Vrel");
    const auto inside = [] {
        QCOMPARE(gRespostas, "A:");
        EnviaTexto(gJanelaVrel, janelaBlocos(), MSG_AULA, "FORA:E");
        QTRY_COMPARE_WITH_TIMEOUT(gRespostas, "A:E:", kPatience);
        QCOMPARE(gAulaAtual, 3);
        umRoteiro({"novo"}, "Desenho"); // as another reading of blocks would
    };
    QMetaObject::invokeMethod(this, inside, Qt::QueuedConnection);
    QCOMPARE(sendCopyData(janelaBlocos(), janelaBlocos(), MSG_PROXIMA, 2, QByteArrayView("A\0", 2)), 1);
    QCOMPARE(gRespostas, "A:E:");
    QCOMPARE(gMensagem.Texto, "E");
    // The inner message's lesson comes first; the outer one keeps its own.
    QCOMPARE(got(MSG_AULA), (QStringList{"2060 um", "2060 MUDA", "2060 FORA:E", "2060 três", "2060 dois"}));
    QCOMPARE(gJanelaFilha, gJanelaZeto);
}

void TstExecutaAula::badChildren_data()
{
    const Table<QString, QStringList> row("linha", "vistas");
    const QString refused = "!! Zeto  não recebeu 2060 MSG_AULA: foi embora, não respondeu a tempo ou respondeu 0";
    row("dies inside the message", "MORRE",
        {"-> Zeto  2060 MSG_AULA, tamanho 7: \"MORRE:\"", refused,
            "<- o próprio gerenciador  2110 MSG_CLASSE, tamanho 2: \"7\""});
    row("never answers", "MUDO:\t\x1b[2J", {"-> Zeto  2060 MSG_AULA, tamanho 12: \"MUDO:\\t\\x1b[2J:\"", refused});
    row("can't be started", "",
        {"!! nenhuma janela começa por \"Zeto - Quorel\". O arquivo não existe, não pode ser executado, terminou logo, "
         "ou "
         "não mostrou a janela a tempo: %1\\QUOREL2001\\exe\\Zeto.exe /cnf:\\cnf\\zeto_cnf.txt /Hook:"});
}

void TstExecutaAula::badChildren()
{
    QFETCH(QString, linha);
    QFETCH(QStringList, vistas);
    QStringList seen;
    setEspia([&seen](const Passagem &passagem) { seen << textoDaPassagem(passagem); });
    const auto blind = qScopeGuard([] { setEspia({}); });
    setSendLimit(500);
    if (linha.isEmpty())
        gConfig.SetaCFG("");
    umRoteiro({linha + ':', "next"}, "Zeto");
    gRespostas = "A:";
    iniciaRoteiro(1);
    QVERIFY(gEmRoteiro);
    QCOMPARE(gRespostas, "A:");
    Cenario::receives(MSG_CLASSE, "7"); // the shell goes on
    QCOMPARE(gClasse, 7);
    QCOMPARE(seen.first(vistas.size()), vistas.replaceInStrings("%1", barras(qEnvironmentVariable("QUOREL_WINDIR"))));
    if (linha.startsWith("MUDO"))
        mataProcesso(mFilhos->process());
}

void TstExecutaAula::unknownTypeSaysSo()
{
    BoxScript boxes{Resposta::Ok};
    umRoteiro({"x"}, "Fita");
    iniciaRoteiro(1);
    QCOMPARE(boxes.last(), Caixa{.texto = "Tipo de execução de aula desconhecido!"});
    QVERIFY(gEmRoteiro);
}

void TstExecutaAula::comicsAdvanceWhenTheirViewerCloses()
{
    const QString windows = qEnvironmentVariable("QUOREL_WINDIR");
    escreve(windows + "/QUOREL2001/Arqs/tira.htm", "<html>");
    umRoteiro({"a<SPÇ><SPÇ><SPÇ><SPÇ><SPÇ><SPÇ><SPÇ><SPÇ> tira.htm <SPÇ>", "FORA:"}, "HTML");
    gRoteiros.edit(1).Aulas.edit(2).Tipo = "Zeto";
    executa("x", "Vrel");
    placeWindow(gJanelaVrel, Ordem::Topmost, kKeepSize | kKeepPosition);
    executa("x", "Vrel");
    QCOMPARE(mFilhos->places(), "0,0 400x300 sempre na frente / 10,20 200x100");
    QWidget page;
    page.setGeometry(50, 60, 300, 200);
    Endereco viewer(&page);
    DocumentRequest opened;
    costuras().openDocument = [&](const DocumentRequest &request) {
        opened = request;
        viewer.publish("Quadrinhos - A tira");
        return true;
    };
    QList<int> pauses;
    costuras().pause = [&](int milliseconds) {
        pauses << milliseconds;
        if (pauses.size() == 4)
            viewer.withdraw();
    };
    iniciaRoteiro(1);
    QCOMPARE(pauses, (QList<int>{1000, 5000, 1000, 1000}));
    QCOMPARE(opened.document, barras(windows) + "\\Quorel2001\\Arqs\\tira.htm");
    QCOMPARE(opened.directory, "tira.htm"); // the file's name as working directory
    QCOMPARE(opened.show, ShowMode::Maximized);
    QCOMPARE(QRect(cantoDe(page), page.size()), QRect(0, 0, 300, 200));
    QVERIFY(sempreNaFrente(page));
    QTRY_VERIFY_WITH_TIMEOUT(!gEmRoteiro, kPatience);
    QCOMPARE(gAulaAtual, 3);
    QVERIFY(got(MSG_AULA).contains("2060 FORA:"));
    executa("x", "Vrel");
    QCOMPARE(mFilhos->places(), "0,0 400x300 / 10,20 200x100"); // the viewer was to be above the programs
}

void TstExecutaAula::codesAreLookedUpInTheLastRoteiro()
{
    gRoteiros.dimension(2);
    for (int rota = 1; rota <= 2; ++rota) {
        gRoteiros.edit(rota).Aulas.dimension(3);
        for (int aula = 1; aula <= 3; ++aula)
            gRoteiros.edit(rota).Aulas.edit(aula) = {
                aula == 1 ? "8" : " 007x", {}, QString("%1.%2").arg(rota).arg(aula), "Vrel", {}};
    }
    gRotAtual = 1;
    QCOMPARE(BuscaAulaCalc("7"), "2.2<TIPO>Vrel"); // the first there of that number, whatever Roteiro runs
    QCOMPARE(BuscaAulaCalc("9"), "");
}

void TstExecutaAula::comicsOfAConfiguredDirectory_data()
{
    const Table<bool, bool, QString, QList<int>> row("inWindows", "externo", "opened", "pauses");
    row("DIRQUOREL leads to the page", true, false, "\\\\escola\\suite\\Arqs\\tira.htm", {1000, 5000, 1000});
    row("a commanded one is not waited for", true, true, "\\\\escola\\suite\\Arqs\\tira.htm", {1000});
    row("kept: without one in the Windows directory none is shown", false, false, "", {});
}

void TstExecutaAula::comicsOfAConfiguredDirectory()
{
    QFETCH(bool, inWindows);
    QFETCH(bool, externo);
    const QString page = qEnvironmentVariable("QUOREL_WINDIR") + "/QUOREL2001/Arqs/tira.htm";
    QFile::remove(page);
    if (inWindows)
        escreve(page, "<html>");
    gConfig.SetaCFG("DIRQUOREL=\\\\escola\\suite\r\n");
    QString opened;
    costuras().openDocument = [&](const DocumentRequest &request) {
        opened = request.document;
        return true;
    };
    QList<int> pauses;
    costuras().pause = [&](int milliseconds) { pauses << milliseconds; };
    umRoteiro({QString("<SPÇ>").repeated(8) + "tira.htm"}, "HTML");
    gExecExterno = externo;
    executa(gRoteiros[1].Aulas[1].Linha, "HTML");
    QTEST(opened, "opened");
    QTEST(pauses, "pauses");
    QCOMPARE(gExecExterno, externo); // no branch but Livros' clears it
    QCOMPARE(gAulaAtual, inWindows && !externo ? 2 : 1);
}

QTEST_MAIN(TstExecutaAula)
#include "tst_executa_aula.moc"
