#include "app/inicio.h"

#include "catalogue/estado.h"
#include "data/bd.h"
#include "data/schema.h"
#include "lessons/andamento.h"
#include "lessons/gancho.h"
#include "platform/costuras.h"
#include "platform/endereco.h"
#include "platform/fim.h"
#include "platform/janela.h"
#include "platform/protocolo.h"
#include "shell/estado.h"
#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/fprincip.h"
#include "shell/imagem.h"
#include "shell/janelas.h"
#include "startup/estado.h"
#include "support/suporte.h"

#include <QDir>

#include <sqlite3.h>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

static const QByteArray kBloco = "<OBJ>Contar at\xe9 dez</OBJ>\r\n<TM>Minha escola</TM>\r\n"
                                 "[ROT<1>]\r\nNomeRot =Contar\r\nCODROT:12\r\n[<1>1]\r\nNome =Um\r\nLinha =(1,1)7\r\n"
                                 "\tTipo = Zeto\t\r\n";

class TstInicio : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void startsOnTheMainWindow();
    void levelsNameTheWindow_data();
    void levelsNameTheWindow();
    void aLevelWithoutBlocksEndsTheProgram();
    void aNameWithoutDigitsIsFailure13();
    void aRunningShellIsAskedAbout_data();
    void aRunningShellIsAskedAbout();
    void whatTheStartLeaves();

private:
    QString windows() const { return qEnvironmentVariable("QUOREL_WINDIR"); }
    QString blocks(const QString &nivel) const { return windows() + u"/QUOREL2001/DBBLOCOS/"_s + nivel; }
    void expect(std::initializer_list<Resposta> boxes); ///< these boxes, and no other
    int ended(const QString &linha, Janelas &janelas); ///< exit code, -1 when the start came through

    std::unique_ptr<BoxScript> mBoxes;
};

/// An empty register, as an installation brings it.
static void makeRegister(const QString &native)
{
    sqlite3 *db = nullptr;
    QCOMPARE(sqlite3_open(native.toUtf8().constData(), &db), SQLITE_OK);
    const int result = sqlite3_exec(db, registerSchema().constData(), nullptr, nullptr, nullptr);
    sqlite3_close(db);
    QCOMPARE(result, SQLITE_OK);
}

void TstInicio::init()
{
    failOnWarnings();
    QDir(windows()).removeRecursively();
    escreve(blocks(u"F1"_s) + u"/0226MAF1.edb"_s, kBloco);
    escreve(blocks(u"I1"_s) + u"/0326POI1.edb"_s, kBloco);
    makeRegister(windows() + u"/Cadastros.mdb"_s);
    costuras().endProcess = [](int code) { throw FimDoPrograma{code}; };
    mBoxes = std::make_unique<BoxScript>();
}

void TstInicio::cleanup()
{
    mBoxes.reset();
    reiniciaShell();
    reiniciaLessons();
    reiniciaCatalogue();
    reiniciaData();
    reiniciaStartup();
    reiniciaFim();
    reiniciaCosturas();
}

void TstInicio::expect(std::initializer_list<Resposta> boxes)
{
    mBoxes.reset();
    mBoxes = std::make_unique<BoxScript>(boxes);
}

int TstInicio::ended(const QString &linha, Janelas &janelas)
{
    try {
        iniciaPrograma(linha, janelas);
    } catch (const FimDoPrograma &fim) {
        return fim.exitCode;
    }
    return -1;
}

void TstInicio::startsOnTheMainWindow()
{
    Janelas janelas;
    QCOMPARE(ended(u"/NIVEL:F1"_s, janelas), -1);
    QVERIFY(janelas.principal().isVisible());
    QVERIFY(!janelas.blocos().isVisible());
    QVERIFY(janelas.painel().isVisible());
    QCOMPARE(janelas.principal().windowTitle(), u"Série: Fundamental I"_s);
    QVERIFY(janelas.principal().bloco(9).isVisible());
    QVERIFY(!janelas.principal().bloco(10).isVisible());
    QCOMPARE(gRotAtual, qint16(1));
    QCOMPARE(gAulaAtual, qint16(1));
    QCOMPARE(gAluno, 9999);
    QCOMPARE(findWindow(QString::fromUtf16(kTituloGerenciador), false), janelaBlocos());
    QVERIFY(QFile::exists(windows() + u"/QUOREL2001/zeto_cnf.txt"_s));
}

void TstInicio::levelsNameTheWindow_data()
{
    QTest::addColumn<QString>("linha");
    QTest::addColumn<QString>("nivel");
    QTest::addColumn<QString>("titulo");
    QTest::newRow("no argument: F1 without a name") << u""_s << u"F1"_s << u"Série: "_s;
    QTest::newRow("I1") << u"/NIVEL:I1"_s << u"I1"_s << u"Série: Infantil I"_s;
}

void TstInicio::levelsNameTheWindow()
{
    QFETCH(QString, linha);
    QFETCH(QString, nivel);
    QFETCH(QString, titulo);
    Janelas janelas;
    QCOMPARE(ended(linha, janelas), -1);
    QCOMPARE(gNivel, nivel);
    QCOMPARE(janelas.principal().windowTitle(), titulo);
}

void TstInicio::aLevelWithoutBlocksEndsTheProgram()
{
    expect({Resposta::Ok});
    Janelas janelas;
    QVERIFY(ended(u"/NIVEL:F9"_s, janelas) >= 0);
    QVERIFY(mBoxes->last().texto.startsWith(u"Diretório não encontrado"));
    QVERIFY(!janelas.principal().isVisible());
    QCOMPARE(findWindow(QString::fromUtf16(kTituloGerenciador), false), Janela(0));
}

void TstInicio::aNameWithoutDigitsIsFailure13()
{
    escreve(blocks(u"F1"_s) + u"/LEIAME.edb"_s, kBloco);
    Janelas janelas;
    try {
        iniciaPrograma(u"/NIVEL:F1"_s, janelas);
        QFAIL("the start came through");
    } catch (const ErroExecucao &falha) {
        QCOMPARE(falha.numero(), int(kFalhaTipo));
    }
}

void TstInicio::aRunningShellIsAskedAbout_data()
{
    QTest::addColumn<Resposta>("resposta");
    QTest::addColumn<bool>("goesOn");
    QTest::newRow("No ends at once") << Resposta::Nao << false;
    QTest::newRow("Yes runs a second shell") << Resposta::Sim << true;
}

void TstInicio::aRunningShellIsAskedAbout()
{
    QFETCH(Resposta, resposta);
    QFETCH(bool, goesOn);
    Endereco running;
    running.publish(QString::fromUtf16(kTituloGerenciador));
    expect({resposta});
    Janelas janelas;
    QCOMPARE(ended(u"/NIVEL:F1"_s, janelas) < 0, goesOn);
    const Caixa &question = mBoxes->shown().front();
    QCOMPARE(question.titulo, u"Atenção"_s);
    QCOMPARE(question.botoes, Botoes::SimNao);
    QCOMPARE(question.icone, Icone::Informacao);
    QCOMPARE(janelas.principal().isVisible(), goesOn);
}

void TstInicio::whatTheStartLeaves()
{
    escreve(windows() + u"/QUOREL2001/RotSelec.cfg"_s, "12\r\n");
    Janelas janelas;
    QCOMPARE(ended(u"/NIVEL:F1 /CLASSE:3"_s, janelas), -1);
    QCOMPARE(gClasse, 9999); // the command line's has done its work
    QCOMPARE(gRotSelec, u"12\r\n"_s);
}

QTEST_MAIN(TstInicio)
#include "tst_inicio.moc"
