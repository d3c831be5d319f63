#include "shell/opcao_mes.h"

#include "visual/aparencia.h"

#include <QKeyEvent>
#include <QPainter>
#include <QTextDocument>

#include <utility>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr double kPontos = 9;
static constexpr int kMarca = 12; // pixels: diameter of the mark
static constexpr int kEspaco = 5; // pixels between mark and caption

OpcaoMes::OpcaoMes(int indice, const Lugar &lugar, QWidget *parent) : QRadioButton(parent), mLugar(lugar)
{
    setObjectName(u"OptMeses(%1)"_s.arg(indice));
    setFont(fonte(Tipo::Verdana, kPontos, true));
    setCursor(Qt::PointingHandCursor);
    coloca(*this, lugar);
    hide();
}

void OpcaoMes::setTop(double top)
{
    mLugar.Top = top;
    coloca(*this, mLugar);
}

// Long captions lose their end; the tip then shows them whole, and never as rich text.
void OpcaoMes::setCaption(const QString &texto)
{
    if (texto == text())
        return; // each file of a month sets it; measuring it costs more than reading the file
    setText(texto);
    setShortcut(QKeySequence()); // an ampersand of the caption is no key
    setAccessibleName(texto);
    const bool cabe = fontMetrics().horizontalAdvance(texto) <= width() - kMarca - kEspaco;
    const QString tip = Qt::mightBeRichText(texto) ? u"<qt>%1</qt>"_s.arg(texto.toHtmlEscaped()) : texto;
    setToolTip(cabe ? QString() : tip);
}

void OpcaoMes::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor azul = QColor::fromRgb(kAzul);
    const QRectF marca(1, (height() - kMarca) / 2.0, kMarca, kMarca);
    painter.setPen(QPen(azul, 1.5));
    painter.setBrush(Qt::white);
    painter.drawEllipse(marca.adjusted(1, 1, -1, -1));
    if (isChecked()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(azul);
        painter.drawEllipse(marca.adjusted(3.5, 3.5, -3.5, -3.5));
    }
    const QRect texto = rect().adjusted(kMarca + kEspaco, 0, 0, 0);
    painter.setPen(azul);
    painter.drawText(texto, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine | Qt::TextDontClip,
        fontMetrics().elidedText(text(), Qt::ElideRight, texto.width()));
    if (hasFocus())
        pintaFoco(painter, texto.adjusted(-4, 0, 0, 0));
}

void OpcaoMes::focusInEvent(QFocusEvent *event)
{
    QRadioButton::focusInEvent(event);
    // What moves away from under the pointer before the button is up would lose its click.
    mFocoNaPressao = event->reason() == Qt::MouseFocusReason || isDown();
    // A window or a box that gives the focus back gives it to nobody anew.
    const bool anew = event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason;
    if (anew && !mFocoNaPressao)
        emit focada();
}

void OpcaoMes::mouseReleaseEvent(QMouseEvent *event)
{
    const bool focused = std::exchange(mFocoNaPressao, false);
    QRadioButton::mouseReleaseEvent(event);
    if (focused)
        emit focada();
}

void OpcaoMes::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QRadioButton::keyPressEvent(event);
}

bool OpcaoMes::hitButton(const QPoint &pos) const
{
    return rect().contains(pos);
}

} // namespace quorel
