#pragma once

#include <QStringList>
#include <QTextStream>

namespace quorel::cadastro {

/// What the words behind "pendentes" ask for, on the rows of the log that wait on this machine: "lista" (or nothing),
/// "entrega", "exporta" with a file, "aceita" with a row's number.
/// @param palavras  paths with backslashes @param todas  those of every account whose file can be read
/// @return an exit code: 1 when rows still wait; -1 when the words make no sense @throws ErroBD
int pendentes(const QStringList &palavras, bool todas, QTextStream &saida);

} // namespace quorel::cadastro
