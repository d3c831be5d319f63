#include "licao/tela.h"

#include "licao/aparencia.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <vector>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr size_t kMaxPassos = 12; // each keeps a whole sheet
static constexpr int kBorracha = 6; // times the pencil's width
static constexpr int kPassoTecla = 8; // pixels
static constexpr int kMinLado = 240; // pixels

Tela::Tela(QWidget *parent) : QWidget(parent), mImagem(kMinLado, kMinLado, QImage::Format_RGB32)
{
    setObjectName(u"Tela"_s);
    setAccessibleName(u"Folha de desenho"_s);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
    setMinimumSize(kMinLado, kMinLado);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    mImagem.fill(Qt::white);
}

void Tela::setFerramenta(Ferramenta ferramenta)
{
    mFerramenta = ferramenta;
}

void Tela::setCor(const QColor &cor)
{
    mCor = cor;
}

void Tela::setEspessura(int pixels)
{
    mEspessura = pixels;
}

void Tela::remember()
{
    mPassos.push_back(mImagem);
    if (mPassos.size() > kMaxPassos)
        mPassos.pop_front();
}

void Tela::desfaz()
{
    if (mPassos.empty())
        return;
    const QImage before = mPassos.back();
    mPassos.pop_back();
    mImagem.fill(Qt::white); // the sheet may have grown since
    QPainter(&mImagem).drawImage(0, 0, before);
    update();
    emit mudou();
}

void Tela::limpa()
{
    remember();
    mImagem.fill(Qt::white);
    update();
    emit mudou();
}

void Tela::begin(QPoint at)
{
    remember();
    mUltimo = at;
    if (mFerramenta == Ferramenta::Balde)
        preencheArea(mImagem, at, mCor.rgb());
    else
        strokeTo(at);
    update();
    emit mudou();
}

void Tela::strokeTo(QPoint at)
{
    const bool eraser = mFerramenta == Ferramenta::Borracha;
    const int width = eraser ? mEspessura * kBorracha : mEspessura;
    QPainter painter(&mImagem);
    painter.setRenderHint(QPainter::Antialiasing, !eraser);
    painter.setPen(QPen(eraser ? QColor(Qt::white) : mCor, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (mUltimo == at)
        painter.drawPoint(at);
    else
        painter.drawLine(mUltimo, at);
    mUltimo = at;
    update();
}

void Tela::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        begin(event->position().toPoint());
}

void Tela::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons().testFlag(Qt::LeftButton) && mFerramenta != Ferramenta::Balde)
        strokeTo(event->position().toPoint());
}

void Tela::moveCursor(QPoint step)
{
    const QPoint to = mCursor + step;
    mCursor = {qBound(0, to.x(), width() - 1), qBound(0, to.y(), height() - 1)};
    if (mBaixado && mFerramenta != Ferramenta::Balde)
        strokeTo(mCursor);
    update();
}

void Tela::keyPressEvent(QKeyEvent *event)
{
    const int step = event->modifiers().testFlag(Qt::ShiftModifier) ? 1 : kPassoTecla;
    switch (event->key()) {
    case Qt::Key_Left:
        moveCursor({-step, 0});
        break;
    case Qt::Key_Right:
        moveCursor({step, 0});
        break;
    case Qt::Key_Up:
        moveCursor({0, -step});
        break;
    case Qt::Key_Down:
        moveCursor({0, step});
        break;
    case Qt::Key_Space:
        mBaixado = !mBaixado && mFerramenta != Ferramenta::Balde;
        if (mBaixado || mFerramenta == Ferramenta::Balde)
            begin(mCursor);
        update();
        break;
    default:
        QWidget::keyPressEvent(event);
        break;
    }
}

void Tela::focusOutEvent(QFocusEvent *event)
{
    mBaixado = false;
    QWidget::focusOutEvent(event);
}

void Tela::resizeEvent(QResizeEvent *event)
{
    const QSize size = event->size().expandedTo(mImagem.size());
    if (size != mImagem.size()) {
        QImage larger(size, QImage::Format_RGB32);
        larger.fill(Qt::white);
        QPainter(&larger).drawImage(0, 0, mImagem);
        mImagem = std::move(larger);
    }
    QWidget::resizeEvent(event);
}

void Tela::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawImage(0, 0, mImagem);
    painter.setPen(QPen(QColor::fromRgb(hasFocus() ? cores::kFoco : cores::kBorda), hasFocus() ? 3 : 1));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (!hasFocus())
        return;
    painter.setPen(QPen(QColor::fromRgb(mBaixado ? cores::kErrado : cores::kTextoFraco), 2));
    constexpr int kBraco = 7; // pixels of the cursor's arms
    painter.drawLine(mCursor - QPoint(kBraco, 0), mCursor + QPoint(kBraco, 0));
    painter.drawLine(mCursor - QPoint(0, kBraco), mCursor + QPoint(0, kBraco));
}

void preencheArea(QImage &imagem, QPoint ponto, QRgb cor)
{
    if (!imagem.valid(ponto))
        return;
    const QRgb old = imagem.pixel(ponto);
    if (old == cor)
        return;
    std::vector<QPoint> open{ponto};
    while (!open.empty()) {
        const QPoint seed = open.back();
        open.pop_back();
        auto *line = reinterpret_cast<QRgb *>(imagem.scanLine(seed.y()));
        if (line[seed.x()] != old)
            continue;
        int left = seed.x();
        int right = seed.x();
        while (left > 0 && line[left - 1] == old)
            --left;
        while (right + 1 < imagem.width() && line[right + 1] == old)
            ++right;
        std::fill(line + left, line + right + 1, cor);
        for (const int y : {seed.y() - 1, seed.y() + 1}) {
            if (y < 0 || y >= imagem.height())
                continue;
            const auto *next = reinterpret_cast<const QRgb *>(imagem.constScanLine(y));
            for (int x = left; x <= right; ++x) {
                if (next[x] == old && (x == left || next[x - 1] != old))
                    open.emplace_back(x, y);
            }
        }
    }
}

} // namespace quorel
