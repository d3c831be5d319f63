#include "lessons/endereco_blocos.h"
#include "lessons/executa_aula.h"
#include "lessons/programas_filhos.h"
#include "lessons/vista_andamento.h"
#include "platform/codec.h"
#include "platform/endereco.h"
#include "platform/eventos.h"
#include "platform/fim.h"

#include "cenario.h"

using namespace quorel;
using namespace quorel::teste;

/// A child program's window inside the test: a send to it is a direct call.
struct Filho
{
    Filho()
    {
        endereco.replaceProc([this](Janela, quint32, quintptr, qintptr lParam) -> qintptr {
            const auto &data = *reinterpret_cast<const CopyData *>(lParam);
            const QByteArrayView text(static_cast<const char *>(data.bytes), data.size - 1);
            got << QString::number(data.code) + ' ' + decode1252(text);
            return 1;
        });
        endereco.publish(kTituloZeto);
    }
    Endereco endereco;
    QStringList got;
};

class TstRecebeMensagem final : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void movesThroughTheRoteiro_data();
    void movesThroughTheRoteiro();
    void tellsHowFarItIs();
    void sizes_data();
    void sizes();
    void codes_data();
    void codes();
    void withoutRoteirosNothingMoreHappens();
    void gameReply();
    void calculatorOutsideARoteiro();
    void drawingToolTakesTheChildAfterItsSend();
    void calculatorRules_data();
    void calculatorRules();
    void programsAreLookedForInTwoPlaces_data();
    void programsAreLookedForInTwoPlaces();
    void secondHookIsIgnored();
    void aFailureInTheHookIsShownOnceAndEndsTheProgram();

private:
    static void receives(qint32 code, const QString &text = {}) { Cenario::receives(code, text); }
    std::unique_ptr<Cenario> mCenario;
    std::unique_ptr<Filho> mFilho;
};

void TstRecebeMensagem::init()
{
    mCenario = std::make_unique<Cenario>();
    mFilho = std::make_unique<Filho>();
    umRoteiro({"um", "dois", "três"}, "Zeto");
}

void TstRecebeMensagem::cleanup()
{
    mFilho.reset();
    mCenario.reset();
    QVERIFY(!findWindow(kTituloGerenciador, false));
}

void TstRecebeMensagem::movesThroughTheRoteiro_data()
{
    const Table<qint16, Mensagens, qint16, QString, QStringList, bool> row(
        "start", "messages", "end", "respostas", "got", "emRoteiro");
    const QString hide = "2122 ESCONDE";
    row("on, back and on again", 1, {{MSG_PROXIMA, "A"}, {MSG_ANTERIOR, "E"}, {MSG_PROXIMA, ""}, {MSG_PROXIMA, "A"}}, 3,
        "A:E:A:", {"2060 dois", "2060 um", "2060 dois", "2060 três"}, true);
    row("the answer of the last lesson is not recorded", 2, {{MSG_PROXIMA, "A"}, {MSG_PROXIMA, "E"}}, 4, "",
        {"2060 três", hide}, false);
    row("next again after the end moves further and hides again", 3, {{MSG_PROXIMA, ""}, {MSG_PROXIMA, ""}}, 5, "",
        {hide, hide}, false);
    row("a pupil that is no number: no answer is kept", 1, {{MSG_ALUNO, "Ana"}, {MSG_PROXIMA, "A"}}, 2, "",
        {"2060 dois"}, true);
    row("it does not move beyond its type", 32767, {{MSG_PROXIMA, ""}}, 32767, "", {hide}, false);
    row("back before the first writes the log and stays where it fell", 2,
        {{MSG_ANTERIOR, "A"}, {MSG_ANTERIOR, "E"}, {MSG_ANTERIOR, "E"}}, -1, "", {"2060 um"}, true);
}

