#include "platform/linux/montagens.h"
#include "platform/sistema.h"
#include "platform/twips.h"
#include "support/suporte.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstSistema : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void windowsDirectoryIsChosen();
    void readOnlyFiles();
    void mounts();
    void defaultRoutes_data();
    void defaultRoutes();
    void twips();
};

void TstSistema::windowsDirectoryIsChosen()
{
    const QByteArray before = qgetenv("QUOREL_WINDIR");
    qputenv("QUOREL_WINDIR", "/srv/win/");
    QCOMPARE(windowsDirectory(), u"\\srv\\win"_s);
    qunsetenv("QUOREL_WINDIR");
    QCOMPARE(windowsDirectory(), barras(qEnvironmentVariable("XDG_DATA_HOME")) + u"\\quorel"_s);
    qputenv("QUOREL_WINDIR", before);
    QCOMPARE(temporaryDirectory(), barras(qEnvironmentVariable("TMPDIR")));
}

void TstSistema::readOnlyFiles()
{
    const QTemporaryDir dir;
    const QString native = dir.filePath(u"Cadastros.mdb"_s);
    const QString path = barras(dir.path()) + u"\\CADASTROS.MDB"_s;
    QVERIFY(!isReadOnly(path)); // a missing file counts as writable
    QVERIFY(!clearReadOnly(path));
    escreve(native, "x");
    QVERIFY(!isReadOnly(path));
    QVERIFY(QFile::setPermissions(native, QFile::ReadOwner | QFile::ReadGroup));
    QVERIFY(isReadOnly(path));
    QVERIFY(clearReadOnly(path));
    QVERIFY(!isReadOnly(path));
    QVERIFY(clearReadOnly(path)); // nothing left to clear
}

void TstSistema::mounts()
{
    const QTemporaryDir dir;
    const QString table = dir.filePath(u"mounts"_s);
    escreve(table,
        "/dev/sda1 / ext4 rw 0 0\n/dev/sr0 /media/ana/CD\\040Um iso9660 ro 0 0\n"
        "/dev/sda2 /media ext4 rw 0 0\n/dev/sr1 /dvd udf ro 0 0\nbroken line\n");
    const std::vector<Montagem> found = readMounts(qPrintable(table));
    QCOMPARE(opticalRoots(found), QStringList({u"/media/ana/CD Um"_s, u"/dvd"_s}));
    QCOMPARE(volumeRoot(found, u"/media/ana/CD Um/zeto"_s), u"/media/ana/CD Um"_s);
    QCOMPARE(volumeRoot(found, u"/media/ana/CD"_s), u"/media"_s);
    QCOMPARE(volumeRoot(found, u"/dvd"_s), u"/dvd"_s);
    QCOMPARE(volumeRoot(found, u"/dvds"_s), u"/"_s);
    QVERIFY(readMounts("/no/such/table").empty());
    QCOMPARE(driveRoots(3), QStringList()); // only optical drives are known
}

void TstSistema::defaultRoutes_data()
{
    QTest::addColumn<QByteArray>("ipv4");
    QTest::addColumn<QByteArray>("ipv6");
    QTest::addColumn<bool>("connected");
    const QByteArray head = "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\n";
    const QByteArray zeros(32, '0');
    QTest::newRow("no tables") << QByteArray() << QByteArray() << false;
    QTest::newRow("only the local net") << head + "eth0\t000011AC\t00000000\t0001\t0\t0\t0\t0000FFFF\n"
                                        << QByteArray() << false;
    QTest::newRow("default") << head + "eth0\t00000000\t010011AC\t0003\t0\t0\t0\t00000000\n" << QByteArray() << true;
    QTest::newRow("default that is down") << head + "eth0\t00000000\t010011AC\t0002\t0\t0\t0\t00000000\n"
                                          << QByteArray() << false;
    const QByteArray v6 = zeros + " 00 " + zeros + " 00 " + zeros + " 00000400 00000001 00000000 ";
    QTest::newRow("version 6") << QByteArray() << v6 + "00450003     eth0\n" << true;
    QTest::newRow("version 6, the reject route on lo") << QByteArray() << v6 + "00200200       lo\n" << false;
}

void TstSistema::defaultRoutes()
{
    QFETCH(QByteArray, ipv4);
    QFETCH(QByteArray, ipv6);
    QFETCH(bool, connected);
    QCOMPARE(hasDefaultRoute(ipv4, ipv6), connected);
}

void TstSistema::twips()
{
    QCOMPARE(pixels(1215), 81);
    QCOMPARE(pixels(7.5), 0); // halves to even
    QCOMPARE(pixels(22.5), 2);
    QCOMPARE(pixels(-22.5), -2);
}

QTEST_GUILESS_MAIN(TstSistema)
#include "tst_sistema.moc"
