#include "licao/cartao.h"

#include "licao/aparencia.h"
#include "licao/typesize.h"
#include "visual/result_mark.h"

#include <QEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace quorel {

// Measures in pixels.
static constexpr int kMargem = 12;
static constexpr int kSelo = 32; // diameter of the number
static constexpr int kMarcaLado = 30;
static constexpr int kMaxFigura = 150;
static constexpr int kLetra = 20;
static constexpr int kLargura = 200; // wished for
static constexpr int kTextoFlags = Qt::AlignVCenter | Qt::TextWordWrap;

Cartao::Cartao(int numero, const QString &texto, const QPixmap &figura, QRgb cor, QWidget *parent)
    : QAbstractButton(parent), mNumero(numero), mFigura(figura), mCor(QColor::fromRgb(cor))
{
    setObjectName(u"Opcao%1"_s.arg(numero));
    setText(quebravel(texto));
    setAccessibleName(u"Opção %1: %2"_s.arg(numero).arg(texto.isEmpty() ? u"figura"_s : texto));
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setType(*this, kLetra, false);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void Cartao::setLugar(int lugar)
{
    mLugar = lugar;
    setAccessibleDescription(lugar > 0 ? u"%1º lugar"_s.arg(lugar) : QString());
    update();
}

void Cartao::setMarca(Marca marca)
{
    mMarca = marca;
    setAccessibleDescription(marca == Marca::Certa ? u"Certa"_s : marca == Marca::Errada ? u"Errada"_s : QString());
    update();
}

QSize Cartao::figureSize(int width) const
{
    if (mFigura.isNull())
        return {0, 0};
    const QSize most(std::min(kMaxFigura, width - 2 * (kMargem + kSelo)), kMaxFigura);
    return mFigura.size().scaled(most, Qt::KeepAspectRatio).boundedTo(mFigura.size() * 2);
}

/// Text stands beside the number, under a figure across the card.
QRect Cartao::textRect(int width, int height) const
{
    const int left = mFigura.isNull() ? 2 * kMargem + kSelo : kMargem;
    const int right = kMargem + (mFigura.isNull() ? kMarcaLado : 0);
    const int top = mFigura.isNull() ? kMargem : 2 * kMargem + figureSize(width).height();
    return {left, top, std::max(1, width - left - right), std::max(1, height - top - kMargem)};
}

int Cartao::heightForWidth(int width) const
{
    constexpr int kEndless = 10000;
    const QRect area = textRect(width, kEndless);
    const int textHeight = text().isEmpty() ? 0 : fontMetrics().boundingRect(area, kTextoFlags, text()).height();
    const int smallest = mFigura.isNull() ? kSelo : 0;
    return area.top() + std::max(textHeight, smallest) + kMargem;
}

QSize Cartao::sizeHint() const
{
    return {kLargura, heightForWidth(kLargura)};
}

bool Cartao::event(QEvent *event)
{
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave)
        update();
    return QAbstractButton::event(event);
}

void Cartao::paintBadge(QPainter &painter) const
{
    const int y = mFigura.isNull() ? (height() - kSelo) / 2 : kMargem;
    const QRect badge(kMargem, y, kSelo, kSelo);
    const bool filled = isChecked() || mLugar > 0;
    painter.setPen(QPen(mCor, 2));
    painter.setBrush(filled ? mCor : QColor(Qt::white));
    painter.drawEllipse(badge);
    painter.setPen(filled ? QColor(Qt::white) : mCor);
    QFont bold = font();
    bold.setBold(true);
    bold.setPixelSize(kLetraBotao);
    painter.setFont(bold);
    painter.drawText(badge, Qt::AlignCenter, mLugar > 0 ? u"%1º"_s.arg(mLugar) : QString::number(mNumero));
}

void Cartao::paintMark(QPainter &painter) const
{
    if (mMarca == Marca::Nenhuma)
        return;
    const int y = mFigura.isNull() ? (height() - kMarcaLado) / 2 : kMargem;
    const int x = width() - kMargem / 2 - kMarcaLado;
    paintResultMark(painter, mMarca == Marca::Certa, QRectF(x, y, kMarcaLado, kMarcaLado));
}

void Cartao::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const bool chosen = isChecked();
    QColor ground = QColor::fromRgb(cores::kPapel);
    if (chosen)
        ground = QColor::fromRgbF(mCor.redF() * .12F + .88F, mCor.greenF() * .12F + .88F, mCor.blueF() * .12F + .88F);
    painter.setBrush(ground);
    const QColor border = chosen ? mCor : QColor::fromRgb(cores::kBorda);
    painter.setPen(QPen(border, chosen ? 3 : 2));
    painter.drawRoundedRect(QRectF(rect()).adjusted(4, 4, -4, -4), 10, 10);
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor::fromRgb(cores::kFoco), 2, Qt::DashLine));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 12, 12);
    }
    if (!mFigura.isNull()) {
        const QSize size = figureSize(width());
        painter.drawPixmap(QRect(QPoint((width() - size.width()) / 2, kMargem), size), mFigura);
    }
    painter.setPen(QColor::fromRgb(cores::kTexto));
    const int align = mFigura.isNull() ? Qt::AlignLeft : Qt::AlignHCenter;
    painter.drawText(textRect(width(), height()), kTextoFlags | align, text());
    paintBadge(painter);
    paintMark(painter);
}

} // namespace quorel
