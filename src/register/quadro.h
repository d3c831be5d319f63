#pragma once

#include "visual/lugar.h"

#include <QGroupBox>
#include <QRadioButton>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace quorel {

/// A frame of the register's window: a light card with its caption at the top.
class Quadro : public QGroupBox
{
    Q_OBJECT
public:
    Quadro(const LinhaLayout &linha, const QString &titulo, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// The caption of a large button: an option button that can't be chosen.
class Legenda final : public QRadioButton
{
    Q_OBJECT
public:
    Legenda(const QString &nome, const Lugar &lugar, const QString &texto, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// A label in front of the control that it names for screen readers; without one it stands by itself.
QLabel *novoRotulo(const LinhaLayout &linha, const QString &texto, QWidget *dono, QWidget *parent);
/// @param nome  for screen readers
QLineEdit *novoCampo(const LinhaLayout &linha, const QString &nome, QWidget *parent);
/// Puts a text into a field; one too long for it shows its beginning.
void showText(QLineEdit &campo, const QString &texto);
/// A combo that BD can bind, empty.
QComboBox *novoCombo(const LinhaLayout &linha, const QString &nome, QWidget *parent);
QPushButton *novoBotaoDeTexto(const LinhaLayout &linha, const QString &texto, QWidget *parent);

} // namespace quorel
