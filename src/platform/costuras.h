#pragma once

#include "platform/caixas.h"
#include "platform/programas.h"

#include <QDateTime>

#include <functional>

namespace quorel {

/// The few things that a test puts something else in the place of; everything else runs for real.
struct Costuras
{
    std::function<Resposta(const Caixa &)> box; ///< shows a message box
    std::function<QString(const CaixaTexto &)> input; ///< shows an input box
    std::function<QDateTime()> now; ///< the clock, local time
    std::function<void(int milliseconds)> pause; ///< waits, serving events
    std::function<bool(const ProgramRequest &)> startProgram;
    std::function<bool(const DocumentRequest &)> openDocument;
    std::function<void(int exitCode)> endProcess; ///< must not return: a test throws FimDoPrograma
};

/// The ones in force. At first those of the real system.
Costuras &costuras();

/// Puts those of the real system back.
void reiniciaCosturas();

/// Shows a box through the seam; what the whole system calls.
Resposta caixa(const Caixa &pedido);

/// Asks for a line of text through the seam. @return empty when cancelled
QString perguntaTexto(const CaixaTexto &pedido);

/// Blocks for that long, letting window events run; through the seam.
void pausa(int milliseconds);

/// The present date and time; through the seam.
QDateTime agora();

bool startProgram(const ProgramRequest &request); ///< startProgramNow() through the seam
bool openDocument(const DocumentRequest &request); ///< openDocumentNow() through the seam

} // namespace quorel
