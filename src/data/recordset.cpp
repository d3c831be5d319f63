#include "data/recordset.h"

#include "data/avaliador.h"
#include "data/conexao.h"
#include "data/errobd.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace quorel {

RecordSet::RecordSet() = default;
RecordSet::~RecordSet() = default;

void RecordSet::requireOpen() const
{
    if (!mConexao)
        throw ErroBD(kErroFechado);
}

void RecordSet::open(std::shared_ptr<Conexao> conexao, const QString &sql)
{
    if (!conexao)
        throw ErroBD(kErroSemConexao);
    mConexao = std::move(conexao);
    mSql = sql;
    try {
        load();
    } catch (const ErroExecucao &) {
        mConexao.reset();
        throw;
    }
}

void RecordSet::openLater(std::shared_ptr<Conexao> conexao, const QString &sql)
{
    if (!conexao)
        throw ErroBD(kErroSemConexao);
    mConexao = std::move(conexao);
    mSql = sql;
    mAdiada = true;
}

void RecordSet::requeryLater()
{
    requireOpen();
    mAdiada = mAdiada || (!mInclusao && mEdicoes.empty());
}

void RecordSet::settle()
{
    if (!mAdiada)
        return;
    requireOpen();
    load();
    mAdiada = false;
}

void RecordSet::load()
{
    Linhas rows;
    std::vector<Coluna> columns = mConexao->query(mSql, rows);
    requireOrder(columns); // before anything of the rows read last is given up
    mColunas = std::move(columns);
    mLinhas = std::move(rows);
    mGravados.clear();
    mAcrescidas = 0;
    mExcluidas.clear();
    mEdicoes.clear();
    mInclusao.reset();
    findBase();
    rebuildOrder();
    standFrom(0);
    emit rowsChanged(true);
}

/// Filter and order outlive the columns that they name: another program may have changed the table.
void RecordSet::requireOrder(const std::vector<Coluna> &colunas) const
{
    if (mFiltro)
        Avaliador(*mFiltro, colunas);
    for (const TermoOrdem &term : mOrdenacao)
        columnNumber(colunas, term.coluna);
}

/// Writes go to the first table whose key is among the columns, if that is the table of the first column.
void RecordSet::findBase()
{
    mBase.clear();
    mChave = -1;
    for (int i = 0; i < fieldCount(); ++i) {
        const Coluna &column = mColunas[static_cast<size_t>(i)];
        if (mBase.isEmpty())
            mBase = column.tabela;
        if (mChave < 0 && column.chave && column.tabela == mBase)
            mChave = i;
    }
}

void RecordSet::Close()
{
    requireOpen();
    mAdiada = false;
    mConexao.reset();
    mColunas.clear();
    mLinhas = Linhas();
    mGravados.clear();
    mAcrescidas = 0;
    mExcluidas.clear();
    mEdicoes.clear();
    mInclusao.reset();
    mFiltro.reset();
    mOrdenacao.clear();
    rebuildOrder();
    stand(Lugar::Inicio);
    emit rowsChanged(true);
}

void RecordSet::setCacheSize(int linhas)
{
    requireOpen();
    if (linhas < 1)
        throw ErroBD(kErroCriterio);
}

void RecordSet::Requery()
{
    requireOpen();
    if (mInclusao || !mEdicoes.empty())
        throw ErroBD(kErroContexto);
    load();
}

int RecordSet::fieldCount() const
{
    return static_cast<int>(mColunas.size());
}

const Coluna &RecordSet::field(int number) const
{
    requireOpen();
    if (number < 0 || number >= fieldCount())
        throw ErroBD(kErroNome);
    return mColunas[static_cast<size_t>(number)];
}

int RecordSet::fieldNumber(const QVariant &nome) const
{
    requireOpen();
    if (nome.typeId() == QMetaType::QString)
        return columnNumber(mColunas, nome.toString());
    bool isNumber = false;
    const int number = nome.toInt(&isNumber);
    if (!isNumber)
        throw ErroBD(kErroNome);
    field(number);
    return number;
}

bool RecordSet::deleted(qsizetype row) const
{
    return !mExcluidas.empty() && mExcluidas.contains(row);
}

bool RecordSet::matches(const Avaliador &avaliador, qsizetype row) const
{
    if (row >= mLinhas.rowCount() || (!mGravados.empty() && mGravados.contains(row)))
        return avaliador.matches(storedValue(row, avaliador.column()));
    return avaliador.matches(mLinhas, row);
}

void RecordSet::rebuildOrder()
{
    mOrdem.clear();
    mComoLidas = !mFiltro && mOrdenacao.empty();
    mExcluidasEmOrdem = mComoLidas ? std::ssize(mExcluidas) : 0;
    if (mComoLidas)
        return;
    const auto avaliador = mFiltro ? std::make_optional<Avaliador>(*mFiltro, mColunas) : std::nullopt;
    for (qsizetype row = 0; row < rowCount(); ++row) {
        if (!deleted(row) && (!avaliador || matches(*avaliador, row)))
            mOrdem.push_back(row);
    }
    sortOrder();
}

