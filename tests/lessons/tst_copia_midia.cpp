#include "lessons/andamento.h"
#include "lessons/copia_midia.h"
#include "lessons/destino_midia.h"
#include "platform/costuras.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstCopiaMidia final : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<QTemporaryDir> mDir;

    QString at(const char *path) const { return mDir->filePath(QString::fromUtf8(path)); }
    QStringList copied() const
    {
        QStringList found;
        for (QDirIterator it(at("dst"), QDir::Files, QDirIterator::Subdirectories); it.hasNext();)
            found << it.next().mid(at("dst/").size());
        found.sort();
        return found;
    }

private slots:
    void init();
    void cleanup();
    void copiesWhatALessonNames();
    void asksForTheDestinationOnce();
    void typedDestinationIsMade();
    void ontoItselfLosesNothing();
    void relativeDestinations_data();
    void relativeDestinations();
    void destinations_data();
    void destinations();
};

void TstCopiaMidia::init()
{
    failOnWarnings();
    reiniciaLessons();
    reiniciaStartup();
    mDir = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(mDir->path()).mkdir(u"dst"_s));
    for (const char *name : {"mm/Fig/g/_/gato.gif", "mm/Fig/b/s/bolas.GIF", "mm/Fig/u/_/uva.bmp", "mm/Som/m/miau.wav"})
        escreve(at(name), name);
    gConfig.SetaCFG("ZETO_MM="_L1 + barras(at("mm")) + "\r\n"_L1);
    gDirFiguras = barras(at("dst"));
}

void TstCopiaMidia::cleanup()
{
    reiniciaLessons();
    reiniciaCosturas();
}

void TstCopiaMidia::copiesWhatALessonNames()
{
    const QString peca = u"x<SPÇ>2<SPÇ>3<SPÇ>4<SPÇ>5<SPÇ>6<SPÇ>7<SPÇ>8<SPÇ>9<SPÇ>10<SPÇ>%1<SPÇ>%2"_s;
    QString texto = "(1,2)"_L1 + peca.arg(u"gato"_s, u"miau"_s) + u"<PÇ>ab<PÇ>"_s + peca.arg(u"nada"_s, u"nada"_s)
        + "<VAA>(1)resp<VOA>(1)o\t2\t3\t4\t5\t6\t7\t8\tbolas<OP>o\t2\t3\t4\t5\t6\t7\t8\t uva <VCM>rest"_L1;
    const QString behind = texto.section(u"<VAA>"_s, 1);
    CopiaMidiaAula(texto);
    QCOMPARE(copied(), (QStringList{u"Som/m/miau.WAV"_s, u"bolas.GIF"_s, u"gato.GIF"_s, u"uva.GIF"_s}));
    QCOMPARE(le(at("dst/gato.GIF")), "mm/Fig/g/_/gato.gif");
    QCOMPARE(texto, behind);
    for (QString odd : {QString(), u"(1,2)"_s, u"<VAA>"_s, u"(1,2)ab<VAA>(1)<VOA>(1)ab<VCM>"_s})
        CopiaMidiaAula(odd);
    QCOMPARE(copied().size(), 4);
}

void TstCopiaMidia::asksForTheDestinationOnce()
{
    gDirFiguras.clear();
    BoxScript boxes;
    boxes.respondeTexto(barras(at("dst")));
    CopiaFigura(u"gato"_s);
    CopiaFigura(u"uva"_s);
    QCOMPARE(boxes.asked().size(), 1);
    QCOMPARE(boxes.asked().front().texto, u"Digite o Diretório Destino das Figuras"_s);
    QCOMPARE(boxes.asked().front().titulo, u"Diretório"_s);
    QVERIFY(boxes.asked().front().proposta.endsWith(QDir::separator() + u"FigurasQuorel"_s));
    QCOMPARE(copied().size(), 2);
    gConfig.SetaCFG(QString());
    boxes.respondeTexto(QString());
    CopiaSom(u"miau"_s);
    QCOMPARE(boxes.asked().back().texto, u"Digite o Diretório Origem do Zeto_MM"_s);
    QVERIFY(boxes.asked().back().proposta.endsWith(QDir::separator() + u"zeto_mm"_s, Qt::CaseInsensitive));
    QCOMPARE(copied().size(), 2);
    gDirFiguras.clear();
    boxes.respondeTexto(QString());
    CopiaSom(u"miau"_s);
    QVERIFY(gDirFiguras.endsWith("\\Temp\\"_L1));
}

