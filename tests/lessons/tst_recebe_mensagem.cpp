#include "lessons/andamento.h"
#include "lessons/endereco_blocos.h"
#include "lessons/executa_aula.h"
#include "lessons/gancho.h"
#include "lessons/mensagens.h"
#include "lessons/programas_filhos.h"
#include "platform/codec.h"
#include "platform/costuras.h"
#include "platform/endereco.h"
#include "platform/eventos.h"
#include "platform/fim.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include "vista_gravada.h"

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

using Mensagens = std::vector<std::pair<qint32, QString>>;

/// A child program's window inside the test: a send to it is a direct call.
struct Zeto
{
    Zeto()
    {
        endereco.replaceProc([this](Janela, quint32, quintptr, qintptr lParam) -> qintptr {
            const auto &data = *reinterpret_cast<const CopyData *>(lParam);
            got << QString::number(data.code) + u' '
                    + decode1252(QByteArrayView(static_cast<const char *>(data.bytes), data.size - 1));
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
private:
    std::unique_ptr<VistaGravada> mVista;
    std::unique_ptr<Zeto> mZeto;

    static void receives(qint32 code, const QString &text) { EnviaTexto(janelaBlocos(), janelaBlocos(), code, text); }
    static void receivesRaw(qint32 code, qint32 size, QByteArrayView bytes)
    {
        sendCopyData(janelaBlocos(), janelaBlocos(), quint32(code), size, bytes);
    }

private slots:
    void init();
    void cleanup();
    void movesThroughTheRoteiro_data();
    void movesThroughTheRoteiro();
    void sizes_data();
    void sizes();
    void codes_data();
    void codes();
    void leavingRecordsAlsoWhenFBlocosIsHidden();
    void withoutRoteirosNothingMoreHappens();
    void gameReply();
    void calculatorOutsideARoteiro();
    void drawingToolTakesTheChildAfterItsSend();
    void calculatorRules_data();
    void calculatorRules();
    void secondHookIsIgnored();
    void aFailureInTheHookIsShownOnceAndEndsTheProgram();
};

void TstRecebeMensagem::init()
{
    failOnWarnings();
    reiniciaLessons();
    reiniciaStartup();
    mVista = std::make_unique<VistaGravada>();
    mZeto = std::make_unique<Zeto>();
    InstalaGancho(janelaBlocos());
    gAluno = 9999;
    gClasse = 9999;
    umRoteiro({u"um"_s, u"dois"_s, u"três"_s}, u"Zeto"_s);
}

void TstRecebeMensagem::cleanup()
{
    RemoveGancho();
    QVERIFY(!findWindow(kTituloGerenciador, false));
    mZeto.reset();
    mVista.reset();
    reiniciaLessons();
    reiniciaCatalogue();
}

void TstRecebeMensagem::movesThroughTheRoteiro_data()
{
    QTest::addColumn<qint16>("start");
    QTest::addColumn<Mensagens>("messages");
    QTest::addColumn<qint16>("end");
    QTest::addColumn<QString>("respostas");
    QTest::addColumn<QStringList>("got");
    QTest::addColumn<bool>("emRoteiro");
    const QString hide = u"2122 ESCONDE"_s;
    QTest::newRow("on, back and on again")
        << qint16(1)
        << Mensagens{{MSG_PROXIMA, u"A"_s}, {MSG_ANTERIOR, u"E"_s}, {MSG_PROXIMA, u""_s}, {MSG_PROXIMA, u"A"_s}}
        << qint16(3) << u"A:E:A:"_s << QStringList{u"2060 dois"_s, u"2060 um"_s, u"2060 dois"_s, u"2060 três"_s}
        << true;
    QTest::newRow("the answer of the last lesson is not recorded")
        << qint16(2) << Mensagens{{MSG_PROXIMA, u"A"_s}, {MSG_PROXIMA, u"E"_s}} << qint16(4) << u""_s
        << QStringList{u"2060 três"_s, hide} << false;
    QTest::newRow("next again after the end moves further and hides again")
        << qint16(3) << Mensagens{{MSG_PROXIMA, u""_s}, {MSG_PROXIMA, u""_s}} << qint16(5) << u""_s
        << QStringList{hide, hide} << false;
    QTest::newRow("it does not move beyond its type")
        << qint16(32767) << Mensagens{{MSG_PROXIMA, u""_s}} << qint16(32767) << u""_s << QStringList{hide} << false;
    QTest::newRow("back before the first writes the log and stays where it fell")
        << qint16(2) << Mensagens{{MSG_ANTERIOR, u"A"_s}, {MSG_ANTERIOR, u"E"_s}, {MSG_ANTERIOR, u"E"_s}} << qint16(-1)
        << u""_s << QStringList{u"2060 um"_s} << true;
}

void TstRecebeMensagem::movesThroughTheRoteiro()
{
    QFETCH(qint16, start);
    QFETCH(Mensagens, messages);
    gAulaAtual = start;
    gEmRoteiro = true;
    gJanelaZeto = mZeto->endereco.handle();
    for (const auto &[code, text] : messages)
        receives(code, text);
    QTEST(gAulaAtual, "end");
    QTEST(gRespostas, "respostas");
    QTEST(mZeto->got, "got");
    QTEST(gEmRoteiro, "emRoteiro");
    QCOMPARE(gCodRoteiro, mZeto->got.first().startsWith(u"2060") ? 77 : 0);
}

void TstRecebeMensagem::sizes_data()
{
    QTest::addColumn<qint32>("size");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("texto");
    QTest::newRow("size 0 keeps the text of the message before") << 0 << QByteArray() << u"old"_s;
    QTest::newRow("negative likewise") << -5 << QByteArray() << u"old"_s;
    QTest::newRow("1 is an empty text") << 1 << QByteArray("\0", 1) << QString();
    QTest::newRow("cut at the first NUL") << 6 << QByteArray("ab\0cd\0", 6) << u"ab"_s;
    QTest::newRow("no NUL at all") << 3 << QByteArray("abc") << u"abc"_s;
    QTest::newRow("the largest") << 204800 << QByteArray(204800, 'x') << QString(204800, u'x');
    QTest::newRow("too large: does not arrive") << 204801 << QByteArray(204801, 'x') << u"old"_s;
}

void TstRecebeMensagem::sizes()
{
    QFETCH(qint32, size);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, texto);
    gMensagem.Texto = u"old"_s;
    receivesRaw(4711, size, bytes);
    QCOMPARE(gMensagem.Texto, texto);
    QVERIFY(mZeto->got.isEmpty() && gRespostas.isEmpty());
}

void TstRecebeMensagem::codes_data()
{
    QTest::addColumn<qint32>("code");
    QTest::addColumn<QString>("texto");
    QTest::addColumn<qint32>("aluno");
    QTest::addColumn<qint32>("classe");
    QTest::addColumn<QString>("respostas");
    QTest::addColumn<QStringList>("calls");
    const QStringList none;
    QTest::newRow("pupil") << qint32(MSG_ALUNO) << u" 12.9x"_s << 12 << 9999 << u"r:"_s << none;
    QTest::newRow("no number is pupil 0") << qint32(MSG_ALUNO) << u"Ana"_s << 0 << 9999 << u"r:"_s << none;
    QTest::newRow("too large a number changes nothing")
        << qint32(MSG_ALUNO) << u"99999999999"_s << 9999 << 9999 << u"r:"_s << none;
    QTest::newRow("class") << qint32(MSG_CLASSE) << u"7"_s << 9999 << 7 << u"r:"_s << none;
    QTest::newRow("unload") << qint32(MSG_FECHA_BLOCOS) << u"x"_s << 9999 << 9999 << u"r:"_s
                            << QStringList{u"unload"_s};
    QTest::newRow("answer to be written now empties the answers")
        << qint32(MSG_RESPOSTA) << u"A"_s << 9999 << 9999 << QString() << none;
    QTest::newRow("unknown") << 2061 << u"A"_s << 9999 << 9999 << u"r:"_s << none;
}

void TstRecebeMensagem::codes()
{
    QFETCH(qint32, code);
    QFETCH(QString, texto);
    gRespostas = u"r:"_s;
    receives(code, texto);
    QTEST(gAluno, "aluno");
    QTEST(gClasse, "classe");
    QTEST(gRespostas, "respostas");
    QTEST(mVista->calls, "calls");
    gAluno = 0;
    gRespostas.clear();
    gAulaAtual = 1;
    receives(MSG_PROXIMA, u"A"_s);
    QVERIFY2(gRespostas.isEmpty(), "pupil 0 keeps no answers");
}

void TstRecebeMensagem::leavingRecordsAlsoWhenFBlocosIsHidden()
{
    gEmRoteiro = true;
    mVista->hidden = true;
    receives(MSG_SAI, u"A"_s);
    QCOMPARE(mVista->calls, QStringList{u"focus"_s});
    QVERIFY(!gEmRoteiro);
    QVERIFY(gRespostas.isEmpty());
}

void TstRecebeMensagem::withoutRoteirosNothingMoreHappens()
{
    reiniciaCatalogue();
    gEmRoteiro = true;
    gRespostas = u"A:"_s;
    for (const qint32 code : {MSG_PROXIMA, MSG_ANTERIOR, MSG_JOGO, MSG_EXEC_CALC})
        receives(code, u"2610"_s);
    QCOMPARE(gAulaAtual, 1);
    QVERIFY(gEmRoteiro);
    QCOMPARE(gRespostas, u"A:"_s);
    QVERIFY(mZeto->got.isEmpty());
}

void TstRecebeMensagem::gameReply()
{
    const Janela zeto = mZeto->endereco.handle();
    receives(MSG_JOGO, QString()); // no child yet, and none is looked up for an empty reply
    QCOMPARE(gJanelaFilha, Janela(0));
    gJanelaFilha = zeto;
    receives(MSG_JOGO, QString());
    gRoteiros.edit(1).Aulas.edit(1).Jogo = u"forca"_s;
    gJanelaFilha = 0;
    receives(MSG_JOGO, QString());
    QCOMPARE(gJanelaFilha, zeto);
    QCOMPARE(mZeto->got, (QStringList{u"2123 "_s, u"2123 1#forca"_s}));
}

void TstRecebeMensagem::calculatorOutsideARoteiro()
{
    mZeto->endereco.setTitle(u"Calculadora - Quorel"_s);
    gCodRoteiro = 77;
    gAulaAtual = 2;
    gRoteiros.edit(1).Aulas.edit(3).Tipo = u"Calculadora"_s;
    receives(MSG_EXEC_CALC, u"3EXEC"_s);
    QCOMPARE(mZeto->got, QStringList{u"2060 trêsCMDEXEC"_s});
    QCOMPARE(gCodRoteiro, 0);
    QVERIFY2(gExecExterno, "not cleared by the calculator");
    QVERIFY2(gJanelaFilha == 0, "left as it is");
    QCOMPARE(gMensagem.Texto, u"três"_s); // passed by reference
}

void TstRecebeMensagem::drawingToolTakesTheChildAfterItsSend()
{
    mZeto->endereco.setTitle(u"Editor de Desenhos - Quorel"_s);
    Janela during = 1;
    mZeto->endereco.replaceProc([&](Janela, quint32, quintptr, qintptr) -> qintptr {
        during = gJanelaFilha;
        gJanelaFilha = 4; // a lesson nested in the send
        return 1;
    });
    QString aula = u"x"_s;
    QString tipo = u"Desenho"_s;
    ExecutaAula(aula, tipo);
    QCOMPARE(during, Janela(0));
    QCOMPARE(gJanelaFilha, gJanelaDesenho);
}

void TstRecebeMensagem::calculatorRules_data()
{
    QTest::addColumn<QString>("aula");
    QTest::addColumn<QString>("tipo");
    QTest::addColumn<qint16>("atual");
    QTest::addColumn<QStringList>("got");
    QTest::newRow("in the middle") << u"lesson"_s << u"Calc"_s << qint16(2) << QStringList{u"2060 lesson"_s};
    QTest::newRow("last") << u"lesson"_s << u"Calculadora"_s << qint16(3)
                          << QStringList{u"2122 ULTIMA"_s, u"2060 lesson"_s};
    QTest::newRow("first") << u"lesson"_s << u"Calc"_s << qint16(1)
                           << QStringList{u"2122 PRIMEIRA"_s, u"2060 lesson"_s};
    QTest::newRow("beyond the end: both")
        << u"lesson"_s << u"Calc"_s << qint16(5) << QStringList{u"2122 ULTIMA"_s, u"2122 PRIMEIRA"_s, u"2060 lesson"_s};
    QTest::newRow("another type behind its mark")
        << u"lesson<TIPO>Calculadora"_s << u"Calc"_s << qint16(2) << QStringList{u"2060 lesson"_s};
    QTest::newRow("a code of five characters that is nowhere: the default lesson")
        << u"00999"_s << u"Calc"_s << qint16(2)
        << QStringList{
               u"2060 (1,1)2610<SPÇ>1<SPÇ>1<SPÇ>0<SPÇ>0<SPÇ>0<SPÇ>0<SPÇ><SPÇ><SPÇ><SPÇ><SPÇ><SPÇ><PÇ><VAA>(1)2610"
               "\t1\t1\t1\t0\t0\t0 <MD><VOA>(1)<VCM>22 CHAMA AULA  20<CM>"_s};
    QTest::newRow("empty lesson") << QString() << u"Calc"_s << qint16(2) << QStringList();
    QTest::newRow("empty type") << u"lesson"_s << QString() << qint16(2) << QStringList();
}

void TstRecebeMensagem::calculatorRules()
{
    mZeto->endereco.setTitle(u"Calculadora - Quorel"_s);
    QFETCH(QString, aula);
    QFETCH(QString, tipo);
    QFETCH(qint16, atual);
    gAulaAtual = atual;
    ExecutaAula(aula, tipo);
    QTEST(mZeto->got, "got");
}

void TstRecebeMensagem::secondHookIsIgnored()
{
    InstalaGancho(janelaBlocos());
    RemoveGancho();
    QCOMPARE(gJanelaGancho, Janela(0));
    receives(MSG_CLASSE, u"7"_s);
    QCOMPARE(gClasse, 9999);
    InstalaGancho(0);
    QCOMPARE(gJanelaGancho, Janela(0));
    InstalaGancho(janelaBlocos());
    receives(MSG_CLASSE, u"7"_s);
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
        receives(MSG_CLASSE, u"8"_s); // a message that comes while the box stands fails too
        return Resposta::Ok;
    };
    QList<int> codes;
    costuras().endProcess = [&](int code) {
        codes << code;
        throw FimDoPrograma{code};
    };
    QVERIFY_EXCEPTION_THROWN(receives(MSG_CLASSE, u"7"_s), FimDoPrograma);
    reiniciaCosturas();
    const Caixa expected{.texto = u"5 O foco não pode ir para esta janela"_s, .icone = Icone::Critico};
    QCOMPARE(shown, QList<Caixa>{expected});
    QCOMPARE(codes, QList<int>{1});
    QCOMPARE(gClasse, 8); // both were taken before the failure
    QVERIFY(!insideSend());
}

QTEST_MAIN(TstRecebeMensagem)
#include "tst_recebe_mensagem.moc"
