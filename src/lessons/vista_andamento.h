#pragma once

#include <QString>

namespace quorel {

/// What the running of lessons tells to whoever shows how far a Roteiro is.
struct VistaAndamento
{
    virtual ~VistaAndamento() = default;
    virtual void aulaBegan(int aula, int count) = 0; ///< its place in the Roteiro, from 1, and how many there are
    virtual void programAwaited(const QString &title) = 0; ///< one that is being started; empty: it has come, or failed
    virtual void answerTaken(const QString &answer) = 0; ///< of the Aula that began last; never empty
    virtual void roteiroEnded() = 0; ///< behind its last Aula
    virtual void roteiroLeft() = 0; ///< before that
};

/// The view in force; it must outlive its use. Null disconnects.
void setVistaAndamento(VistaAndamento *vista);

/// Never fails: where none is connected nobody is told.
VistaAndamento &vistaAndamento();

} // namespace quorel
