#include "platform/erro.h"
#include "platform/sistema.h"
#include "startup/estado.h"
#include "startup/parametros.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstParametros : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void levels_data();
    void levels();
    void switches();
    void helpIsShownAndTheStartGoesOn();
    void configurationOfTheCommandLine();
    void defaultConfigurationIsWritten();
    void defaultConfigurationKeepsTheNamedRegister();
    void withoutInstallation();

private:
    QString at(const QString &rest) const { return barras(mDir->path()) + rest; }
    QString native(const QString &rest) const { return mDir->path() + rest; }
    std::unique_ptr<QTemporaryDir> mDir;
};

void TstParametros::init()
{
    failOnWarnings();
    reiniciaStartup();
    mDir = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir().mkpath(native(u"/win/QUOREL2001"_s)));
    QVERIFY(QDir::setCurrent(mDir->path()));
    qputenv("QUOREL_WINDIR", mDir->path().toUtf8() + "/win");
    QVERIFY2(driveRoots(kOpticalDrive).isEmpty(), "these cases are for a machine without a disc in it");
}

/// Some systems remove no directory that a program stands in.
void TstParametros::cleanup()
{
    QVERIFY(QDir::setCurrent(QDir::tempPath()));
}

void TstParametros::levels_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    QTest::newRow("none: F1 without a name") << u""_s << u"F1"_s << u""_s;
    QTest::newRow("F1") << u"/NIVEL:F1"_s << u"F1"_s << u"Fundamental I"_s;
    QTest::newRow("lower case stays as written") << u"/nivel:f4"_s << u"f4"_s << u"Fundamental IV"_s;
    QTest::newRow("I2") << u"/ESC /NIVEL:I2"_s << u"I2"_s << u"Infantil II"_s;
    QTest::newRow("another code has no name") << u"/NIVEL:X9"_s << u"X9"_s << u""_s;
    QTest::newRow("another code keeps the name before") << u"/NIVEL:F2 /NIVEL:X9"_s << u"X9"_s << u"Fundamental II"_s;
    QTest::newRow("empty value") << u"/NIVEL:"_s << u"F1"_s << u""_s;
    QTest::newRow("no colon") << u"/NIVEL"_s << u"F1"_s << u""_s;
    QTest::newRow("behind a million characters")
        << u"/x y z "_s.repeated(200000) + u"/NIVEL:F2"_s << u"F2"_s << u"Fundamental II"_s;
    QTest::newRow("more switches than words: the rest is unread") << u"/ESC/ESC/NIVEL:F2"_s << u"F1"_s << u""_s;
}

void TstParametros::levels()
{
    QFETCH(QString, line);
    LeParametros(line);
    QTEST(gNivel, "code");
    QTEST(gNomeNivel, "name");
}

void TstParametros::switches()
{
    LeParametros(u"word /XYZ:1 /NOMECLASSE:Tobi e Nina  /classe:12.9x /ESCOLA:no"_s);
    QCOMPARE(gNomeClasse, u"Tobi e Nina"_s);
    QCOMPARE(gClasse, 12);
    QVERIFY(gEscolas);
    for (const QString &line : {u"/ESC:"_s, u"/escolas"_s}) {
        reiniciaStartup();
        LeParametros(line);
        QVERIFY(gEscolas);
    }
    reiniciaStartup();
    LeParametros(u"/NOMECLASSE:\"A:B\""_s);
    QVERIFY(!gEscolas);
    QCOMPARE(gNomeClasse, u"\"A:B\""_s);
    LeParametros(u"/CLASSE:abc"_s);
    QCOMPARE(gClasse, 0);
    QVERIFY_EXCEPTION_THROWN(LeParametros(u"/CLASSE:99999999999"_s), ErroExecucao);
}

void TstParametros::helpIsShownAndTheStartGoesOn()
{
    BoxScript boxes{Resposta::Ok};
    LeParametros(u"/NIVEL:F3 /?"_s);
    QCOMPARE(boxes.last().titulo, u"PARÂMETROS DA LINHA DE COMANDO"_s);
    QCOMPARE(boxes.last().icone, Icone::Informacao);
    const QStringList lines = boxes.last().texto.split(u'\n');
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines[3],
        u"/NOMECLASSE:<Nome da classe que está cadastrada no sistema \"Tobi e Nina seus colegas na escola  \">"_s);
    QCOMPARE(gNomeNivel, u"Fundamental III"_s);
}

