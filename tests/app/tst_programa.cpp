#include "app/inicio.h"
#include "app/mensagens_no_terminal.h"
#include "app/programa.h"

#include "apoio.h"
#include "catalogue/estado.h"
#include "cenario.h"
#include "data/bd.h"
#include "lessons/andamento.h"
#include "lessons/gancho.h"
#include "lessons/mensagens.h"
#include "platform/aplicacao.h"
#include "platform/costuras.h"
#include "platform/endereco.h"
#include "platform/fim.h"
#include "platform/protocolo.h"
#include "register/estado.h"
#include "register/falunos.h"
#include "register/login.h"
#include "reports/fgraficos.h"
#include "shell/estado.h"
#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/fprincip.h"
#include "shell/imagem.h"
#include "startup/estado.h"
#include "support/suporte.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The whole program: its start, and the teacher's windows from the panel on.
class TstPrograma : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void startsOnTheMainWindow_data();
    void startsOnTheMainWindow();
    void aLevelWithoutBlocksEndsTheProgram();
    void aNameWithoutDigitsIsFailure13();
    void aRunningShellIsAskedAbout_data();
    void aRunningShellIsAskedAbout();
    void registerOnReadOnlyMediumIsCopied();
    void aHeldKeyOpensADisciplineAndNoMore();
    void registerTakesThePanelsPlace();
    void pupilChangedDuringARoteiro();
    void performanceAskedForTwiceIsShownOnce();
    void passwordStaysInTheRegister();

private:
    bool starts(const QString &linha); ///< false when it ends the program
    void comProfessora(); ///< the program of several users, two classes and two pupils in the register
    void aperta(const QString &botao);
    void digita(const QString &campo, const QString &texto);
    void escolhe(const QString &combo, const QString &texto);
    QStringList sql(const QString &text) const; ///< on the register

    fPrincip &principal() { return mPrograma->janelas().principal(); }
    fBlocos &blocos() { return mPrograma->janelas().blocos(); }
    fAux &painel() { return mPrograma->janelas().painel(); }
    fAlunos &alunos() { return mPrograma->alunos(); }

    QList<Caixa> mCaixas; ///< shown
    QList<Resposta> mRespostas; ///< to them; Ok when there are no more
    std::unique_ptr<Programa> mPrograma;
};

void TstPrograma::init()
{
    failOnWarnings();
    QDir(windows({})).removeRecursively();
    escreveBloco(u"F1/0226MAF1.edb"_s);
    escreveBloco(u"I1/0326POI1.edb"_s);
    makeRegister(windows(u"/Cadastros.mdb"_s));
    mCaixas.clear();
    mRespostas.clear();
    costuras().box = [this](const Caixa &caixa) {
        mCaixas << caixa;
        return mRespostas.isEmpty() ? Resposta::Ok : mRespostas.takeFirst();
    };
    costuras().endProcess = [](int code) { throw FimDoPrograma{code}; };
    mPrograma = std::make_unique<Programa>();
}

void TstPrograma::cleanup()
{
    mPrograma.reset();
    reiniciaRegister();
    reiniciaShell();
    reiniciaLessons();
    reiniciaCatalogue();
    reiniciaData();
    reiniciaStartup();
    reiniciaFim();
    reiniciaCosturas();
}

bool TstPrograma::starts(const QString &linha)
{
    try {
        iniciaPrograma(linha, mPrograma->janelas());
    } catch (const FimDoPrograma &) {
        return false;
    }
    return true;
}

void TstPrograma::comProfessora()
{
    QDir().mkpath(windows(u"/QUOREL2001/zeto_mm/Fig/f/r"_s));
    QImage imagem(60, 40, QImage::Format_RGB32);
    imagem.fill(Qt::darkGreen);
    imagem.save(windows(u"/QUOREL2001/zeto_mm/Fig/f/r/figura.gif"_s), "PNG");
    escreve(windows(u"/QUOREL2001/exe/Zeto.exe"_s), "x"); // never run
    sql(u"INSERT INTO CL_Classes VALUES (1, 'Turma A', 'Ana Lima', 'amora'), (2, 'Turma B', 'Beto Reis', 'caju');"
        "INSERT INTO AL_Alunos VALUES (1, 'Ari'), (2, 'Bia');"
        "INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (1, 1), (2, 1)"_s);
    QVERIFY(starts(u"/NIVEL:F1 /ESC:"_s));
    QTest::mouseClick(&child<QPushButton>(painel(), u"CmdAluno"_s), Qt::LeftButton);
}

