#include "platform/caminho.h"
#include "platform/sistema.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstConfiguracao : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void places_data();
    void places();
    void macros_data();
    void macros();
    void emptyPathAndDriveRoot();
    void networkPathStandsForTheWholeDirectory();
    void emptyOnesAreTold_data();
    void emptyOnesAreTold();
    void binaryAndHugeOnesAreSearchedAsTheyAre();
    void readOnlyRegisterTurnsToTheWindowsDirectory();
    void keysComeFromTheGivenText();
    void programs_data();
    void programs();

private:
    QString at(const QString &rest) const { return barras(mDir->path()) + rest; }
    QString native(const QString &rest) const { return mDir->path() + rest; }
    QString load(const QByteArray &bytes)
    {
        escreve(native(u"/zeto_cnf.txt"_s), bytes);
        gConfig.Init(at(u"\\zeto_cnf.txt"_s), QString::fromUtf16(kNomeCadastro));
        return gConfig.TextoCnf;
    }
    std::unique_ptr<QTemporaryDir> mDir;
};

void TstConfiguracao::init()
{
    failOnWarnings();
    reiniciaStartup();
    mDir = std::make_unique<QTemporaryDir>();
    qputenv("QUOREL_WINDIR", mDir->path().toUtf8() + "/win");
    QVERIFY(QDir().mkpath(native(u"/win"_s)));
}

void TstConfiguracao::places_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("file");
    QTest::newRow("the file") << u"\\Zeto_Cnf.Txt"_s << u"\\Zeto_Cnf.Txt"_s;
    QTest::newRow("its directory") << u"\\sub"_s << u"\\sub\\ZETO_CNF.TXT"_s;
    QTest::newRow("its directory with a backslash") << u"\\sub\\"_s << u"\\sub\\\\ZETO_CNF.TXT"_s;
    QTest::newRow("another file") << u"\\other.cfg"_s << u"\\other.cfg"_s;
}

void TstConfiguracao::places()
{
    QFETCH(QString, given);
    QFETCH(QString, file);
    for (const char *name : {"/zeto_cnf.txt", "/sub/zeto_cnf.txt", "/other.cfg"})
        escreve(native(QString::fromUtf8(name)), "A=1");
    gConfig.Init(at(given), QString::fromUtf16(kNomeCadastro));
    QCOMPARE(gConfig.ArquivoCnf, at(file));
    QCOMPARE(gConfig.Config(u"A"_s), u"1"_s);
}

void TstConfiguracao::macros_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expanded");
    const QString here = volumeOf(barras(QDir::tempPath()));
    QTest::newRow("none") << QByteArray("A=1\r\n") << u"A=1\r\n"_s;
    QTest::newRow("# is the installation") << QByteArray("A=#\\exe") << u"A=%W\\Quorel2001\\exe"_s;
    // No optical drive on the machines that test: "" stands for it.
    QTest::newRow("$ is the optical drive, then @ the configuration's") << QByteArray("A=$\\x@") << u"A=\\x"_s + here;
    QTest::newRow("@ without $ is the optical drive") << QByteArray("A=@\\x") << u"A=\\x"_s;
}

void TstConfiguracao::macros()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, expanded);
    QVERIFY2(driveRoots(kOpticalDrive).isEmpty(), "this table is for a machine without a disc in it");
    QCOMPARE(load(text), expanded.replace(u"%W"_s, at(u"\\win"_s)));
}

void TstConfiguracao::emptyPathAndDriveRoot()
{
    BoxScript boxes{Resposta::Ok, Resposta::Ok};
    gConfig.Init(QString(), QString::fromUtf16(kNomeCadastro));
    QCOMPARE(gConfig.ArquivoCnf, barras(QCoreApplication::applicationDirPath()) + u"\\ZETO_CNF.TXT"_s);
    gConfig.Init(u"q:\\"_s, QString::fromUtf16(kNomeCadastro));
    QCOMPARE(gConfig.ArquivoCnf, u"q:\\ZETO_CNF.TXT"_s);
}

void TstConfiguracao::networkPathStandsForTheWholeDirectory()
{
    escreve(native(u"/zeto_cnf.txt"_s), "A=@\\exe\r\nB=$");
    const QString place = at(QString());
    const QString share = (place.startsWith(u'\\') ? u"\\"_s : u"\\\\?\\"_s) + place; // "\\tmp\…", "\\?\C:\…"
    gConfig.Init(share + u"\\zeto_cnf.txt"_s, QString::fromUtf16(kNomeCadastro));
    QCOMPARE(gConfig.Config(u"A"_s), share + u"\\exe"_s);
}

