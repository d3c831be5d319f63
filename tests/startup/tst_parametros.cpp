#include "platform/sistema.h"
#include "startup/parametros.h"
#include "support/failure.h"

#include "instalacao.h"

using namespace quorel;
using namespace quorel::teste;

class TstParametros : public QObject
{
    Q_OBJECT
private slots:
    void init();
    /// Some systems remove no directory that a program stands in.
    void cleanup() { QVERIFY(QDir::setCurrent(QDir::tempPath())); }
    void switches_data();
    void switches();
    void aClassBeyond32BitsIsAFailure();
    void zoomIsAsked_data();
    void zoomIsAsked();
    void helpIsShownAndTheStartGoesOn();
    void configurationOfTheCommandLine();
    void defaultConfigurationIsWritten();
    void defaultConfigurationKeepsTheNamedRegister();
    void withoutInstallation();

private:
    std::unique_ptr<Instalacao> mDir;
};

static const QString kPadrao = QStringLiteral("/win/QUOREL2001/zeto_cnf.txt");

void TstParametros::init()
{
    mDir = std::make_unique<Instalacao>();
    QVERIFY(QDir::setCurrent(mDir->native()));
    QVERIFY2(driveRoots(kOpticalDrive).isEmpty(), "these cases are for a machine without a disc in it");
}

void TstParametros::switches_data()
{
    const Table<QString, QString, QString, bool, int, QString> row("line", "code", "level", "schools", "class", "name");
    const QString million = QString("/x y z ").repeated(200000);
    row("none: F1 without a name", "", "F1", "", false, 0, "");
    row("level", "/NIVEL:F1", "F1", "Fundamental I", false, 0, "");
    row("lower case stays as written", "/nivel:f4", "f4", "Fundamental IV", false, 0, "");
    row("another code has no name", "/NIVEL:X9", "X9", "", false, 0, "");
    row("another code keeps the name before", "/NIVEL:F2 /NIVEL:X9", "X9", "Fundamental II", false, 0, "");
    row("empty value", "/NIVEL: /CLASSE: /NOMECLASSE:", "F1", "", false, 0, "");
    row("no colon", "/NIVEL /CLASSE /NOMECLASSE", "F1", "", false, 0, "");
    row("behind a million characters", million + "/NIVEL:F2", "F2", "Fundamental II", false, 0, "");
    row("more switches than words: the rest is unread", "/ESC/ESC/NIVEL:F2", "F1", "", true, 0, "");
    row("schools", "/ESC: /NIVEL:I2", "I2", "Infantil II", true, 0, "");
    row("schools in full", "/escolas", "F1", "", true, 0, "");
    row("a value of schools is not used", "/ESCOLA:no", "F1", "", true, 0, "");
    row("unknown words and switches", "word /XYZ:1 /classe:12.9x", "F1", "", false, 12, "");
    row("a class that is no number", "/CLASSE:abc", "F1", "", false, 0, "");
    row("a name with blanks", "/NOMECLASSE:Tobi e Nina  /CLASSE:-3", "F1", "", false, -3, "Tobi e Nina");
    row("quotes and a colon stay", "/NOMECLASSE:\"A:B\"", "F1", "", false, 0, "\"A:B\"");
}

void TstParametros::switches()
{
    QFETCH(QString, line);
    LeParametros(line);
    QTEST(gNivel, "code");
    QTEST(gNomeNivel, "level");
    QTEST(gEscolas, "schools");
    QTEST(gClasse, "class");
    QTEST(gNomeClasse, "name");
}

void TstParametros::aClassBeyond32BitsIsAFailure()
{
    QCOMPARE(failureOf([] { LeParametros("/CLASSE:99999999999"); }), kFalhaEstouro);
}

void TstParametros::zoomIsAsked_data()
{
    const Table<QString, int> row("line", "zoom");
    row("nobody asks", "/NIVEL:F1", 0);
    row("by the switch, before the file's key", "/NIVEL:F1 /ZOOM:200 /CFG:linux.txt", 200);
    row("by the key, lines ending in CR LF", "/ESC: /CFG:windows.txt", 150);
    row("by the key, lines ending in LF", "/CFG:linux.txt /ESC:", 75);
    row("a file that is not there", "/CFG:nada.txt", 0);
    for (const char *bad : {"0", "-1", "74", "201", "5000", "abc", "", "99999999999", "1e2"})
        row(bad, QString("/ZOOM:%1 /NIVEL:F1").arg(bad), 0);
}

