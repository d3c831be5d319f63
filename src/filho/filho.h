#pragma once

#include "platform/endereco.h"
#include "platform/protocolo.h"

#include <QObject>

namespace quorel {

/// The link of a child program with the shell that drives it: a place of its own, known by the title that the shell
/// searches, through which lessons come in and answers go out.
///
/// What comes in is acknowledged at once and told by a signal from the event loop later, in the order of arrival: so
/// the shell never waits for what the program does with a lesson, and a slot may send. Texts end at their first NUL;
/// codes that are not for children are acknowledged and passed over.
///
/// What goes out waits until the shell has dealt with it, which may be minutes, for as long as the shell lives; no user
/// input is taken meanwhile. It goes to the shell that sent the last message, before any message to the one that
/// started this program; the shell is looked up at each send.
/// @return of all sends: whether the shell took it; false without a shell, and for a text longer than 204799 characters
class Filho final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Filho)
public:
    /// Makes the address known; connect the signals before the event loop runs next. Needs the application object.
    /// @param corpo  the program's window, which the shell places (with a size of 0: it keeps a least size); outlives
    ///               this object; null for a program without a window
    /// @param interna  one more place, inside the window
    explicit Filho(const QString &titulo, QWidget *corpo = nullptr, const Interna &interna = {});
    ~Filho() override; ///< the address is gone; lessons that no signal has told yet are dropped

    bool temGerenciador() const; ///< whether a send would find a shell now
    bool aulaPendente() const { return mPendentes > 0; } ///< a lesson has come that aula() hasn't told yet
    bool encerraPendente() const { return mEncerra; } ///< the shell is closing: encerra() has told it, or is about to

    bool proxima(const QString &resposta); ///< on to the next lesson, with the answer of this one or empty
    bool anterior(const QString &resposta); ///< back to the previous one, likewise
    bool sai(const QString &resposta); ///< leaves the Roteiro, likewise
    bool resposta(const QString &texto); ///< an answer to be recorded now
    bool calculadora(const QString &texto); ///< a lesson or a code for the calculator; with "EXEC" outside a Roteiro
    bool pedeJogo(); ///< asks for the game of this lesson; jogo() tells it
    bool aluno(int codigo); ///< another pupil is at work
    bool classe(int codigo); ///< another class
    bool fechaBlocos(); ///< asks the shell to close the window of its pictures

signals:
    void aula(const QString &linha); ///< run this lesson, whose last one is then over
    void controle(const QString &palavra); ///< "PRIMEIRA" or "ULTIMA", about the lesson to come; "ESCONDE"
    void encerra(); ///< the shell is closing: end the program
    void semGerenciador(); ///< the shell that drives this program has died; another one may still send a lesson
    void jogo(const QString &texto); ///< position of the Roteiro, "#" and the game; empty when there is none

private:
    qintptr procedure(Janela janela, quint32 message, quintptr wParam, qintptr lParam);
    void deliver(quint32 code, const QString &texto);
    void watchGerenciador();
    Janela gerenciador() const;
    bool envia(quint32 code, const QString &texto);

    Endereco mEndereco;
    WindowProc mAnterior;
    Janela mRemetente = 0; ///< who sent the last message
    QList<Janela> mVigiados; ///< shells whose end is told
    int mPendentes = 0;
    bool mEncerra = false;
};

} // namespace quorel
