#pragma once

#include "licao/janelalicao.h"
#include "oficina/leitura.h"

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace quorel {

/// The lesson player on what is being written: answered and paged as by a pupil, heard only when its button is pressed.
/// It never takes the keyboard from the editor.
class Previa final : public QWidget
{
    Q_OBJECT
public:
    Previa(Midia midia, QWidget *parent);

    /// Shows an Aula, unless it is shown already as it is. @param titulo  "Roteiro 1, aula 2 de 5"
    void mostra(const AulaVista &aula, const QString &titulo);
    void mostraNada(const QString &porque);

signals:
    void proxima();
    void anterior();

private:
    JanelaLicao &playerFor(Programa programa);

    Midia mMidia;
    JanelaLicao *mPlayer = nullptr; // child; another one for another program
    Programa mPrograma = Programa::Zeto;
    std::optional<AulaVista> mShown;
    QLabel *mTitulo = nullptr; // children, from the constructor on
    QVBoxLayout *mColuna = nullptr;
};

} // namespace quorel
