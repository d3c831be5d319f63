#include "cenario.h"

#include "platform/costuras.h"
#include "platform/fim.h"
#include "shell/cconecta.h"
#include "shell/comandos.h"
#include "startup/estado.h"
#include "startup/lugares.h"
#include "startup/quorel_zeto.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>

#include <optional>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// What the small buttons start.
class TstComandos : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void startsOrOpens_data();
    void startsOrOpens();
    void didacticMaterialIsPointedOut_data();
    void didacticMaterialIsPointedOut();
    void page_data();
    void page();
    void diallerIsAProgramOfTheSystem();
    void suiteProgramEndsThisOne();

private:
    void record();

    QStringList mStarted; ///< each program as "name arguments", each document as "verb|document|directory|mode"
};

void TstComandos::init()
{
    QApplication::setQuitOnLastWindowClosed(false); // as the program does
    mStarted.clear();
    QDir(noWindows(u"outro"_s)).removeRecursively();
}

void TstComandos::record()
{
    costuras().startProgram = [this](const ProgramRequest &request) {
        mStarted << barras(request.program).section(u'\\', -1) + u' ' + request.arguments;
        return true;
    };
    costuras().openDocument = [this](const DocumentRequest &request) {
        mStarted << u"%1|%2|%3|%4"_s.arg(request.verb, request.document, request.directory).arg(int(request.show));
        return true;
    };
}

void TstComandos::startsOrOpens_data()
{
    QTest::addColumn<QString>("botao");
    QTest::addColumn<QString>("chave"); // set to the directory "outro"
    QTest::addColumn<QStringList>("arquivos"); // there are, below the Windows directory
    QTest::addColumn<QString>("feito"); // W the Windows directory; empty: nothing
    const auto add = [](const char *name, const QString &botao, const QString &chave, const QStringList &arquivos,
                         const QString &feito) { QTest::newRow(name) << botao << chave << arquivos << feito; };
    const QString ajuda = u"outro/help.doc"_s;
    const QString ajudaLocal = u"QUOREL2001/DBBLOCOS/help.doc"_s;
    add("help, in the configured place", "CmdHelp", "DBBLOCOS", {ajuda, ajudaLocal},
        "OPEN|W\\outro\\help.doc|help.doc|5");
    add("help, else in the local one", "CmdHelp", "DBBLOCOS", {ajudaLocal},
        "OPEN|W\\QUOREL2001\\DBBLOCOS\\help.doc|help.doc|5");
    add("help, in neither", "CmdHelp", "DBBLOCOS", {}, "");
    add("the manual is the same document", "CmdManual", "DBBLOCOS", {ajuda}, "OPEN|W\\outro\\help.doc|help.doc|5");
    add("a game goes by its tag", "CmdJogos(7)", "DBBLOCOS", {"outro/Jogos/bolas.exe"},
        "OPEN|W\\outro\\Jogos\\bolas.exe|bolas.exe|2");
    add("didactic material", "CmdArquivos", "DBBLOCOS", {"outro/MatDid/index.htm"},
        "OPEN|index.htm|W\\outro\\MatDid\\|5");
    add("didactic material, else the local one", "CmdArquivos", "DBBLOCOS", {"QUOREL2001/DBBLOCOS/MatDid/index.htm"},
        "OPEN|index.htm|W\\QUOREL2001\\DBBLOCOS\\MatDid\\|5");
    const QString local = u"QUOREL2001/exe/desenhos.exe"_s;
    const QString comandoLocal = u"desenhos.exe /cfg:W\\QUOREL2001zeto_cnf.txt /user:"_s; // no backslash between them
    add("drawing tool, configured: no s, no blank before /user:", "CmdDesenho", "DIRQUOREL",
        {"outro/exe/desenhos.exe", "outro/exe/desenho.exe"}, "desenho.exe /cfg:c:\\zeto_cnf.txt/user:");
    add("drawing tool, not under it: the local one", "CmdDesenho", "DIRQUOREL", {local}, comandoLocal);
    add("drawing tool, no key: the local one", "CmdDesenho", "X", {local}, comandoLocal);
    add("drawing tool, in neither", "CmdDesenho", "DIRQUOREL", {}, "");
}

void TstComandos::startsOrOpens()
{
    QFETCH(QString, botao);
    QFETCH(QString, chave);
    QFETCH(QStringList, arquivos);
    QFETCH(QString, feito);
    Cenario c;
    record();
    for (const QString &arquivo : arquivos)
        escreve(noWindows(arquivo), "x");
    gConfig.SetaCFG(chave + u'=' + barras(noWindows(u"outro"_s)));
    gArquivoCfg = u"c:\\zeto_cnf.txt"_s;
    c.controle(u"CmdJogos(7)"_s).setProperty("Tag", u"bolas.exe"_s);
    c.clica(botao);
    feito.replace(u'W', barras(noWindows({})).chopped(1));
    QCOMPARE(mStarted.join(u' '), feito);
}

