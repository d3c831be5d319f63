#pragma once

#include "platform/endereco.h"
#include "platform/janela.h"

#include <QString>

#include <vector>

namespace quorel {

/// The last message received. Its text outlives the message: one without a text of its own finds it here.
struct MensagemRec
{
    QString Texto; ///< up to the first NUL
    qint32 Codigo = 0;
    qint32 Tamanho = 0; ///< as it travelled: characters + 1, or 0 and less for "no text"
    const void *Endereco = nullptr; ///< good during the message only
    std::vector<char> Dados = std::vector<char>(kMaxCopyData); ///< bytes received
};

inline qint16 gRotAtual = 0; ///< position in gRoteiros, from 1
inline qint16 gAulaAtual = 0; ///< position in Aulas, from 1; messages move it beyond both ends
inline qint32 gCodRoteiro = 0; ///< Cod of what runs, for the log; 0 outside a Roteiro
inline QString gNomeRoteiro;
inline bool gEmRoteiro = false; ///< set by every click on a picture, cleared when a lesson ends
inline bool gExecExterno = false; ///< a program asked for the next lesson, not the Roteiro
inline QString gRespostas; ///< answers since the last row of the log, each followed by ":"
inline MensagemRec gMensagem;
inline Janela gJanelaFilha = 0; ///< program of the lesson that runs
inline Janela gJanelaZeto = 0;
inline Janela gJanelaLivros = 0;
inline Janela gJanelaVrel = 0;
inline Janela gJanelaCalc = 0;
inline Janela gJanelaDesenho = 0;
inline Janela gJanelaGancho = 0; ///< window under the hook, 0 for none
inline WindowProc gProcAnterior; ///< procedure that the hook took the place of

/// Puts all module variables of this folder back, removes the hook and forgets the shell's address and the view.
void reiniciaLessons();

} // namespace quorel
