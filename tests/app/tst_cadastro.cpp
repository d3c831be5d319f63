#include "app/inicio.h"
#include "app/programa.h"

#include "apoio.h"
#include "catalogue/estado.h"
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
#include "shell/estado.h"
#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/fprincip.h"
#include "shell/imagem.h"
#include "startup/estado.h"
#include "support/suporte.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDirIterator>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardPaths>
#include <QTimer>

#include <functional>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The teacher's windows in the whole program of several users, from the panel on.
class TstCadastro : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void registerTakesThePanelsPlace();
    void pupilChangedDuringARoteiro();
    void classSavedOverTheSelectionEndsTheProgram();
    void passwordStaysInTheRegister();

private:
    void aperta(const QString &botao);
    void digita(const QString &campo, const QString &texto);
    void escolhe(const QString &combo, const QString &texto);
    void paginaDeDesempenho(const std::function<void()> &comAPagina);
    fPrincip &principal() { return mPrograma->janelas().principal(); }
    fAux &painel() { return mPrograma->janelas().painel(); }
    fAlunos &alunos() { return mPrograma->alunos(); }

    QStringList mCaixas; ///< texts of the boxes shown
    QList<Resposta> mRespostas; ///< to them; Ok when there are no more
    std::unique_ptr<Programa> mPrograma;
};

static QString windows(const QString &resto)
{
    return qEnvironmentVariable("QUOREL_WINDIR") + resto;
}

void TstCadastro::init()
{
    failOnWarnings();
    QDir(windows({})).removeRecursively();
    escreve(windows(u"/QUOREL2001/DBBLOCOS/F1/0226MAF1.edb"_s),
        "<OBJ>Contar</OBJ>\r\n<TM>Minha escola</TM>\r\n[ROT<1>]\r\nNomeRot =Contar\r\nCODROT:12\r\nFIG:figura\r\n"
        "[<1>1]\r\nNome =Um\r\nLinha =(1,1)7\r\n\tTipo = Zeto\t\r\n");
    QDir().mkpath(windows(u"/QUOREL2001/zeto_mm/Fig/f/r"_s));
    QImage imagem(60, 40, QImage::Format_RGB32);
    imagem.fill(Qt::darkGreen);
    imagem.save(windows(u"/QUOREL2001/zeto_mm/Fig/f/r/figura.gif"_s), "PNG");
    escreve(windows(u"/QUOREL2001/exe/Zeto.exe"_s), "x"); // never run
    makeRegister(windows(u"/Cadastros.mdb"_s));
    plainSql(windows(u"/Cadastros.mdb"_s),
        u"INSERT INTO CL_Classes VALUES (1, 'Turma A', 'Ana Lima', 'amora'), (2, 'Turma B', 'Beto Reis', 'caju');"
        "INSERT INTO AL_Alunos VALUES (1, 'Ari'), (2, 'Bia');"
        "INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (1, 1), (2, 1)"_s);
    mCaixas.clear();
    mRespostas.clear();
    costuras().box = [this](const Caixa &caixa) {
        mCaixas << caixa.titulo + u": "_s + caixa.texto;
        return mRespostas.isEmpty() ? Resposta::Ok : mRespostas.takeFirst();
    };
    costuras().endProcess = [](int code) { throw FimDoPrograma{code}; };
    mPrograma = std::make_unique<Programa>();
    iniciaPrograma(u"/NIVEL:F1 /ESC:"_s, mPrograma->janelas());
}

void TstCadastro::cleanup()
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

void TstCadastro::aperta(const QString &botao)
{
    QPushButton *found = alunos().login().findChild<QPushButton *>(botao);
    QTest::mouseClick(found ? found : &child<QPushButton>(alunos(), botao), Qt::LeftButton);
}

void TstCadastro::digita(const QString &campo, const QString &texto)
{
    QLineEdit *found = alunos().login().findChild<QLineEdit *>(campo);
    QLineEdit &alvo = found ? *found : child<QLineEdit>(alunos(), campo);
    alvo.clear();
    QTest::keyClicks(&alvo, texto);
}

void TstCadastro::escolhe(const QString &combo, const QString &texto)
{
    QLineEdit &alvo = *child<QComboBox>(alunos(), combo).lineEdit();
    alvo.selectAll();
    QTest::keyClicks(&alvo, texto);
    QCOMPARE(child<QComboBox>(alunos(), combo).currentText(), texto);
}

void TstCadastro::registerTakesThePanelsPlace()
{
    const QPoint lugar = painel().pos();
    QTest::mouseClick(&child<QPushButton>(painel(), u"CmdAluno"_s), Qt::LeftButton);
    QVERIFY(alunos().isVisible());
    QVERIFY(!painel().isVisible());
    QCOMPARE(alunos().pos(), lugar);
    aperta(u"CmdAluno(2)"_s);
    escolhe(u"CmbClasse"_s, u"Turma A"_s);
    escolhe(u"CmbAluno"_s, u"Bia"_s);
    aperta(u"CmdSelecionar"_s);
    QCOMPARE(principal().windowTitle(), u"Série: Fundamental I | Bia"_s);
    QCOMPARE(gAluno, 2);
    QCOMPARE(gClasse, 1);
    aperta(u"CmdAluno(3)"_s);
    QVERIFY(alunos().login().isVisible());
    digita(u"txtPassword"_s, u"Amora"_s);
    aperta(u"cmdOK"_s);
    QCOMPARE(child<QLineEdit>(alunos(), u"TxtAluno"_s).text(), u"Ari"_s);
    aperta(u"CmdFecha"_s);
    QVERIFY(!alunos().isVisible());
    QVERIFY(painel().isVisible());
    QCOMPARE(mCaixas, QStringList());
}

