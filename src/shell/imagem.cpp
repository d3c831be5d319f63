#include "shell/imagem.h"

#include "platform/caminho.h"
#include "platform/erro.h"
#include "visual/aparencia.h"

#include <QCursor>
#include <QFocusEvent>
#include <QImageReader>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace quorel {

static constexpr int kMargem = 2; // pixels around the picture, for the frame of focus
static constexpr double kRaio = 15; // pixels

Imagem::Imagem(const QString &nome, const Lugar &lugar, QWidget *parent) : QAbstractButton(parent), mLugar(lugar)
{
    setObjectName(nome);
    coloca(*this, lugar);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setCursor(Qt::PointingHandCursor);
    hide();
}

void Imagem::setPicture(const QPixmap &picture)
{
    mPicture = picture;
    update();
}

/// A picture as it shows in a button of a size, in pixels of the screen: not larger than that, its corners cut off.
static QPixmap rounded(const QImage &image, const QSizeF &button, double radius)
{
    const QSize room = button.toSize();
    const bool large = image.width() > room.width() || image.height() > room.height();
    QImage shown = large ? image.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation) : image;
    shown = shown.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    shown.setDevicePixelRatio(1);
    const double scale = std::max(shown.width() / button.width(), shown.height() / button.height());
    QImage shape(shown.size(), QImage::Format_ARGB32_Premultiplied);
    shape.fill(Qt::transparent);
    QPainter cutter(&shape);
    cutter.setRenderHint(QPainter::Antialiasing);
    cutter.setPen(Qt::NoPen);
    cutter.setBrush(Qt::black);
    cutter.drawRoundedRect(shape.rect(), radius * scale, radius * scale);
    cutter.end();
    QPainter painter(&shown);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, shape);
    painter.end();
    return QPixmap::fromImage(shown);
}

void Imagem::loadPicture(const QString &caminho)
{
    if (caminho.isEmpty()) {
        setPicture(QPixmap());
        return;
    }
    QImageReader reader(nativePath(caminho));
    reader.setDecideFormatFromContent(true);
    const QImage image = reader.read();
    if (image.isNull())
        throw ErroExecucao(kFalhaFigura);
    setPicture(rounded(image, size() * devicePixelRatioF(), kRaio * devicePixelRatioF()));
}

bool Imagem::sobOMouse() const
{
    return isVisible() && rect().contains(mapFromGlobal(QCursor::pos()));
}

// The picture fills the button, its proportions kept; one of the button's own size stays as it is.
static QRectF pictureRect(const QRect &button, const QSizeF &picture)
{
    const QRectF inner = QRectF(button).adjusted(kMargem, kMargem, -kMargem, -kMargem);
    QRectF rect(QPointF(), picture.scaled(inner.size(), Qt::KeepAspectRatio));
    rect.moveCenter(inner.center());
    return rect;
}

void Imagem::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (mPicture.isNull()) {
        painter.setBrush(QColor(0xff, 0xff, 0xff));
        painter.setPen(QPen(QColor(0xb7, 0xc6, 0xd6), kMargem));
        painter.drawRoundedRect(QRectF(rect()).adjusted(kMargem, kMargem, -kMargem, -kMargem), kRaio, kRaio);
    } else {
        const QRectF target = pictureRect(rect(), mPicture.deviceIndependentSize());
        painter.drawPixmap(target, mPicture, QRectF(mPicture.rect()));
    }
    if (!hasFocus() && !underMouse())
        return;
    const QRectF frame = QRectF(rect()).adjusted(1, 1, -1, -1);
    painter.setBrush(isDown() ? QBrush(QColor(0, 0, 0, 50)) : QBrush(Qt::NoBrush));
    painter.setPen(QPen(hasFocus() ? QColor::fromRgb(kCorFoco) : QColor(0x6f, 0x9f, 0xd8), kMargem));
    painter.drawRoundedRect(frame, kRaio, kRaio);
}

void Imagem::mouseMoveEvent(QMouseEvent *event)
{
    emit apontada();
    QAbstractButton::mouseMoveEvent(event);
}

qint16 figuraSobOMouse(const std::vector<Imagem *> &imagens)
{
    const auto found = std::ranges::find_if(imagens, &Imagem::sobOMouse);
    return found == imagens.end() ? qint16(-1) : qint16(found - imagens.begin() + 1);
}

void Imagem::mousePressEvent(QMouseEvent *event)
{
    mSegunda = event->type() == QEvent::MouseButtonDblClick;
    QAbstractButton::mousePressEvent(event);
}

void Imagem::mouseReleaseEvent(QMouseEvent *event)
{
    QAbstractButton::mouseReleaseEvent(event);
    mSegunda = false;
}

void Imagem::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

static bool byKeyboard(const QFocusEvent *event)
{
    return event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
}

void Imagem::focusInEvent(QFocusEvent *event)
{
    QAbstractButton::focusInEvent(event);
    if (byKeyboard(event))
        emit apontada();
}

void Imagem::focusOutEvent(QFocusEvent *event)
{
    QAbstractButton::focusOutEvent(event);
    if (byKeyboard(event))
        emit deixada();
}

void Imagem::enterEvent(QEnterEvent *event)
{
    QAbstractButton::enterEvent(event);
    update();
}

void Imagem::leaveEvent(QEvent *event)
{
    QAbstractButton::leaveEvent(event);
    update();
}

} // namespace quorel