QStringList TstPrograma::sql(const QString &text) const
{
    return plainSql(windows(u"/Cadastros.mdb"_s), text);
}

void TstPrograma::aperta(const QString &botao)
{
    QPushButton *found = alunos().login().findChild<QPushButton *>(botao);
    QTest::mouseClick(found ? found : &child<QPushButton>(alunos(), botao), Qt::LeftButton);
}

void TstPrograma::digita(const QString &campo, const QString &texto)
{
    QLineEdit *found = alunos().login().findChild<QLineEdit *>(campo);
    QLineEdit &alvo = found ? *found : child<QLineEdit>(alunos(), campo);
    alvo.clear();
    QTest::keyClicks(&alvo, texto);
}

void TstPrograma::escolhe(const QString &combo, const QString &texto)
{
    QLineEdit &alvo = *child<QComboBox>(alunos(), combo).lineEdit();
    alvo.selectAll();
    QTest::keyClicks(&alvo, texto);
    QCOMPARE(child<QComboBox>(alunos(), combo).currentText(), texto);
}

void TstPrograma::startsOnTheMainWindow_data()
{
    QTest::addColumn<QString>("linha");
    QTest::addColumn<QString>("nivel");
    QTest::addColumn<QString>("titulo");
    QTest::addColumn<int>("bloco");
    QTest::newRow("no argument: F1 without a name") << u""_s << u"F1"_s << u"Série: "_s << 9;
    QTest::newRow("a class, which does its work at the start")
        << u"/NIVEL:F1 /CLASSE:3"_s << u"F1"_s << u"Série: Fundamental I"_s << 9;
    QTest::newRow("I1, messages printed") << u"/NIVEL:I1 --mensagens"_s << u"I1"_s << u"Série: Infantil I"_s << 10;
}

void TstPrograma::startsOnTheMainWindow()
{
    QFETCH(QString, linha);
    QFETCH(QString, nivel);
    QFETCH(QString, titulo);
    QFETCH(int, bloco);
    escreve(windows(u"/QUOREL2001/RotSelec.cfg"_s), "12\r\n");
    QCOMPARE(takeMensagens(linha), nivel == "I1"_L1);
    QVERIFY(!linha.contains("--"_L1) && starts(linha));
    QVERIFY(mCaixas.isEmpty());
    QVERIFY(principal().isVisible() && painel().isVisible() && !blocos().isVisible());
    QCOMPARE(gNivel, nivel);
    QCOMPARE(principal().windowTitle(), titulo);
    for (const int i : {9, 10})
        QCOMPARE(principal().bloco(i).isVisible(), i == bloco);
    QCOMPARE(gRotAtual, qint16(1));
    QCOMPARE(gAulaAtual, qint16(1));
    QCOMPARE(gAluno, 9999);
    QCOMPARE(gClasse, 9999);
    QCOMPARE(gRotSelec, u"12\r\n"_s);
    QCOMPARE(findWindow(QString::fromUtf16(kTituloGerenciador), false), janelaBlocos());
    QVERIFY(QFile::exists(windows(u"/QUOREL2001/zeto_cnf.txt"_s)));
}

void TstPrograma::aLevelWithoutBlocksEndsTheProgram()
{
    QVERIFY(!starts(u"/NIVEL:F9"_s));
    QCOMPARE(gAluno, 0); // no window was loaded, which would make it the generic one
    QCOMPARE(mCaixas.size(), 1);
    QVERIFY(mCaixas[0].texto.startsWith(u"Diretório não encontrado"));
    QVERIFY(!principal().isVisible());
    QCOMPARE(findWindow(QString::fromUtf16(kTituloGerenciador), false), Janela(0));
}

void TstPrograma::aNameWithoutDigitsIsFailure13()
{
    escreveBloco(u"F1/LEIAME.edb"_s);
    QCOMPARE(failureOf([this] { starts(u"/NIVEL:F1"_s); }), int(kFalhaTipo));
}

