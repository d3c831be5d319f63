#include "catalogue/roteiros.h"

#include "catalogue/estado.h"
#include "catalogue/leitor_blocos.h"
#include "platform/caminho.h"
#include "platform/costuras.h"
#include "platform/fim.h"
#include "platform/sistema.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"
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
    void readsOntoTheButtons();
    void a17thRoteiroIsReadWhole();
    void aDamagedPictureEndsTheReading();
    void withoutAWindowAllIsStillRead();
    void whatATurnOfEventsSees();
    void aNewerReadingStopsTheOlder();
    void aCodeTooLargeLeavesTheOthersUnread();
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

void TstRoteiros::readsOntoTheButtons()
{
    gTextoDB =
        blocoCerto(3, 2, 10) + "[ROT<4>]\r\nNomeRot =sem figura\r\n[ROT<6>][ROT<5>]\r\nNomeRot =CALC\r\nFIG:MA1\r\n";
    LeRoteiros();
    QCOMPARE(mVistas->calls(),
        u"hideAll; load 1 MA1.GIF; tag 1 Roteiro 1 - A água 1; show 1; load 2 MA2.BMP; tag 2 Roteiro 2 - A água 2; "
        "show 2; load 3 ; tag 3 Roteiro 3 - A água 3; show 3; tag 4 sem figura - ; show 4"_s);
    QCOMPARE(gRoteiros.upperBound(), 6);
    QCOMPARE(gRoteiros, leBloco(gTextoDB).roteiros);
}

void TstRoteiros::a17thRoteiroIsReadWhole()
{
    gTextoDB = blocoCerto(18, 2, 10);
    LeRoteiros();
    QCOMPARE(mVistas->log.filter(u"show"_s).size(), kNumBotoes);
    QCOMPARE(gRoteiros, leBloco(gTextoDB).roteiros);
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

void TstRoteiros::withoutAWindowAllIsStillRead()
{
    mVistas.reset();
    gTextoDB = blocoCerto(2, 2, 10);
    LeRoteiros();
    QCOMPARE(gRoteiros, leBloco(gTextoDB).roteiros);
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

void TstRoteiros::aCodeTooLargeLeavesTheOthersUnread()
{
    gTextoDB = blocoCerto(3, 1, 10).replace("CODROT:1002", "CODROT:99999999999");
    LeRoteiros();
    QCOMPARE(gRoteiros, leBloco(gTextoDB).roteiros);
    QCOMPARE(mVistas->log.filter(u"show"_s), QStringList{u"show 1"_s});
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
