#include "data/conexao.h"

#include "data/errobd.h"
#include "data/linhas.h"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace quorel {

Conexao::Conexao(const QString &linhaConexao, Espera espera) : mArmazem(openStore(linhaConexao, espera)) { }

Conexao::~Conexao()
{
    undoAll();
}

void Conexao::Close()
{
    undoAll();
    mArmazem.reset();
}

Armazem &Conexao::store() const
{
    if (!mArmazem)
        throw ErroBD(kErroSemConexao);
    return *mArmazem;
}

bool Conexao::anyBegun() const
{
    return std::ranges::find(mNiveis, Estado::Comecado, &Nivel::estado) != mNiveis.end();
}

void Conexao::replaceBegun(Estado estado)
{
    for (Nivel &nivel : mNiveis) {
        if (nivel.estado == Estado::Comecado)
            nivel = {estado, false};
    }
}

void Conexao::noteLoss()
{
    if (mArmazem && anyBegun() && !mArmazem->inTransaction())
        replaceBegun(Estado::Perdido);
}

template <typename Work>
auto Conexao::guarded(Work &&work)
{
    try {
        return work(store());
    } catch (const ErroExecucao &) {
        noteLoss();
        throw;
    }
}

void Conexao::noteWrite()
{
    if (!mNiveis.empty())
        mNiveis.back().gravou = true;
}

void Conexao::giveBack()
{
    if (!mArmazem || !anyBegun() || std::ranges::any_of(mNiveis, &Nivel::gravou))
        return;
    if (mArmazem->inTransaction())
        ignora([&] { mArmazem->rollback(); });
    if (!mArmazem->inTransaction())
        replaceBegun(Estado::Adiado); // nothing of it is lost
}

/// A write, begun where that is still due. It tells whether it met its row; one that adds a row always does.
template <typename Write>
auto Conexao::written(Write &&write)
{
    try {
        store();
        beginPending();
        const auto result = write(store());
        if (result)
            noteWrite();
        else
            giveBack();
        return result;
    } catch (const ErroExecucao &) {
        giveBack();
        noteLoss();
        throw;
    }
}

void Conexao::beginPending()
{
    if (!mNiveis.empty() && mNiveis.back().estado == Estado::Perdido)
        throw ErroBD(kErroArmazem, u"A transação foi desfeita por uma falha anterior; nada foi gravado."_s);
    bool inside = anyBegun();
    for (int i = 0; Nivel & nivel : mNiveis) {
        ++i;
        if (nivel.estado != Estado::Adiado)
            continue;
        if (inside)
            store().savepoint(i);
        else
            store().begin();
        nivel.estado = Estado::Comecado;
        inside = true;
    }
}

void Conexao::reserve()
{
    guarded([&](Armazem &) { beginPending(); });
}

void Conexao::settle()
{
    if (!anyBegun())
        return;
    endStore();
    replaceBegun(Estado::Adiado);
}

void Conexao::endStore()
{
    try {
        store().commit();
    } catch (const ErroExecucao &) {
        if (store().inTransaction())
            ignora([&] { store().rollback(); });
        noteLoss();
        throw;
    }
}

void Conexao::BeginTrans()
{
    store();
    mNiveis.emplace_back();
}

[[noreturn]] static void failWithoutTransaction()
{
    throw ErroBD(kErroArmazem, u"Não há transação aberta."_s);
}

void Conexao::CommitTrans()
{
    store();
    if (mNiveis.empty())
        failWithoutTransaction();
    const int number = depth();
    const Nivel nivel = mNiveis.back();
    mNiveis.pop_back();
    if (nivel.estado != Estado::Comecado)
        return;
    if (!anyBegun())
        return endStore();
    guarded([&](Armazem &armazem) { armazem.release(number); });
    if (nivel.gravou)
        noteWrite();
}

void Conexao::RollbackTrans()
{
    store();
    if (mNiveis.empty())
        failWithoutTransaction();
    const int number = depth();
    const Nivel nivel = mNiveis.back();
    mNiveis.pop_back();
    if (nivel.estado != Estado::Comecado)
        return;
    guarded([&](Armazem &armazem) {
        if (anyBegun())
            armazem.rollbackTo(number);
        else
            armazem.rollback();
    });
}

void Conexao::undoAll() noexcept
{
    if (mArmazem && mArmazem->inTransaction())
        ignora([&] { mArmazem->rollback(); });
    mNiveis.clear();
}

std::vector<Coluna> Conexao::query(const QString &sql, Linhas &linhas)
{
    return guarded([&](Armazem &armazem) { return armazem.query(translated(sql, armazem.dialect()), linhas); });
}

Linhas Conexao::readRow(const ChaveLinha &linha, const std::vector<QString> &colunas)
{
    return guarded([&](Armazem &armazem) { return armazem.readRow(linha, colunas); });
}

qint64 Conexao::insert(const QString &tabela, const QString &chave, const std::vector<Atribuicao> &valores)
{
    return *written([&](Armazem &armazem) { return std::optional(armazem.insert(tabela, chave, valores)); });
}

bool Conexao::update(const ChaveLinha &linha, const std::vector<Atribuicao> &valores)
{
    return written([&](Armazem &armazem) { return armazem.update(linha, valores); });
}

bool Conexao::remove(const ChaveLinha &linha)
{
    return written([&](Armazem &armazem) { return armazem.remove(linha); });
}

IdentidadeCadastro Conexao::identity()
{
    return store().identity();
}

std::vector<SorteLinha> Conexao::log(
    const std::vector<LinhaLog> &linhas, const std::function<void(bool comIds)> &antesDoCommit)
{
    return store().log(linhas, antesDoCommit);
}

} // namespace quorel
