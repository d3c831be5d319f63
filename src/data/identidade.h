#pragma once

#include <QString>
#include <QStringList>

struct sqlite3;

namespace quorel {

/// What a register tells of itself, in its table QR_Registro.
struct IdentidadeCadastro
{
    QString identidade; ///< UUID without braces; empty: a register from before there was one
    QStringList anteriores; ///< that it had before a backup came back
    QString mudou; ///< where it went, with backslashes; empty: it is still here
    int versao = 0;
    bool temEntregas = false; ///< has the table that keeps each logged row from coming in twice

    /// Whether rows for a register of that identity belong here.
    bool answersTo(const QString &cadastro) const;
    bool operator==(const IdentidadeCadastro &) const = default;
};

/// The version of the tables that this program lays.
inline constexpr int kVersaoCadastro = 1;

/// Reads it from an open register, an older one too. @throws ErroBD
IdentidadeCadastro readIdentity(sqlite3 *db);

/// Lays the tables of ours and the identity where they are missing, in one transaction that waits for the whole file.
/// Older log rows get an id made of the identity and their number, so that two copies of one register agree on it.
/// @return whether anything was missing @throws ErroBD; the register is then as it was
bool layOwnTables(sqlite3 *db);

/// Gives a register another identity. @param lembra  whether it goes on answering to the ones it had, that of a copy's
/// original included: rows logged for them are meant for it @throws ErroBD
void renewIdentity(sqlite3 *db, bool lembra);

/// Marks a register as gone to another place. Inside the caller's transaction. @throws ErroBD
void markMoved(sqlite3 *db, const QString &destino);

/// The text that refuses a register which has gone to another place.
QString movedText(const QString &destino);

} // namespace quorel
