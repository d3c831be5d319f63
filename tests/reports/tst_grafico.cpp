#include "reports/grafico.h"
#include "support/suporte.h"

#include <QAccessible>
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
    void screenReaderHearsTheFigures();
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

// Pixels of a colour in one half of the picture, the legend left out.
static int count(const QImage &image, const QColor &colour, bool right)
{
    int n = 0;
    for (int y = 0; y < image.height() * 8 / 10; ++y)
        for (int x = right ? image.width() / 2 : 0; x < (right ? image.width() : image.width() / 2); ++x)
            n += image.pixelColor(x, y) == colour;
    return n;
}

void TstGrafico::barsStandForTheirValues()
{
    FiguraGrafico figura = sample();
    for (SerieGrafico &serie : figura.series)
        serie.solida = true;
    figura.valores = {{40, 20, 10}, {10, 0, 40}};
    for (const auto aparencia : {kBidimensional, kTridimensional}) {
        const QImage image = drawn(figura, {460, 320}, aparencia);
        const double unit = count(image, figura.series[0].cor, false) / 40.0;
        QVERIFY(unit > 100);
        for (std::size_t serie = 0; serie < 3; ++serie)
            for (std::size_t grupo = 0; grupo < 2; ++grupo) {
                const double area = count(image, figura.series[serie].cor, grupo == 1) / unit;
                QVERIFY2(std::abs(area - figura.valor(grupo, serie)) < 3, qPrintable(QString::number(area)));
            }
    }
}

// In grey the three bars of one height still differ: by the lines on them.
void TstGrafico::seriesDifferWithoutColour()
{
    FiguraGrafico figura = sample();
    for (SerieGrafico &serie : figura.series)
        serie.cor = Qt::lightGray;
    std::vector<QByteArray> faces;
    for (std::size_t keep = 0; keep < 3; ++keep) {
        FiguraGrafico one = figura;
        one.grupos.resize(1);
        one.valores = {{30, 30, 30}};
        std::swap(one.series[0], one.series[keep]);
        for (SerieGrafico &serie : one.series)
            serie.nome = u"x"_s;
        const QImage image = drawn(one, {400, 300}, kBidimensional).convertToFormat(QImage::Format_Grayscale8);
        faces.emplace_back(reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes());
    }
    QVERIFY(faces[0] != faces[1]); // the bar without lines stands elsewhere
    QVERIFY(faces[1] != faces[2]);
    FiguraGrafico lined = figura;
    lined.grupos.resize(1);
    lined.valores = {{0, 30, 0}};
    const QImage second = drawn(lined, {400, 300}, kBidimensional);
    lined.valores = {{0, 0, 30}};
    const QImage third = drawn(lined, {400, 300}, kBidimensional);
    QVERIFY(count(second, Qt::lightGray, false) + count(second, Qt::lightGray, true)
        != count(third, Qt::lightGray, false) + count(third, Qt::lightGray, true));
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
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                QVERIFY(image.pixelColor(x, y) != Qt::magenta);
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

void TstGrafico::screenReaderHearsTheFigures()
{
    CrtGrafico chart(nullptr);
    chart.ChartData({{3, 0}, {1, 12}});
    chart.setColumnLabel(1, u"Ciências"_s);
    chart.setColumnLabel(2, u"Matemática"_s);
    chart.setRowLabel(1, u"Acertos"_s);
    chart.setRowLabel(2, u"Erros"_s);
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&chart);
    QCOMPARE(interface->role(), QAccessible::Chart);
    QVERIFY(!interface->text(QAccessible::Name).isEmpty());
    QCOMPARE(interface->text(QAccessible::Description),
        u"Acertos: Ciências 3, Matemática 0. Erros: Ciências 1, Matemática 12."_s);
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
