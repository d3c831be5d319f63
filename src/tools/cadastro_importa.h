#pragma once

#include <QString>
#include <QStringList>

namespace quorel::cadastro {

/// What came of an import.
struct Importado
{
    int classes = 0; ///< that were added
    int alunos = 0; ///< likewise
    QStringList repetidos; ///< names that stood there already, or twice in the list: a line of text each
};

/// Adds classes and pupils from a text file, a line each; see decodeForeign() for its page:
///     classe TAB name TAB teacher TAB password
///     aluno TAB name
/// A pupil goes into the class above. Empty lines and lines that begin with ";" are skipped. The generic rows are made
/// first, so that new codes start behind theirs. A second run adds everything again, and tells it; nothing is added
/// when one line fails.
/// @throws ErroBD whose origem() is the list, and whose description begins with the line's number, where the list is
/// at fault; any other failure is the register's
Importado importa(const QString &cadastro, const QString &lista);

} // namespace quorel::cadastro
