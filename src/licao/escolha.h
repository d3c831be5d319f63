#pragma once

#include "licao/exercicio.h"

namespace quorel {

class Cartao;

/// Options as cards: one, all the right ones, or all of them in order. A number key presses its card.
class Escolha final : public Exercicio
{
    Q_OBJECT
public:
    Escolha(const LicaoRec &licao, const Midia &midia, QRgb cor, QWidget *parent);

    bool respondido() const override;
    bool certo() const override;
    void mostraCorrecao(bool acertou) override;
    void foca() override;
    bool tecla(int numero) override;
    QString pedido() const override;

protected:
    void keyPressEvent(QKeyEvent *event) override; ///< arrows go from card to card

private:
    void buildCards(const Midia &midia, QRgb cor);
    void choose(int n);
    void showChoice();

    LicaoRec mLicao;
    std::vector<Cartao *> mCartoes; // children
    std::vector<int> mEscolhidas; // 0-based, in the order of choosing
    bool mFechada = false; // answered right
};

} // namespace quorel
