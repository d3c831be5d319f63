#include "data/recordset.h"

#include "data/conexao.h"
#include "data/errobd.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorel {

[[noreturn]] static void failGone()
{
    throw ErroBD(kErroArmazem, u"O registro não existe mais no banco de dados; nada foi gravado."_s);
}

void RecordSet::requireWritableSet() const
{
    requireOpen();
    if (mChave < 0)
        throw ErroBD(kErroArmazem, u"O conjunto de registros só pode ser lido."_s);
}

bool RecordSet::writable(int number) const
{
    return mChave >= 0 && field(number).tabela == mBase;
}

bool RecordSet::editing() const
{
    if (mLugar != Lugar::Linha || mEdicoes.empty())
        return false;
    const auto edit = mEdicoes.find(rowAt(mPonto));
    return edit != mEdicoes.end() && !edit->second.emLote;
}

qint32 RecordSet::EditMode() const
{
    requireOpen();
    if (mInclusao)
        return kEdicaoInclusao;
    if (mLugar == Lugar::Linha && deleted(rowAt(mPonto)))
        return kEdicaoExcluido;
    return editing() ? kEdicaoEmCurso : kEdicaoNenhuma;
}

void RecordSet::setValue(const QVariant &nome, const QVariant &valor)
{
    const int column = fieldNumber(nome);
    const qsizetype row = mInclusao ? 0 : currentRow();
    requireWritableSet();
    if (!writable(column))
        throw ErroBD(kErroArmazem, u"O campo \"%1\" só pode ser lido."_s.arg(field(column).nome));
    const QVariant converted = convertedTo(field(column).tipo, valor);
    if (mInclusao) {
        mInclusao->valores[column] = converted;
        return;
    }
    Edicao &edit = mEdicoes[row];
    edit.emLote = false;
    edit.valores[column] = converted;
}

void RecordSet::AddNew()
{
    requireWritableSet();
    saveEdit();
    const bool again = mLugar == Lugar::Novo;
    mInclusao = Inclusao{{}, again ? mInclusao->voltaLugar : mLugar, again ? mInclusao->voltaPonto : mPonto};
    stand(Lugar::Novo);
}

void RecordSet::saveEdit()
{
    if (editing())
        writeEdit(rowAt(mPonto));
}

void RecordSet::Update()
{
    requireOpen();
    if (mInclusao)
        writeAdded();
    else
        saveEdit();
}

void RecordSet::UpdateBatch()
{
    requireOpen();
    if (mInclusao)
        writeAdded();
    while (!mEdicoes.empty())
        writeEdit(mEdicoes.begin()->first);
}

void RecordSet::CancelUpdate()
{
    requireOpen();
    if (mInclusao) {
        const Inclusao inclusion = *std::move(mInclusao);
        mInclusao.reset();
        if (mLugar == Lugar::Novo)
            stand(inclusion.voltaLugar, inclusion.voltaPonto);
    } else if (editing()) {
        mEdicoes.erase(rowAt(mPonto));
    }
}

void RecordSet::CancelBatch()
{
    CancelUpdate();
    if (mLugar == Lugar::Linha)
        mEdicoes.erase(rowAt(mPonto));
}

void RecordSet::dropChanges()
{
    CancelUpdate();
    mEdicoes.clear();
}

qint64 RecordSet::keyOf(qsizetype row) const
{
    return storedValue(row, mChave).toLongLong();
}

std::vector<Atribuicao> RecordSet::assignments(const Valores &valores) const
{
    std::vector<Atribuicao> result;
    for (const auto &[column, value] : valores)
        result.push_back({mColunas[static_cast<size_t>(column)].origem, value});
    return result;
}

void RecordSet::writeEdit(qsizetype row)
{
    Edicao &edit = mEdicoes[row];
    edit.emLote = false; // one that can't be written is pending again, so that its report cancels it
    const ChaveLinha key{mBase, mColunas[static_cast<size_t>(mChave)].origem, keyOf(row)};
    if (!mConexao->update(key, assignments(edit.valores)))
        failGone();
    for (const auto &[column, value] : edit.valores)
        mGravados[row][column] = value;
    mEdicoes.erase(row);
    emit rowsChanged(false);
}

/// The key of a row just added. One that no field can hold is not kept, nor is its row.
QVariant RecordSet::addedKey(qlonglong number) const
{
    try {
        return convertedTo(TipoCampo::Longo, number);
    } catch (const ErroExecucao &) {
        mConexao->remove({mBase, mColunas[static_cast<size_t>(mChave)].origem, number});
        throw;
    }
}

void RecordSet::writeAdded()
{
    const qlonglong number =
        mConexao->insert(mBase, mColunas[static_cast<size_t>(mChave)].origem, assignments(mInclusao->valores));
    const QVariant key = addedKey(number);
    const qsizetype row = rowCount();
    mGravados[row] = std::move(mInclusao->valores);
    mGravados[row][mChave] = key;
    mInclusao.reset();
    ++mAcrescidas;
    if (!mComoLidas)
        mOrdem.push_back(row);
    if (mLugar == Lugar::Novo)
        stand(Lugar::Linha, placeCount() - 1);
    emit rowsChanged(false);
}

void RecordSet::Delete(qint32 afeta)
{
    requireOpen();
    if (afeta != 1)
        throw ErroBD(kErroCriterio);
    if (mLugar == Lugar::Novo)
        return CancelUpdate();
    const qsizetype row = currentRow();
    requireWritableSet();
    if (!mConexao->remove({mBase, mColunas[static_cast<size_t>(mChave)].origem, keyOf(row)}))
        failGone();
    mEdicoes.erase(row);
    mExcluidas.insert(row);
    ++mExcluidasEmOrdem;
    emit rowsChanged(false);
}

void RecordSet::reread(qsizetype row, const Valores &exceto)
{
    std::vector<QString> names;
    std::vector<int> columns;
    for (int i = 0; i < fieldCount(); ++i) {
        if (field(i).tabela != mBase || exceto.contains(i))
            continue;
        names.push_back(field(i).origem);
        columns.push_back(i);
    }
    names.push_back(mColunas[static_cast<size_t>(mChave)].origem); // so that there is a column in any case
    const Linhas stored = mConexao->readRow({mBase, names.back(), keyOf(row)}, names);
    if (stored.rowCount() == 0)
        failGone();
    for (int i = 0; const int column : columns) {
        mGravados[row][column] = cellValue(stored, 0, i, field(column).tipo);
        ++i;
    }
}

void RecordSet::Resync()
{
    const qsizetype row = currentRow();
    requireWritableSet();
    const auto edit = mEdicoes.find(row);
    reread(row, edit == mEdicoes.end() ? Valores() : edit->second.valores);
    if (edit != mEdicoes.end())
        edit->second.emLote = true;
    emit rowsChanged(false);
}

} // namespace quorel
