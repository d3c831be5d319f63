// An optical drive without a medium, X:, as unidade_vazia.sh gives it: everything that may look there answers, at once
// and without a box of the system's.
#include "data/bd.h"
#include "data/cadastros.h"
#include "lessons/andamento.h"
#include "lessons/copia_midia.h"
#include "platform/caminho.h"
#include "platform/costuras.h"
#include "platform/preparo.h"
#include "platform/programas.h"
#include "platform/sistema.h"
#include "platform/som.h"
#include "startup/arquivo_util.h"
#include "startup/estado.h"
#include "startup/parametros.h"
#include "startup/quorel_zeto.h"
#include "startup/texto_util.h"
#include "startup/unidade_util.h"
#include "support/suporte.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <qt_windows.h>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstSemMidia : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup() { reiniciaCosturas(); }
    void theDriveIsThereAndEmpty();
    void noBoxOfTheSystems();
    void filesOnIt();
    void theStartLooksThereAndGoesOn();
    void aConfigurationOnIt();
    void aRegisterOnIt();
    void mediaFromAndToIt();
    void programsAndDocumentsOnIt();
    void consolePrograms_data();
    void consolePrograms();

private:
    QString at(const QString &rest) const { return barras(mDir->path()) + rest; }
    std::unique_ptr<QTemporaryDir> mDir;
};

void TstSemMidia::initTestCase()
{
    preparePlatform();
    QVERIFY2(driveRoots(kOpticalDrive) == QStringList{u"X:\\"_s}, "run it by unidade_vazia.sh");
}

void TstSemMidia::init()
{
    failOnWarnings();
    reiniciaStartup();
    reiniciaLessons();
    reiniciaData();
    mDir = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(mDir->path()).mkpath(u"win/QUOREL2001"_s));
    qputenv("QUOREL_WINDIR", mDir->path().toUtf8() + "/win");
}

void TstSemMidia::theDriveIsThereAndEmpty()
{
    QCOMPARE(gUnidades.ListaUnidades(kOpticalDrive), u"X:\\"_s + QChar(u'\0'));
    QVERIFY(GetFileAttributesW(L"X:\\") == INVALID_FILE_ATTRIBUTES);
    QCOMPARE(volumeOf(u"X:\\zeto_mm\\Fig"_s), u"X:"_s);
}

/// The system asks for a disc in a box of its own unless a program has said that it wants none.
void TstSemMidia::noBoxOfTheSystems()
{
    for (const auto prepare : {preparePlatform, prepareConsole}) {
        SetErrorMode(0);
        prepare();
        QVERIFY((GetErrorMode() & SEM_FAILCRITICALERRORS) != 0);
    }
}

void TstSemMidia::filesOnIt()
{
    const QString there = u"X:\\zeto_cnf.txt"_s;
    const QString here = at(u"\\arquivo.txt"_s);
    escreve(here, "x");
    QVERIFY(!gTexto.ArquivoExiste(there));
    QCOMPARE(gTexto.LeArquivo(there), QString());
    gTexto.GravaArquivo(there, u"texto"_s, 0);
    gTexto.ApagaArquivo(there);
    gArquivo.Abre(there);
    QVERIFY(!gArquivo.SomenteLeitura());
    QVERIFY(!gArquivo.TiraSomenteLeitura(there));
    QVERIFY(!gArquivo.Copia(there, here));
    QVERIFY(!gArquivo.Copia(here, there));
    QCOMPARE(le(here), "x");
    QCOMPARE(fileNames(u"X:\\DBBLOCOS\\F1"_s, u".edb"_s), QStringList());
}

void TstSemMidia::theStartLooksThereAndGoesOn()
{
    BoxScript none;
    LeParametros(u"/NIVEL:F2"_s);
    QCOMPARE(gArquivoCfg, at(u"\\win\\QUOREL2001\\zeto_cnf.txt"_s)); // the default one, written now
    QCOMPARE(gConfig.Config(u"ZETO_MM"_s), at(u"\\win\\QUOREL2001\\zeto_mm"_s));
    LeParametros(u"/CFG:X:\\zeto_cnf.txt /NIVEL:F3"_s);
    QCOMPARE(gArquivoCfg, at(u"\\win\\QUOREL2001\\zeto_cnf.txt"_s));
}