void TstRecebeMensagem::movesThroughTheRoteiro()
{
    QFETCH(qint16, start);
    QFETCH(Mensagens, messages);
    gAulaAtual = start;
    gEmRoteiro = true;
    gJanelaZeto = mFilho->endereco.handle();
    for (const auto &[code, text] : messages)
        receives(code, text);
    QTEST(gAulaAtual, "end");
    QTEST(gRespostas, "respostas");
    QTEST(mFilho->got, "got");
    QTEST(gEmRoteiro, "emRoteiro");
    QCOMPARE(gCodRoteiro, mFilho->got.first().startsWith("2060") ? 77 : 0);
}

/// Writes down what it is told.
struct Told final : VistaAndamento
{
    Told() { setVistaAndamento(this); }
    void aulaBegan(int aula, int count) override { said << QString("%1/%2").arg(aula).arg(count); }
    void programAwaited(const QString &title) override { said << "awaits " + title; }
    void answerTaken(const QString &answer) override { said << answer; }
    void roteiroEnded() override { said << "ended"; }
    void roteiroLeft() override { said << "left"; }
    QStringList said;
};

void TstRecebeMensagem::tellsHowFarItIs()
{
    Told told;
    iniciaRoteiro(1);
    receives(MSG_PROXIMA, "A");
    receives(MSG_ANTERIOR, "E");
    receives(MSG_PROXIMA);
    receives(MSG_RESPOSTA, "x");
    receives(MSG_PROXIMA);
    receives(MSG_PROXIMA, "A"); // not recorded, so not told
    receives(MSG_SAI, "E");
    const QStringList expected{"left", "1/3", "A", "2/3", "E", "1/3", "2/3", "x", "3/3", "ended", "E", "left"};
    QCOMPARE(told.said, expected);
}

void TstRecebeMensagem::sizes_data()
{
    const Table<qint32, QByteArray, QString> row("size", "bytes", "texto");
    row("size 0 keeps the text of the message before", 0, "abc", "old");
    row("negative likewise", -5, "abc", "old");
    row("1 is an empty text", 1, QByteArray(1, '\0'), "");
    row("cut at the first NUL", 6, QByteArray("ab\0cd\0", 6), "ab");
    row("no NUL at all", 3, "abc", "abc");
    row("the largest", 204800, QByteArray(204800, 'x'), QString(204800, u'x'));
    row("too large: does not arrive", 204801, QByteArray(204801, 'x'), "old");
}

void TstRecebeMensagem::sizes()
{
    QFETCH(qint32, size);
    QFETCH(QByteArray, bytes);
    gMensagem.Texto = "old";
    sendCopyData(janelaBlocos(), janelaBlocos(), 4711, size, bytes);
    QTEST(gMensagem.Texto, "texto");
    if (size > qint32(kMaxCopyData))
        return;
    const CopyData direct{4711, quint32(size), bytes.constData()}; // some transport may leave the bytes there
    RecebeMensagem(qintptr(&direct));
    QTEST(gMensagem.Texto, "texto");
    QVERIFY(mFilho->got.isEmpty() && gRespostas.isEmpty());
}

void TstRecebeMensagem::codes_data()
{
    const Table<qint32, QString, qint32, qint32, QString, QStringList> row(
        "code", "texto", "aluno", "classe", "respostas", "calls");
    row("pupil", MSG_ALUNO, " 12.9x", 12, 9999, "r:", {});
    row("no number is pupil 0", MSG_ALUNO, "Ana", 0, 9999, "r:", {});
    row("too large a number changes nothing", MSG_ALUNO, "99999999999", 9999, 9999, "r:", {});
    row("class", MSG_CLASSE, "7", 9999, 7, "r:", {});
    row("unload", MSG_FECHA_BLOCOS, "x", 9999, 9999, "r:", {"unload"});
    row("answer to be written now empties the answers", MSG_RESPOSTA, "A", 9999, 9999, "", {});
    row("leaving writes them, also when fBlocos can't have the focus", MSG_SAI, "A", 9999, 9999, "", {"focus"});
    row("unknown", 2061, "A", 9999, 9999, "r:", {});
}

