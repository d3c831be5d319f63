#include "reports/figura_grafico.h"

#include "visual/aparencia.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr QRgb kTinta = 0xff1f1f1f;
static constexpr QRgb kContorno = 0xff33393f;
static constexpr QRgb kGrade = 0xffd5d9dd;
static constexpr QRgb kParede = 0xfff4f6f8;
static constexpr QRgb kPiso = 0xffe3e7eb;
static constexpr int kClaro = 112; // per cent of the colour, on top of a bar
static constexpr int kEscuro = 125; // per cent that its side is darker
static constexpr int kMenorVazio = 5; // largest value of the axis of an empty chart
static constexpr double kMenorFonte = 6; // pixels
static constexpr double kMaiorFonte = 16;

qint16 FiguraGrafico::valor(std::size_t grupo, std::size_t serie) const
{
    return grupo < valores.size() && serie < valores[grupo].size() ? valores[grupo][serie] : qint16(0);
}

EixoGrafico axisScale(int maior, int passos)
{
    constexpr std::array kFatores{1, 2, 5};
    const int largest = maior > 0 ? maior : kMenorVazio;
    const int room = std::max(passos, 1);
    for (int power = 1;; power *= 10) {
        for (const int factor : kFatores) {
            const int step = factor * power;
            const int count = (largest + step - 1) / step;
            if (count <= room || step >= largest)
                return {step, count * step};
        }
    }
}

QString chartText(const FiguraGrafico &figura)
{
    QStringList groups;
    for (std::size_t g = 0; g < figura.grupos.size(); ++g) {
        QStringList bars;
        for (std::size_t s = 0; s < figura.series.size(); ++s)
            bars << figura.series[s].nome + u' ' + QString::number(figura.valor(g, s));
        groups << figura.grupos[g] + u": "_s + bars.join(u", "_s) + u'.';
    }
    return groups.join(u' ');
}

namespace {

/// One drawing of a chart: the parts share the room that is measured first.
class Desenho final
{
public:
    Desenho(QPainter &painter, const QSizeF &size, const FiguraGrafico &figura, AparenciaGrafico aparencia);
    void paint();

private:
    struct Item
    {
        std::size_t serie;
        QRectF place;
    };

    void measure();
    void placeLegend();
    void paintLegend();
    void paintWalls();
    void paintGroups();
    void paintBar(const QRectF &bar, std::size_t serie);
    void paintFace(const QRectF &face, const SerieGrafico &serie, std::size_t indice);
    void paintTracos(const QRectF &face, std::size_t indice);
    void paintNumber(const QRectF &bar, double room, int valor);
    double heightOf(int valor) const { return mPlot.height() * valor / mEixo.maximo; }
    QPointF back(const QPointF &point) const { return point + QPointF(mFundo, -mFundo * kInclinacao); }

    static constexpr double kInclinacao = 0.7; // rise of the depth, for each pixel to the right

