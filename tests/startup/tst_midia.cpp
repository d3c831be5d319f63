#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstMidia : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void pictures_data();
    void pictures();
    void placesInTheirOrder();
    void subdirectories();
    void soundsAndVideos();

private:
    QString at(const QString &rest) const { return barras(mDir->path()) + rest; }
    void put(const char *rest) const { escreve(mDir->path() + QString::fromUtf8(rest), "x"); }
    std::unique_ptr<QTemporaryDir> mDir;
};

void TstMidia::init()
{
    failOnWarnings();
    reiniciaStartup();
    mDir = std::make_unique<QTemporaryDir>(QDir::tempPath() + u"/midiaXXXXXX"_s); // names are cut at a "-"
    qputenv("QUOREL_WINDIR", mDir->path().toUtf8() + "/win");
    gConfig.SetaCFG(u"ZETO_MM="_s + at(u"\\mm"_s) + u"\r\nMM_ALT="_s + at(u"\\alt"_s));
}

void TstMidia::pictures_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("found");
    QTest::newRow("fifth character") << QByteArray("/mm/Fig/m/e/MACIEIRA.GIF") << u"macie"_s << u""_s;
    QTest::newRow("eight characters") << QByteArray("/mm/Fig/m/e/macieira.gif") << u"macieira"_s
                                      << u"\\mm\\Fig\\m\\e\\macieira.GIF"_s;
    QTest::newRow("short names lie under _")
        << QByteArray("/mm/fig/s/_/Sol.gif") << u"sol"_s << u"\\mm\\Fig\\s\\_\\sol.GIF"_s;
    QTest::newRow("BMP too") << QByteArray("/mm/Fig/s/_/sol.bmp") << u"sol"_s << u"\\mm\\Fig\\s\\_\\sol.BMP"_s;
    QTest::newRow("cut at the dash") << QByteArray("/mm/Fig/s/_/sol.gif") << u"sol-2"_s
                                     << u"\\mm\\Fig\\s\\_\\sol.GIF"_s;
    QTest::newRow("extension lost at the cut")
        << QByteArray("/mm/Fig/s/_/sol.gif") << u"sol-2.bmp"_s << u"\\mm\\Fig\\s\\_\\sol.GIF"_s;
    QTest::newRow("a backslash: under the base")
        << QByteArray("/mm/Fig/sub/sol.gif") << u"sub\\sol"_s << u"\\mm\\Fig\\sub\\sol.GIF"_s;
    QTest::newRow("nine characters: also under the base")
        << QByteArray("/mm/Fig/abacaxi99.bmp") << u"abacaxi99"_s << u"\\mm\\Fig\\abacaxi99.BMP"_s;
    QTest::newRow("nine characters in their shard")
        << QByteArray("/mm/Fig/a/a/abacaxi99.gif") << u"abacaxi99"_s << u"\\mm\\Fig\\a\\a\\abacaxi99.GIF"_s;
    QTest::newRow("missing") << QByteArray("/mm/Fig/x.gif") << u"sol"_s << u""_s;
    QTest::newRow("empty") << QByteArray("/mm/Fig/x.gif") << u""_s << u""_s;
    QTest::newRow("dash alone") << QByteArray("/mm/Fig/x.gif") << u"-"_s << u""_s;
    QTest::newRow("second root") << QByteArray("/alt/Fig/s/_/sol.gif") << u"sol"_s << u"\\alt\\Fig\\s\\_\\sol.GIF"_s;
    QTest::newRow("third place has no backslash behind the Windows directory") << QByteArray(
        "/winQuorel2001/Zeto_MM/fig/s/_/sol.gif") << u"sol"_s << u"\\winQuorel2001\\Zeto_MM\\fig\\s\\_\\sol.GIF"_s;
    QTest::newRow("not with one") << QByteArray("/win/Quorel2001/Zeto_MM/fig/s/_/sol.gif") << u"sol"_s << u""_s;
}

void TstMidia::pictures()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, name);
    QFETCH(QString, found);
    put(file.constData());
    QCOMPARE(gConfig.N_Fig(name), found.isEmpty() ? QString() : at(found));
}

void TstMidia::placesInTheirOrder()
{
    put("/mm/Fig/s/_/sol.bmp");
    put("/base/s/_/sol.gif");
    QString base = at(u"\\base\\"_s);
    QCOMPARE(gConfig.Nome_Fig(u"sol"_s, base, QString()), at(u"\\base\\s\\_\\sol.GIF"_s));
    put("/mm/Fig/s/_/sol.gif"); // the configured root stands before the base
    QCOMPARE(gConfig.Nome_Fig(u"sol"_s, base, QString()), at(u"\\mm\\Fig\\s\\_\\sol.GIF"_s));
    QCOMPARE(gConfig.Nome_Fig(at(u"\\base\\s\\_\\sol.gif"_s), base, QString()), at(u"\\base\\s\\_\\sol.gif"_s));

    gConfig.SetaCFG(u"X=1"_s); // without the key the installation's own collection
    put("/win/Quorel2001/Zeto_MM/Fig/s/_/sol.gif");
    QCOMPARE(gConfig.N_Fig(u"sol"_s), at(u"\\win\\Quorel2001\\Zeto_MM\\Fig\\s\\_\\sol.GIF"_s));
}

void TstMidia::subdirectories()
{
    put("/base/two/sol.bmp");
    QString base = at(u"\\base\\"_s);
    QCOMPARE(gConfig.Nome_Fig(u"sol"_s, base, u"one; two"_s), at(u"\\base\\two\\sol.BMP"_s));
    QCOMPARE(gConfig.Nome_Fig(u"sol"_s, base, u"one"_s), QString());
    QCOMPARE(gConfig.Nome_Fig(u"sol"_s, base, at(u"\\base\\two"_s)), at(u"\\base\\two\\sol.BMP"_s));
}

void TstMidia::soundsAndVideos()
{
    put("/mm/Som/s/sol.wav");
    put("/mm/Video/s/sol.avi");
    QCOMPARE(gConfig.N_Som(u"sol"_s), at(u"\\mm\\Som\\s\\sol.WAV"_s));
    QCOMPARE(gConfig.N_Video(u"sol"_s), at(u"\\mm\\Video\\s\\sol.AVI"_s));
    QCOMPARE(gConfig.N_Som(u"lua"_s), QString());
    QCOMPARE(gConfig.N_Video(QString()), QString());
    QCOMPARE(gConfig.N_Som(u"sol.wav"_s), QString()); // a whole name is looked for as it stands
    put("/win/Quorel2001/Zeto_MM/Som/s/sol.wav"); // the installation's own sound comes first, and there is no such
                                                  // video
    QString base = at(u"\\mm\\Som"_s);
    QCOMPARE(gConfig.Nome_Som(u"sol"_s, base, QString()), at(u"\\win\\Quorel2001\\Zeto_MM\\Som\\s\\sol.WAV"_s));
    QCOMPARE(base, at(u"\\mm\\Som\\"_s)); // the caller's text
    base = at(u"\\mm\\Video"_s);
    put("/mm/Video/subl/lua.avi");
    QCOMPARE(
        gConfig.Nome_Video(u"lua"_s, base, u"sub"_s), at(u"\\mm\\Video\\\\subl\\lua.AVI"_s)); // no backslash behind it
    QCOMPARE(base, at(u"\\mm\\Video\\"_s));
    QCOMPARE(gConfig.VerificarPlacaSom(), !QDir(u"/dev/snd"_s).entryList({u"pcmC*p"_s}, QDir::System).isEmpty());
}

QTEST_GUILESS_MAIN(TstMidia)
#include "tst_midia.moc"
