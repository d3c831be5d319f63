#pragma once

#include <QString>

namespace quorel::cadastro {

/// Adds classes and pupils from a text file of code page 1252, a line each:
///     classe TAB name TAB teacher TAB password
///     aluno TAB name
/// A pupil goes into the class above. Empty lines and lines that begin with ";" are skipped. The generic rows are made
/// first, so that new codes start behind theirs. Nothing is read back: a second run adds everything again.
/// @throws ErroBD, or ErroExecucao with the line's number in its description for a line that makes no sense
void importa(const QString &cadastro, const QString &lista);

} // namespace quorel::cadastro
