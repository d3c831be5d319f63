#include "visual/janela_base.h"

#include "platform/twips.h"
#include "visual/aparencia.h"
#include "visual/janela_ativa.h"

#include <QCloseEvent>
#include <QPainter>
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
    setWindowIcon(iconeDoPrograma());
    setMouseTracking(true);
    setCliente(cliente);
}

void JanelaBase::carrega()
{
    if (mLoaded)
        return;
    mLoaded = true; // a handler that asks for this window again finds it loading
    load();
}

void JanelaBase::mostra()
{
    carrega();
    mAtiva.pede(*this);
    show();
    raise();
    activateWindow();
    activate();
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
    const QRect frame = frameGeometry();
    return {double(frame.x()) * kTwipsPerPixel, double(frame.y()) * kTwipsPerPixel,
        mCliente.Width + double(frame.width() - width()) * kTwipsPerPixel,
        mCliente.Height + double(frame.height() - height()) * kTwipsPerPixel};
}

double JanelaBase::alturaDaLinha() const
{
    return double(fontMetrics().height()) * kTwipsPerPixel;
}

// Qt's own move() of a shown window takes the frame's place for the client's while the frame is not known.
void JanelaBase::vaiPara(double left, double top)
{
    const QPoint pos(pixels(left), pixels(top));
    const bool framed = frameGeometry() != geometry();
    if (windowHandle() && isVisible() && !framed)
        windowHandle()->setFramePosition(pos);
    else
        move(pos);
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
    // The frame is known only once the window is up, and nothing tells of it.
    const QSize frame = isVisible() ? frameGeometry().size() - size() : mFrame;
    if (frame != mFrame) {
        mFrame = frame;
        frameKnown();
    }
    if (event->type() == QEvent::WindowActivate && mAtiva.muda(*this))
        activate();
    return done;
}

void JanelaBase::closeEvent(QCloseEvent *event)
{
    event->ignore(); // what becomes of the window is the Unload handler's affair
    descarrega();
}

void JanelaBase::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawPixmap(0, 0, mFundo);
}

} // namespace quorel