void TstParametros::configurationOfTheCommandLine()
{
    escreve(native(u"/a b/zeto_cnf.txt"_s), "DIRQUOREL=here");
    LeParametros(u"/cfg:"_s + at(u"\\A B\\zeto_cnf.txt"_s) + u" /NIVEL:F2"_s);
    QCOMPARE(gArquivoCfg, at(u"\\A B\\zeto_cnf.txt"_s));
    QCOMPARE(gConfig.ArquivoCnf, gArquivoCfg);
    QCOMPARE(gConfig.Config(u"DIRQUOREL"_s), u"here"_s);
    QVERIFY(!QFile::exists(native(u"/win/QUOREL2001/zeto_cnf.txt"_s)));

    reiniciaStartup();
    escreve(native(u"/zeto_cnf.txt"_s), "DIRQUOREL=disc"); // without a drive the root is the current directory
    LeParametros(QString());
    QCOMPARE(gArquivoCfg, u"zeto_cnf.txt"_s);
    QCOMPARE(gConfig.Config(u"DIRQUOREL"_s), u"disc"_s);

    reiniciaStartup();
    LeParametros(
        u"/CFG:"_s + at(u"\\none\\zeto_cnf.txt"_s)); // a file on the disc, not asked for: neither read nor replaced
    QCOMPARE(gConfig.TextoCnf, QString());
    QCOMPARE(gArquivoCfg, QString());
    QVERIFY(!QFile::exists(native(u"/win/QUOREL2001/zeto_cnf.txt"_s)));
}

void TstParametros::defaultConfigurationIsWritten()
{
    const QString file = native(u"/win/QUOREL2001/zeto_cnf.txt"_s);
    escreve(file, "old");
    QVERIFY(QFile::setPermissions(file, QFile::ReadOwner));
    LeParametros(u"/NIVEL:F1"_s);
    const QString text = u"[zeto]\r\nZETO=c:\\ZETO\r\nZETO_CFG=W\\QUOREL2001\\cfg\r\nZETO_EXE=W\\QUOREL2001\\exe\r\n"
                         "ZETO_MM=W\\QUOREL2001\\zeto_mm\r\nZETO_MDB=W\\QUOREL2001\r\nZETO_CAD=W\r\nZETO_ALUNOS=W\r\n"
                         "DirWin=W\r\nDIRQUOREL=W\\QUOREL2001\r\nDBBLOCOS=W\\QUOREL2001\\DBBLOCOS"_s;
    QCOMPARE(QString::fromLatin1(le(file)).replace(at(u"\\win"_s), u"W"_s), text);
    QCOMPARE(gArquivoCfg, at(u"\\win\\QUOREL2001\\zeto_cnf.txt"_s));
    QCOMPARE(gConfig.Config(u"DIRWIN"_s), at(u"\\win"_s));

    QVERIFY(QDir().mkpath(native(u"/zeto_mm"_s))); // as on a disc
    escreve(native(u"/cfg/Zeto.cfg"_s), "x");
    LeParametros(QString());
    QCOMPARE(gConfig.Config(u"ZETO_MM"_s), u"zeto_mm"_s);
    QCOMPARE(gConfig.Config(u"ZETO_CFG"_s), u"cfg"_s);
}

void TstParametros::defaultConfigurationKeepsTheNamedRegister()
{
    LeParametros(u"/CFG:"_s + at(u"\\none\\zeto_cnf.txt"_s)); // missing: the register's directory is still unknown
    QCOMPARE(gConfig.Config(u"ZETO_CAD"_s), QString());
    QCOMPARE(gConfig.Config(u"ZETO_ALUNOS"_s), at(u"\\win"_s));
    gConfig.SetaCFG(u"ZETO_CAD=c:\\reg"_s);
    GravaCnfPadrao();
    QVERIFY(le(native(u"/win/QUOREL2001/zeto_cnf.txt"_s)).contains("\r\nZETO_CAD=c:\\reg\r\n"));
}

void TstParametros::withoutInstallation()
{
    QVERIFY(QDir(native(u"/win/QUOREL2001"_s)).removeRecursively());
    BoxScript boxes{Resposta::Ok};
    LeParametros(QString());
    QCOMPARE(boxes.last().texto, u"Arquivo de configuração vazio ou Unidade não respondendo !"_s);
    QCOMPARE(gNivel, u"F1"_s);
}

QTEST_MAIN(TstParametros)
#include "tst_parametros.moc"