void RecordSet::sortOrder()
{
    std::ranges::sort(mOrdem); // rows of equal terms in the order they were read
    std::vector<std::pair<int, bool>> terms;
    for (const TermoOrdem &term : mOrdenacao)
        terms.emplace_back(columnNumber(mColunas, term.coluna), term.decrescente);
    std::ranges::stable_sort(mOrdem, [&](qsizetype a, qsizetype b) {
        for (const auto &[column, descending] : terms) {
            const int order = compareValues(storedValue(a, column), storedValue(b, column));
            if (order != 0)
                return descending ? order > 0 : order < 0;
        }
        return false;
    });
}

QVariant RecordSet::storedValue(qsizetype row, int column) const
{
    if (!mGravados.empty()) {
        if (const auto written = mGravados.find(row); written != mGravados.end()) {
            if (const auto value = written->second.find(column); value != written->second.end())
                return value->second;
        }
    }
    if (row >= mLinhas.rowCount())
        return QVariant(QMetaType::fromType<QString>());
    return cellValue(mLinhas, row, column, mColunas[static_cast<size_t>(column)].tipo);
}

qsizetype RecordSet::currentRow() const
{
    requireOpen();
    if (mLugar != Lugar::Linha || deleted(rowAt(mPonto)))
        throw ErroBD(kErroSemRegistro);
    return rowAt(mPonto);
}

QVariant RecordSet::value(const QVariant &nome) const
{
    return value(fieldNumber(nome));
}

QVariant RecordSet::value(int column) const
{
    field(column);
    if (mLugar == Lugar::Novo) {
        const auto value = mInclusao->valores.find(column);
        return value == mInclusao->valores.end() ? QVariant(QMetaType::fromType<QString>()) : value->second;
    }
    const qsizetype row = currentRow();
    if (mEdicoes.empty())
        return storedValue(row, column);
    if (const auto edit = mEdicoes.find(row); edit != mEdicoes.end()) {
        if (const auto value = edit->second.valores.find(column); value != edit->second.valores.end())
            return value->second;
    }
    return storedValue(row, column);
}

bool RecordSet::BOF() const
{
    requireOpen();
    return mLugar == Lugar::Inicio || (mLugar == Lugar::Fim && visibleCount() == 0);
}

bool RecordSet::EOF_() const
{
    requireOpen();
    return mLugar == Lugar::Fim || (mLugar == Lugar::Inicio && visibleCount() == 0);
}

qint32 RecordSet::RecordCount() const
{
    requireOpen();
    return static_cast<qint32>(visibleCount() + (mInclusao ? 1 : 0));
}

qint32 RecordSet::AbsolutePosition() const
{
    requireOpen();
    if (mLugar == Lugar::Novo || (mLugar != Lugar::Linha && visibleCount() == 0))
        return kPosicaoDesconhecida;
    if (mLugar == Lugar::Inicio)
        return kPosicaoInicio;
    if (mLugar == Lugar::Fim)
        return kPosicaoFim;
    if (deleted(rowAt(mPonto)))
        return kPosicaoDesconhecida;
    qsizetype position = mPonto + 1;
    if (mExcluidasEmOrdem > 0) {
        for (qsizetype place = 0; place < mPonto; ++place)
            position -= deleted(rowAt(place)) ? 1 : 0;
    }
    return static_cast<qint32>(position);
}

qint32 RecordSet::Bookmark() const
{
    requireOpen();
    if (mLugar == Lugar::Novo)
        return static_cast<qint32>(rowCount() + 1);
    if (mLugar != Lugar::Linha)
        throw ErroBD(kErroSemRegistro);
    return static_cast<qint32>(rowAt(mPonto) + 1);
}

std::vector<qint32> RecordSet::visibleBookmarks() const
{
    std::vector<qint32> marks;
    for (qsizetype place = 0; place < placeCount(); ++place) {
        if (!deleted(rowAt(place)))
            marks.push_back(static_cast<qint32>(rowAt(place) + 1));
    }
    return marks;
}

QVariant RecordSet::lookUp(int coluna, qint64 numero, int resultado) const
{
    for (qsizetype row = 0; row < rowCount(); ++row) {
        if (!deleted(row) && storedValue(row, coluna).toLongLong() == numero)
            return storedValue(row, resultado);
    }
    return {};
}

QVariant RecordSet::valueAt(qint32 marca, int coluna) const
{
    const qsizetype row = qsizetype(marca) - 1;
    if (row < 0 || row >= rowCount() || coluna < 0 || coluna >= fieldCount())
        return {};
    return storedValue(row, coluna);
}

} // namespace quorel
