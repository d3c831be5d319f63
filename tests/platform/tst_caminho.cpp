#include "platform/caminho.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QDir>

using namespace quorel;
using namespace quorel::teste;

class TstCaminho : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void spellings_data();
    void spellings();
    void whatNamesNothingStays();
    void filesThatComeAndGoAreSeenAtOnce();
    void directoriesThatAreReplaced();
    void listsFilesByEnding();
    void volumes();

private:
    std::unique_ptr<ScratchDir> mDir;
};

void TstCaminho::init()
{
    failOnWarnings();
    mDir = std::make_unique<ScratchDir>();
    for (const char *name : {"/Fig/m/_/MAÇÃ.GIF", "/two/B.txt", "/two/b.TXT"})
        mDir->put(name);
}

void TstCaminho::spellings_data()
{
    const Table<QString, QString> row("path", "expected");
    row("exact", "\\Fig\\m\\_\\MAÇÃ.GIF", "/Fig/m/_/MAÇÃ.GIF");
    row("any case, accents too", "\\fig\\M\\_\\maçã.gif", "/Fig/m/_/MAÇÃ.GIF");
    row("a new file takes the directory's spelling", "\\FIG\\New.gif", "/Fig/New.gif");
    row("new directories keep theirs", "\\fig\\New\\Deep.gif", "/Fig/New/Deep.gif");
    row("first in byte order of two", "\\TWO\\B.TXT", "/two/B.txt");
    row("exact one of two", "\\two\\b.TXT", "/two/b.TXT");
    row("trailing backslash stays", "\\FIG\\", "/Fig/");
    row("a file is no directory", "\\two\\b.txt\\c", "/two/B.txt/c");
}

void TstCaminho::spellings()
{
    QFETCH(QString, path);
    QFETCH(QString, expected);
    QCOMPARE(nativePath(mDir->at(path)), mDir->native(expected));
    QCOMPARE(nativePath(mDir->at(path)), mDir->native(expected)); // and from the listings kept
}

void TstCaminho::whatNamesNothingStays()
{
    QCOMPARE(nativePath(""), "");
    QCOMPARE(nativePath(QStringLiteral("a\0b")), "");
    QCOMPARE(nativePath("\\"), "/");
    QCOMPARE(nativePath("\\TMP\\..\\ETC"), "/tmp/../etc");
    QCOMPARE(nativePath("no such name"), "no such name");
    const QString huge = QString("\\a").repeated(200000); // deeper than any path may be
    QCOMPARE(nativePath(huge).size(), huge.size());
}

void TstCaminho::filesThatComeAndGoAreSeenAtOnce()
{
    for (int i = 0; i < 200; ++i) { // many within one step of the modification time
        const QString made = mDir->native(QString("/Fig/F%1.gif").arg(i));
        const QString asked = mDir->at(QString("\\fig\\f%1.GIF").arg(i));
        QVERIFY(!QFile::exists(nativePath(asked)));
        escreve(made, "x");
        QCOMPARE(nativePath(asked), made);
        QVERIFY(QFile::remove(made));
        QVERIFY(!QFile::exists(nativePath(asked)));
    }
}

void TstCaminho::directoriesThatAreReplaced()
{
    QCOMPARE(nativePath(mDir->at("\\FIG\\M\\_\\MAçã.gif")), mDir->native("/Fig/m/_/MAÇÃ.GIF"));
    QVERIFY(QDir().rename(mDir->native("/Fig"), mDir->native("/old")));
    mDir->put("/FIG/M/_/Maçã.Gif");
    QCOMPARE(nativePath(mDir->at("\\fig\\m\\_\\maçã.gif")), mDir->native("/FIG/M/_/Maçã.Gif"));
}

void TstCaminho::listsFilesByEnding()
{
    for (const char *name : {"/F1/01MAF1.EDB", "/F1/02PTF1.edb", "/F1/x.txt", "/F1/.hidden.edb", "/F1/sub.edb/y"})
        mDir->put(name);
    QStringList names = fileNames(mDir->at("\\f1"), ".edb");
    names.sort();
    QCOMPARE(names, QStringList({"01MAF1.EDB", "02PTF1.edb"}));
    QCOMPARE(fileNames(mDir->at("\\F1\\"), "").size(), 3);
    QCOMPARE(fileNames(mDir->at("\\none"), ".edb"), QStringList());
    QCOMPARE(fileNames("", ".edb"), QStringList());
}

void TstCaminho::volumes()
{
    QCOMPARE(volumeOf("\\etc"), "");
    QCOMPARE(volumeOf("\\proc\\self\\none"), "\\proc");
    QCOMPARE(backslashPath("/media/cd/a"), "\\media\\cd\\a");
}

QTEST_GUILESS_MAIN(TstCaminho)
#include "tst_caminho.moc"
