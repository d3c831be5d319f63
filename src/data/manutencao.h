#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace quorel {

/// Care of a register's file, for the command-line tool. Paths have backslashes. Everything throws ErroBD.

/// Makes an empty register. @throws when there is a file already, which stays as it is
void createRegister(const QString &caminho);

/// Looks over a register without changing it: the store's own check, tables and columns, keys that lose rows, cells
/// that can't be read, generic rows, links without pupil or class, log rows without pupil. Time grows with the file's
/// size.
/// @return what was found, one a line; empty when all is well @throws ErroBD when it can't be opened at all
QStringList registerFindings(const QString &caminho);

struct ContagemTabela
{
    QString tabela;
    qint64 linhas = 0;
};

/// Rows of each table of the register, in the order of their names.
std::vector<ContagemTabela> registerCounts(const QString &caminho);

/// Copies a register while others use it, as it stands at one moment; the copy is checked before it gets its name.
/// @throws when the check fails, or the destination exists and may not be replaced, is the source, or is open in
/// another process of this machine (other machines are not seen); origem() is the destination where that is at fault
void copyRegister(const QString &origem, const QString &destino, bool sobrescreve);

} // namespace quorel
