#pragma once

#include "platform/janela.h"

#include <QString>

namespace quorel {

inline const QString kTituloZeto = QStringLiteral("Zeto - Quorel");

/// Sends a lesson to the child program of a type, which is found by its title or started, and placed.
/// @param comando  command line that starts it
/// @return false when no child program has that type; then nothing happened
bool enviaAoFilho(const QString &tipo, const QString &comando, const QString &aula);

/// Takes the topmost state from the windows of the child programs known.
void baixaFilhos();

/// Finds the calculator, or starts it, and leaves its handle in gJanelaCalc, 0 when it does not come up.
void localizaCalc();

/// A window that begins with, or has, that title, as the child programs are searched.
Janela procuraFilho(const QString &titulo);

} // namespace quorel
