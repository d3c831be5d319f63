#pragma once

#include "licao/midia.h"
#include "linha/textolicao.h"

#include <QWidget>

#include <memory>

namespace quorel {

/// The part of a lesson that the pupil answers with, one class for each way of answering.
class Exercicio : public QWidget
{
    Q_OBJECT
public:
    using QWidget::QWidget;
    virtual bool respondido() const = 0; ///< something is chosen or typed that can be checked
    virtual bool certo() const = 0; ///< whether that is right
    virtual void mostraCorrecao(bool acertou) = 0; ///< marks what stands there; after a right answer it stays as it is
    virtual void foca() = 0; ///< gives the focus to where answering begins
    virtual bool tecla(int numero) = 0; ///< a number key, 1 to 9. @return false when it means nothing here
    virtual QString pedido() const = 0; ///< what to do, as a request to the pupil

signals:
    void mudou(); ///< the pupil changed the answer
};

/// The exercise of a lesson. @return null when the lesson has none
Exercicio *criaExercicio(const LicaoRec &licao, const Midia &midia, QRgb cor, QWidget *parent);

} // namespace quorel