void TstComandos::didacticMaterialIsPointedOut_data()
{
    QTest::addColumn<bool>("chosen");
    QTest::addColumn<QString>("opened");
    QTest::newRow("a page: by its name, in its directory")
        << true << u"OPEN|outra.html|"_s + barras(noWindows(u"outro/MatDid/"_s)) + u"|5"_s;
    QTest::newRow("cancelled: an empty name, which opens nothing") << false << u"OPEN|||5"_s;
}

void TstComandos::didacticMaterialIsPointedOut()
{
    QFETCH(bool, chosen);
    QFETCH(QString, opened);
    Cenario c;
    record();
    const QString pagina = noWindows(u"outro/MatDid/outra.html"_s);
    escreve(pagina, "<HTML></HTML>");
    gConfig.SetaCFG(u"DBBLOCOS="_s + barras(noWindows(u"outro"_s)));
    QString inicio;
    const NextWindow<QFileDialog> next([&](QFileDialog &dialog) {
        inicio = dialog.directory().path();
        child<QLineEdit>(dialog, u"fileNameEdit"_s).setText(pagina);
        static_cast<QDialog &>(dialog).done(chosen ? QDialog::Accepted : QDialog::Rejected);
    });
    BoxScript boxes{Resposta::Ok};
    c.clica(u"CmdArquivos"_s);
    QVERIFY(next.came());
    QCOMPARE(inicio, noWindows(u"outro/MatDid"_s));
    const QString texto =
        u"Arquivo não encontrado\nFaça o download do material didático em\n"_s + makerAddress() + u" e instale-o."_s;
    QCOMPARE(boxes.last(), (Caixa{texto, u"Material Didático"_s, Icone::Informacao}));
    QCOMPARE(mStarted, QStringList{opened});
}

void TstComandos::page_data()
{
    QTest::addColumn<bool>("conectado");
    QTest::addColumn<Resposta>("resposta");
    QTest::addColumn<bool>("opened");
    QTest::newRow("connected: at once") << true << Resposta::Nao << true;
    QTest::newRow("not connected, yes: all the same") << false << Resposta::Sim << true;
    QTest::newRow("not connected, no") << false << Resposta::Nao << false;
}

void TstComandos::page()
{
    QFETCH(bool, conectado);
    QFETCH(Resposta, resposta);
    QFETCH(bool, opened);
    Cenario c;
    record();
    c.principal().mostra();
    c.painel().mostra();
    QString aviso;
    const NextWindow<QDialog> next([&](QDialog &dialog) {
        aviso = dialog.windowTitle();
        QTest::mouseClick(&child<QPushButton>(dialog, u"cmdOK"_s), Qt::LeftButton);
    });
    std::optional<BoxScript> boxes;
    if (conectado)
        boxes.emplace();
    else
        boxes.emplace({resposta});
    acessaPagina(c.janelas(), conectado);
    QCOMPARE(next.came(), !conectado);
    QCOMPARE(mStarted, opened ? QStringList(u"OPEN|"_s + makerAddress() + u"||3"_s) : QStringList());
    if (!conectado) {
        QCOMPARE(aviso, u"Blocos de Atividades"_s);
        const Caixa pergunta{u"Deseja Continuar mesmo assim?"_s, u"Conexão por rede DIAL-UP não encontrada"_s,
            Icone::Informacao, Botoes::SimNao};
        QCOMPARE(boxes->last(), pergunta);
    }
    QTRY_COMPARE(QApplication::activeWindow() == &c.principal(), !opened);
}

void TstComandos::diallerIsAProgramOfTheSystem()
{
    record();
    const QByteArray path = qgetenv("PATH");
    const QString dialler = noWindows(u"system/rundll32.exe"_s);
    escreve(dialler, "x");
    QFile::setPermissions(dialler, QFile::ReadOwner | QFile::ExeOwner);
    qputenv("PATH", QFile::encodeName(noWindows(u"system"_s)));
    gConecta.AtivarDialUp(u"Escola Nova"_s);
    qputenv("PATH", path);
    QCOMPARE(mStarted, QStringList{u"rundll32.exe rnaui.dll,RnaDial Escola Nova"_s});
}

void TstComandos::suiteProgramEndsThisOne()
{
    Cenario c(2, {u"exe/Quorel2001.exe"_s});
    record();
    costuras().endProcess = [](int) { throw FimDoPrograma{}; };
    QVERIFY_EXCEPTION_THROWN(chamaQuorel(c.janelas()), FimDoPrograma);
    QCOMPARE(mStarted, QStringList{u"Quorel2001.exe /BLOCO:F1"_s});
}

QTEST_MAIN(TstComandos)
#include "tst_comandos.moc"