void TstPrograma::aRunningShellIsAskedAbout_data()
{
    QTest::addColumn<Resposta>("resposta");
    QTest::addColumn<bool>("goesOn");
    QTest::newRow("No ends at once") << Resposta::Nao << false;
    QTest::newRow("Yes runs a second shell") << Resposta::Sim << true;
}

void TstPrograma::aRunningShellIsAskedAbout()
{
    QFETCH(Resposta, resposta);
    QFETCH(bool, goesOn);
    Endereco running;
    running.publish(QString::fromUtf16(kTituloGerenciador));
    mRespostas = {resposta};
    QCOMPARE(starts(u"/? /NIVEL:I1"_s), goesOn);
    QList<Caixa> expected{{u"Este programa já está sendo executado.\r\nDeseja executá-lo mesmo assim"_s, u"Atenção"_s,
        Icone::Informacao, Botoes::SimNao}};
    if (goesOn) // only then is the command line read
        expected << Caixa{kAjuda, u"PARÂMETROS DA LINHA DE COMANDO"_s, Icone::Informacao};
    QCOMPARE(mCaixas, expected);
    QCOMPARE(gNivel, goesOn ? u"I1"_s : QString());
    QCOMPARE(principal().isVisible(), goesOn);
}

void TstPrograma::registerOnReadOnlyMediumIsCopied()
{
    const QString configured = windows(u"/servidor"_s);
    QDir().mkpath(configured);
    makeRegister(configured + u"/Cadastros.mdb"_s);
    QFile::remove(windows(u"/Cadastros.mdb"_s));
    QFile::setPermissions(configured + u"/Cadastros.mdb"_s, QFile::ReadOwner | QFile::ReadUser);
    escreve(windows(u"/cnf.txt"_s), "[zeto]\r\nZETO_CAD=" + barras(configured).toLatin1() + "\r\n");
    QVERIFY(starts(u"/CFG:"_s + barras(windows(u"/cnf.txt"_s))));
    QVERIFY(QFile::exists(windows(u"/CADASTROS.MDB"_s)));
}

void TstPrograma::aHeldKeyOpensADisciplineAndNoMore()
{
    QVERIFY(starts(u"/NIVEL:F1"_s));
    for (int i = 0; i < 5; ++i) {
        QWidget *target = QApplication::focusWidget() && i > 0 ? QApplication::focusWidget() : &principal().bloco(9);
        QTest::simulateEvent(target, true, Qt::Key_Return, {}, u"\r"_s, i > 0);
    }
    QVERIFY(blocos().isVisible());
    QVERIFY(!gEmRoteiro); // the picture that has got the focus was not pressed
}

void TstPrograma::registerTakesThePanelsPlace()
{
    comProfessora();
    QVERIFY(alunos().isVisible());
    QVERIFY(!painel().isVisible());
    QCOMPARE(alunos().pos(), painel().pos());
    aperta(u"CmdAluno(2)"_s);
    escolhe(u"CmbClasse"_s, u"Turma A"_s);
    escolhe(u"CmbAluno"_s, u"Bia"_s);
    aperta(u"CmdSelecionar"_s);
    QCOMPARE(principal().windowTitle(), u"Série: Fundamental I | Bia"_s);
    QCOMPARE(gAluno, 2);
    QCOMPARE(gClasse, 1);
    aperta(u"CmdFecha"_s);
    QVERIFY(!alunos().isVisible());
    QVERIFY(painel().isVisible());
    QVERIFY(mCaixas.isEmpty());
}

static void reporta(const QString &resposta)
{
    EnviaTexto(findWindow(QString::fromUtf16(kTituloGerenciador), true), janelaBlocos(), MSG_RESPOSTA, resposta);
}

void TstPrograma::pupilChangedDuringARoteiro()
{
    comProfessora();
    gCodRoteiro = 12;
    gNomeRoteiro = u"Contar"_s;
    gEmRoteiro = true;
    reporta(u"A"_s);
    aperta(u"CmdAluno(2)"_s);
    escolhe(u"CmbClasse"_s, u"Turma A"_s);
    reporta(u"B"_s); // the class alone has changed so far
    escolhe(u"CmbAluno"_s, u"Ari"_s);
    aperta(u"CmdSelecionar"_s);
    reporta(u"C"_s);
    QCOMPARE(sql(u"SELECT LG_Aluno, LG_Classe, LG_Resp FROM LG_LogAulas"_s),
        (QStringList{"9999|9999|<disc>Contar<rot>A:", "9999|1|<disc>Contar<rot>B:", "1|1|<disc>Contar<rot>C:"}));
}

