#pragma once

#include "data/campos.h"
#include "data/dialeto.h"
#include "data/identidade.h"
#include "data/linha_log.h"

#include <functional>
#include <memory>
#include <vector>

namespace quorel {

/// A value for one column of a base table, already of the column's type.
struct Atribuicao
{
    QString coluna;
    QVariant valor;
};

/// A row of a base table, by its key.
struct ChaveLinha
{
    QString tabela;
    QString coluna; ///< the key column
    qint64 valor = 0;
};

/// What record sets need of a database; nothing above knows which one it is. Every store keeps this:
///
/// - A failure is an ErroBD with a Portuguese description and its kind (EspecieFalha).
/// - A statement that fails inside a transaction undoes itself alone, and the transaction goes on; where the store had
///   to undo all, inTransaction() tells. A commit came through only when the call returns.
/// - begin() promises nothing about others: a lock is waited for 1 s (10 s at the opening, 3 s by a commit, which
///   nobody could try again) and reported by the operation that needs it.
/// - Rows come in an order that no update changes: behind every ORDER BY stand the keys of the tables as FROM has
///   them, in the direction of its last term. Texts are ordered by compareForOrder(), Null first.
/// - Tables and columns are named as the schema spells them. A name that no table has is an error, never a text.
/// - Values come and go in one form: a date as storedDate() (a QDateTime is taken too), a truth as 1 or 0, a whole
///   number as 64 bits, another one as a double, a text as UTF-8 without NUL (one with it is refused, kErroValor),
///   bytes as they are, Null as Null.
/// - Keys are given in rising order and never twice, those of deleted rows included.
class Armazem
{
    Q_DISABLE_COPY_MOVE(Armazem)
public:
    Armazem() = default;
    virtual ~Armazem(); ///< rolls back what is open

    virtual Dialeto dialect() const = 0; ///< what the translator is to write for this store
    virtual IdentidadeCadastro identity() = 0; ///< as it stands now

    /// Runs a query of the store's own dialect and reads it whole.
    /// @param linhas  replaced by the rows; untouched on failure
    virtual std::vector<Coluna> query(const QString &sql, Linhas &linhas) = 0;
    /// Reads some columns of one row. @return no row when it is gone
    virtual Linhas readRow(const ChaveLinha &linha, const std::vector<QString> &colunas) = 0;

    /// Adds a row with just these columns. @param chave  the key's column @return the key that the row has now
    virtual qint64 insert(const QString &tabela, const QString &chave, const std::vector<Atribuicao> &valores) = 0;
    /// @return whether the row was there, also when it already had these values
    virtual bool update(const ChaveLinha &linha, const std::vector<Atribuicao> &valores) = 0;
    virtual bool remove(const ChaveLinha &linha) = 0; ///< @return whether the row was there

    /// A transaction that may write. @throws also for a register that has gone to another place (Sumiu)
    virtual void begin() = 0;
    virtual void commit() = 0; ///< on failure the transaction is still open, or undone; see inTransaction()
    virtual void rollback() = 0;
    virtual void savepoint(int nivel) = 0;
    virtual void release(int nivel) = 0;
    virtual void rollbackTo(int nivel) = 0; ///< and forgets that savepoint
    virtual bool inTransaction() const = 0; ///< false also when the store undid it by itself

    /// Logs rows in one transaction of their own, all or none, each with its uuid, so that a row comes in once whatever
    /// is tried again. Nobody's reading can fail the commit. No transaction may be open. Rows that waited go in only
    /// where the codes still bear their names, and to the child that theirs was merged into.
    /// @param antesDoCommit  called when all rows were taken; from then until the return nobody knows whether they are
    /// there. comIds: the register keeps their uuids, so that a further attempt will tell
    /// @return what became of each row, in their order @throws ErroBD; before antesDoCommit nothing has come in
    virtual std::vector<SorteLinha> log(
        const std::vector<LinhaLog> &linhas, const std::function<void(bool comIds)> &antesDoCommit) = 0;
};

/// How long the lock of another program is waited for.
enum class Espera { Abertura, Operacao };

/// Opens the store that a connection string names: the provider chooses which, "Data Source" the file.
/// @param espera  for the opening itself @throws ErroBD for an unknown provider or a file that can't be opened
std::unique_ptr<Armazem> openStore(const QString &linhaConexao, Espera espera = Espera::Abertura);

} // namespace quorel
