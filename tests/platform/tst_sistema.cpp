#include "platform/linux/montagens.h"
#include "platform/sistema.h"
#include "platform/twips.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QFile>

#include <unistd.h>

using namespace quorel;
using namespace quorel::teste;

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
    QCOMPARE(windowsDirectory(), "\\srv\\win");
    qunsetenv("QUOREL_WINDIR");
    QCOMPARE(windowsDirectory(), barras(qEnvironmentVariable("XDG_DATA_HOME")) + "\\quorel");
    qputenv("QUOREL_WINDIR", before);
    QCOMPARE(temporaryDirectory(), barras(qEnvironmentVariable("TMPDIR")));
}

void TstSistema::readOnlyFiles()
{
    const ScratchDir dir;
    const QString path = dir.at("\\CADASTROS.MDB");
    QVERIFY(!isReadOnly(path)); // a missing file counts as writable
    QVERIFY(!clearReadOnly(path));
    dir.put("/Cadastros.mdb");
    QVERIFY(!isReadOnly(path));
    QVERIFY(QFile::setPermissions(dir.native("/Cadastros.mdb"), QFile::ReadOwner | QFile::ReadGroup));
    QVERIFY(isReadOnly(path));
    QVERIFY(clearReadOnly(path));
    QVERIFY(!isReadOnly(path));
    QVERIFY(clearReadOnly(path)); // nothing left to clear
    QVERIFY(QFile::setPermissions(dir.native("/Cadastros.mdb"), QFile::ReadOwner | QFile::WriteOther));
    const uid_t user = ::getuid();
    constexpr uid_t kNobody = 65534;
    QVERIFY(user != 0 || ::setresuid(kNobody, 0, 0) == 0); // root may write everything
    QVERIFY(!isReadOnly(path)); // the user's rights are no mark
    QVERIFY(::setresuid(user, static_cast<uid_t>(-1), static_cast<uid_t>(-1)) == 0);
}

void TstSistema::mounts()
{
    const ScratchDir dir;
    dir.put("/mounts",
        "/dev/sda1 / ext4 rw 0 0\n/dev/sr0 /media/ana/CD\\040Um iso9660 ro 0 0\n"
        "/dev/sda2 /media ext4 rw 0 0\n/dev/sr1 /dvd udf ro 0 0\nbroken line\n");
    const std::vector<Montagem> found = readMounts(qPrintable(dir.native("/mounts")));
    QCOMPARE(opticalRoots(found), QStringList({"/media/ana/CD Um", "/dvd"}));
    QCOMPARE(volumeRoot(found, "/media/ana/CD Um/zeto"), "/media/ana/CD Um");
    QCOMPARE(volumeRoot(found, "/media/ana/CD"), "/media");
    QCOMPARE(volumeRoot(found, "/dvd"), "/dvd");
    QCOMPARE(volumeRoot(found, "/dvds"), "/");
    QVERIFY(readMounts("/no/such/table").empty());
    QCOMPARE(driveRoots(3), QStringList()); // only optical drives are known
}

void TstSistema::defaultRoutes_data()
{
    const Table<QByteArray, QByteArray, bool> row("ipv4", "ipv6", "connected");
    const QByteArray head = "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\n";
    const QByteArray zeros(32, '0');
    const QByteArray v6 = zeros + " 00 " + zeros + " 00 " + zeros + " 00000400 00000001 00000000 ";
    row("no tables", "", "", false);
    row("only the local net", head + "eth0\t000011AC\t00000000\t0001\t0\t0\t0\t0000FFFF\n", "", false);
    row("default", head + "eth0\t00000000\t010011AC\t0003\t0\t0\t0\t00000000\n", "", true);
    row("default that is down", head + "eth0\t00000000\t010011AC\t0002\t0\t0\t0\t00000000\n", "", false);
    row("version 6", "", v6 + "00450003     eth0\n", true);
    row("version 6, the reject route on lo", "", v6 + "00200200       lo\n", false);
}

void TstSistema::defaultRoutes()
{
    QFETCH(QByteArray, ipv4);
    QFETCH(QByteArray, ipv6);
    QTEST(hasDefaultRoute(ipv4, ipv6), "connected");
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
