#include "instalacao.h"

using namespace quorel;
using namespace quorel::teste;

class TstMidia : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void pictures_data();
    void pictures();
    void picturesOfADirectory();
    void soundsAndVideos();

private:
    std::unique_ptr<Instalacao> mDir;
};

void TstMidia::init()
{
    mDir = std::make_unique<Instalacao>();
    gConfig.SetaCFG("ZETO_MM=" + mDir->at("\\mm") + "\r\nMM_ALT=" + mDir->at("\\alt"));
}

void TstMidia::pictures_data()
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

void TstMidia::pictures()
{
    QFETCH(QString, file);
    QFETCH(QString, name);
    QFETCH(QString, found);
    mDir->put(file);
    QCOMPARE(gConfig.N_Fig(name), found.isEmpty() ? QString() : mDir->at(barras(found)));
}

void TstMidia::picturesOfADirectory()
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

void TstMidia::soundsAndVideos()
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

QTEST_GUILESS_MAIN(TstMidia)
#include "tst_midia.moc"
