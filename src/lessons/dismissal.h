#pragma once

#include "platform/janela.h"

namespace quorel {

/// Sends MSG_SAI from fBlocos to the child programs known, in the order of the program's end: Zeto, Livros, Calc, Vrel,
/// Desenho. Their last answers may come in meanwhile. From now on no lesson is run any more.
void despedeFilhos();

/// Waits until each of them has sent MSG_SAI, hidden itself, closed or died, at most 2 s together. Serves sends and
/// takes no user input. A child whose own send is being served is answered first, since its handler will not return.
void waitForChildren();

/// Whether the child programs have been dismissed: a message that would run a lesson starts nothing then.
bool childrenDismissed();

/// Told of each message when it has been dealt with. @param remetente  handle of its sender
void noteDeparture(Janela remetente, quint32 codigo);

void resetDismissal(); ///< forgets the dismissal; part of reiniciaLessons()

} // namespace quorel
