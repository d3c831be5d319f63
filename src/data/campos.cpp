#include "data/campos.h"

#include "data/datas.h"
#include "data/errobd.h"
#include "data/linhas.h"

#include <QDateTime>
#include <QHash>
#include <QLocale>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr int kDecimalDigits = 17; ///< that tell any two doubles apart

TipoCampo typeOfDeclaration(QStringView declarado)
{
    static const QHash<QString, TipoCampo> types{{u"INTEGER"_s, TipoCampo::Longo}, {u"INT"_s, TipoCampo::Longo},
        {u"LONG"_s, TipoCampo::Longo}, {u"REAL"_s, TipoCampo::Duplo}, {u"DOUBLE"_s, TipoCampo::Duplo},
        {u"DATETIME"_s, TipoCampo::Data}, {u"BOOLEAN"_s, TipoCampo::Logico}, {u"VARCHAR"_s, TipoCampo::Texto},
        {u"TEXT"_s, TipoCampo::Memo}, {u"BLOB"_s, TipoCampo::Binario}};
    const qsizetype length = declarado.indexOf(u'(');
    const QStringView word = length < 0 ? declarado : declarado.first(length);
    return types.value(word.trimmed().toString().toUpper(), TipoCampo::Variante);
}

bool isNullValue(const QVariant &valor)
{
    return valor.isValid() && valor.isNull();
}

static bool isText(const QVariant &valor)
{
    return valor.typeId() == QMetaType::QString;
}

static bool isDate(const QVariant &valor)
{
    return valor.typeId() == QMetaType::QDateTime || valor.typeId() == QMetaType::QDate;
}

static QDateTime dateOf(const QVariant &valor)
{
    return valor.typeId() == QMetaType::QDate ? wallClock(valor.toDate(), QTime(0, 0)) : valor.toDateTime();
}

static bool isNumber(const QVariant &valor)
{
    const int type = valor.typeId();
    return type == QMetaType::Double || type == QMetaType::Float || type == QMetaType::Bool
        || (type >= QMetaType::Int && type <= QMetaType::ULongLong) || type == QMetaType::Short
        || type == QMetaType::UShort || type == QMetaType::Long || type == QMetaType::ULong;
}

static QString numberText(double value)
{
    if (value == std::trunc(value) && std::abs(value) < 1e15)
        return QString::number(value, 'f', 0);
    QString text = QString::number(value, 'g', 15);
    if (text.toDouble() != value)
        text = QString::number(value, 'g', kDecimalDigits);
    if (text.contains(u'e'))
        text = QString::number(value, 'f', QLocale::FloatingPointShortest);
    return text;
}

QString variantText(const QVariant &valor)
{
    if (!valor.isValid() || valor.isNull())
        return {};
    if (valor.typeId() == QMetaType::Bool)
        return valor.toBool() ? u"True"_s : u"False"_s;
    if (isDate(valor))
        return dateText(dateOf(valor));
    if (valor.typeId() == QMetaType::Double || valor.typeId() == QMetaType::Float)
        return numberText(valor.toDouble());
    return valor.toString();
}

[[noreturn]] static void refuse()
{
    throw ErroBD(kErroValor);
}

/// A number from a number, a boolean (True is -1) or a text that is one as a whole.
static double numberOf(const QVariant &valor)
{
    if (valor.typeId() == QMetaType::Bool)
        return valor.toBool() ? -1 : 0;
    if (!isNumber(valor) && !isText(valor))
        refuse();
    bool isOne = false;
    const double number = isText(valor) ? valor.toString().trimmed().toDouble(&isOne) : valor.toDouble(&isOne);
    if (!isOne || !std::isfinite(number))
        refuse();
    return number;
}

static QVariant toLong(const QVariant &valor)
{
    const double whole = std::nearbyint(numberOf(valor)); // halves to even
    if (whole < std::numeric_limits<qint32>::min() || whole > std::numeric_limits<qint32>::max())
        refuse();
    return static_cast<int>(whole);
}

static QVariant toBoolean(const QVariant &valor)
{
    if (isText(valor)) {
        const QString word = valor.toString().trimmed().toUpper();
        if (word == "TRUE"_L1 || word == "VERDADEIRO"_L1)
            return true;
        if (word == "FALSE"_L1 || word == "FALSO"_L1)
            return false;
    }
    return numberOf(valor) != 0;
}

static QVariant toDate(const QVariant &valor)
{
    static constexpr int kFirstYear = 100;
    static constexpr int kLastYear = 9999;
    if (isText(valor)) {
        const auto read = readDate(valor.toString());
        return read ? QVariant(*read) : (refuse(), QVariant());
    }
    const QDateTime date = dateOf(valor);
    if (!isDate(valor) || !date.isValid() || date.date().year() < kFirstYear || date.date().year() > kLastYear)
        refuse();
    return wallClock(date.date(), date.time());
}

static QVariant toText(const QVariant &valor)
{
    if (!isText(valor) && !isNumber(valor) && !isDate(valor))
        refuse();
    const QString text = variantText(valor);
    if (!text.isValidUtf16()) // half a character can't be stored
        refuse();
    return text.isNull() ? u""_s : text;
}

static QVariant toVariant(const QVariant &valor)
{
    return isDate(valor) ? QVariant(storedDate(dateOf(valor))) : valor;
}

QVariant convertedTo(TipoCampo tipo, const QVariant &valor)
{
    if (!valor.isValid() || valor.isNull())
        return QVariant(QMetaType::fromType<QString>());
    switch (tipo) {
    case TipoCampo::Longo:
        return toLong(valor);
    case TipoCampo::Duplo:
        return numberOf(valor);
    case TipoCampo::Data:
        return toDate(valor);
    case TipoCampo::Logico:
        return toBoolean(valor);
    case TipoCampo::Binario:
        return valor.typeId() == QMetaType::QByteArray ? valor : (refuse(), QVariant());
    case TipoCampo::Texto:
    case TipoCampo::Memo:
        return toText(valor);
    case TipoCampo::Variante:
        break;
    }
    return toVariant(valor);
}

static QVariant integerValue(qint64 value, TipoCampo tipo)
{
    if (tipo == TipoCampo::Logico)
        return value != 0;
    if (tipo == TipoCampo::Duplo)
        return static_cast<double>(value);
    if (tipo == TipoCampo::Texto || tipo == TipoCampo::Memo)
        return QString::number(value);
    const bool fits = value >= std::numeric_limits<qint32>::min() && value <= std::numeric_limits<qint32>::max();
    return fits ? QVariant(static_cast<int>(value)) : QVariant(static_cast<qlonglong>(value));
}

QVariant cellValue(const Linhas &linhas, qsizetype linha, int coluna, TipoCampo tipo)
{
    switch (linhas.kind(linha, coluna)) {
    case Celula::Nulo:
        break;
    case Celula::Inteiro:
        return integerValue(linhas.integer(linha, coluna), tipo);
    case Celula::Real:
        return linhas.real(linha, coluna);
    case Celula::Bytes:
        return linhas.bytes(linha, coluna).toByteArray();
    case Celula::Texto: {
        const QString text = QString::fromUtf8(linhas.bytes(linha, coluna));
        if (tipo == TipoCampo::Data) {
            if (const auto date = readStoredDate(text))
                return *date;
        }
        return text;
    }
    }
    return QVariant(QMetaType::fromType<QString>());
}

} // namespace quorel
