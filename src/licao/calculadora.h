#pragma once

#include "licao/conta.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace quorel {

/// A pocket calculator with keys of its own; with the focus it takes the keyboard's too.
class Calculadora final : public QWidget
{
    Q_OBJECT
public:
    explicit Calculadora(QWidget *parent);

    void setUsavel(bool usavel); ///< whether the result can be put into an answer

signals:
    void usa(const QString &numero); ///< the pupil wants what it shows as the answer

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QPushButton *addKey(const QString &face, const QString &nome, char16_t tecla);
    void press(char16_t tecla);

    Conta mConta;
    QLabel *mVisor; // children
    QPushButton *mUsa;
};

} // namespace quorel
