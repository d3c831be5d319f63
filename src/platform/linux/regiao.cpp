#include "platform/janela.h"

#include <QBitmap>
#include <QPainter>

namespace quorel {

void setRoundRegion(QWidget *widget, int width, int height, int diameter)
{
    if (!widget || width <= 0 || height <= 0)
        return;
    QBitmap shape(width, height);
    shape.clear();
    QPainter painter(&shape);
    painter.setBrush(Qt::color1);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(0, 0, width, height, diameter / 2.0, diameter / 2.0);
    painter.end();
    widget->setMask(shape);
}

} // namespace quorel
