#include "catalogue/roteiros.h"

#include "catalogue/estado.h"
#include "catalogue/leitor_blocos.h"
#include "platform/caminho.h"
#include "platform/costuras.h"
#include "platform/fim.h"
#include "platform/sistema.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"
#include "support/table.h"
#include "textos_de_bloco.h"
#include "vistas_gravadas.h"

#include <QTemporaryDir>
#include <QTimer>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstRoteiros : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void readsOntoTheButtons_data();
    void readsOntoTheButtons();
    void aDamagedPictureEndsTheReading();
    void whatATurnOfEventsSees();
    void aNewerReadingStopsTheOlder();
    void eventsRunBeforeAPictureToo();
    void loadsABlockFile();
    void aMissingBlockFileEndsTheProgram();

private:
    QTemporaryDir mDir;
    std::unique_ptr<VistasGravadas> mVistas;
};

void TstRoteiros::init()
{
    failOnWarnings();
    reiniciaCatalogue();
    gConfig = Quorel_Zeto();
    costuras().endProcess = [](int code) { throw FimDoPrograma{code}; };
    escreve(mDir.filePath(u"Fig/M/_/MA1.GIF"_s), "GIF89a");
    escreve(mDir.filePath(u"Fig/M/_/MA2.bmp"_s), "BM");
    gConfig.SetaCFG(u"[zeto]\r\nZETO_MM="_s + barras(mDir.path()) + u"\r\nzeto_mdb="_s + barras(mDir.path()));
    mVistas.reset(); // before the next ones are in use
    mVistas = std::make_unique<VistasGravadas>();
}

void TstRoteiros::readsOntoTheButtons_data()
{
    QString sixteen = u"hideAll"_s;
    for (int n = 1; n <= kNumBotoes; ++n)
        sixteen += u"; load %1 %2; tag %1 Roteiro %1 - A água %1; show %1"_s.arg(n).arg(n == 1 ? u"MA1.GIF"_s
                : n == 2                                                                       ? u"MA2.BMP"_s
                                                                                               : QString());
    rows<QByteArray, QString>({
        {"a figure, one in another case, none, without a name for one; CALC and a missing one have no button",
            blocoCerto(3, 2, 10)
                + "[ROT<4>]\r\nNomeRot =sem figura\r\n[ROT<6>][ROT<5>]\r\nNomeRot =CALC\r\nFIG:MA1\r\n",
            "hideAll; load 1 MA1.GIF; tag 1 Roteiro 1 - A água 1; show 1; load 2 MA2.BMP; "
            "tag 2 Roteiro 2 - A água 2; show 2; load 3 ; tag 3 Roteiro 3 - A água 3; show 3; tag 4 sem figura - ; "
            "show 4"},
        {"those without a button are read whole", blocoCerto(kNumBotoes + 2, 2, 10), sixteen},
        {"a code too large leaves the others unread", blocoCerto(3, 1, 10).replace("CODROT:1002", "CODROT:99999999999"),
            "hideAll; load 1 MA1.GIF; tag 1 Roteiro 1 - A água 1; show 1"},
    });
}

void TstRoteiros::readsOntoTheButtons()
{
    const auto [texto, calls] = row<QByteArray, QString>();
    gTextoDB = texto;
    LeRoteiros();
    QCOMPARE(mVistas->calls(), calls);
    QCOMPARE(gRoteiros, leBloco(texto).roteiros);
    reiniciaCatalogue();
    mVistas.reset(); // without a window all is read as well
    gTextoDB = texto;
    LeRoteiros();
    QCOMPARE(gRoteiros, leBloco(texto).roteiros);
}

void TstRoteiros::aDamagedPictureEndsTheReading()
{
    mVistas->falha = kFalhaFigura;
    gTextoDB = "[ROT<1>]\r\nNomeRot =CALC\r\n" + blocoCerto(3, 1, 10).replace("[ROT<1>]", "[ROT<9>]");
    LeRoteiros();
    QCOMPARE(mVistas->calls(), u"hideAll"_s);
    QVERIFY(gRoteiros[1].Aulas.isDimensioned());
    RoteiroRec begun;
    begun.Cod = 1002;
    begun.Nome = u"Roteiro 2"_s;
    begun.Fig = u"MA2"_s;
    QCOMPARE(gRoteiros[2], begun);
    QCOMPARE(gRoteiros[3], RoteiroRec());
}

void TstRoteiros::whatATurnOfEventsSees()
{
    Vetor<RoteiroRec> seen;
    mVistas->onLoad = [&](int n) {
        if (n == 2)
            QTimer::singleShot(0, qApp, [&] { seen = gRoteiros; });
    };
    gTextoDB = blocoCerto(3, 2, 10);
    LeRoteiros();
    QCOMPARE(seen.upperBound(), 3);
    QCOMPARE(seen[1], gRoteiros[1]);
    QCOMPARE(seen[2].Nome, u"Roteiro 2"_s);
    QCOMPARE(seen[2].Som, QString());
    QVERIFY(!seen[2].Aulas.isDimensioned());
    QCOMPARE(seen[3], RoteiroRec());
}

void TstRoteiros::aNewerReadingStopsTheOlder()
{
    const QByteArray newer = "[ROT<1>]\r\nNomeRot =novo\r\n";
    mVistas->onLoad = [&](int) {
        QTimer::singleShot(0, qApp, [&] {
            gTextoDB = newer;
            LeRoteiros();
        });
    };
    gTextoDB = blocoCerto(3, 2, 10);
    LeRoteiros();
    QCOMPARE(gRoteiros, leBloco(newer).roteiros);
    QCOMPARE(mVistas->calls(), u"hideAll; load 1 MA1.GIF; hideAll; tag 1 novo - ; show 1"_s);
}

void TstRoteiros::eventsRunBeforeAPictureToo()
{
    QTimer::singleShot(0, qApp, [this] { mVistas->log << u"events"_s; });
    gTextoDB = blocoCerto(1, 1, 10);
    LeRoteiros();
    QVERIFY(mVistas->calls().startsWith(u"hideAll; events; load 1 MA1.GIF"_s));
}

void TstRoteiros::loadsABlockFile()
{
    const QString dir = barras(mDir.path());
    escreve(mDir.filePath(u"zetodb.ini"_s), "padrao");
    for (const QByteArray &bytes : {QByteArray("NUL \0 e \xC7\r\n", 11), QByteArray()}) {
        escreve(mDir.filePath(u"0205MAF1.edb"_s), bytes);
        QString caminho = dir + u"\\0205MAF1.edb"_s;
        gTextoDB = "old";
        LeBancoBlocos(caminho);
        QCOMPARE(gTextoDB, bytes);
    }
    QString none; // means the default one
    LeBancoBlocos(none);
    QCOMPARE(gTextoDB, QByteArray("padrao"));
    QCOMPARE(none, dir + u"\\zetodb.ini"_s);
}

void TstRoteiros::aMissingBlockFileEndsTheProgram()
{
    gConfig.SetaCFG(u"[zeto]"_s);
    BoxScript boxes{Resposta::Ok};
    QString caminho;
    QVERIFY_EXCEPTION_THROWN(LeBancoBlocos(caminho), FimDoPrograma);
    QCOMPARE(boxes.last(), Caixa{u"Arquivo não encontrado!"_s});
    QCOMPARE(caminho, windowsDirectory() + u"\\QUOREL2001\\zetodb.ini"_s);
}

QTEST_MAIN(TstRoteiros)
#include "tst_roteiros.moc"
