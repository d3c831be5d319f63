#pragma once

#include <QStringList>
#include <QTextStream>

namespace quorel::cadastro {

/// The whole of quorel-cadastro. Needs a QCoreApplication.
/// @param argumentos  without the program's name
/// @return the exit code: 0 well, 1 something to mend was found, 2 could not run
int executa(const QStringList &argumentos, QTextStream &saida, QTextStream &erros);

} // namespace quorel::cadastro