void TstRecebeMensagem::codes()
{
    QFETCH(qint32, code);
    QFETCH(QString, texto);
    gRespostas = "r:";
    gEmRoteiro = true;
    mCenario->hidden = true;
    receives(code, texto);
    QCOMPARE(gEmRoteiro, code != MSG_SAI);
    QTEST(gAluno, "aluno");
    QTEST(gClasse, "classe");
    QTEST(gRespostas, "respostas");
    QTEST(mCenario->calls, "calls");
}

void TstRecebeMensagem::withoutRoteirosNothingMoreHappens()
{
    reiniciaCatalogue();
    gEmRoteiro = true;
    gRespostas = "A:";
    for (const qint32 code : {MSG_PROXIMA, MSG_ANTERIOR, MSG_JOGO, MSG_EXEC_CALC})
        receives(code, "2610");
    QCOMPARE(gAulaAtual, 1);
    QVERIFY(gEmRoteiro);
    QCOMPARE(gRespostas, "A:");
    QVERIFY(mFilho->got.isEmpty());
}

void TstRecebeMensagem::gameReply()
{
    receives(MSG_JOGO); // no child yet, and none is looked up for an empty reply
    QCOMPARE(gJanelaFilha, Janela(0));
    gJanelaFilha = mFilho->endereco.handle();
    receives(MSG_JOGO);
    gRoteiros.edit(1).Aulas.edit(1).Jogo = "forca";
    gJanelaFilha = 0;
    receives(MSG_JOGO);
    QCOMPARE(gJanelaFilha, mFilho->endereco.handle());
    QCOMPARE(mFilho->got, (QStringList{"2123 ", "2123 1#forca"}));
}

void TstRecebeMensagem::calculatorOutsideARoteiro()
{
    mFilho->endereco.setTitle("Calculadora - Quorel");
    gCodRoteiro = 77;
    gAulaAtual = 2;
    gRoteiros.edit(1).Aulas.edit(3).Tipo = "Calculadora";
    receives(MSG_EXEC_CALC, "3EXEC");
    QCOMPARE(mFilho->got, QStringList{"2060 trêsCMDEXEC"});
    QCOMPARE(gCodRoteiro, 0);
    QVERIFY2(gExecExterno, "not cleared by the calculator");
    QVERIFY2(gJanelaFilha == 0, "left as it is");
    QCOMPARE(gMensagem.Texto, "três"); // passed by reference
}

void TstRecebeMensagem::drawingToolTakesTheChildAfterItsSend()
{
    mFilho->endereco.setTitle("Editor de Desenhos - Quorel");
    Janela during = 1;
    mFilho->endereco.replaceProc([&](Janela, quint32, quintptr, qintptr) -> qintptr {
        during = std::exchange(gJanelaFilha, 4); // as a lesson nested in the send sets it
        return 1;
    });
    QString aula = "x", tipo = "Desenho";
    ExecutaAula(aula, tipo);
    QCOMPARE(during, Janela(0));
    QCOMPARE(gJanelaFilha, gJanelaDesenho);
}

void TstRecebeMensagem::calculatorRules_data()
{
    const Table<QString, QString, qint16, QStringList> row("aula", "tipo", "atual", "got");
    row("in the middle", "lesson", "Calc", 2, {"2060 lesson"});
    row("last", "lesson", "Calculadora", 3, {"2122 ULTIMA", "2060 lesson"});
    row("first", "lesson", "Calc", 1, {"2122 PRIMEIRA", "2060 lesson"});
    row("beyond the end: both", "lesson", "Calc", 5, {"2122 ULTIMA", "2122 PRIMEIRA", "2060 lesson"});
    row("another type behind its mark", "lesson<TIPO>Calculadora", "Calc", 2, {"2060 lesson"});
    row("a code of five characters that is nowhere: the default lesson", "00999", "Calc", 2,
        {"2060 (1,1)2610<SPÇ>1<SPÇ>1<SPÇ>0<SPÇ>0<SPÇ>0<SPÇ>0<SPÇ><SPÇ><SPÇ><SPÇ><SPÇ><SPÇ><PÇ><VAA>(1)2610"
         "\t1\t1\t1\t0\t0\t0 <MD><VOA>(1)<VCM>22 CHAMA AULA  20<CM>"});
    row("empty lesson", "", "Calc", 2, {});
    row("empty type", "lesson", "", 2, {});
}

