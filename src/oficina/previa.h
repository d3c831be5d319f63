#pragma once

#include "oficina/leitura.h"

#include "licao/janelalicao.h"

#include <QGraphicsView>

class QLabel;

namespace quorel {

/// The lesson player on what is being written: answered and paged as by a pupil, heard only when its button is pressed.
/// It is laid out in its own size and drawn smaller, so that the author sees what a child will see. It never takes the
/// keyboard from the editor.
class Previa final : public QWidget
{
    Q_OBJECT
public:
    Previa(Midia midia, QWidget *parent);

    /// Shows an Aula, unless it is shown already as it is. @param titulo  "Roteiro 1, aula 2 de 5"
    void mostra(const AulaVista &aula, const QString &titulo);
    void mostraNada(const QString &porque);

    void foca(); ///< the keyboard to the lesson

    JanelaLicao *player() const { return mPlayer; } ///< never null

signals:
    void proxima();
    void anterior();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override; ///< the view's size

private:
    JanelaLicao &playerFor(Programa programa);
    void fit();

    Midia mMidia;
    QGraphicsScene mCena; // owns the player
    JanelaLicao *mPlayer = nullptr; // another one for another program
    Programa mPrograma = Programa::Zeto;
    std::optional<AulaVista> mShown;
    QLabel *mTitulo = nullptr; // children, from the constructor on
    QGraphicsView *mVista = nullptr;
};

} // namespace quorel
