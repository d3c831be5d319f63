#pragma once

#include "filho/filho.h"
#include "licao/janelalicao.h"

namespace quorel {

/// Keeps the player's window and the shell together: lessons come in, answers go out with what the pupil does next.
/// While no lesson of ours runs the window is hidden and the program waits for the next one.
class Sessao final : public QObject
{
    Q_OBJECT
public:
    /// Both outlive this object.
    Sessao(Filho &filho, JanelaLicao &janela);

    void aula(const QString &linha); ///< shows a lesson and brings the window to the front
    void espera(); ///< a shell has started the program: its lesson is on the way

signals:
    void fim(); ///< end the program

private:
    void controle(const QString &palavra);
    void encerra();
    bool closedMeanwhile();
    void proxima();
    void anterior();
    void sai();
    void hide();
    void perdeGerenciador();
    void semGerenciador();
    QString takeAnswer();

    Filho &mFilho;
    JanelaLicao &mJanela;
    LugarRec mProximoLugar; // said before the lesson that it is about
    bool mEmLicao = false; // a lesson of a Roteiro is shown
    bool mAvulsa = false; // a lesson outside a Roteiro is shown, or was
    bool mOrfa = false; // the shell is gone
    bool mComGerenciador = false; // a shell started this program or sent something
};

} // namespace quorel
