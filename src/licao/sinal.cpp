#include "licao/programa.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <numbers>

namespace quorel {

/// All signs are drawn in a square of 100 by 100, in white and the light yellow of the strokes inside.
static constexpr double kLado = 100;
static const QColor kAmarelo(0xFF, 0xE0, 0x8A);

static void star(QPainter &painter)
{
    constexpr int kPontas = 5;
    QPolygonF star;
    for (int n = 0; n < 2 * kPontas; ++n) {
        const double angle = (-90 + 36 * n) * std::numbers::pi / 180;
        const double radius = n % 2 == 0 ? 44 : 19;
        star << QPointF(50 + radius * std::cos(angle), 52 + radius * std::sin(angle));
    }
    painter.drawPolygon(star);
}

static void pencil(QPainter &painter)
{
    painter.translate(50, 50);
    painter.rotate(45);
    painter.drawRect(QRectF(-12, -44, 24, 62));
    painter.setBrush(kAmarelo);
    painter.drawPolygon(QPolygonF{{-12, 18}, {12, 18}, {0, 44}});
    painter.drawRect(QRectF(-12, -44, 24, 12));
}

static void openBook(QPainter &painter)
{
    QPainterPath left(QPointF(50, 26));
    left.cubicTo(38, 14, 20, 16, 8, 22);
    left.lineTo(8, 78);
    left.cubicTo(20, 72, 38, 72, 50, 84);
    left.closeSubpath();
    painter.drawPath(left);
    painter.setBrush(kAmarelo);
    painter.translate(100, 0);
    painter.scale(-1, 1);
    painter.drawPath(left);
}

static void shelf(QPainter &painter)
{
    painter.drawRect(QRectF(14, 20, 18, 62));
    painter.setBrush(kAmarelo);
    painter.drawRect(QRectF(34, 30, 16, 52));
    painter.setBrush(Qt::white);
    painter.translate(54, 30);
    painter.rotate(-14);
    painter.drawRect(QRectF(0, 0, 18, 54));
}

static void keys(QPainter &painter)
{
    painter.drawRoundedRect(QRectF(20, 8, 60, 84), 8, 8);
    painter.setBrush(kAmarelo);
    painter.drawRect(QRectF(29, 17, 42, 17));
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            painter.drawRect(QRectF(29 + 15 * column, 43 + 15 * row, 11, 10));
    }
}

void pintaSinal(QPainter &painter, Programa programa, const QRectF &area)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(area.topLeft());
    painter.scale(area.width() / kLado, area.height() / kLado);
    painter.setPen(QPen(QColor(0x1B, 0x24, 0x30), 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::white);
    switch (programa) {
    case Programa::Zeto:
        star(painter);
        break;
    case Programa::Desenho:
        pencil(painter);
        break;
    case Programa::Vrel:
        openBook(painter);
        break;
    case Programa::Livros:
        shelf(painter);
        break;
    case Programa::Calc:
        keys(painter);
        break;
    }
    painter.restore();
}

} // namespace quorel
