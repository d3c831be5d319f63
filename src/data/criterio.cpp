#include "data/criterio.h"

#include "data/errobd.h"

#include <QRegularExpression>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace quorel {

[[noreturn]] static void refuse()
{
    throw ErroBD(kErroCriterio);
}

/// Takes a column's name, bare or between brackets, off the front.
static QString takeColumn(QStringView &rest)
{
    rest = rest.trimmed();
    if (rest.startsWith(u'[')) {
        const qsizetype end = rest.indexOf(u']');
        if (end < 2)
            refuse();
        QString name = rest.sliced(1, end - 1).toString();
        rest = rest.sliced(end + 1);
        return name;
    }
    qsizetype size = 0;
    while (size < rest.size() && (rest[size].isLetterOrNumber() || rest[size] == u'_'))
        ++size;
    if (size == 0 || rest[0].isDigit())
        refuse();
    QString name = rest.first(size).toString();
    rest = rest.sliced(size);
    return name;
}

static bool takeOperator(QStringView &rest, Criterio::Operador &operador)
{
    static constexpr std::array<std::pair<QLatin1StringView, Criterio::Operador>, 6> kOperators{{
        {"<>"_L1, Criterio::Diferente},
        {"<="_L1, Criterio::MenorIgual},
        {">="_L1, Criterio::MaiorIgual},
        {"="_L1, Criterio::Igual},
        {"<"_L1, Criterio::Menor},
        {">"_L1, Criterio::Maior},
    }};
    for (const auto &[text, known] : kOperators) {
        if (rest.startsWith(text)) {
            operador = known;
            rest = rest.sliced(text.size());
            return true;
        }
    }
    return false;
}

/// The text between two apostrophes that are the whole of it.
static QStringView insideApostrophes(QStringView text)
{
    if (text.size() < 2 || !text.endsWith(u'\''))
        refuse();
    const QStringView inside = text.sliced(1, text.size() - 2);
    if (inside.contains(u'\''))
        refuse();
    return inside;
}

static void readValue(QStringView rest, Criterio &criterio)
{
    static const QRegularExpression number(u"^[+-]?(\\d+(\\.\\d*)?|\\.\\d+)$"_s);
    const QStringView text = rest.trimmed();
    if (text.startsWith(u'\'')) {
        criterio.valor = insideApostrophes(text).toString();
        return;
    }
    criterio.numero = true;
    criterio.valor = text.toString();
    if (!number.match(criterio.valor).hasMatch())
        refuse();
}

static void readPattern(QStringView rest, Criterio &criterio)
{
    const QStringView trimmed = rest.trimmed();
    QStringView pattern = trimmed.startsWith(u'\'') ? insideApostrophes(trimmed) : trimmed;
    const bool leading = pattern.startsWith(u'*');
    if (leading)
        pattern = pattern.sliced(1);
    const bool trailing = pattern.endsWith(u'*');
    if (trailing)
        pattern.chop(1);
    if ((!leading && !trailing) || pattern.contains(u'*'))
        refuse();
    criterio.valor = pattern.toString();
    if (trailing)
        criterio.operador = leading ? Criterio::Contem : Criterio::ComecaCom;
    else
        criterio.operador = Criterio::TerminaCom;
}

Criterio readCriterio(QStringView texto)
{
    static constexpr QLatin1StringView kLike{"like"};
    Criterio criterio;
    QStringView rest = texto;
    criterio.coluna = takeColumn(rest);
    const bool apart = !rest.isEmpty() && rest[0].isSpace();
    rest = rest.trimmed();
    if (takeOperator(rest, criterio.operador)) {
        readValue(rest, criterio);
        return criterio;
    }
    if (!apart || !rest.startsWith(kLike, Qt::CaseInsensitive))
        refuse();
    rest = rest.sliced(kLike.size());
    if (!rest.isEmpty() && rest[0].isLetterOrNumber())
        refuse();
    readPattern(rest, criterio);
    return criterio;
}

std::vector<TermoOrdem> readOrdem(QStringView texto)
{
    std::vector<TermoOrdem> terms;
    if (texto.trimmed().isEmpty())
        return terms;
    for (QStringView piece : texto.tokenize(u',')) {
        TermoOrdem term;
        term.coluna = takeColumn(piece);
        const QStringView direction = piece.trimmed();
        term.decrescente = direction.compare("DESC"_L1, Qt::CaseInsensitive) == 0;
        if (!direction.isEmpty() && !term.decrescente && direction.compare("ASC"_L1, Qt::CaseInsensitive) != 0)
            refuse();
        terms.push_back(term);
    }
    return terms;
}

} // namespace quorel
