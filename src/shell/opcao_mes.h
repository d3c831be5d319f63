#pragma once

#include "visual/lugar.h"

#include <QRadioButton>

namespace quorel {

/// A month of the panel: an option with a one-line caption, elided when it is too long, with the whole text as its tip.
class OpcaoMes final : public QRadioButton
{
    Q_OBJECT
public:
    OpcaoMes(int indice, const Lugar &lugar, QWidget *parent); ///< hidden

    const Lugar &lugar() const { return mLugar; } ///< twips inside the frame
    void setTop(double top); ///< twips
    void setCaption(const QString &texto); ///< as plain text, ampersands included

signals:
    void focada(); ///< it has received the focus; where a press gave it, the button is up again and its click has run

protected:
    void paintEvent(QPaintEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    bool hitButton(const QPoint &pos) const override;

private:
    Lugar mLugar;
    bool mFocoNaPressao = false; ///< the focus came while the button was down
};

} // namespace quorel
