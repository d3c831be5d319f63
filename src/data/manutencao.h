#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace quorel {

/// Care of a register's file, for the command-line tool. Paths have backslashes. Everything throws ErroBD.

/// Makes a register with nothing but the generic rows. @throws when there is a file already, which stays as it is
void createRegister(const QString &caminho);

/// Looks over a register without changing it: the store's own check, tables and columns, keys that lose rows, cells
/// that can't be read, generic rows, links without pupil or class, log rows without pupil, tables of ours. Time grows
/// with the file's size; others may write meanwhile.
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
/// The copy is another register: it has an identity of its own, and remembers whose copy it is.
/// @throws when the check fails, or the destination exists and may not be replaced, is the source, or is open in
/// another process of this machine (other machines are not seen); origem() is the destination where that is at fault
void copyRegister(const QString &origem, const QString &destino, bool sobrescreve);

/// Moves a register: the copy is the register from then on, and what stays at the source refuses to be used.
/// @throws as copyRegister(), the source then being what it was
void moveRegister(const QString &origem, const QString &destino, bool sobrescreve);

/// Lays the tables of ours in an older register. @return false when nothing was missing
bool updateRegister(const QString &caminho);

/// After a backup came back: gives the register a new identity, since its codes may stand for others now. It goes on
/// answering to the ones it had.
void renewRegister(const QString &caminho);

} // namespace quorel
