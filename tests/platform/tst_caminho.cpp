#include "platform/caminho.h"
#include "support/suporte.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

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
    QString at(const QString &rest) const { return barras(mDir->path()) + rest; }
    QString native(const QString &rest) const { return mDir->path() + rest; }
    std::unique_ptr<QTemporaryDir> mDir;
};

void TstCaminho::init()
{
    failOnWarnings();
    mDir = std::make_unique<QTemporaryDir>();
    escreve(native(u"/Fig/m/_/MAÇÃ.GIF"_s), "x");
    escreve(native(u"/two/B.txt"_s), "x");
    escreve(native(u"/two/b.TXT"_s), "x");
}

void TstCaminho::spellings_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    QTest::newRow("exact") << u"\\Fig\\m\\_\\MAÇÃ.GIF"_s << u"/Fig/m/_/MAÇÃ.GIF"_s;
    QTest::newRow("any case, accents too") << u"\\fig\\M\\_\\maçã.gif"_s << u"/Fig/m/_/MAÇÃ.GIF"_s;
    QTest::newRow("a new file takes the directory's spelling") << u"\\FIG\\New.gif"_s << u"/Fig/New.gif"_s;
    QTest::newRow("new directories keep theirs") << u"\\fig\\New\\Deep.gif"_s << u"/Fig/New/Deep.gif"_s;
    QTest::newRow("first in byte order of two") << u"\\TWO\\B.TXT"_s << u"/two/B.txt"_s;
    QTest::newRow("exact one of two") << u"\\two\\b.TXT"_s << u"/two/b.TXT"_s;
    QTest::newRow("trailing backslash stays") << u"\\FIG\\"_s << u"/Fig/"_s;
    QTest::newRow("a file is no directory") << u"\\two\\b.txt\\c"_s << u"/two/B.txt/c"_s;
}

void TstCaminho::spellings()
{
    QFETCH(QString, path);
    QFETCH(QString, expected);
    QCOMPARE(nativePath(at(path)), native(expected));
    QCOMPARE(nativePath(at(path)), native(expected)); // and from the listings kept
}

void TstCaminho::whatNamesNothingStays()
{
    QCOMPARE(nativePath(QString()), QString());
    QCOMPARE(nativePath(u"a\0b"_s), QString());
    QCOMPARE(nativePath(u"\\"_s), u"/"_s);
    QCOMPARE(nativePath(u"\\TMP\\..\\ETC"_s), u"/tmp/../etc"_s);
    QCOMPARE(nativePath(u"no such name"_s), u"no such name"_s);
    const QString huge = QString(u"\\a"_s).repeated(200000); // deeper than any path may be
    QCOMPARE(nativePath(huge).size(), huge.size());
}

void TstCaminho::filesThatComeAndGoAreSeenAtOnce()
{
    for (int i = 0; i < 200; ++i) { // many within one step of the modification time
        const QString made = native(u"/Fig/F%1.gif"_s.arg(i));
        const QString asked = at(u"\\fig\\f%1.GIF"_s.arg(i));
        QVERIFY(!QFile::exists(nativePath(asked)));
        escreve(made, "x");
        QCOMPARE(nativePath(asked), made);
        QVERIFY(QFile::remove(made));
        QVERIFY(!QFile::exists(nativePath(asked)));
    }
}

void TstCaminho::directoriesThatAreReplaced()
{
    QCOMPARE(nativePath(at(u"\\FIG\\M\\_\\MAçã.gif"_s)), native(u"/Fig/m/_/MAÇÃ.GIF"_s));
    QVERIFY(QDir().rename(native(u"/Fig"_s), native(u"/old"_s)));
    escreve(native(u"/FIG/M/_/Maçã.Gif"_s), "x");
    QCOMPARE(nativePath(at(u"\\fig\\m\\_\\maçã.gif"_s)), native(u"/FIG/M/_/Maçã.Gif"_s));
}

void TstCaminho::listsFilesByEnding()
{
    for (const char *name : {"/F1/01MAF1.EDB", "/F1/02PTF1.edb", "/F1/x.txt", "/F1/.hidden.edb", "/F1/sub.edb/y"})
        escreve(native(QString::fromUtf8(name)), "x");
    QStringList names = fileNames(at(u"\\f1"_s), u".edb"_s);
    names.sort();
    QCOMPARE(names, QStringList({u"01MAF1.EDB"_s, u"02PTF1.edb"_s}));
    QCOMPARE(fileNames(at(u"\\F1\\"_s), QString()).size(), 3);
    QCOMPARE(fileNames(at(u"\\none"_s), u".edb"_s), QStringList());
    QCOMPARE(fileNames(QString(), u".edb"_s), QStringList());
}

void TstCaminho::volumes()
{
    QCOMPARE(volumeOf(u"\\etc"_s), QString());
    QCOMPARE(volumeOf(u"\\proc\\self\\none"_s), u"\\proc"_s);
    QCOMPARE(backslashPath(u"/media/cd/a"_s), u"\\media\\cd\\a"_s);
}

QTEST_GUILESS_MAIN(TstCaminho)
#include "tst_caminho.moc"
