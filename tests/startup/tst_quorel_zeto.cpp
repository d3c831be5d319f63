#include "platform/caminho.h"
#include "platform/costuras.h"
#include "platform/sistema.h"

#include "instalacao.h"

#include <QCoreApplication>

using namespace quorel;
using namespace quorel::teste;

class TstQuorelZeto : public QObject
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
    void pictures_data();
    void pictures();
    void picturesOfADirectory();
    void soundsAndVideos();

private:
    void load(const QByteArray &bytes) const
    {
        mDir->put("/zeto_cnf.txt", bytes);
        mDir->load(mDir->at("\\zeto_cnf.txt"));
    }
    std::unique_ptr<Instalacao> mDir;
};

void TstQuorelZeto::paths_data()
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

void TstQuorelZeto::paths()
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

void TstQuorelZeto::macros_data()
{
    const Table<QByteArray, QString> row("text", "expanded"); // W: the Windows directory
    const QString here = volumeOf(barras(QDir::tempPath()));
    row("none", "A=1\r\n", "A=1\r\n");
    row("lines end in CR LF or in LF", "A=1\nB=2\r\nC=3", "A=1\r\nB=2\r\nC=3");
    row("# is the installation", "A=#\\exe", "A=W\\Quorel2001\\exe");
    // No optical drive on the machines that test: "" stands for it.
    row("$ is the optical drive, then @ the configuration's", "A=$\\x@", "A=\\x" + here);
    row("@ without $ is the optical drive", "A=@\\x", "A=\\x");
}

void TstQuorelZeto::macros()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, expanded);
    QVERIFY2(driveRoots(kOpticalDrive).isEmpty(), "this table is for a machine without a disc in it");
    load(text);
    QCOMPARE(gConfig.TextoCnf, expanded.replace("W\\", mDir->at("\\win\\")));
}

void TstQuorelZeto::networkPathStandsForTheWholeDirectory()
{
    mDir->put("/zeto_cnf.txt", "A=@\\exe\r\nB=$");
    const QString share = (mDir->at().startsWith('\\') ? "\\" : "\\\\?\\") + mDir->at(); // "\\tmp\…", "\\?\C:\…"
    mDir->load(share + "\\zeto_cnf.txt");
    QCOMPARE(gConfig.Config("A"), share + "\\exe");
    mDir->put("/zeto_cnf.txt", "A=@\\exe");
    mDir->load(share + "\\zeto_cnf.txt");
    QCOMPARE(gConfig.Config("A"), "\\exe"); // without "$" it is the optical drive all the same
}

void TstQuorelZeto::binaryAndHugeOnesAreSearchedAsTheyAre()
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

void TstQuorelZeto::readOnlyRegisterTurnsToTheWindowsDirectory()
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

void TstQuorelZeto::keysComeFromTheGivenText()
{
    gConfig.SetaCFG("A=1");
    QString text;
    QCOMPARE(gConfig.Config("a", text), "1");
    QCOMPARE(text, "A=1"); // the caller's text is filled
    text = "A=2";
    QCOMPARE(gConfig.Config("a", text), "2");
    QCOMPARE(gConfig.Config("missing"), "");
}

void TstQuorelZeto::programs_data()
{
    const Table<QString, QString> row("text", "expanded");
    row("no braces", "a b", "a b");
    row("empty", "", "");
    row("a value is not expanded again", "{ZETO_EXE}\\{b}.exe", "c:\\e\\{A}.exe");
    row("no value", "x{none}y{}", "xy");
    row("never closed", "{b}x{ZETO_EXE", "{A}x{ZETO_EXE");
    row("only closed", "a}b", "a}b");
}

void TstQuorelZeto::programs()
{
    QFETCH(QString, text);
    gConfig.SetaCFG("ZETO_EXE=c:\\e\r\nA=1\r\nB={A}");
    QTEST(gConfig.Programa(text), "expanded");
}