// A destination as the user types it: in the system's own form.
void TstCopiaMidia::typedDestinationIsMade()
{
    gDirFiguras.clear();
    BoxScript boxes;
    boxes.respondeTexto(at("dst/nova"));
    CopiaFigura(u"gato"_s);
    QCOMPARE(gDirFiguras, barras(at("dst/nova")));
    QCOMPARE(copied(), QStringList{u"nova/gato.GIF"_s});
}

void TstCopiaMidia::ontoItselfLosesNothing()
{
    gDirFiguras = barras(at("mm"));
    CopiaSom(u"miau"_s);
    QCOMPARE(le(at("mm/Som/m/miau.wav")), "mm/Som/m/miau.wav");
    QVERIFY(copyFile(barras(at("mm/Som/m/miau.wav")), barras(at("dst/a.wav"))));
    QVERIFY(!copyFile(barras(at("nowhere")), barras(at("dst/a.wav"))));
    QCOMPARE(le(at("dst/a.wav")), "mm/Som/m/miau.wav");
}

void TstCopiaMidia::destinations_data()
{
    QTest::addColumn<QString>("destino");
    QTest::addColumn<bool>("safe");
    QTest::newRow("plain") << u"C:\\Fig\\gato.GIF"_s << true;
    QTest::newRow("doubled backslash") << u"C:\\Fig\\\\gato.GIF"_s << true;
    QTest::newRow("directory below") << u"C:\\Fig\\a\\b.GIF"_s << true;
    QTest::newRow("up and back in") << u"C:\\Fig\\a\\..\\b.GIF"_s << true;
    QTest::newRow("dots in a name") << u"C:\\Fig\\a..b.GIF"_s << true;
    QTest::newRow("a name that only begins like a device") << u"C:\\Fig\\console.GIF"_s << true;
    QTest::newRow("out") << u"C:\\Fig\\..\\b.GIF"_s << false;
    QTest::newRow("out by slashes") << u"C:\\Fig\\../../b.GIF"_s << false;
    QTest::newRow("a neighbour whose name begins so") << u"C:\\Fig2\\b.GIF"_s << false;
    QTest::newRow("device") << u"C:\\Fig\\nul.GIF"_s << false;
    QTest::newRow("port") << u"C:\\Fig\\a\\Com1.GIF"_s << false;
    QTest::newRow("colon") << u"C:\\Fig\\a:b.GIF"_s << false;
}

void TstCopiaMidia::destinations()
{
    QFETCH(QString, destino);
    QTEST(isSafeDestination(destino, u"C:\\Fig"_s), "safe");
    QTEST(isSafeDestination(destino, u"C:\\Fig\\"_s), "safe");
}

// A teacher may type a destination that is no full path.
void TstCopiaMidia::relativeDestinations_data()
{
    QTest::addColumn<QString>("diretorio");
    QTest::addColumn<QString>("nome");
    QTest::addColumn<bool>("safe");
    QTest::newRow("here") << u"."_s << u"gato"_s << true;
    QTest::newRow("here, below") << u".\\"_s << u"a\\gato"_s << true;
    QTest::newRow("here, out") << u"."_s << u"..\\gato"_s << false;
    QTest::newRow("here, device") << u"."_s << u"con"_s << false;
    QTest::newRow("above") << u".."_s << u"gato"_s << true;
    QTest::newRow("above, out") << u".."_s << u"..\\gato"_s << false;
    QTest::newRow("named") << u"figuras"_s << u"gato"_s << true;
    QTest::newRow("named, out") << u"figuras"_s << u"..\\gato"_s << false;
}

void TstCopiaMidia::relativeDestinations()
{
    QFETCH(QString, diretorio);
    QFETCH(QString, nome);
    QTEST(isSafeDestination(diretorio + u'\\' + nome + u".GIF"_s, diretorio), "safe");
}

QTEST_MAIN(TstCopiaMidia)
#include "tst_copia_midia.moc"
