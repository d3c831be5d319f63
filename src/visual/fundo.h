#pragma once

#include <QImage>
#include <QPixmap>
#include <QString>

class QPainter;

namespace quorel {

/// A background picture of the set, read when it is first painted.
class Fundo final
{
public:
    explicit Fundo(const QString &nome = {}) : mNome(nome) { } ///< see figura(); without a name nothing is painted

    /// Paints what lies in an area, in pixels of the window, whose corner is the picture's.
    void paint(QPainter &painter, const QRect &area);

private:
    QString mNome;
    QImage mImagem; ///< with its palette, a byte a pixel; null until it is painted, and on dense screens
    QPixmap mDensa; ///< on dense screens
};

} // namespace quorel