static void reporta(const QString &resposta)
{
    EnviaTexto(findWindow(QString::fromUtf16(kTituloGerenciador), true), janelaBlocos(), MSG_RESPOSTA, resposta);
}

void TstCadastro::pupilChangedDuringARoteiro()
{
    gCodRoteiro = 12;
    gNomeRoteiro = u"Contar"_s;
    gEmRoteiro = true;
    reporta(u"A"_s);
    alunos().mostra();
    aperta(u"CmdAluno(2)"_s);
    escolhe(u"CmbClasse"_s, u"Turma A"_s);
    reporta(u"B"_s); // the class alone has changed so far
    escolhe(u"CmbAluno"_s, u"Ari"_s);
    aperta(u"CmdSelecionar"_s);
    reporta(u"C"_s);
    const QStringList linhas{
        u"9999|9999|<disc>Contar<rot>A:"_s, u"9999|1|<disc>Contar<rot>B:"_s, u"1|1|<disc>Contar<rot>C:"_s};
    QCOMPARE(plainSql(windows(u"/Cadastros.mdb"_s), u"SELECT LG_Aluno, LG_Classe, LG_Resp FROM LG_LogAulas"_s), linhas);
}

void TstCadastro::classSavedOverTheSelectionEndsTheProgram()
{
    alunos().mostra();
    gClasse = 1;
    gSenhaOK = true;
    aperta(u"CmdAluno(3)"_s);
    aperta(u"cmdCadClasses"_s);
    aperta(u"CmdAluno(2)"_s);
    aperta(u"CmdProfUlt"_s);
    digita(u"TxtProfSenh"_s, u"pera"_s);
    bool ended = false;
    try {
        aperta(u"CmdProfSalvar"_s); // by now the rows have no class to filter by
    } catch (const FimDoPrograma &) {
        ended = true;
    }
    QVERIFY(ended);
    QCOMPARE(mCaixas.size(), 1);
    QVERIFY2(mCaixas.first().contains(u"3265"_s) || mCaixas.first().contains(u"3001"_s), qPrintable(mCaixas.first()));
    QCOMPARE(plainSql(windows(u"/Cadastros.mdb"_s), u"SELECT CL_Senha FROM CL_Classes WHERE CL_Cod = 2"_s),
        QStringList{u"pera"_s});
}

// Every file that the program has written but the register itself, as text of either kind.
static QStringList filesThatHold(const QString &segredo)
{
    QStringList found;
    for (const QString &raiz : {windows({}), QDir::tempPath(), QDir::homePath(),
             QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)}) {
        QDirIterator files(raiz, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = files.next();
            const QByteArray bytes = le(file).toLower();
            const QByteArray wide(reinterpret_cast<const char *>(segredo.utf16()), segredo.size() * 2);
            if (!file.endsWith(u"/Cadastros.mdb"_s) && (bytes.contains(segredo.toLatin1()) || bytes.contains(wide)))
                found << file;
        }
    }
    return found;
}

// Opens the performance window from the register and previews its page.
void TstCadastro::paginaDeDesempenho(const std::function<void()> &comAPagina)
{
    QTimer timer; // the load runs events too, before the window is there
    connect(&timer, &QTimer::timeout, &timer, [&] {
        QWidget *janela = QApplication::activeModalWidget();
        if (!janela || !janela->isVisible())
            return;
        timer.stop();
        child<QPushButton>(*janela, u"CmdImprime"_s).click();
        comAPagina();
        janela->close();
    });
    timer.start(1);
    aperta(u"CmdAluno(4)"_s);
    QVERIFY(!timer.isActive());
}

void TstCadastro::passwordStaysInTheRegister()
{
    const QString segredo = u"zigurate"_s;
    QStringList vistos; // messages to the child and to the shell, command lines
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
    alunos().mostra();
    gClasse = 1;
    gSenhaOK = true;
    aperta(u"CmdAluno(3)"_s);
    aperta(u"cmdCadClasses"_s);
    aperta(u"CmdProfProx"_s);
    digita(u"TxtProfSenh"_s, segredo);
    aperta(u"CmdProfSalvar"_s);
    gSenhaOK = false;
    aperta(u"CmdAluno(3)"_s);
    digita(u"txtPassword"_s, u"zigurat"_s); // wrong, which is told
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
    QTest::mouseClick(&mPrograma->janelas().blocos().botao(1), Qt::LeftButton); // copies
    QTest::mouseClick(&mPrograma->janelas().blocos().botao(1), Qt::LeftButton); // runs
    reporta(u"A"_s);
    paginaDeDesempenho([&] {
        QVERIFY(!filesThatHold(u"<html"_s).isEmpty()); // the page is there
        QCOMPARE(filesThatHold(segredo), QStringList());
    });
    vistos << gMensagem.Texto << mCaixas;
    QVERIFY(vistos.join(u'\n').contains(u"(1,1)7"_s)); // the lesson came through
    QVERIFY(mCaixas.join(u'\n').contains(u"Senha inválida"_s));
    QVERIFY2(!vistos.join(u'\n').contains(segredo.left(7), Qt::CaseInsensitive), qPrintable(vistos.join(u'\n')));
    QCOMPARE(filesThatHold(segredo), QStringList());
    QCOMPARE(plainSql(windows(u"/Cadastros.mdb"_s), u"SELECT count(*) FROM LG_LogAulas WHERE LG_Aluno = 1"_s),
        QStringList{u"1"_s});
}

int main(int argc, char **argv)
{
    Aplicacao app(argc, argv);
    TstCadastro test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_cadastro.moc"
