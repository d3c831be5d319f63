#include "cenario.h"

#include "platform/costuras.h"
#include "platform/fim.h"
#include "shell/cconecta.h"
#include "shell/comandos.h"
#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/fprincip.h"
#include "startup/estado.h"
#include "startup/lugares.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <optional>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// What the small buttons start: each program as "name arguments", each document as "document|directory|mode".
class TstComandos : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void helpIsLookedForInTwoPlaces_data();
    void helpIsLookedForInTwoPlaces();
    void gameGoesByItsTag();
    void drawingTool_data();
    void drawingTool();
    void didacticMaterial();
    void didacticMaterialIsPointedOut_data();
    void didacticMaterialIsPointedOut();
    void page_data();
    void page();
    void diallerIsAProgramOfTheSystem();
    void suiteProgramEndsThisOne();

private:
    QStringList mStarted;
    QStringList mOpened;
};

void TstComandos::init()
{
    QApplication::setQuitOnLastWindowClosed(false); // as the program does
    mStarted.clear();
    mOpened.clear();
    QDir(noWindows(u"outro"_s)).removeRecursively();
}

static void record(QStringList &started, QStringList &opened)
{
    costuras().startProgram = [&](const ProgramRequest &request) {
        started << barras(request.program).section(u'\\', -1) + u' ' + request.arguments;
        return true;
    };
    costuras().openDocument = [&](const DocumentRequest &request) {
        opened << u"%1|%2|%3|%4"_s.arg(request.verb, request.document, request.directory).arg(int(request.show));
        return true;
    };
}

static QString quorelDir()
{
    return barras(noWindows(u"QUOREL2001"_s));
}

void TstComandos::helpIsLookedForInTwoPlaces_data()
{
    QTest::addColumn<QStringList>("arquivos"); // below the Windows directory
    QTest::addColumn<QString>("aberto"); // path below it
    QTest::newRow("configured place") << QStringList{u"outro/help.doc"_s, u"QUOREL2001/DBBLOCOS/help.doc"_s}
                                      << u"\\outro\\help.doc"_s;
    QTest::newRow("else the local one") << QStringList{u"QUOREL2001/DBBLOCOS/help.doc"_s}
                                        << u"\\QUOREL2001\\DBBLOCOS\\help.doc"_s;
    QTest::newRow("in neither: nothing") << QStringList{} << QString();
}

void TstComandos::helpIsLookedForInTwoPlaces()
{
    QFETCH(QStringList, arquivos);
    QFETCH(QString, aberto);
    Cenario c;
    record(mStarted, mOpened);
    for (const QString &arquivo : arquivos)
        escreve(noWindows(arquivo), "x");
    gConfig.SetaCFG(u"DBBLOCOS="_s + barras(noWindows(u"outro"_s)));
    QStringList esperado;
    if (!aberto.isEmpty())
        esperado << u"OPEN|"_s + barras(noWindows(QString())).chopped(1) + aberto + u"|help.doc|5"_s;
    QTest::mouseClick(&child<QPushButton>(c.principal(), u"CmdHelp"_s), Qt::LeftButton);
    QCOMPARE(mOpened, esperado);
    child<QPushButton>(c.blocos(), u"CmdManual"_s).click();
    QCOMPARE(mOpened, esperado + esperado); // the manual is the same document
}

void TstComandos::gameGoesByItsTag()
{
    Cenario c(2, {u"DBBLOCOS/Jogos/bolas.exe"_s});
    record(mStarted, mOpened);
    auto &jogo = child<QPushButton>(c.blocos(), u"CmdJogos(7)"_s);
    jogo.setProperty("Tag", u"bolas.exe"_s);
    jogo.click();
    QCOMPARE(mOpened, QStringList{u"OPEN|"_s + quorelDir() + u"\\DBBLOCOS\\Jogos\\bolas.exe|bolas.exe|2"_s});
}

void TstComandos::drawingTool_data()
{
    QTest::addColumn<QString>("dirQuorel"); // below the Windows directory; empty: no such key
    QTest::addColumn<QStringList>("arquivos");
    QTest::addColumn<QString>("comando");
    const QString cfg = u"/cfg:c:\\zeto_cnf.txt/user:"_s;
    const QStringList local{u"QUOREL2001/exe/desenhos.exe"_s};
    const QStringList ambos{u"outro/exe/desenhos.exe"_s, u"outro/exe/desenho.exe"_s};
    QTest::newRow("configured: no s, no blank before /user:") << u"outro"_s << ambos << u"desenho.exe "_s + cfg;
    QTest::newRow("not under it: the local one") << u"outro"_s << local << u"desenhos.exe /cfg:W /user:"_s;
    QTest::newRow("no key: the local one") << QString() << local << u"desenhos.exe /cfg:W /user:"_s;
    QTest::newRow("in neither: nothing") << u"outro"_s << QStringList{} << QString();
}