void TstSemMidia::aConfigurationOnIt()
{
    BoxScript boxes{Resposta::Ok};
    gConfig.Init(u"X:\\"_s, u"\\CADASTROS.MDB"_s);
    QCOMPARE(gConfig.ArquivoCnf, u"X:\\ZETO_CNF.TXT"_s);
    QCOMPARE(boxes.last().texto, u"Arquivo de configuração vazio ou Unidade não respondendo !"_s);
    escreve(at(u"\\zeto_cnf.txt"_s), "ZETO_MM=@\\zeto_mm\r\nZETO_CAD=@\r\n");
    gConfig.Init(at(u"\\zeto_cnf.txt"_s), u"\\CADASTROS.MDB"_s);
    QCOMPARE(gConfig.Config(u"ZETO_CAD"_s), u"X:"_s);
    QCOMPARE(gConfig.N_Fig(u"gato"_s) + gConfig.N_Som(u"miau"_s) + gConfig.N_Video(u"filme"_s), QString());
}

void TstSemMidia::aRegisterOnIt()
{
    BoxScript boxes{Resposta::Ok};
    gConfig.SetaCFG(u"ZETO_CAD=X:\r\n"_s);
    AbreBDAlunos();
    QCOMPARE(boxes.last().texto, u"Arquivo de Cadastros dos alunos não foi localizado"_s);
}

void TstSemMidia::mediaFromAndToIt()
{
    escreve(at(u"\\mm\\Fig\\g\\_\\gato.gif"_s), "figura");
    escreve(at(u"\\mm\\Som\\m\\miau.wav"_s), "som");
    gConfig.SetaCFG(u"ZETO_MM="_s + at(u"\\mm\r\n"_s));
    BoxScript boxes;
    boxes.respondeTexto(u"X:\\Figuras"_s);
    CopiaFigura(u"gato"_s);
    CopiaSom(u"miau"_s);
    QCOMPARE(gDirFiguras, u"X:\\Figuras"_s);
    gConfig.SetaCFG(u"ZETO_MM=X:\\zeto_mm\r\n"_s);
    gDirFiguras = at(u"\\dst"_s);
    CopiaFigura(u"gato"_s);
    QCOMPARE(gDirMM, u"X:\\ZETO_MM"_s); // where no collection is, the optical drive is taken
    CopiaSom(u"miau"_s);
    gConfig.SetaCFG(u"outra=1\r\n"_s);
    boxes.respondeTexto(u"X:\\zeto_mm"_s);
    CopiaSom(u"miau"_s);
    QVERIFY(QDir(at(u"\\dst"_s)).isEmpty());
}

void TstSemMidia::programsAndDocumentsOnIt()
{
    QCOMPARE(gTexto.Executa(u"X:\\exe\\Zeto.exe /cnf:X:\\zeto_cnf.txt /Hook:"_s, 1, true, QString()), 0);
    QVERIFY(!startProgramNow({u"X:\\exe\\Zeto.exe"_s, u"/Hook:"_s, true}));
    QVERIFY(!openDocumentNow({0, u"OPEN"_s, u"X:\\Arqs\\agua.htm"_s, u"X:\\Arqs"_s}));
    QVERIFY(!playSound(u"X:\\zeto_mm\\Som\\m\\miau.wav"_s));
    stopSound();
}

void TstSemMidia::consolePrograms_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("a level's directory") << QStringList{u"quorel-blocos"_s, u"lista"_s, u"X:\\DBBLOCOS\\F1"_s};
    QTest::newRow("a block") << QStringList{u"quorel-blocos"_s, u"verifica"_s, u"X:\\0226POF1.edb"_s};
    QTest::newRow("a register") << QStringList{u"quorel-cadastro"_s, u"verifica"_s, u"X:\\Cadastros.mdb"_s};
    QTest::newRow("a new register") << QStringList{u"quorel-cadastro"_s, u"cria"_s, u"X:\\Cadastros.mdb"_s};
}

void TstSemMidia::consolePrograms()
{
    QFETCH(QStringList, arguments);
    QProcess program;
    program.start(QStringLiteral(QUOREL_BIN "/") + arguments.takeFirst() + QStringLiteral(QUOREL_SUFFIX), arguments);
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 2); // it could not run
    QVERIFY(!program.readAllStandardError().isEmpty());
}

QTEST_MAIN(TstSemMidia)
#include "tst_sem_midia.moc"
