#pragma once

#include "data/campos.h"
#include "data/dialeto.h"

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

/// What record sets need of a database; nothing above knows which one it is. Every failure is an ErroBD with its
/// Portuguese description. A write waits a limited time for other programs. Dates come and go as storedDate().
class Armazem
{
    Q_DISABLE_COPY_MOVE(Armazem)
public:
    Armazem() = default;
    virtual ~Armazem(); ///< rolls back what is open

    virtual Dialeto dialect() const = 0; ///< what the translator is to write for this store

    /// Runs a query of the store's own dialect and reads it whole.
    /// @param linhas  replaced by the rows; untouched on failure
    virtual std::vector<Coluna> query(const QString &sql, Linhas &linhas) = 0;
    /// Reads some columns of one row. @return no row when it is gone
    virtual Linhas readRow(const ChaveLinha &linha, const std::vector<QString> &colunas) = 0;

    /// Adds a row with just these columns. @return the key that it has now
    virtual qint64 insert(const QString &tabela, const std::vector<Atribuicao> &valores) = 0;
    /// @return whether the row was there
    virtual bool update(const ChaveLinha &linha, const std::vector<Atribuicao> &valores) = 0;
    virtual bool remove(const ChaveLinha &linha) = 0;

    virtual void begin() = 0; ///< a transaction that holds the right to write from now on
    virtual void commit() = 0; ///< on failure the transaction is still open, or undone; see inTransaction()
    virtual void rollback() = 0;
    virtual void savepoint(int nivel) = 0;
    virtual void release(int nivel) = 0;
    virtual void rollbackTo(int nivel) = 0; ///< and forgets that savepoint
    virtual bool inTransaction() const = 0; ///< false also when the store undid it by itself
};

/// Opens the store that a connection string names: the provider chooses which, "Data Source" the file.
/// @throws ErroBD for an unknown provider or a file that can't be opened
std::unique_ptr<Armazem> openStore(const QString &linhaConexao);

} // namespace quorel
