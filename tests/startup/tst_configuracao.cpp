#include "platform/caminho.h"
#include "platform/costuras.h"
#include "platform/sistema.h"

#include "instalacao.h"

#include <QCoreApplication>

using namespace quorel;
using namespace quorel::teste;

class TstConfiguracao : public QObject
{
    Q_OBJECT
private slots:
    void init() { mDir = std::make_unique<Instalacao>(); }
    void cleanup() { reiniciaCosturas(); }
    void paths_data();
    void paths();
    void macros_data();
    void macros();
    void networkPathStandsForTheWholeDirectory();
    void binaryAndHugeOnesAreSearchedAsTheyAre();
    void readOnlyRegisterTurnsToTheWindowsDirectory();
    void keysComeFromTheGivenText();
    void programs_data();
    void programs();

private:
    void load(const QByteArray &bytes) const
    {
        mDir->put("/zeto_cnf.txt", bytes);
        mDir->load(mDir->at("\\zeto_cnf.txt"));
    }
    std::unique_ptr<Instalacao> mDir;
};

void TstConfiguracao::paths_data()
{
    const Table<QString, QString, bool> row("given", "file", "taken"); // D: the directory
    row("the file", "D\\Zeto_Cnf.Txt", "D\\Zeto_Cnf.Txt", true);
    row("its directory", "D\\sub", "D\\sub\\ZETO_CNF.TXT", true);
    row("its directory with a backslash", "D\\sub\\", "D\\sub\\\\ZETO_CNF.TXT", true);
    row("another file", "D\\other.cfg", "D\\other.cfg", true);
    row("no path: beside the program", "", barras(QCoreApplication::applicationDirPath()) + "\\ZETO_CNF.TXT", false);
    row("a drive's root", "q:\\", "q:\\ZETO_CNF.TXT", false);
    row("missing", "D\\none\\zeto_cnf.txt", "D\\none\\zeto_cnf.txt", false);
    row("empty", "D\\empty\\zeto_cnf.txt", "D\\empty\\zeto_cnf.txt", false);
    row("a directory of that name", "D\\dir\\zeto_cnf.txt", "D\\dir\\zeto_cnf.txt", false);
    const QString nul = QStringLiteral("D\\a\0\\zeto_cnf.txt");
    row("a NUL in its name", nul, nul, false);
}

void TstConfiguracao::paths()
{
    QFETCH(QString, given);
    QFETCH(QString, file);
    QFETCH(bool, taken);
    for (const char *name : {"/zeto_cnf.txt", "/sub/zeto_cnf.txt", "/other.cfg", "/dir/zeto_cnf.txt/x"})
        mDir->put(name, "A=1");
    mDir->put("/empty/zeto_cnf.txt", "");
    gConfig.SetaCFG("before");
    QList<Caixa> shown;
    costuras().box = [&](const Caixa &box) { return shown << box, Resposta::Ok; };
    mDir->load(given.replace("D\\", mDir->at("\\")));
    QCOMPARE(gConfig.ArquivoCnf, file.replace("D\\", mDir->at("\\")));
    QCOMPARE(gConfig.TextoCnf, taken ? "A=1" : "before");
    const Caixa told{.texto = "Arquivo de configuração vazio ou Unidade não respondendo !", .icone = Icone::Critico};
    QCOMPARE(shown, QList<Caixa>(taken ? 0 : 1, told));
}

void TstConfiguracao::macros_data()
{
    const Table<QByteArray, QString> row("text", "expanded"); // W: the Windows directory
    const QString here = volumeOf(barras(QDir::tempPath()));
    row("none", "A=1\r\n", "A=1\r\n");
    row("# is the installation", "A=#\\exe", "A=W\\Quorel2001\\exe");
    // No optical drive on the machines that test: "" stands for it.
    row("$ is the optical drive, then @ the configuration's", "A=$\\x@", "A=\\x" + here);
    row("@ without $ is the optical drive", "A=@\\x", "A=\\x");
}

void TstConfiguracao::macros()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, expanded);
    QVERIFY2(driveRoots(kOpticalDrive).isEmpty(), "this table is for a machine without a disc in it");
    load(text);
    QCOMPARE(gConfig.TextoCnf, expanded.replace("W\\", mDir->at("\\win\\")));
}

void TstConfiguracao::networkPathStandsForTheWholeDirectory()
{
    mDir->put("/zeto_cnf.txt", "A=@\\exe\r\nB=$");
    const QString share = (mDir->at().startsWith('\\') ? "\\" : "\\\\?\\") + mDir->at(); // "\\tmp\…", "\\?\C:\…"
    mDir->load(share + "\\zeto_cnf.txt");
    QCOMPARE(gConfig.Config("A"), share + "\\exe");
}

void TstConfiguracao::binaryAndHugeOnesAreSearchedAsTheyAre()
{
    QByteArray bytes;
    for (int i = 0; i < 4000000; ++i)
        bytes.append(static_cast<char>(i * 31 % 251));
    load(bytes + "\r\nDBBLOCOS=c:\\b\r\nTRUNC");
    QCOMPARE(gConfig.Config("dbblocos"), "c:\\b");
    QCOMPARE(gConfig.Config("TRUNC"), "");
    load(QByteArray("A=x\0y\r\nB=\0", 11));
    QCOMPARE(gConfig.Config("A"), QStringLiteral("x\0y"));
}

void TstConfiguracao::readOnlyRegisterTurnsToTheWindowsDirectory()
{
    const QByteArray text = "ZETO_CAD=" + mDir->at("\\reg").toUtf8();
    mDir->put("/reg/Cadastros.mdb");
    load(text);
    QCOMPARE(gConfig.Config("ZETO_CAD"), mDir->at("\\reg")); // none in the Windows directory
    mDir->put("/win/Cadastros.mdb");
    load(text);
    QCOMPARE(gConfig.Config("ZETO_CAD"), mDir->at("\\reg")); // a writable one changes nothing
    QVERIFY(QFile::setPermissions(mDir->native("/win/Cadastros.mdb"), QFile::ReadOwner));
    load(text);
    QCOMPARE(gConfig.Config("ZETO_CAD"), mDir->at("\\win"));
    QCOMPARE(mDir->get("/zeto_cnf.txt"), text); // never saved
}

void TstConfiguracao::keysComeFromTheGivenText()
{
    gConfig.SetaCFG("A=1");
    QString text;
    QCOMPARE(gConfig.Config("a", text), "1");
    QCOMPARE(text, "A=1"); // the caller's text is filled
    text = "A=2";
    QCOMPARE(gConfig.Config("a", text), "2");
    QCOMPARE(gConfig.Config("missing"), "");
}

void TstConfiguracao::programs_data()
{
    const Table<QString, QString> row("text", "expanded");
    row("no braces", "a b", "a b");
    row("empty", "", "");
    row("a value is not expanded again", "{ZETO_EXE}\\{b}.exe", "c:\\e\\{A}.exe");
    row("no value", "x{none}y{}", "xy");
    row("never closed", "{b}x{ZETO_EXE", "{A}x{ZETO_EXE");
    row("only closed", "a}b", "a}b");
}

void TstConfiguracao::programs()
{
    QFETCH(QString, text);
    gConfig.SetaCFG("ZETO_EXE=c:\\e\r\nA=1\r\nB={A}");
    QTEST(gConfig.Programa(text), "expanded");
}

QTEST_MAIN(TstConfiguracao)
#include "tst_configuracao.moc"
