#include "shell/blocos_do_mes.h"
#include "shell/geometria_dica.h"
#include "shell/rolagem.h"
#include "support/suporte.h"

using namespace quorel;
using namespace Qt::StringLiterals;

/// What the windows compute, in twips, without a window.
class TstGeometria : public QObject
{
    Q_OBJECT
private slots:
    void init() { teste::failOnWarnings(); }
    void tipHeight_data();
    void tipHeight();
    void tipPlace_data();
    void tipPlace();
    void scrolling_data();
    void scrolling();
    void blocksOfAMonth();
    void namesOfTheBlocks();
};

void TstGeometria::tipHeight_data()
{
    QTest::addColumn<QString>("texto");
    QTest::addColumn<double>("principal");
    QTest::addColumn<double>("blocos");
    QTest::newRow("30 letters are 2.2 lines, the division is not whole") << u"a"_s.repeated(30) << 726.0 << 726.0;
    QTest::newRow("empty has one line") << QString() << 330.0 << 330.0;
    QTest::newRow("a line break takes 229 off, fBlocos adds 100") << u"ab\r\nc"_s << 1.2 * 431 << 1.2 * 431 + 100;
    QTest::newRow("a final CR LF counts a line") << u"abc\r\n"_s << 1.2 * 431 << 1.2 * 431 + 100;
    QTest::newRow("two breaks") << u"a\r\n\r\n"_s << 1.2 * (990 - 458) << 1.2 * (990 - 458) + 100;
    QTest::newRow("LF alone breaks no line") << u"ab\ncd"_s << 396.0 << 396.0;
}

void TstGeometria::tipHeight()
{
    QFETCH(QString, texto);
    QFETCH(double, principal);
    QFETCH(double, blocos);
    const double altura = TextHeight(texto, 330);
    QCOMPARE(alturaDicaDisciplina(texto, altura), principal);
    QCOMPARE(alturaDicaRoteiro(texto, altura), blocos);
}

void TstGeometria::tipPlace_data()
{
    QTest::addColumn<double>("left");
    QTest::addColumn<double>("top");
    QTest::addColumn<double>("dicaLeft");
    QTest::addColumn<double>("dicaTop"); // in fBlocos; 105 less in fPrincip
    QTest::newRow("left, upper: below it") << 315.0 << 945.0 << 1645.0 << 2220.0;
    QTest::newRow("left, lower: above it") << 315.0 << 6060.0 << 1645.0 << 5060.0;
    QTest::newRow("right, upper") << 6345.0 << 945.0 << 3400.0 << 2220.0;
    QTest::newRow("right, lower") << 6390.0 << 6060.0 << 3445.0 << 5060.0;
    QTest::newRow("Left at half the width counts as right") << 4000.0 << 945.0 << 1055.0 << 2220.0;
    QTest::newRow("a twip less counts as left") << 3999.0 << 945.0 << 5329.0 << 2220.0;
    QTest::newRow("right, Top at half the height counts as upper") << 6345.0 << 4000.0 << 3400.0 << 5275.0;
    QTest::newRow("left, Top at half the height counts as lower") << 315.0 << 4000.0 << 1645.0 << 3000.0;
}

void TstGeometria::tipPlace()
{
    QFETCH(double, left);
    QFETCH(double, top);
    QFETCH(double, dicaLeft);
    QFETCH(double, dicaTop);
    const Lugar figura{left, top, 1275, 1275};
    const Lugar dica{7, 7, 3000, 1000};
    const Lugar janela{0, 0, 8000, 8000};
    QCOMPARE(lugarDaDica(figura, dica, janela, kRecuoBlocos), (Lugar{dicaLeft, dicaTop, 3000, 1000}));
    QCOMPARE(lugarDaDica(figura, dica, janela, kRecuoPrincipal), (Lugar{dicaLeft, dicaTop - 105, 3000, 1000}));
}

void TstGeometria::scrolling_data()
{
    QTest::addColumn<double>("top");
    QTest::addColumn<double>("anterior");
    QTest::addColumn<int>("maximo");
    QTest::addColumn<int>("valor"); // -1: left alone
    QTest::newRow("inside the band") << 450.0 << 675.0 << 3150 << -1;
    QTest::newRow("lower edge at 2759") << 2549.0 << 675.0 << 3150 << -1;
    QTest::newRow("lower edge at 2760") << 2550.0 << 675.0 << 3150 << 705;
    QTest::newRow("the twelfth of twelve is cut at the maximum") << 5400.0 << 675.0 << 3150 << 3150;
    QTest::newRow("ten months: clamps at the design's maximum") << 4500.0 << 675.0 << 675 << 675;
    QTest::newRow("above the frame") << -100.0 << 3150.0 << 3150 << 3020;
    QTest::newRow("Top 0 is in the band") << 0.0 << 3150.0 << 3150 << -1;
    QTest::newRow("far above is cut at the minimum") << -2700.0 << 3150.0 << 3150 << 675;
    QTest::newRow("halves go to even") << 2550.5 << 675.0 << 3150 << 706;
}

void TstGeometria::scrolling()
{
    QFETCH(double, top);
    QFETCH(double, anterior);
    QFETCH(int, maximo);
    QFETCH(int, valor);
    const auto novo = corrigeRolagem({15, top, 3015, 210}, anterior, kRolagemInicial, qint16(maximo));
    QCOMPARE(novo ? int(*novo) : -1, valor);
}

/// The blocks that a month has in a catalogue, as "block:index ".
static QString blocksOf(const Vetor<ArquivoRec> &catalogo, int mes)
{
    const BlocosDoMes visiveis = blocosDoMes(catalogo, mes);
    QString found;
    for (int bloco = 1; bloco <= kNumBlocos; ++bloco) {
        if (visiveis[std::size_t(bloco)] >= 0)
            found += u"%1:%2 "_s.arg(bloco).arg(visiveis[std::size_t(bloco)]);
    }
    return found;
}

void TstGeometria::blocksOfAMonth()
{
    Vetor<ArquivoRec> catalogo;
    QCOMPARE(blocksOf(catalogo, 1), QString()); // never built
    const std::vector<std::pair<qint16, QString>> ano{{1, u"Matemática"_s}, {1, u"Português"_s}, {2, u"Ciências"_s},
        {1, u"MATEMÁTICA"_s}, {1, {}}, {1, u"Culinária"_s}};
    catalogo.dimension(int(ano.size()) - 1);
    for (std::size_t i = 0; i < ano.size(); ++i) {
        catalogo.edit(int(i)).Mes = ano[i].first;
        catalogo.edit(int(i)).Disciplina = ano[i].second;
    }
    QCOMPARE(blocksOf(catalogo, 1), u"9:3 10:1 "_s); // the later of one discipline, case ignored
    QCOMPARE(blocksOf(catalogo, 2), u"2:2 "_s);
    QCOMPARE(blocksOf(catalogo, 3), QString());
}

void TstGeometria::namesOfTheBlocks()
{
    QCOMPARE(ImgDisc(0), QString());
    QCOMPARE(ImgDisc(3), u"Desenvolvimento Sensório Motor"_s);
    QCOMPARE(ImgDisc(10), u"Português"_s);
    QCOMPARE(ImgDisc(11), QString());
}

QTEST_MAIN(TstGeometria)
#include "tst_geometria.moc"