void TstPrograma::performanceAskedForTwiceIsShownOnce()
{
    comProfessora();
    int shown = 0;
    QTimer closes;
    connect(&closes, &QTimer::timeout, this, [&] {
        if (auto *janela = qobject_cast<FGraficos *>(QApplication::activeModalWidget())) {
            ++shown;
            child<QPushButton>(*janela, u"CmdFecha"_s).click();
        }
    });
    closes.start();
    QTimer::singleShot(0, this, [this] { aperta(u"CmdAluno(4)"_s); }); // comes in while the opening reads rows
    aperta(u"CmdAluno(4)"_s);
    QCOMPARE(shown, 1);
}

void TstPrograma::passwordStaysInTheRegister()
{
    const QString segredo = u"zigurate"_s;
    QStringList vistos; // messages to the child and to the shell, command lines, boxes
    Endereco filho;
    costuras().startProgram = [&](const ProgramRequest &pedido) {
        vistos << pedido.program << pedido.arguments;
        filho.publish(u"Zeto - Quorel"_s);
        filho.replaceProc([&](Janela, quint32, quintptr, qintptr dados) -> qintptr {
            const auto *mensagem = reinterpret_cast<const CopyData *>(dados);
            vistos << QString::fromLatin1(static_cast<const char *>(mensagem->bytes), qsizetype(mensagem->size));
            return 1;
        });
        return true;
    };
    comProfessora();
    gClasse = 1;
    gSenhaOK = true;
    for (const QString &botao : {u"CmdAluno(3)"_s, u"cmdCadClasses"_s, u"CmdProfProx"_s})
        aperta(botao);
    digita(u"TxtProfSenh"_s, segredo);
    aperta(u"CmdProfSalvar"_s);
    gSenhaOK = false;
    aperta(u"CmdAluno(3)"_s);
    digita(u"txtPassword"_s, segredo.chopped(1)); // wrong, which is told
    aperta(u"cmdOK"_s);
    digita(u"txtPassword"_s, segredo);
    aperta(u"cmdOK"_s);
    QVERIFY(gSenhaOK);
    aperta(u"CmdAluno(2)"_s);
    escolhe(u"CmbAluno"_s, u"Ari"_s);
    aperta(u"CmdSelecionar"_s);
    vistos << gMensagem.Texto << principal().windowTitle();
    gDirFiguras = barras(windows(u"/destino"_s));
    child<QCheckBox>(painel(), u"ChkFig"_s).click();
    QTest::mouseClick(&principal().bloco(9), Qt::LeftButton);
    mRespostas = {Resposta::Sim};
    QTest::mouseClick(&blocos().botao(1), Qt::LeftButton); // copies
    QTest::mouseClick(&blocos().botao(1), Qt::LeftButton); // runs
    reporta(u"A"_s);
    const NextWindow<QWidget> desempenho([&](QWidget &janela) {
        child<QPushButton>(janela, u"CmdImprime"_s).click();
        QVERIFY(!filesThatHold(u"<html"_s).isEmpty()); // the page is there
        QCOMPARE(filesThatHold(segredo), QStringList());
        janela.close();
    });
    aperta(u"CmdAluno(4)"_s);
    QVERIFY(desempenho.came());
    vistos << gMensagem.Texto;
    for (const Caixa &caixa : mCaixas)
        vistos << caixa.titulo << caixa.texto;
    QVERIFY(vistos.contains(u"Senha inválida, tente novamente!"_s));
    QVERIFY(vistos.join(u'\n').contains(u"(1,1)7"_s)); // the lesson came through
    QVERIFY2(!vistos.join(u'\n').contains(segredo.left(7), Qt::CaseInsensitive), qPrintable(vistos.join(u'\n')));
    QCOMPARE(filesThatHold(segredo), QStringList());
    QCOMPARE(sql(u"SELECT count(*) FROM LG_LogAulas WHERE LG_Aluno = 1"_s), QStringList{u"1"_s});
}

int main(int argc, char **argv)
{
    Aplicacao app(argc, argv);
    TstPrograma test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_programa.moc"
