#include "reports/grafico.h"

#include "folha.h"
#include "support/suporte.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <QSignalSpy>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstGrafico : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void axisStepsAreRound_data();
    void axisStepsAreRound();
    void barsStandForTheirValues();
    void seriesDifferWithoutColour();
    void everySizeIsDrawn_data();
    void everySizeIsDrawn();
    void userTurnsItOver();
    void clipboardTakesASharpPicture();
    void aShorterTableDropsOldSeries();
};

static FiguraGrafico sample()
{
    return {{u"Acertos"_s, u"Erros"_s},
        {{u"Ciências"_s, QColor(150, 225, 255), true}, {u"Matemática"_s, QColor(225, 255, 15), false},
            {u"Português"_s, QColor(255, 105, 100), false}},
        {{40, 20, 10}, {5, 0, 32767}}};
}

void TstGrafico::axisStepsAreRound_data()
{
    QTest::addColumn<int>("maior");
    QTest::addColumn<int>("passos");
    QTest::addColumn<EixoGrafico>("expected");
    QTest::newRow("nothing to show has an axis too") << 0 << 8 << EixoGrafico{1, 5};
    QTest::newRow("one") << 1 << 8 << EixoGrafico{1, 1};
    QTest::newRow("as many as there is room for") << 8 << 8 << EixoGrafico{1, 8};
    QTest::newRow("one more doubles the step") << 9 << 8 << EixoGrafico{2, 10};
    QTest::newRow("then five") << 17 << 8 << EixoGrafico{5, 20};
    QTest::newRow("then ten") << 41 << 8 << EixoGrafico{10, 50};
    QTest::newRow("largest mark") << 32767 << 8 << EixoGrafico{5000, 35000};
    QTest::newRow("largest mark, room for one") << 32767 << 1 << EixoGrafico{50000, 50000};
    QTest::newRow("no room at all") << 3 << -4 << EixoGrafico{5, 5};
}

void TstGrafico::axisStepsAreRound()
{
    QFETCH(int, maior);
    QFETCH(int, passos);
    QFETCH(EixoGrafico, expected);
    const EixoGrafico axis = axisScale(maior, passos);
    QCOMPARE(axis.passo, expected.passo);
    QCOMPARE(axis.maximo, expected.maximo);
}

static QImage drawn(const FiguraGrafico &figura, const QSize &size, AparenciaGrafico aparencia, double ratio = 1)
{
    QImage image(size * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    paintChart(painter, size, figura, aparencia);
    return image;
}

// Pixels of a colour in one of the two groups, the legend left out.
static int count(const QImage &image, const QColor &colour, std::size_t grupo)
{
    const int half = image.width() / 2;
    return pixelsOf(image.copy(grupo == 0 ? 0 : half, 0, half, image.height() * 8 / 10), colour);
}

void TstGrafico::barsStandForTheirValues()
{
    FiguraGrafico figura = sample();
    for (SerieGrafico &serie : figura.series)
        serie.solida = true;
    figura.valores = {{40, 20, 10}, {10, 0, 40}};
    for (const auto aparencia : {kBidimensional, kTridimensional}) {
        const QImage image = drawn(figura, {460, 320}, aparencia);
        const double unit = count(image, figura.series[0].cor, 0) / 40.0;
        QVERIFY(unit > 100);
        for (std::size_t serie = 0; serie < 3; ++serie) {
            for (const std::size_t grupo : {0U, 1U}) {
                const double area = count(image, figura.series[serie].cor, grupo) / unit;
                QVERIFY2(std::abs(area - figura.valor(grupo, serie)) < 3, qPrintable(QString::number(area)));
            }
        }
    }
}

// In grey three bars of one height still differ: by the lines on them.
void TstGrafico::seriesDifferWithoutColour()
{
    FiguraGrafico figura = sample();
    figura.grupos.resize(1);
    for (SerieGrafico &serie : figura.series)
        serie.cor = Qt::lightGray;
    QList<int> areas; // without lines
    for (std::size_t serie = 0; serie < 3; ++serie) {
        figura.valores.assign(1, std::vector<qint16>(3));
        figura.valores[0][serie] = 30;
        const QImage image = drawn(figura, {400, 300}, kBidimensional);
        areas << count(image, Qt::lightGray, 0) + count(image, Qt::lightGray, 1);
    }
    QVERIFY(areas[0] > areas[1] && areas[0] > areas[2] && areas[1] != areas[2]);
}

void TstGrafico::everySizeIsDrawn_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("ratio");
    QTest::newRow("a pixel") << QSize(1, 1) << 1.0;
    QTest::newRow("a stamp") << QSize(40, 30) << 1.0;
    QTest::newRow("a strip") << QSize(600, 30) << 2.0;
    QTest::newRow("a column") << QSize(30, 600) << 2.0;
    QTest::newRow("the window's") << QSize(456, 316) << 1.0;
    QTest::newRow("large and dense") << QSize(1600, 1000) << 2.0;
}

