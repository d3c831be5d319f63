#pragma once

#include "visual/lugar.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

namespace quorel {

/// A square button that shows a picture; its tool tip is also its name for screen readers.
/// @param linha  objectName and place; @param face  name of its picture, see face()
QPushButton *novoBotao(const LinhaLayout &linha, const QString &face, const QString &tip, QWidget *parent);

/// A title in Arial 14.25 pt, blue, as plain text. @param nome  for screen readers
QLabel *novoTitulo(const LinhaLayout &linha, const QString &texto, const QString &nome, QWidget *parent);

/// A check box whose caption runs over two lines when one is too short.
class CaixaMarca final : public QCheckBox
{
    Q_OBJECT
public:
    CaixaMarca(const LinhaLayout &linha, const QString &texto, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool hitButton(const QPoint &pos) const override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void drawCaption(QPainter &painter, const QRect &area) const;
};

} // namespace quorel
