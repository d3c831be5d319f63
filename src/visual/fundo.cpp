#include "visual/fundo.h"

#include "visual/aparencia.h"

#include <QPainter>

#include <algorithm>

namespace quorel {

// As a pixmap a background would take four times the memory, touched for the first time while the program starts; a
// strip's is used again for the next one.
static void paintStrips(QPainter &painter, const QImage &imagem, const QRect &area)
{
    constexpr int kFaixa = 48; // pixels
    const QRect todo = area & imagem.rect();
    for (int y = todo.top(); y <= todo.bottom(); y += kFaixa) {
        const QRect faixa(todo.left(), y, todo.width(), std::min(kFaixa, todo.bottom() + 1 - y));
        painter.drawImage(faixa.topLeft(), imagem.copy(faixa).convertToFormat(QImage::Format_RGB32));
    }
}

void Fundo::paint(QPainter &painter, const QRect &area)
{
    if (mNome.isEmpty())
        return;
    if (painter.device()->devicePixelRatio() > 1) {
        if (mDensa.isNull())
            mDensa = figura(mNome);
        painter.drawPixmap(0, 0, mDensa);
        return;
    }
    if (mImagem.isNull())
        mImagem = imagem(mNome);
    paintStrips(painter, mImagem, area);
}

} // namespace quorel
