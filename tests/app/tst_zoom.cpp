#include "app/screen_fit.h"
#include "platform/zoom.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QScopeGuard>
#include <QTest>

using namespace quorel;
using namespace quorel::teste;

/// How large everything is drawn.
class TstZoom : public QObject
{
    Q_OBJECT
private slots:
    void everythingFitsTheScreen_data();
    void everythingFitsTheScreen();
    void onlyOurProgramsAreZoomed();
};

void TstZoom::everythingFitsTheScreen_data()
{
    const Table<QSize, int> row("free", "zoom");
    row("no screen to ask", QSize(), 0);
    row("a netbook", QSize(1024, 600), 100);
    row("a netbook with a dock", QSize(1024, 560), 75);
    row("smaller than the smallest", QSize(640, 400), 75);
    row("what the windows were made for", QSize(1024, 768), 100);
    row("a pixel too narrow for 125", QSize(1276, 2000), 100);
    row("just 125", QSize(1277, 2000), 125);
    row("a notebook", QSize(1366, 768), 125);
    row("a notebook of today", QSize(1920, 1080), 175);
    row("with a dock at its side", QSize(1700, 1080), 150);
    row("never above 200", QSize(3840, 2160), 200);
}

void TstZoom::everythingFitsTheScreen()
{
    QFETCH(QSize, free);
    QFETCH(int, zoom);
    QCOMPARE(fittingZoom(free), zoom);
}

void TstZoom::onlyOurProgramsAreZoomed()
{
    const auto restored = qScopeGuard([] { qunsetenv("QUOREL_ZOOM"); });
    qputenv("QT_SCALE_FACTOR", "2");
    {
        const ZoomedStart byHandItStands(150);
        QCOMPARE(inheritedZoom(), 0);
    }
    QCOMPARE(qgetenv("QT_SCALE_FACTOR"), "2");
    qunsetenv("QT_SCALE_FACTOR");
    {
        const ZoomedStart qtReadsIt(150);
        QCOMPARE(qgetenv("QT_SCALE_FACTOR"), "1.5");
    }
    QVERIFY(!qEnvironmentVariableIsSet("QT_SCALE_FACTOR"));
    QVERIFY(!qEnvironmentVariableIsSet("QT_FONT_DPI"));
    QCOMPARE(inheritedZoom(), 150);
    qputenv("QUOREL_ZOOM", "5000");
    QCOMPARE(inheritedZoom(), 0);
}

QTEST_MAIN(TstZoom)
#include "tst_zoom.moc"