void TstGrafico::everySizeIsDrawn()
{
    QFETCH(QSize, size);
    QFETCH(double, ratio);
    for (const auto aparencia : {kBidimensional, kTridimensional}) {
        const QImage image = drawn(sample(), size, aparencia, ratio);
        QCOMPARE(pixelsOf(image, Qt::magenta), 0); // what nothing was drawn over
        drawn({}, size, aparencia, ratio);
        drawn({{u"Só rótulos"_s}, {{u"Série"_s}}, {}}, size, aparencia, ratio);
    }
}

void TstGrafico::userTurnsItOver()
{
    CrtGrafico chart(nullptr);
    chart.resize(400, 300);
    chart.show();
    QSignalSpy asked(&chart, &CrtGrafico::virado);
    QTest::mouseDClick(&chart, Qt::LeftButton);
    QCOMPARE(asked.count(), 1);
    QTest::mouseDClick(&chart, Qt::RightButton);
    QTest::mouseClick(&chart, Qt::LeftButton);
    QTest::keyClick(&chart, Qt::Key_A);
    QCOMPARE(asked.count(), 1);
    QTest::keyClick(&chart, Qt::Key_Space);
    QTest::keyClick(&chart, Qt::Key_Return);
    QCOMPARE(asked.count(), 3);
    const QImage flat = chart.grab().toImage();
    chart.setChartType(kTridimensional);
    QVERIFY(chart.grab().toImage() != flat);
}

void TstGrafico::clipboardTakesASharpPicture()
{
    CrtGrafico chart(nullptr);
    chart.resize(400, 300);
    chart.ChartData({{7}, {2}});
    chart.EditCopy();
    const QImage picture = QGuiApplication::clipboard()->image();
    QCOMPARE(picture.size(), QSize(1200, 900));
    QCOMPARE(qRound(picture.dotsPerMeterX() * 0.0254), 288);
    QVERIFY(chartImage({0, 0}, chart.figura(), kTridimensional).isNull());
    QVERIFY(picture.pixelColor(0, 0) == Qt::white);
}

void TstGrafico::aShorterTableDropsOldSeries()
{
    CrtGrafico chart(nullptr);
    chart.ChartData({{1, 2, 3}, {4, 5, 6}});
    chart.setFillColor(3, Qt::red);
    chart.setColumnLabel(3, u"Português"_s);
    chart.ChartData({{9}, {8}});
    chart.setColumnLabel(2, u"x"_s); // no such series any more
    chart.setRowLabel(3, u"x"_s);
    QCOMPARE(chart.figura().series.size(), std::size_t(1));
    QCOMPARE(chart.figura().valor(1, 0), qint16(8));
    QCOMPARE(chart.figura().valor(1, 2), qint16(0));
    QVERIFY(!chart.accessibleDescription().contains(u'x'));
}

QTEST_MAIN(TstGrafico)
#include "tst_grafico.moc"
