#pragma once

#include "visual/lugar.h"

#include <QFrame>
#include <QRgb>

class QPlainTextEdit;

namespace quorel {

/// The rounded tip of a window: the frame FrmTip with the text box TxtInf in it. Hidden at first.
class Dica final : public QFrame
{
    Q_OBJECT
public:
    /// @param frame  place of FrmTip in the window; @param box  of TxtInf in the frame; twips
    Dica(const Lugar &frame, const Lugar &box, QWidget *parent);

    const QString &texto() const { return mTexto; } ///< as it was set, CR LF included
    void setTexto(const QString &texto); ///< shown as plain text
    void setCor(QRgb cor);

    const Lugar &lugar() const { return mLugar; } ///< of the frame, twips
    void setLugar(const Lugar &lugar);
    const Lugar &lugarTexto() const { return mLugarTexto; } ///< of the text box, twips
    void setAlturaTexto(double altura); ///< twips; the frame gets 200 more

    void arredonda(quint8 raio); ///< diameter of the corners' ellipse, pixels; for the present size
    void mostra(); ///< visible and in front

signals:
    void tocada(); ///< the mouse moves over the frame or the text

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildTxtInf();

    Lugar mLugar;
    Lugar mLugarTexto;
    QString mTexto;
    QRgb mCor;
    QPlainTextEdit *mTxtInf = nullptr; ///< made with the first text: it costs as much as all else of a window's start
    quint8 mRaio = 0; ///< pixels
};

} // namespace quorel
