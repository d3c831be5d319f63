#pragma once

#include "licao/exercicio.h"

class QLineEdit;

namespace quorel {

/// One line in which the pupil types the answer.
class Digitacao final : public Exercicio
{
    Q_OBJECT
public:
    Digitacao(const LicaoRec &licao, QWidget *parent);

    void preenche(const QString &texto); ///< puts a text in the place of what stands there
    bool respondido() const override;
    bool certo() const override;
    void mostraCorrecao(bool acertou) override;
    void foca() override;
    bool tecla(int numero) override;
    QString pedido() const override;

private:
    LicaoRec mLicao;
    QLineEdit *mTexto; // child
};

} // namespace quorel
