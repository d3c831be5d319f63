#pragma once

#include <QAbstractButton>
#include <QPixmap>

namespace quorel {

/// An option as a card to press: its number, its text, its figure, and whether it was right.
class Cartao final : public QAbstractButton
{
    Q_OBJECT
public:
    enum class Marca { Nenhuma, Certa, Errada };

    /// @param numero  1-based; what its number key shows
    Cartao(int numero, const QString &texto, const QPixmap &figura, QRgb cor, QWidget *parent);

    void setLugar(int lugar); ///< 1-based place that the pupil gave it; 0 for none
    void setMarca(Marca marca);

    QSize sizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    QRect textRect(int width, int height) const;
    QSize figureSize(int width) const;
    void paintBadge(QPainter &painter) const;
    void paintMark(QPainter &painter) const;

    int mNumero;
    int mLugar = 0;
    Marca mMarca = Marca::Nenhuma;
    QPixmap mFigura;
    QColor mCor;
};

} // namespace quorel