void TstParametros::zoomIsAsked()
{
    QFETCH(QString, line);
    QFETCH(int, zoom);
    mDir->put("/windows.txt", "[zeto]\r\nZoom=150\r\nDIRQUOREL=x");
    mDir->put("/linux.txt", "[zeto]\nZOOM=75 \nDIRQUOREL=x\n");
    QCOMPARE(askedZoom(line), zoom);
}

void TstParametros::helpIsShownAndTheStartGoesOn()
{
    BoxScript boxes{Resposta::Ok};
    LeParametros("/NIVEL:F3 /?");
    QCOMPARE(boxes.last().titulo, "PARÂMETROS DA LINHA DE COMANDO");
    QCOMPARE(boxes.last().icone, Icone::Informacao);
    const QStringList lines = boxes.last().texto.split('\n');
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines[3],
        "/NOMECLASSE:<Nome da classe que está cadastrada no sistema \"Tobi e Nina seus colegas na escola  \">");
    QCOMPARE(gNomeNivel, "Fundamental III");
}

void TstParametros::configurationOfTheCommandLine()
{
    mDir->put("/a b/zeto_cnf.txt", "DIRQUOREL=here");
    LeParametros("/cfg:" + mDir->at("\\A B\\zeto_cnf.txt") + " /NIVEL:F2");
    QCOMPARE(gArquivoCfg, mDir->at("\\A B\\zeto_cnf.txt"));
    QCOMPARE(gConfig.ArquivoCnf, gArquivoCfg);
    QCOMPARE(gConfig.Config("DIRQUOREL"), "here");

    reiniciaStartup();
    mDir->put("/zeto_cnf.txt", "DIRQUOREL=disc"); // without a drive the root is the current directory
    LeParametros("");
    QCOMPARE(gArquivoCfg, "zeto_cnf.txt");
    QCOMPARE(gConfig.Config("DIRQUOREL"), "disc");

    reiniciaStartup(); // a file on the disc, not asked for: neither read nor replaced
    LeParametros("/CFG:" + mDir->at("\\none\\zeto_cnf.txt"));
    QCOMPARE(gConfig.TextoCnf, "");
    QCOMPARE(gArquivoCfg, "");
    QVERIFY(!QFile::exists(mDir->native(kPadrao))); // by none of the three
}

void TstParametros::defaultConfigurationIsWritten()
{
    mDir->put(kPadrao, "old");
    QVERIFY(QFile::setPermissions(mDir->native(kPadrao), QFile::ReadOwner));
    LeParametros("/NIVEL:F1");
    const QString text = "[zeto]\r\nZETO=c:\\ZETO\r\nZETO_CFG=W\\QUOREL2001\\cfg\r\nZETO_EXE=W\\QUOREL2001\\exe\r\n"
                         "ZETO_MM=W\\QUOREL2001\\zeto_mm\r\nZETO_MDB=W\\QUOREL2001\r\nZETO_CAD=W\r\nZETO_ALUNOS=W\r\n"
                         "DirWin=W\r\nDIRQUOREL=W\\QUOREL2001\r\nDBBLOCOS=W\\QUOREL2001\\DBBLOCOS";
    QCOMPARE(QString(mDir->get(kPadrao)).replace(mDir->at("\\win"), "W"), text);
    QCOMPARE(gArquivoCfg, mDir->at(barras(kPadrao)));
    QCOMPARE(gConfig.Config("DIRWIN"), mDir->at("\\win"));

    mDir->put("/zeto_mm/x"); // as on a disc
    mDir->put("/cfg/Zeto.cfg");
    LeParametros("");
    QCOMPARE(gConfig.Config("ZETO_MM"), "zeto_mm");
    QCOMPARE(gConfig.Config("ZETO_CFG"), "cfg");
}

void TstParametros::defaultConfigurationKeepsTheNamedRegister()
{
    LeParametros("/CFG:" + mDir->at("\\none\\zeto_cnf.txt")); // missing: the register's directory is still unknown
    QCOMPARE(gConfig.Config("ZETO_CAD"), "");
    QCOMPARE(gConfig.Config("ZETO_ALUNOS"), mDir->at("\\win"));
    gConfig.SetaCFG("ZETO_CAD=c:\\reg");
    GravaCnfPadrao();
    QVERIFY(mDir->get(kPadrao).contains("\r\nZETO_CAD=c:\\reg\r\n"));
}

void TstParametros::withoutInstallation()
{
    QVERIFY(QDir(mDir->native("/win/QUOREL2001")).removeRecursively());
    BoxScript boxes{Resposta::Ok};
    LeParametros("");
    QCOMPARE(boxes.last().texto, "Arquivo de configuração vazio ou Unidade não respondendo !");
    QCOMPARE(gNivel, "F1");
}

QTEST_MAIN(TstParametros)
#include "tst_parametros.moc"
