#include "data/entrega.h"

#include "data/conexao.h"
#include "data/errobd.h"
#include "data/pendentes.h"

#include <span>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

constexpr int kMostInOne = 1000; ///< rows a transaction; its syncs cost as much as some hundred rows

/// A register that does not tell its rows apart may have taken some: nothing more can be delivered now.
struct NaoSeSabe
{ };

class Entrega final
{
public:
    Entrega(Pendentes &waiting, Conexao &open) : mWaiting(waiting), mOpen(open) { }

    void take(std::span<const LinhaEspera> batch);
    /// Forgets what came in. One that could not be forgotten is known by its id when it is offered again.
    void finish()
    {
        ignora([&] { mWaiting.forget(mDone); });
        mDone.clear();
    }
    Entregue result() const { return mResult; }

private:
    std::vector<SorteLinha> log(std::span<const LinhaEspera> batch);
    void note(const LinhaEspera &row, SorteLinha fate);
    void stays(const LinhaEspera &row, const QString &reason);

    Pendentes &mWaiting;
    Conexao &mOpen;
    std::vector<qint64> mDone;
    Entregue mResult;
};

/// Whether it is this row, and not the register, that is at fault.
bool isOfTheRow(const ErroBD &erro)
{
    return erro.especie() == EspecieFalha::Recusado || erro.especie() == EspecieFalha::Outra;
}

std::vector<SorteLinha> Entrega::log(std::span<const LinhaEspera> batch)
{
    std::vector<LinhaLog> lines;
    std::vector<qint64> numbers;
    for (const LinhaEspera &each : batch) {
        lines.push_back(each.linha);
        numbers.push_back(each.ordem);
    }
    bool withIds = true;
    try {
        return mOpen.log(lines, [&](bool comIds) {
            withIds = comIds;
            if (!comIds)
                mWaiting.setDoubtful(numbers);
        });
    } catch (const ErroExecucao &) {
        if (!withIds) // they were not noted, or they may have come in: either way they are not tried again now
            throw NaoSeSabe();
        throw;
    }
}

void Entrega::stays(const LinhaEspera &row, const QString &reason)
{
    ++mResult.ficaram;
    ignora([&] { mWaiting.setReason(row.ordem, reason); });
}

void Entrega::note(const LinhaEspera &row, SorteLinha fate)
{
    switch (fate) {
    case SorteLinha::Entrou:
    case SorteLinha::JaEstava:
        ++mResult.entraram;
        mDone.push_back(row.ordem);
        break;
    case SorteLinha::Apagada:
        ++mResult.apagadas;
        mDone.push_back(row.ordem);
        break;
    case SorteLinha::OutroNome:
        stays(row, u"o código é agora de outro aluno ou de outra classe, ou de nenhum"_s);
        break;
    case SorteLinha::Espera:
        stays(row, u"não se sabe se já entrou: o cadastro é de uma versão anterior; rode quorel-cadastro atualiza"_s);
        break;
    }
}

void Entrega::take(std::span<const LinhaEspera> batch)
{
    try {
        const std::vector<SorteLinha> fates = log(batch);
        for (size_t i = 0; i < batch.size(); ++i)
            note(batch[i], fates[i]);
    } catch (const ErroBD &erro) {
        if (!isOfTheRow(erro))
            throw;
        if (batch.size() == 1)
            return stays(batch.front(), erro.descricao());
        const size_t half = batch.size() / 2;
        take(batch.first(half));
        take(batch.subspan(half));
    }
}

} // namespace

Entregue deliverWaiting(Pendentes &pendentes, Conexao &conexao, const QString &caminho, bool presas)
{
    const IdentidadeCadastro identity = conexao.identity();
    Entrega delivery(pendentes, conexao);
    try {
        qint64 last = 0;
        for (bool more = true; more;) {
            std::vector<LinhaEspera> batch;
            ignora([&] { batch = pendentes.rows(last, kMostInOne, presas); });
            more = !batch.empty();
            if (more)
                last = batch.back().ordem;
            std::erase_if(batch, [&](const LinhaEspera &row) {
                const bool known = !row.linha.cadastro.isEmpty();
                return known ? !identity.answersTo(row.linha.cadastro) : row.caminho != caminho;
            });
            if (!batch.empty())
                delivery.take(batch);
            if (!identity.temEntregas)
                delivery.finish(); // nothing else would keep these from coming in twice
        }
    } catch (const NaoSeSabe &) { // what is there waits for better days
    } catch (const ErroExecucao &) {
        delivery.finish();
        throw;
    }
    delivery.finish();
    return delivery.result();
}

} // namespace quorel
