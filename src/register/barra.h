#pragma once

class QLineEdit;
class QPushButton;
class QWidget;

namespace quorel {

/// What the controls of a Barra are called.
struct NomesBarra
{
    const char16_t *primeiro;
    const char16_t *anterior;
    const char16_t *proximo;
    const char16_t *ultimo;
    const char16_t *posicao;
    const char16_t *grava;
    const char16_t *novo;
    const char16_t *apaga;
    const char16_t *cancela;
};

/// The buttons with which a frame browses and edits its records, and the box that tells where it stands.
struct Barra
{
    QPushButton *primeiro = nullptr;
    QPushButton *anterior = nullptr;
    QPushButton *proximo = nullptr;
    QPushButton *ultimo = nullptr;
    QLineEdit *posicao = nullptr;
    QPushButton *grava = nullptr;
    QPushButton *novo = nullptr;
    QPushButton *apaga = nullptr;
    QPushButton *cancela = nullptr;

    /// While a new record is pending it can be cancelled, and nothing can be deleted.
    void setAdicionando(bool adicionando) const;
};

/// @param topo  of the upper row of buttons in the frame, twips
Barra novaBarra(const NomesBarra &nomes, double topo, QWidget *quadro);

} // namespace quorel
