#include "shell/progress_strip.h"

#include "visual/aparencia.h"
#include "visual/result_mark.h"

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QScreen>

namespace quorel {

using namespace Qt::StringLiterals;

// Measures in pixels.
static constexpr int kHeight = 44, kLowHeight = 24;
static constexpr int kLowScreen = 660; ///< below it a lesson needs the room
static constexpr int kMargin = 10;
static constexpr int kGap = 6;
static constexpr double kPoints = 12;
static constexpr int kMostDots = 24; ///< more would leave the screen; the text tells of all

/// The height on a screen; what a lesson leaves free of it where it can.
static int stripHeight(int screenHeight)
{
    return screenHeight < kLowScreen ? kLowHeight : kHeight;
}

ProgressStrip::ProgressStrip()
{
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setObjectName(u"FrmAndamento"_s);
    setWindowTitle(u"Andamento do roteiro"_s);
    setPalette(paletaPropria());
    setFont(fonte(Tipo::Verdana, kPoints, true));
}

void ProgressStrip::tell(const RoteiroProgress &progress)
{
    qApp->removeEventFilter(this);
    mProgress = progress;
    setAccessibleName(progressText(mProgress));
    const QRect free = screen()->availableGeometry();
    const QSize size(std::min(sizeHint().width(), free.width()), stripHeight(free.height()));
    setGeometry(QRect(QPoint(free.left(), free.bottom() + 1 - size.height()), size));
    show();
    raise();
    repaint(); // while a program is waited for no events are served
    QAccessibleEvent said(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

void ProgressStrip::hideAtNextPress()
{
    qApp->installEventFilter(this);
}

bool ProgressStrip::eventFilter(QObject *watched, QEvent *event)
{
    const bool press = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress
        || event->type() == QEvent::TouchBegin;
    if (press) {
        qApp->removeEventFilter(this);
        hide();
    }
    return QWidget::eventFilter(watched, event);
}

int ProgressStrip::textWidth() const
{
    return fontMetrics().horizontalAdvance(progressText(mProgress));
}

QSize ProgressStrip::sizeHint() const
{
    const int height = stripHeight(screen()->availableGeometry().height());
    const int dots = std::min(int(mProgress.aulas.size()), kMostDots);
    return {2 * kMargin + textWidth() + dots * (height - 2 * kGap + kGap) + kMargin, height};
}

void ProgressStrip::paintDot(QPainter &painter, const QRectF &area, int aula) const
{
    const AulaState state = mProgress.aulas[std::size_t(aula - 1)];
    const bool current = !mProgress.ended && aula == mProgress.current;
    painter.setBrush(state == AulaState::Answered ? palette().windowText() : QBrush(Qt::white));
    painter.setPen(QPen(palette().windowText().color(), 2));
    if (state == AulaState::Right || state == AulaState::Wrong)
        paintResultMark(painter, state == AulaState::Right, area);
    else
        painter.drawEllipse(area.adjusted(2, 2, -2, -2));
    if (current) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor::fromRgb(kAzul), 3));
        painter.drawRoundedRect(area.adjusted(-2, -2, 2, 2), kGap, kGap);
    }
}

void ProgressStrip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().windowText().color());
    painter.setBrush(QColor::fromRgb(kLaranjaPalido));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.drawText(rect().adjusted(kMargin, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft, progressText(mProgress));
    const double side = height() - 2 * kGap;
    double x = 2 * kMargin + textWidth();
    for (int aula = 1; aula <= std::min(int(mProgress.aulas.size()), kMostDots); ++aula, x += side + kGap)
        paintDot(painter, QRectF(x, kGap, side, side), aula);
}

} // namespace quorel