    QPainter &mPainter;
    QSizeF mSize;
    const FiguraGrafico &mFigura;
    bool mProfunda;
    QFont mFonte;
    double mLinha = 0; // height of a line of text
    double mFundo = 0; // depth, pixels to the right; 0 in two dimensions
    EixoGrafico mEixo;
    QRectF mPlot; // front of the bars' room
    std::vector<Item> mLegenda;
};

Desenho::Desenho(QPainter &painter, const QSizeF &size, const FiguraGrafico &figura, AparenciaGrafico aparencia)
    : mPainter(painter), mSize(size), mFigura(figura), mProfunda(aparencia != kBidimensional)
{
    constexpr double kLinhasNaAltura = 24;
    constexpr double kLetrasNaLargura = 34;
    const double pixels = std::min(size.height() / kLinhasNaAltura, size.width() / kLetrasNaLargura);
    mFonte = fonte(Tipo::Sistema, 1);
    mFonte.setPixelSize(int(std::round(std::clamp(pixels, kMenorFonte, kMaiorFonte))));
    mLinha = QFontMetricsF(mFonte).height();
}

void Desenho::placeLegend()
{
    const QFontMetricsF metrics(mFonte);
    double x = mLinha;
    double y = 0;
    std::size_t first = 0;
    const auto centre = [&] { // the row that ends here
        const double shift = (mSize.width() - x) / 2;
        for (std::size_t i = first; i < mLegenda.size(); ++i)
            mLegenda[i].place.translate(shift, 0);
        first = mLegenda.size();
    };
    for (std::size_t s = 0; s < mFigura.series.size(); ++s) {
        const double width = metrics.horizontalAdvance(mFigura.series[s].nome) + 2.5 * mLinha;
        if (x + width > mSize.width() && s > first) {
            centre();
            x = mLinha;
            y += 1.4 * mLinha;
        }
        mLegenda.push_back({s, {x, y, width, mLinha}});
        x += width;
    }
    centre();
    const double shift = mSize.height() - y - 1.6 * mLinha;
    for (Item &item : mLegenda)
        item.place.translate(0, shift);
}

void Desenho::measure()
{
    placeLegend();
    int largest = 0;
    for (const auto &group : mFigura.valores)
        for (const qint16 value : group)
            largest = std::max<int>(largest, value);
    const double bottom = (mLegenda.empty() ? mSize.height() : mLegenda.front().place.top()) - 2.1 * mLinha;
    const double height = bottom - 1.8 * mLinha;
    mEixo = axisScale(largest, int(height / (1.8 * mLinha)));
    const double left = QFontMetricsF(mFonte).horizontalAdvance(QString::number(mEixo.maximo)) + 1.5 * mLinha;
    const double width = mSize.width() - left - mLinha;
    mFundo = mProfunda ? std::min(width, height) * 0.08 : 0;
    mPlot = QRectF(left, 1.8 * mLinha + mFundo * kInclinacao, width - mFundo, height - mFundo * kInclinacao);
}

void Desenho::paintWalls()
{
    const QPointF foot = mPlot.bottomLeft();
    const QPointF far = mPlot.bottomRight();
    if (mProfunda) {
        mPainter.setPen(Qt::NoPen);
        mPainter.setBrush(QColor::fromRgb(kParede));
        mPainter.drawRect(QRectF(back(mPlot.topLeft()), back(far)));
        mPainter.drawPolygon(QPolygonF{foot, back(foot), back(mPlot.topLeft()), mPlot.topLeft()});
        mPainter.setBrush(QColor::fromRgb(kPiso));
        mPainter.drawPolygon(QPolygonF{foot, back(foot), back(far), far});
    }
    for (int value = 0; value <= mEixo.maximo; value += mEixo.passo) {
        const double y = mPlot.bottom() - heightOf(value);
        const QPointF start(mPlot.left(), y);
        mPainter.setPen(QColor::fromRgb(kGrade));
        mPainter.drawLine(start, back(start));
        mPainter.drawLine(back(start), back({mPlot.right(), y}));
        mPainter.setPen(QColor::fromRgb(kTinta));
        mPainter.drawText(QRectF(0, y - mLinha, mPlot.left() - mLinha * 0.5, 2 * mLinha),
            Qt::AlignRight | Qt::AlignVCenter, QString::number(value));
    }
    mPainter.setPen(QColor::fromRgb(kContorno));
    mPainter.drawLine(mPlot.topLeft(), foot);
    mPainter.drawLine(foot, far);
}

void Desenho::paintTracos(const QRectF &face, std::size_t indice)
{
    constexpr double kPasso = 7; // pixels between two lines
    mPainter.save();
    mPainter.setClipRect(face, Qt::IntersectClip);
    mPainter.setPen(QPen(QColor::fromRgb(kContorno), 1));
    const double slope = face.height();
    const double lines = indice % 3 == 2 ? slope : slope + face.width(); // the stretch that they divide
    for (int i = 0; i * kPasso < lines; ++i) {
        const double x = face.left() - slope + i * kPasso;
        const double y = face.bottom() - (i + 1) * kPasso;
        if (indice % 3 == 1) // rising
            mPainter.drawLine(QPointF(x, face.bottom()), QPointF(x + slope, face.top()));
        else if (indice % 3 == 2) // level
            mPainter.drawLine(QPointF(face.left(), y), QPointF(face.right(), y));
        else // falling
            mPainter.drawLine(QPointF(x, face.top()), QPointF(x + slope, face.bottom()));
    }
    mPainter.restore();
}

void Desenho::paintFace(const QRectF &face, const SerieGrafico &serie, std::size_t indice)
{
    mPainter.setPen(Qt::NoPen);
    mPainter.setBrush(serie.cor);
    mPainter.drawRect(face);
    if (!serie.solida)
        paintTracos(face, indice);
    mPainter.setPen(QColor::fromRgb(kContorno));
    mPainter.setBrush(Qt::NoBrush);
    mPainter.drawRect(face);
}

void Desenho::paintBar(const QRectF &bar, std::size_t indice)
{
    const SerieGrafico &serie = mFigura.series[indice];
    paintFace(bar, serie, indice);
    if (!mProfunda)
        return;
    // The bar fills the middle half of the depth.
    const QPointF depth = (back({0, 0})) / 2;
    const auto slab = [&](const QPointF &from, const QPointF &to, const QColor &colour) {
        mPainter.setPen(QColor::fromRgb(kContorno));
        mPainter.setBrush(colour);
        mPainter.drawPolygon(QPolygonF{from, to, to + depth, from + depth});
    };
    slab(bar.bottomRight(), bar.topRight(), serie.cor.darker(kEscuro));
    slab(bar.topLeft(), bar.topRight(), serie.cor.lighter(kClaro));
}

void Desenho::paintNumber(const QRectF &bar, double room, int valor)
{
    const QString text = QString::number(valor);
    QFont font = mFonte;
    font.setBold(true);
    const double width = QFontMetricsF(font).horizontalAdvance(text);
    if (width > room)
        font.setPixelSize(std::max(int(kMenorFonte), int(mFonte.pixelSize() * room / width)));
    mPainter.setFont(font);
    mPainter.setPen(QColor::fromRgb(kTinta));
    const QPointF top = bar.topLeft() + back({0, 0}) / 2;
    mPainter.drawText(QRectF(top.x() - bar.width(), top.y() - 1.25 * mLinha, 3 * bar.width(), 1.2 * mLinha),
        Qt::AlignHCenter | Qt::AlignBottom | Qt::TextDontClip, text);
    mPainter.setFont(mFonte);
}

void Desenho::paintGroups()
{
    constexpr double kParteDasBarras = 0.76; // of a group's width
    constexpr double kParteDaBarra = 0.74; // of its own room
    constexpr double kMaiorParte = 0.42; // of the group's width, for a bar's room
    const double group = mPlot.width() / double(std::max<std::size_t>(mFigura.grupos.size(), 1));
    const double count = double(std::max<std::size_t>(mFigura.series.size(), 1));
    const double room = std::min(group * kParteDasBarras / count, group * kMaiorParte);
    for (std::size_t g = 0; g < mFigura.grupos.size(); ++g) {
        const double left = mPlot.left() + group * double(g);
        std::vector<QRectF> bars;
        for (std::size_t s = 0; s < mFigura.series.size(); ++s) {
            const double x = left + (group - room * count) / 2 + room * (double(s) + (1 - kParteDaBarra) / 2);
            const double high = heightOf(std::max<int>(mFigura.valor(g, s), 0));
            bars.emplace_back(x, mPlot.bottom() - high, room * kParteDaBarra, high);
            paintBar(bars.back(), s);
        }
        for (std::size_t s = 0; s < bars.size(); ++s) // over the bars' own depth
            paintNumber(bars[s], room, mFigura.valor(g, s));
        mPainter.setPen(QColor::fromRgb(kTinta));
        mPainter.drawText(QRectF(left, mPlot.bottom() + 0.3 * mLinha, group, 1.2 * mLinha),
            Qt::AlignHCenter | Qt::AlignTop | Qt::TextDontClip, mFigura.grupos[g]);
    }
}

void Desenho::paintLegend()
{
    for (const Item &item : mLegenda) {
        const QRectF swatch(item.place.left(), item.place.top() + mLinha * 0.1, mLinha * 1.2, mLinha * 0.8);
        paintFace(swatch, mFigura.series[item.serie], item.serie);
        mPainter.setPen(QColor::fromRgb(kTinta));
        mPainter.drawText(item.place.adjusted(1.6 * mLinha, 0, 0, 0),
            Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, mFigura.series[item.serie].nome);
    }
}

void Desenho::paint()
{
    mPainter.fillRect(QRectF({0, 0}, mSize), Qt::white);
    measure();
    mPainter.setFont(mFonte);
    mPainter.setRenderHint(QPainter::Antialiasing);
    if (mPlot.width() > 0 && mPlot.height() > 0) {
        paintWalls();
        paintGroups();
    }
    paintLegend();
}

} // namespace

void paintChart(QPainter &painter, const QSizeF &size, const FiguraGrafico &figura, AparenciaGrafico aparencia)
{
    if (size.isEmpty())
        return;
    painter.save();
    painter.setClipRect(QRectF({0, 0}, size), Qt::IntersectClip);
    Desenho(painter, size, figura, aparencia).paint();
    painter.restore();
}

QImage chartImage(const QSize &size, const FiguraGrafico &figura, AparenciaGrafico aparencia)
{
    constexpr int kAmpliacao = 3;
    constexpr double kPontosPorMetro = 96 / 0.0254; // of a screen at 100 %
    QImage image(size * kAmpliacao, QImage::Format_RGB32);
    if (image.isNull())
        return image;
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(kAmpliacao, kAmpliacao);
    paintChart(painter, size, figura, aparencia);
    painter.end();
    image.setDotsPerMeterX(qRound(kAmpliacao * kPontosPorMetro));
    image.setDotsPerMeterY(qRound(kAmpliacao * kPontosPorMetro));
    return image;
}

} // namespace quorel
