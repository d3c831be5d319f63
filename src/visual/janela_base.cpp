#include "visual/janela_base.h"

#include "platform/twips.h"
#include "visual/aparencia.h"
#include "visual/janela_ativa.h"

#include <QCloseEvent>
#include <QPainter>
#include <QScopeGuard>
#include <QWindow>

namespace quorel {

static constexpr double kPontosDoSistema = 8.25;

JanelaBase::JanelaBase(JanelaAtiva &ativa, const QString &nome, const Lugar &cliente) : mAtiva(ativa)
{
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint
        | Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
    setObjectName(nome);
    setPalette(paletaPropria());
    setFont(fonte(Tipo::Sistema, kPontosDoSistema));
    setMouseTracking(true);
    setAttribute(Qt::WA_AlwaysShowToolTips); // two windows stand side by side, and only one of them is active
    setCliente(cliente);
}

void JanelaBase::carrega()
{
    if (mLoaded)
        return;
    mLoaded = true;
    mLoading = true; // a handler that asks for this window again finds it loading
    const auto done = qScopeGuard([this] { mLoading = false; });
    load();
}

void JanelaBase::mostra()
{
    if (mLoading)
        return;
    carrega();
    mAtiva.pede(*this);
    restaura();
    show();
    raise();
    activateWindow();
    activate();
}

void JanelaBase::restaura()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
}

void JanelaBase::setVisivel(bool visivel)
{
    if (!visivel)
        hide();
    else if (!isVisible())
        mostra();
}

void JanelaBase::descarrega()
{
    unload();
}

Lugar JanelaBase::lugarDaJanela() const
{
    const QPoint pos = mMoved ? corner() : mAsked;
    return {double(pos.x()) * kTwipsPerPixel, double(pos.y()) * kTwipsPerPixel,
        mCliente.Width + double(mFrame.left() + mFrame.right()) * kTwipsPerPixel,
        mCliente.Height + double(mFrame.top() + mFrame.bottom()) * kTwipsPerPixel};
}

QPoint JanelaBase::corner() const
{
    return geometry().topLeft() - QPoint(mFrame.left(), mFrame.top());
}

double JanelaBase::alturaDaLinha() const
{
    return double(fontMetrics().height()) * kTwipsPerPixel;
}

// Qt's own move() of a window that was made takes the frame's place for the client's while the frame is not known.
void JanelaBase::vaiPara(double left, double top)
{
    mAsked = {pixels(left), pixels(top)};
    mMoved = false;
    if (windowHandle() && isVisible())
        windowHandle()->setFramePosition(mAsked);
    else
        move(mAsked);
}

void JanelaBase::setCliente(const Lugar &cliente)
{
    mCliente = cliente;
    setFixedSize(pixels(cliente.Width), pixels(cliente.Height));
}

bool JanelaBase::isBare(const QPoint &pos) const
{
    return rect().contains(pos) && !childAt(pos);
}

bool JanelaBase::event(QEvent *event)
{
    const bool done = QWidget::event(event);
    if (isVisible() && windowHandle())
        settle(event->type() == QEvent::Move);
    if (event->type() == QEvent::WindowActivate && mAtiva.muda(*this))
        activate();
    return done;
}

/// The frame is known only once the window is up, on a busy desktop long after, and no event tells of it. Nor does it
/// come in step with the window's place: a client area that still counts as standing in the corner, taken with a frame
/// that is there already, would be a window above the screen.
void JanelaBase::settle(bool moved)
{
    mMoved = mMoved || moved;
    const QMargins frame = windowHandle()->frameMargins();
    if (mSettled || (frame == mFrame && !moved))
        return;
    mFrame = frame;
    mSettled = !frame.isNull() && corner() == mAsked;
    placeTold();
}

void JanelaBase::closeEvent(QCloseEvent *event)
{
    event->ignore(); // what becomes of the window is the Unload handler's affair
    descarrega();
}

void JanelaBase::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    mFundo.paint(painter, event->rect());
}

} // namespace quorel
