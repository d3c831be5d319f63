#pragma once

#include <QString>

namespace quorel {

/// Opens the HTML file that the ninth field of a lesson names, in the system's viewer, in front of the child programs;
/// then waits for its end as AguardaQuadrinhos() does, unless a program asked for the lesson. A missing file does
/// nothing. @throws ErroExecucao as AguardaQuadrinhos()
void mostraQuadrinhos(const QString &aula);

} // namespace quorel
