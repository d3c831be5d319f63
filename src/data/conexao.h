#pragma once

#include "data/armazem.h"

namespace quorel {

/// The provider's connection: a store and the transactions on it. Beginning one touches no file: the first write inside
/// it does, and waits for the lock, so that a lock is reported by the operation that writes. They nest; the first is
/// the transaction, those inside it are undone one by one.
class Conexao final
{
    Q_DISABLE_COPY_MOVE(Conexao)
public:
    explicit Conexao(const QString &linhaConexao); ///< opens @throws ErroBD
    ~Conexao(); ///< undoes what is open

    bool isOpen() const { return mArmazem != nullptr; }
    void Close(); ///< undoes what is open; a closed one answers kErroSemConexao to everything

    void BeginTrans();
    void CommitTrans(); ///< @throws ErroBD; what can't be written is undone as a whole
    void RollbackTrans(); ///< @throws ErroBD without a transaction
    int depth() const { return static_cast<int>(mNiveis.size()); }
    void undoAll() noexcept; ///< at the end of the program

    /// Runs a query of the provider's dialect. @param linhas  untouched on failure
    std::vector<Coluna> query(const QString &sql, Linhas &linhas);
    Linhas readRow(const ChaveLinha &linha, const std::vector<QString> &colunas);
    qint64 insert(const QString &tabela, const std::vector<Atribuicao> &valores);
    bool update(const ChaveLinha &linha, const std::vector<Atribuicao> &valores);
    bool remove(const ChaveLinha &linha);

private:
    enum class Nivel {
        Adiado, ///< not begun in the store yet
        Comecado,
        Perdido, ///< the store undid it by itself; its end is silent, no write enters it any more
    };

    Armazem &store() const; ///< @throws 3709
    void beginPending(); ///< before a write
    void noteLoss(); ///< after a failure
    bool anyBegun() const;
    template <typename Work>
    auto guarded(Work &&work);

    std::unique_ptr<Armazem> mArmazem;
    std::vector<Nivel> mNiveis; ///< outermost first
};

} // namespace quorel