void TstQuorelZeto::pictures_data()
{
    const Table<QString, QString, QString> row("file", "name", "found");
    row("fifth character", "/mm/Fig/m/e/MACIEIRA.GIF", "macie", "");
    row("eight characters", "/mm/Fig/m/e/macieira.gif", "macieira", "/mm/Fig/m/e/macieira.GIF");
    row("short names lie under _", "/mm/fig/s/_/Sol.gif", "sol", "/mm/Fig/s/_/sol.GIF");
    row("BMP too", "/mm/Fig/s/_/sol.bmp", "sol", "/mm/Fig/s/_/sol.BMP");
    row("cut at the dash", "/mm/Fig/s/_/sol.gif", "sol-2", "/mm/Fig/s/_/sol.GIF");
    row("extension lost at the cut", "/mm/Fig/s/_/sol.gif", "sol-2.bmp", "/mm/Fig/s/_/sol.GIF");
    row("a backslash: under the base", "/mm/Fig/sub/sol.gif", "sub\\sol", "/mm/Fig/sub/sol.GIF");
    row("nine characters: also under the base", "/mm/Fig/abacaxi99.bmp", "abacaxi99", "/mm/Fig/abacaxi99.BMP");
    row("nine characters in their shard", "/mm/Fig/a/a/abacaxi99.gif", "abacaxi99", "/mm/Fig/a/a/abacaxi99.GIF");
    row("missing", "/mm/Fig/x.gif", "sol", "");
    row("empty", "/mm/Fig/x.gif", "", "");
    row("dash alone", "/mm/Fig/x.gif", "-", "");
    row("second root", "/alt/Fig/s/_/sol.gif", "sol", "/alt/Fig/s/_/sol.GIF");
    const QString third = "Quorel2001/Zeto_MM/fig/s/_/sol";
    row("third place has no backslash behind the Windows directory", "/win" + third + ".gif", "sol",
        "/win" + third + ".GIF");
    row("not with one", "/win/" + third + ".gif", "sol", "");
}

void TstQuorelZeto::pictures()
{
    QFETCH(QString, file);
    QFETCH(QString, name);
    QFETCH(QString, found);
    mDir->put(file);
    QCOMPARE(gConfig.N_Fig(name), found.isEmpty() ? QString() : mDir->at(barras(found)));
}

void TstQuorelZeto::picturesOfADirectory()
{
    QString base = mDir->at("\\base\\");
    const auto found = [&](const QString &name, const QString &list = {}) {
        return gConfig.Nome_Fig(name, base, list).replace(mDir->at(), "D");
    };
    mDir->put("/mm/Fig/s/_/sol.bmp");
    mDir->put("/base/s/_/sol.gif");
    QCOMPARE(found("sol"), "D\\base\\s\\_\\sol.GIF");
    mDir->put("/mm/Fig/s/_/sol.gif"); // the configured root stands before the base
    QCOMPARE(found("sol"), "D\\mm\\Fig\\s\\_\\sol.GIF");
    QCOMPARE(found(base + "s\\_\\sol.gif"), "D\\base\\s\\_\\sol.gif");

    mDir->put("/base/two/lua.bmp");
    QCOMPARE(found("lua", "one; two"), "D\\base\\two\\lua.BMP");
    QCOMPARE(found("lua", "one"), "");
    QCOMPARE(found("lua", base + "two"), "D\\base\\two\\lua.BMP");

    gConfig.SetaCFG("X=1"); // without the key the installation's own collection
    mDir->put("/win/Quorel2001/Zeto_MM/Fig/s/_/sol.gif");
    QCOMPARE(found("sol"), "D\\win\\Quorel2001\\Zeto_MM\\Fig\\s\\_\\sol.GIF");
}

void TstQuorelZeto::soundsAndVideos()
{
    mDir->put("/mm/Som/s/sol.wav");
    mDir->put("/mm/Video/s/sol.avi");
    QCOMPARE(gConfig.N_Som("sol"), mDir->at("\\mm\\Som\\s\\sol.WAV"));
    QCOMPARE(gConfig.N_Video("sol"), mDir->at("\\mm\\Video\\s\\sol.AVI"));
    QCOMPARE(gConfig.N_Som("lua"), "");
    QCOMPARE(gConfig.N_Som(""), "");
    QCOMPARE(gConfig.N_Video(""), "");
    QCOMPARE(gConfig.N_Som("sol.wav"), ""); // a whole name is looked for as it stands
    mDir->put("/win/Quorel2001/Zeto_MM/Som/s/sol.wav"); // the installation's own sound comes first; it has no videos
    QString base = mDir->at("\\mm\\Som");
    QCOMPARE(gConfig.Nome_Som("sol", base, ""), mDir->at("\\win\\Quorel2001\\Zeto_MM\\Som\\s\\sol.WAV"));
    QCOMPARE(base, mDir->at("\\mm\\Som\\")); // the caller's text
    base = mDir->at("\\mm\\Video");
    mDir->put("/mm/Video/subl/lua.avi"); // no backslash behind the subdirectory
    QCOMPARE(gConfig.Nome_Video("lua", base, "sub"), mDir->at("\\mm\\Video\\\\subl\\lua.AVI"));
    QCOMPARE(base, mDir->at("\\mm\\Video\\"));
    QCOMPARE(gConfig.VerificarPlacaSom(), !QDir("/dev/snd").entryList({"pcmC*p"}, QDir::System).isEmpty());
}

QTEST_MAIN(TstQuorelZeto)
#include "tst_quorel_zeto.moc"
