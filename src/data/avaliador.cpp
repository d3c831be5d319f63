#include "data/avaliador.h"

#include "data/datas.h"
#include "data/errobd.h"
#include "data/linhas.h"
#include "platform/codec.h"

#include <QDateTime>

#include <cmath>
#include <optional>

namespace quorel {

int columnNumber(const std::vector<Coluna> &colunas, QStringView nome)
{
    for (int i = 0; const Coluna &coluna : colunas) {
        if (equalNoCase(coluna.nome, nome))
            return i;
        ++i;
    }
    throw ErroBD(kErroNome);
}

static int sign(double difference)
{
    return (difference > 0) - (difference < 0);
}

/// The criterion's value as the column keeps it.
static QString columnForm(const Criterio &criterio, TipoCampo tipo)
{
    if (tipo != TipoCampo::Data || criterio.operador >= Criterio::ComecaCom)
        return criterio.valor;
    const auto date = readDate(criterio.valor);
    if (!date)
        throw ErroBD(kErroCriterio);
    return storedDate(*date);
}

static std::optional<double> numberOf(const QString &text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// 1 or 0, as the store keeps them.
static std::optional<double> booleanOf(const QString &text)
{
    try {
        return convertedTo(TipoCampo::Logico, text).toBool() ? 1 : 0;
    } catch (const ErroBD &) { // the caller tells it as a bad criterion
        return std::nullopt;
    }
}

Avaliador::Avaliador(const Criterio &criterio, const std::vector<Coluna> &colunas)
    : mColuna(columnNumber(colunas, criterio.coluna)), mTipo(colunas[static_cast<size_t>(mColuna)].tipo),
      mOperador(criterio.operador), mValor(columnForm(criterio, mTipo)), mProcurado(mValor)
{
    if (like() || mTipo == TipoCampo::Texto || mTipo == TipoCampo::Memo || mTipo == TipoCampo::Data)
        return;
    const std::optional<double> number = mTipo == TipoCampo::Logico ? booleanOf(mValor) : numberOf(mValor);
    if (!number && mTipo != TipoCampo::Variante)
        throw ErroBD(kErroCriterio);
    mPorNumero = number.has_value();
    mNumero = number.value_or(0);
}

bool Avaliador::holds(int order) const
{
    switch (mOperador) {
    case Criterio::Igual:
        return order == 0;
    case Criterio::Diferente:
        return order != 0;
    case Criterio::Menor:
        return order < 0;
    case Criterio::Maior:
        return order > 0;
    case Criterio::MenorIgual:
        return order <= 0;
    case Criterio::MaiorIgual:
        return order >= 0;
    default:
        return false;
    }
}

bool Avaliador::matchesText(QByteArrayView utf8) const
{
    switch (mOperador) {
    case Criterio::Igual:
        return mProcurado.equals(utf8);
    case Criterio::Diferente:
        return !mProcurado.equals(utf8);
    case Criterio::ComecaCom:
        return mProcurado.startsWith(utf8);
    case Criterio::TerminaCom:
        return mProcurado.endsWith(utf8);
    case Criterio::Contem:
        return mProcurado.isWithin(utf8);
    default:
        return holds(compareNoCase(QString::fromUtf8(utf8), mValor));
    }
}

bool Avaliador::matchesNumber(double number) const
{
    if (mPorNumero)
        return holds(sign(number - mNumero));
    return matchesText(variantText(number).toUtf8());
}

bool Avaliador::matches(const Linhas &linhas, qsizetype linha) const
{
    switch (linhas.kind(linha, mColuna)) {
    case Celula::Nulo:
        return false;
    case Celula::Inteiro:
        if (mPorNumero)
            return holds(sign(static_cast<double>(linhas.integer(linha, mColuna)) - mNumero));
        break;
    case Celula::Texto:
        if (!mPorNumero && (mTipo != TipoCampo::Data || !like()))
            return matchesText(linhas.bytes(linha, mColuna));
        break;
    default:
        break;
    }
    return matches(cellValue(linhas, linha, mColuna, mTipo));
}

bool Avaliador::matches(const QVariant &valor) const
{
    if (!valor.isValid() || valor.isNull())
        return false;
    if (valor.typeId() == QMetaType::QDateTime)
        return matchesText((like() ? dateText(valor.toDateTime()) : storedDate(valor.toDateTime())).toUtf8());
    if (valor.typeId() == QMetaType::QString || valor.typeId() == QMetaType::QByteArray)
        return matchesText(valor.toString().toUtf8());
    if (valor.typeId() == QMetaType::Bool)
        return matchesNumber(valor.toBool() ? 1 : 0);
    return matchesNumber(valor.toDouble());
}

int compareValues(const QVariant &a, const QVariant &b)
{
    if (a.isNull() || b.isNull())
        return int(b.isNull()) - int(a.isNull());
    if (a.typeId() == QMetaType::QDateTime && b.typeId() == QMetaType::QDateTime)
        return (a.toDateTime() > b.toDateTime()) - (a.toDateTime() < b.toDateTime());
    if (a.typeId() == QMetaType::QString || b.typeId() == QMetaType::QString)
        return compareForOrder(a.toString(), b.toString());
    return sign(a.toDouble() - b.toDouble());
}

} // namespace quorel
