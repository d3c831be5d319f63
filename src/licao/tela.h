#pragma once

#include <QImage>
#include <QWidget>

#include <deque>

namespace quorel {

enum class Ferramenta { Lapis, Borracha, Balde };

/// A sheet of white paper to draw on with the mouse, or with the keyboard: arrows move the pencil, the space bar puts
/// it down and lifts it. It grows with the window and never loses what is drawn.
class Tela final : public QWidget
{
    Q_OBJECT
public:
    explicit Tela(QWidget *parent);

    void setFerramenta(Ferramenta ferramenta);
    void setCor(const QColor &cor);
    void setEspessura(int pixels);

    const QImage &imagem() const { return mImagem; } ///< in pixels of the sheet
    bool podeDesfazer() const { return !mPassos.empty(); }
    void desfaz(); ///< takes the last stroke back, up to 12 of them
    void limpa(); ///< an empty sheet; can be taken back

signals:
    void mudou();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void begin(QPoint at);
    void strokeTo(QPoint at);
    void remember();
    void moveCursor(QPoint step);

    QImage mImagem;
    std::deque<QImage> mPassos;
    Ferramenta mFerramenta = Ferramenta::Lapis;
    QColor mCor = Qt::black;
    int mEspessura = 4;
    QPoint mUltimo;
    QPoint mCursor{40, 40}; ///< of the keyboard
    bool mBaixado = false; ///< the keyboard's pencil is down
};

/// Fills the area of one colour around a point; nothing when the point lies outside or has that colour already.
void preencheArea(QImage &imagem, QPoint ponto, QRgb cor);

} // namespace quorel