void TstConfiguracao::emptyOnesAreTold_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing") << u"\\none\\zeto_cnf.txt"_s;
    QTest::newRow("empty") << u"\\empty\\zeto_cnf.txt"_s;
    QTest::newRow("a NUL in its name") << u"\\a\0\\zeto_cnf.txt"_s;
    QTest::newRow("a directory of that name") << u"\\dir\\zeto_cnf.txt"_s;
}

void TstConfiguracao::emptyOnesAreTold()
{
    QFETCH(QString, path);
    escreve(native(u"/empty/zeto_cnf.txt"_s), QByteArray());
    QVERIFY(QDir().mkpath(native(u"/dir/zeto_cnf.txt"_s)));
    gConfig.SetaCFG(u"A=before"_s);
    BoxScript boxes{Resposta::Ok};
    gConfig.Init(at(path), QString::fromUtf16(kNomeCadastro));
    QCOMPARE(boxes.last().texto, u"Arquivo de configuração vazio ou Unidade não respondendo !"_s);
    QCOMPARE(boxes.last().icone, Icone::Critico);
    QCOMPARE(gConfig.ArquivoCnf, at(path));
    QCOMPARE(gConfig.TextoCnf, u"A=before"_s);
}

void TstConfiguracao::binaryAndHugeOnesAreSearchedAsTheyAre()
{
    QByteArray bytes;
    for (int i = 0; i < 4000000; ++i)
        bytes.append(static_cast<char>(i * 31 % 251));
    load(bytes + "\r\nDBBLOCOS=c:\\b\r\nTRUNC");
    QCOMPARE(gConfig.Config(u"dbblocos"_s), u"c:\\b"_s);
    QCOMPARE(gConfig.Config(u"TRUNC"_s), QString());
    load(QByteArray("A=x\0y\r\nB=\0", 11));
    QCOMPARE(gConfig.Config(u"A"_s), u"x\0y"_s);
}

void TstConfiguracao::readOnlyRegisterTurnsToTheWindowsDirectory()
{
    const QByteArray text = "ZETO_CAD=" + at(u"\\reg"_s).toUtf8();
    escreve(native(u"/reg/Cadastros.mdb"_s), "r");
    load(text);
    QCOMPARE(gConfig.Config(u"ZETO_CAD"_s), at(u"\\reg"_s)); // none in the Windows directory
    escreve(native(u"/win/Cadastros.mdb"_s), "w");
    load(text);
    QCOMPARE(gConfig.Config(u"ZETO_CAD"_s), at(u"\\reg"_s)); // a writable one changes nothing
    QVERIFY(QFile::setPermissions(native(u"/win/Cadastros.mdb"_s), QFile::ReadOwner));
    load(text);
    QCOMPARE(gConfig.Config(u"ZETO_CAD"_s), at(u"\\win"_s));
    QCOMPARE(le(native(u"/zeto_cnf.txt"_s)), text); // never saved
}

void TstConfiguracao::keysComeFromTheGivenText()
{
    gConfig.SetaCFG(u"A=1"_s);
    QString text;
    QCOMPARE(gConfig.Config(u"a"_s, text), u"1"_s);
    QCOMPARE(text, u"A=1"_s); // the caller's text is filled
    text = u"A=2"_s;
    QCOMPARE(gConfig.Config(u"a"_s, text), u"2"_s);
    QCOMPARE(gConfig.Config(u"missing"_s), QString());
}

void TstConfiguracao::programs_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expanded");
    QTest::newRow("no braces") << u"a b"_s << u"a b"_s;
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("keys") << u"{ZETO_EXE}\\{b}.exe"_s << u"c:\\e\\{A}.exe"_s; // a value is not expanded again
    QTest::newRow("no value") << u"x{none}y{}"_s << u"xy"_s;
    QTest::newRow("never closed") << u"{b}x{ZETO_EXE"_s << u"{A}x{ZETO_EXE"_s;
    QTest::newRow("only closed") << u"a}b"_s << u"a}b"_s;
}

void TstConfiguracao::programs()
{
    QFETCH(QString, text);
    gConfig.SetaCFG(u"ZETO_EXE=c:\\e\r\nA=1\r\nB={A}"_s);
    QTEST(gConfig.Programa(text), "expanded");
}

QTEST_MAIN(TstConfiguracao)
#include "tst_configuracao.moc"
