#pragma once

#include "platform/janela.h"

#include <QString>

namespace quorel {

/// Message codes; what each does is in docs/protocolo.md.
enum CodigoMensagem : qint32 {
    MSG_EXEC_CALC = 2059, ///< child: run a lesson outside a Roteiro
    MSG_AULA = 2060, ///< shell: run this lesson
    MSG_FECHA_BLOCOS = 2062, ///< to the shell: unload fBlocos
    MSG_PROXIMA = 2069, ///< child: answer, next lesson
    MSG_ANTERIOR = 2070, ///< child: answer, previous lesson
    MSG_SAI = 2071, ///< child: answer, leave the Roteiro; shell: exit
    MSG_ALUNO = 2109, ///< pupil code as decimal text
    MSG_CLASSE = 2110, ///< class code as decimal text
    MSG_RESPOSTA = 2111, ///< child: answer, write it now
    MSG_CONTROLE = 2122, ///< shell: "ULTIMA", "PRIMEIRA" or "ESCONDE"
    MSG_JOGO = 2123, ///< child: asks for the game of this lesson; shell: the game
};

/// Sends a text and waits until its receiver has handled it. One turn of events stands before the send, so other
/// messages and clicks may come in.
/// @return false with a handle of 0 (nothing happens then), with a text longer than 204799 bytes, or when the receiver
///         is gone, silent or answers 0
bool EnviaTexto(Janela janela, Janela remetente, qint32 codigo, const QString &texto);

/// Does what a message asks for. Every statement that fails is passed over, a condition that fails with both of its
/// branches. Unknown codes do nothing.
/// @param lParam  address of a CopyData
void RecebeMensagem(qintptr lParam);

/// Sends MSG_SAI from fBlocos to the child programs known, in the order of the program's end: Zeto, Livros, Calc, Vrel,
/// Desenho. Their last answers may come in meanwhile.
void despedeFilhos();

} // namespace quorel
