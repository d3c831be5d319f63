#include "lessons/andamento.h"
#include "lessons/copia_midia.h"
#include "lessons/destino_midia.h"
#include "platform/costuras.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QDir>
#include <QDirIterator>

using namespace quorel;
using namespace quorel::teste;

class TstCopiaMidia final : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { reiniciaCosturas(); }
    void copiesWhatALessonNames();
    void asksForTheDestinationOnce();
    void ontoItselfLosesNothing();
    void destinations_data();
    void destinations();

private:
    QStringList copied() const
    {
        QStringList found;
        const QString into = mDir->native("/dst/");
        for (QDirIterator it(into, QDir::Files, QDirIterator::Subdirectories); it.hasNext();)
            found << it.next().mid(into.size());
        found.sort();
        return found;
    }
    std::unique_ptr<ScratchDir> mDir;
};

void TstCopiaMidia::init()
{
    failOnWarnings();
    reiniciaLessons();
    reiniciaStartup();
    mDir = std::make_unique<ScratchDir>();
    QVERIFY(QDir().mkdir(mDir->native("/dst")));
    for (const char *name :
        {"/mm/Fig/g/_/gato.gif", "/mm/Fig/b/s/bolas.GIF", "/mm/Fig/u/_/uva.bmp", "/mm/Som/m/miau.wav"})
        mDir->put(name, name);
    gConfig.SetaCFG("ZETO_MM=" + mDir->at("\\mm") + "\r\n");
    gDirFiguras = mDir->at("\\dst");
}

void TstCopiaMidia::copiesWhatALessonNames()
{
    const QString peca = "x<SPÇ>2<SPÇ>3<SPÇ>4<SPÇ>5<SPÇ>6<SPÇ>7<SPÇ>8<SPÇ>9<SPÇ>10<SPÇ>%1<SPÇ>%2";
    QString texto = "(1,2)" + peca.arg("gato", "miau") + "<PÇ>ab<PÇ>" + peca.arg("nada", "nada")
        + "<VAA>(1)resp<VOA>(1)o\t2\t3\t4\t5\t6\t7\t8\tbolas<OP>o\t2\t3\t4\t5\t6\t7\t8\t uva <VCM>rest";
    const QString behind = texto.section("<VAA>", 1);
    CopiaMidiaAula(texto);
    QCOMPARE(copied(), (QStringList{"Som/m/miau.WAV", "bolas.GIF", "gato.GIF", "uva.GIF"}));
    QCOMPARE(mDir->get("/dst/gato.GIF"), "/mm/Fig/g/_/gato.gif");
    QCOMPARE(texto, behind);
    for (QString odd : {"", "(1,2)", "<VAA>", "(1,2)ab<VAA>(1)<VOA>(1)ab<VCM>"})
        CopiaMidiaAula(odd);
    QCOMPARE(copied().size(), 4);
}

void TstCopiaMidia::asksForTheDestinationOnce()
{
    gDirFiguras.clear();
    BoxScript boxes;
    boxes.respondeTexto(mDir->native("/dst/nova")); // as the user types it: in the system's own form
    CopiaFigura("gato");
    CopiaFigura("uva");
    QCOMPARE(gDirFiguras, mDir->at("\\dst\\nova"));
    QCOMPARE(copied(), (QStringList{"nova/gato.GIF", "nova/uva.GIF"}));
    QCOMPARE(boxes.asked().size(), 1);
    QCOMPARE(boxes.asked().front().texto, "Digite o Diretório Destino das Figuras");
    QCOMPARE(boxes.asked().front().titulo, "Diretório");
    QVERIFY(boxes.asked().front().proposta.endsWith(QDir::separator() + QString("FigurasQuorel")));
    gConfig.SetaCFG("");
    boxes.respondeTexto("");
    CopiaSom("miau");
    QCOMPARE(boxes.asked().back().texto, "Digite o Diretório Origem do Zeto_MM");
    QVERIFY(boxes.asked().back().proposta.endsWith(QDir::separator() + QString("zeto_mm"), Qt::CaseInsensitive));
    QCOMPARE(copied().size(), 2);
    gDirFiguras.clear();
    boxes.respondeTexto("");
    CopiaSom("miau");
    QVERIFY(gDirFiguras.endsWith("\\Temp\\"));
}

void TstCopiaMidia::ontoItselfLosesNothing()
{
    gDirFiguras = mDir->at("\\mm");
    CopiaSom("miau");
    QCOMPARE(mDir->get("/mm/Som/m/miau.wav"), "/mm/Som/m/miau.wav");
    QVERIFY(copyFile(mDir->at("\\mm\\Som\\m\\miau.wav"), mDir->at("\\dst\\a.wav")));
    QVERIFY(!copyFile(mDir->at("\\nowhere"), mDir->at("\\dst\\a.wav")));
    QCOMPARE(mDir->get("/dst/a.wav"), "/mm/Som/m/miau.wav");
}

void TstCopiaMidia::destinations_data()
{
    const Table<QString, QString, bool> row("directory", "file", "safe");
    row("plain", "C:\\Fig", "C:\\Fig\\gato.GIF", true);
    row("a backslash behind the directory", "C:\\Fig\\", "C:\\Fig\\\\gato.GIF", true);
    row("directory below", "C:\\Fig", "C:\\Fig\\a\\b.GIF", true);
    row("up and back in", "C:\\Fig", "C:\\Fig\\a\\..\\b.GIF", true);
    row("dots in a name", "C:\\Fig", "C:\\Fig\\a..b.GIF", true);
    row("a name that only begins like a device", "C:\\Fig", "C:\\Fig\\console.GIF", true);
    row("out", "C:\\Fig", "C:\\Fig\\..\\b.GIF", false);
    row("out by slashes", "C:\\Fig\\", "C:\\Fig\\../../b.GIF", false);
    row("a neighbour whose name begins so", "C:\\Fig", "C:\\Fig2\\b.GIF", false);
    row("device", "C:\\Fig", "C:\\Fig\\nul.GIF", false);
    row("port", "C:\\Fig\\", "C:\\Fig\\a\\Com1.GIF", false);
    row("colon", "C:\\Fig", "C:\\Fig\\a:b.GIF", false);
    // A teacher may type a destination that is no full path.
    row("here", ".", ".\\gato.GIF", true);
    row("here, out", ".", ".\\..\\gato.GIF", false);
    row("above", "..", "..\\gato.GIF", true);
    row("above, out", "..", "..\\..\\gato.GIF", false);
    row("named, out", "figuras", "figuras\\..\\gato.GIF", false);
}

void TstCopiaMidia::destinations()
{
    QFETCH(QString, directory);
    QFETCH(QString, file);
    QTEST(isSafeDestination(file, directory), "safe");
}

QTEST_MAIN(TstCopiaMidia)
#include "tst_copia_midia.moc"
