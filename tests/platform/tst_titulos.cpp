#include "platform/endereco.h"
#include "platform/linux/busdirectory.h"
#include "platform/preparo.h"
#include "support/suporte.h"

#include "filho_em_teste.h"

#include <QDir>

#include <csignal>

using namespace quorel;
using namespace quorel::teste;

/// How windows are found by their titles, and what becomes of them.
class TstTitulos : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { preparePlatform(); }
    void init() { failOnWarnings(); }
    void titlesAreFoundInFourPasses();
    void equalTitlesOwnFirstThenLowestHandle();
    void aKilledProcessLeavesNoEntry();
    void aChangedTitleIsFound();
    void placingReachesTheBody();
    void thePublishedWindowOfASender();
};

void TstTitulos::titlesAreFoundInFourPasses()
{
    Filho livros({u"Livros - Quorel"_s, u"Livros"_s});
    const Janela inner = findWindow(u"Livros", true);
    QVERIFY(inner != 0 && inner != livros.janela());
    QCOMPARE(findWindow(u"Livros - Quorel", true), livros.janela());
    QCOMPARE(findWindow(u"Livros - Q", true), livros.janela());
    QCOMPARE(findWindow(u"Livros - Q", false), Janela(0));
    QCOMPARE(findWindow(u"LIVROS", true), Janela(0));
    QCOMPARE(findWindow(u"Liv", true), livros.janela());
    QCOMPARE(findWindow(u"", true), Janela(0));
    Casa casa;
    QCOMPARE(casa.send(inner, kSizePlus1000), 1000); // to the same procedure
}

void TstTitulos::equalTitlesOwnFirstThenLowestHandle()
{
    Filho um({u"Casa"_s}), dois({u"Casa"_s, u"dois"_s});
    QCOMPARE(findWindow(u"Casa", false), std::min(um.janela(), findWindow(u"Casa", false)));
    {
        Casa casa;
        QCOMPARE(findWindow(u"Casa", false), casa.endereco.handle());
        QWidget janela;
        janela.setWindowTitle(u"Uma janela"_s);
        QCOMPARE(findWindow(u"Uma", true), Janela(0)); // not made yet
        janela.show();
        QCOMPARE(findWindow(u"Uma", true), handleOf(&janela));
    }
    QVERIFY(findWindow(u"Casa", false) != 0);
}

void TstTitulos::aKilledProcessLeavesNoEntry()
{
    Filho filho({u"Some"_s});
    const QDir directory(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/quorel"_s);
    const QStringList its{QString::number(filho.pid()) + u".*"_s};
    QCOMPARE(directory.entryList(its, QDir::AllEntries | QDir::System).size(), 2);
    filho.kill();
    QCOMPARE(findWindow(u"Some", true), Janela(0));
    QCOMPARE(directory.entryList(its, QDir::AllEntries | QDir::System).size(), 0);
}

void TstTitulos::aChangedTitleIsFound()
{
    Casa casa;
    Filho filho({u"Antes"_s});
    for (const QString &title : {u"Histórias - Quorel"_s, u"com\nquebra"_s, u"Depois"_s}) {
        const QByteArray utf8 = title.toUtf8();
        QCOMPARE(casa.send(filho.janela(), kSetTitle, qint32(utf8.size()), utf8), 1);
        QCOMPARE(findWindow(QString(title).replace(u'\n', u' '), false), filho.janela());
    }
    QCOMPARE(findWindow(u"Antes", true), Janela(0));
}

void TstTitulos::placingReachesTheBody()
{
    Casa casa;
    Filho filho({u"Corpo"_s, u"dentro"_s});
    const auto geometry = [](qintptr x, qintptr y, qintptr w, qintptr h) { return x << 48 | y << 32 | w << 16 | h; };
    placeWindow(filho.janela(), Ordem::Topmost, kKeepSize | kKeepPosition);
    QCOMPARE(casa.send(filho.janela(), kGeometry), geometry(300, 200, 400, 300));
    QCOMPARE(casa.send(filho.janela(), kIsTopmost), 2);
    placeWindow(filho.janela(), Ordem::NoTopmost, kKeepSize | kKeepPosition);
    QCOMPARE(casa.send(filho.janela(), kIsTopmost), 1);
    placeWindow(filho.janela(), Ordem::Top, kKeepSize);
    QCOMPARE(casa.send(filho.janela(), kGeometry), geometry(0, 0, 400, 300));
    placeWindow(findWindow(u"dentro", true), Ordem::Top, kKeepPosition);
    QCOMPARE(casa.send(filho.janela(), kGeometry), geometry(0, 0, 120, 80)); // the least size instead of 0
    filho.kill();
    placeWindow(filho.janela(), Ordem::Top, 0);
    QWidget own;
    own.setGeometry(50, 60, 70, 80);
    placeWindow(handleOf(&own), Ordem::Top, kKeepSize);
    QCOMPARE(own.geometry(), QRect(0, 0, 70, 80));
}

void TstTitulos::thePublishedWindowOfASender()
{
    Casa casa;
    Filho filho({u"Um"_s, u"Dois"_s});
    const Janela inner = findWindow(u"Dois", true);
    QCOMPARE(publishedWindowOf(inner, u"Um"), filho.janela());
    QCOMPARE(publishedWindowOf(inner, u"Casa"), Janela(0));
    QWidget janela;
    QCOMPARE(publishedWindowOf(handleOf(&janela), u"Casa"), casa.endereco.handle());
    QCOMPARE(publishedWindowOf(1234, u"Casa"), Janela(0));
    QCOMPARE(publishedWindowOfParent(u"Casa"), Janela(0));
    leaveBus();
    QCOMPARE(publishedWindowOf(handleOf(&janela), u"Casa"), Janela(0));
    QCOMPARE(casa.send(filho.janela(), kSizePlus1000), 1000); // a send needs no address of its own
}

QTEST_MAIN(TstTitulos)
#include "tst_titulos.moc"
