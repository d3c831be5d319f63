#include "reports/mascara.h"

#include <QMouseEvent>

namespace quorel {

using namespace Qt::StringLiterals;

MaskEdBox::MaskEdBox(QWidget *parent) : QLineEdit(parent)
{
    setInputMask(u"00/00/00;_"_s);
}

// A click into an empty box is meant for its beginning, wherever it fell.
void MaskEdBox::mouseReleaseEvent(QMouseEvent *event)
{
    QLineEdit::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && QLineEdit::text().remove(u'/').isEmpty())
        setCursorPosition(0);
}

} // namespace quorel
