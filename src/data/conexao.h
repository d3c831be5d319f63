#pragma once

#include "data/armazem.h"

namespace quorel {

/// The provider's connection: a store and the transactions on it. Beginning one touches no file: the first write inside
/// it does, and waits for the lock, so that a lock is reported by the operation that writes. They nest; the first is
/// the transaction, those inside it are undone one by one. One in which nothing was written yet when a write fails or
/// meets no row gives its lock back at once: nobody waits for a box, and the next write begins it anew.
class Conexao final
{
    Q_DISABLE_COPY_MOVE(Conexao)
public:
    explicit Conexao(const QString &linhaConexao, Espera espera = Espera::Abertura); ///< opens @throws ErroBD
    ~Conexao(); ///< undoes what is open

    bool isOpen() const { return mArmazem != nullptr; }
    void Close(); ///< undoes what is open; a closed one answers kErroSemConexao to everything

    void BeginTrans();
    void CommitTrans(); ///< @throws ErroBD; what can't be written is undone as a whole
    void RollbackTrans(); ///< @throws ErroBD without a transaction
    int depth() const { return static_cast<int>(mNiveis.size()); }
    void undoAll() noexcept; ///< at the end of the program
    /// Takes the lock of an open transaction before its first write, so that what is read from now on stays so.
    void reserve(); ///< @throws ErroBD
    /// Before a box stands: what was written so far is kept and the lock given back, the transaction staying open; a
    /// box may stand for an hour. @throws ErroBD; what was written is then undone, and no write enters any more
    void settle();
    bool holdsLock() const { return mArmazem && mArmazem->inTransaction(); }

    /// Runs a query of the provider's dialect. @param linhas  untouched on failure
    std::vector<Coluna> query(const QString &sql, Linhas &linhas);
    Linhas readRow(const ChaveLinha &linha, const std::vector<QString> &colunas);
    qint64 insert(const QString &tabela, const QString &chave, const std::vector<Atribuicao> &valores);
    bool update(const ChaveLinha &linha, const std::vector<Atribuicao> &valores);
    bool remove(const ChaveLinha &linha);

    IdentidadeCadastro identity(); ///< as it stands now @throws ErroBD
    /// Armazem::log(); nothing may hold the lock. @throws ErroBD
    std::vector<SorteLinha> log(
        const std::vector<LinhaLog> &linhas, const std::function<void(bool comIds)> &antesDoCommit);

private:
    enum class Estado {
        Adiado, ///< not begun in the store yet
        Comecado,
        Perdido, ///< the store undid it by itself; its end is silent, no write enters it any more
    };
    struct Nivel
    {
        Estado estado = Estado::Adiado;
        bool gravou = false; ///< something was written in it, or in one that ended well inside it
    };

    Armazem &store() const; ///< @throws 3709
    void beginPending(); ///< before a write
    void noteWrite(); ///< one that worked
    void noteLoss(); ///< after a failure
    void giveBack(); ///< after a write that failed or met no row
    bool anyBegun() const;
    void replaceBegun(Estado estado); ///< in all levels that were begun
    void endStore(); ///< commits the outermost @throws ErroBD; it is then undone
    template <typename Work>
    auto guarded(Work &&work);
    template <typename Write>
    auto written(Write &&write);

    std::unique_ptr<Armazem> mArmazem;
    std::vector<Nivel> mNiveis; ///< outermost first
};

} // namespace quorel
