#pragma once

#include "visual/lugar.h"

#include <QAbstractButton>
#include <QPixmap>

#include <vector>

namespace quorel {

/// A picture that can be pointed at and pressed, with mouse and keyboard: an element of ImgBloco or ImgBotao.
class Imagem final : public QAbstractButton
{
    Q_OBJECT
public:
    Imagem(const QString &nome, const Lugar &lugar, QWidget *parent); ///< hidden, without a picture

    const Lugar &lugar() const { return mLugar; } ///< twips

    const QString &tag() const { return mTag; }
    void setTag(const QString &tag) { mTag = tag; }

    void setPicture(const QPixmap &picture); ///< a null one clears it

    bool sobOMouse() const; ///< and visible, whatever lies in front

    /// Whether the click that is being told came from the second press of a double click.
    bool segundaPressao() const { return mSegunda; }

    /// Takes the picture of a file, whatever its extension says, with round corners. @param caminho  with backslashes;
    /// empty clears
    /// @throws ErroExecucao 481 when there is no picture in it; the one shown stays
    void loadPicture(const QString &caminho);

signals:
    void apontada(); ///< the mouse moves over it, or the keyboard has led here
    void deixada(); ///< the keyboard has led away from it

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    Lugar mLugar;
    QString mTag;
    QPixmap mPicture;
    bool mSegunda = false; ///< the button that is down is so for the second time of a double click
};

/// Number of the picture under the mouse, 1-based; -1 when there is none. @param imagens  from 0: picture 1 first
qint16 figuraSobOMouse(const std::vector<Imagem *> &imagens);

} // namespace quorel
