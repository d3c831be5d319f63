#include "data/conexao.h"

#include "data/errobd.h"
#include "data/linhas.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorel {

Conexao::Conexao(const QString &linhaConexao) : mArmazem(openStore(linhaConexao)) { }

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
    return std::ranges::find(mNiveis, Nivel::Comecado) != mNiveis.end();
}

void Conexao::noteLoss()
{
    if (mArmazem && anyBegun() && !mArmazem->inTransaction())
        std::ranges::replace(mNiveis, Nivel::Comecado, Nivel::Perdido);
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

void Conexao::beginPending()
{
    if (!mNiveis.empty() && mNiveis.back() == Nivel::Perdido)
        throw ErroBD(kErroArmazem, u"A transação foi desfeita por uma falha anterior; nada foi gravado."_s);
    bool inside = anyBegun();
    for (int i = 0; Nivel & nivel : mNiveis) {
        ++i;
        if (nivel != Nivel::Adiado)
            continue;
        if (inside)
            store().savepoint(i);
        else
            store().begin();
        nivel = Nivel::Comecado;
        inside = true;
    }
}

void Conexao::BeginTrans()
{
    store();
    mNiveis.push_back(Nivel::Adiado);
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
    if (nivel == Nivel::Comecado) {
        try {
            mNiveis.pop_back();
            if (anyBegun())
                store().release(number);
            else
                store().commit();
        } catch (const ErroExecucao &) {
            if (!anyBegun() && store().inTransaction())
                ignora([&] { store().rollback(); });
            noteLoss();
            throw;
        }
        return;
    }
    mNiveis.pop_back();
}

void Conexao::RollbackTrans()
{
    store();
    if (mNiveis.empty())
        failWithoutTransaction();
    const int number = depth();
    const Nivel nivel = mNiveis.back();
    mNiveis.pop_back();
    if (nivel != Nivel::Comecado)
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

qint64 Conexao::insert(const QString &tabela, const std::vector<Atribuicao> &valores)
{
    return guarded([&](Armazem &armazem) {
        beginPending();
        return armazem.insert(tabela, valores);
    });
}

bool Conexao::update(const ChaveLinha &linha, const std::vector<Atribuicao> &valores)
{
    return guarded([&](Armazem &armazem) {
        beginPending();
        return armazem.update(linha, valores);
    });
}

bool Conexao::remove(const ChaveLinha &linha)
{
    return guarded([&](Armazem &armazem) {
        beginPending();
        return armazem.remove(linha);
    });
}

} // namespace quorel
