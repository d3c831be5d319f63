#pragma once

#include "licao/programa.h"

#include <QWidget>

class QLabel;

namespace quorel {

/// The coloured band at the top: the program's sign, the heading, the program's name and the page.
class Faixa final : public QWidget
{
    Q_OBJECT
public:
    Faixa(Programa programa, QWidget *parent);

    /// @param titulo  empty: the program's name
    /// @param lado    small text at the right; may be empty
    void mostra(const QString &titulo, const QString &lado);

    void addTools(QWidget *tools); ///< at the right end

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Programa mPrograma;
    QLabel *mTitulo; // children
    QLabel *mLado;
};

/// What the pupil is told about the answer: a shape, a colour and a text.
class Retorno final : public QWidget
{
    Q_OBJECT
public:
    explicit Retorno(QWidget *parent);

    void diz(bool certa, const QString &texto);
    void pede(const QString &texto); ///< a request, neither right nor wrong
    void cala(); ///< nothing to say
    QString texto() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    enum class Tom { Calado, Pedido, Certo, Errado };
    void show(Tom tom, const QString &texto);

    Tom mTom = Tom::Calado;
    QLabel *mTexto; // child
};

} // namespace quorel