void TstComandos::drawingTool()
{
    QFETCH(QString, dirQuorel);
    QFETCH(QStringList, arquivos);
    QFETCH(QString, comando);
    Cenario c;
    record(mStarted, mOpened);
    for (const QString &arquivo : arquivos)
        escreve(noWindows(arquivo), "x");
    gConfig.SetaCFG(dirQuorel.isEmpty() ? u"X=1"_s : u"DIRQUOREL="_s + barras(noWindows(dirQuorel)));
    gArquivoCfg = u"c:\\zeto_cnf.txt"_s;
    child<QPushButton>(c.principal(), u"CmdDesenho"_s).click();
    comando.replace(u"W"_s, quorelDir() + u"zeto_cnf.txt"_s); // no backslash between them
    QCOMPARE(mStarted, comando.isEmpty() ? QStringList{} : QStringList{comando});
}

void TstComandos::didacticMaterial()
{
    Cenario c(2, {u"DBBLOCOS/MatDid/index.htm"_s});
    record(mStarted, mOpened);
    child<QPushButton>(c.principal(), u"CmdArquivos"_s).click();
    QCOMPARE(mOpened, QStringList{u"OPEN|index.htm|"_s + quorelDir() + u"\\DBBLOCOS\\MatDid\\|5"_s});
}

/// Answers the next modal window as soon as it is up, within its scope.
class NextDialog final
{
public:
    explicit NextDialog(std::function<void(QDialog &dialog)> answer) : mAnswer(std::move(answer))
    {
        QObject::connect(&mTimer, &QTimer::timeout, &mTimer, [this] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            if (!dialog || !dialog->isVisible())
                return;
            mTimer.stop();
            mAnswer(*dialog);
        });
        mTimer.start(0);
    }

    bool came() const { return !mTimer.isActive(); }

private:
    std::function<void(QDialog &dialog)> mAnswer;
    QTimer mTimer;
};

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
    record(mStarted, mOpened);
    const QString pagina = noWindows(u"outro/MatDid/outra.html"_s);
    escreve(pagina, "<HTML></HTML>");
    gConfig.SetaCFG(u"DBBLOCOS="_s + barras(noWindows(u"outro"_s)));
    QString inicio;
    const NextDialog next([&](QDialog &dialog) {
        inicio = qobject_cast<QFileDialog *>(&dialog)->directory().path();
        child<QLineEdit>(dialog, u"fileNameEdit"_s).setText(pagina);
        if (chosen)
            dialog.accept();
        else
            dialog.reject();
    });
    BoxScript boxes{Resposta::Ok};
    child<QPushButton>(c.principal(), u"CmdArquivos"_s).click();
    QVERIFY(next.came());
    QCOMPARE(inicio, noWindows(u"outro/MatDid"_s));
    QCOMPARE(boxes.last().titulo, u"Material Didático"_s);
    QCOMPARE(boxes.last().texto,
        u"Arquivo não encontrado\nFaça o download do material didático em\n"_s + makerAddress() + u" e instale-o."_s);
    QCOMPARE(mOpened, QStringList{opened});
}

void TstComandos::page_data()
{
    QTest::addColumn<bool>("conectado");
    QTest::addColumn<Resposta>("resposta");
    QTest::addColumn<int>("opened");
    QTest::newRow("connected: at once") << true << Resposta::Nao << 1;
    QTest::newRow("not connected, yes: all the same") << false << Resposta::Sim << 1;
    QTest::newRow("not connected, no") << false << Resposta::Nao << 0;
}

void TstComandos::page()
{
    QFETCH(bool, conectado);
    QFETCH(Resposta, resposta);
    QFETCH(int, opened);
    Cenario c;
    record(mStarted, mOpened);
    c.principal().mostra();
    c.painel().mostra();
    QString aviso;
    const NextDialog next([&](QDialog &dialog) {
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
    QCOMPARE(mOpened.size(), opened);
    if (opened)
        QCOMPARE(mOpened.first(), u"OPEN|"_s + makerAddress() + u"||3"_s);
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
    record(mStarted, mOpened);
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
    record(mStarted, mOpened);
    costuras().endProcess = [](int) { throw FimDoPrograma{}; };
    QVERIFY_EXCEPTION_THROWN(chamaQuorel(c.janelas()), FimDoPrograma);
    QCOMPARE(mStarted, QStringList{u"Quorel2001.exe /BLOCO:F1"_s});
}

QTEST_MAIN(TstComandos)
#include "tst_comandos.moc"