void TstRecebeMensagem::calculatorRules()
{
    mFilho->endereco.setTitle("Calculadora - Quorel");
    QFETCH(QString, aula);
    QFETCH(QString, tipo);
    QFETCH(qint16, atual);
    gAulaAtual = atual;
    ExecutaAula(aula, tipo);
    QTEST(mFilho->got, "got");
}

void TstRecebeMensagem::programsAreLookedForInTwoPlaces_data()
{
    const Table<QStringList, QStringList> row("there", "started");
    row("lessons from the configured place, the calculator's own start from the installation",
        {"cfg/Calc.exe", "QUOREL2001/exe/Calc.exe"}, {"QUOREL2001/exe", "cfg"});
    row("else from the other one: the installation", {"QUOREL2001/exe/Calc.exe"}, {"QUOREL2001/exe", "QUOREL2001/exe"});
    row("else from the other one: the configured place", {"cfg/Calc.exe"}, {"cfg", "cfg"});
}

void TstRecebeMensagem::programsAreLookedForInTwoPlaces()
{
    QFETCH(QStringList, there);
    const QString windows = qEnvironmentVariable("QUOREL_WINDIR") + '/';
    for (const char *directory : {"cfg", "QUOREL2001/exe"})
        QDir(windows + directory).removeRecursively();
    for (const QString &file : there)
        escreve(windows + file, "x");
    gConfig.SetaCFG("ZETO_EXE=" + barras(windows + "cfg"));
    QStringList started;
    costuras().startProgram = [&](const ProgramRequest &request) {
        started << QDir(windows).relativeFilePath(QFileInfo(QDir::fromNativeSeparators(request.program)).path());
        return false;
    };
    gAulaAtual = 3; // the last one: the calculator is told so before its lesson
    QString aula = "lesson", tipo = "Calc";
    ExecutaAula(aula, tipo);
    QTEST(started, "started");
}

void TstRecebeMensagem::secondHookIsIgnored()
{
    InstalaGancho(janelaBlocos());
    RemoveGancho();
    QCOMPARE(gJanelaGancho, Janela(0));
    receives(MSG_CLASSE, "7");
    QCOMPARE(gClasse, 9999);
    InstalaGancho(0);
    QCOMPARE(gJanelaGancho, Janela(0));
    InstalaGancho(janelaBlocos());
    receives(MSG_CLASSE, "7");
    QCOMPARE(gClasse, 7);
}

void TstRecebeMensagem::aFailureInTheHookIsShownOnceAndEndsTheProgram()
{
    RemoveGancho();
    gEnderecoBlocos->replaceProc([](Janela, quint32, quintptr, qintptr) -> qintptr { throw ErroExecucao(kFalhaFoco); });
    InstalaGancho(janelaBlocos());
    QList<Caixa> shown;
    costuras().box = [&](const Caixa &box) {
        shown << box;
        receives(MSG_CLASSE, "8"); // a message that comes while the box stands fails too
        return Resposta::Ok;
    };
    costuras().endProcess = [](int code) { throw FimDoPrograma{code}; };
    QVERIFY_EXCEPTION_THROWN(receives(MSG_CLASSE, "7"), FimDoPrograma);
    const Caixa expected{.texto = "5 O foco não pode ir para esta janela\nO programa será fechado. Abra-o de novo.",
        .icone = Icone::Critico};
    QCOMPARE(shown, QList<Caixa>{expected});
    QCOMPARE(gClasse, 8); // both were taken before the failure
    QVERIFY(!insideSend());
}

QTEST_MAIN(TstRecebeMensagem)
#include "tst_recebe_mensagem.moc"
