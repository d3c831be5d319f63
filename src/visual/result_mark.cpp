#include "visual/result_mark.h"

#include <QPainter>

namespace quorel {

static constexpr QRgb kRight = 0xff14532d, kWrong = 0xff7c2d12; // white on them reads well

void paintResultMark(QPainter &painter, bool right, const QRectF &area)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgb(right ? kRight : kWrong));
    const double side = area.width();
    if (right)
        painter.drawEllipse(area);
    else
        painter.drawRoundedRect(area, side / 5, side / 5);
    painter.translate(area.topLeft());
    painter.setPen(QPen(Qt::white, side / 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (right) {
        painter.drawPolyline(QPolygonF{{side * .27, side * .53}, {side * .44, side * .70}, {side * .74, side * .34}});
    } else {
        painter.drawLine(QPointF(side * .3, side * .3), QPointF(side * .7, side * .7));
        painter.drawLine(QPointF(side * .7, side * .3), QPointF(side * .3, side * .7));
    }
    painter.restore();
}

} // namespace quorel
