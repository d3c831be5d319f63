#include "data/dialeto_ordem.h"

#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

/// What stops a query from being a plain select, as words outside of texts.
constexpr std::array kNotPlain{"DISTINCT"_L1, "GROUP"_L1, "HAVING"_L1, "UNION"_L1, "EXCEPT"_L1, "INTERSECT"_L1,
    "LIMIT"_L1, "COUNT"_L1, "SUM"_L1, "AVG"_L1, "MIN"_L1, "MAX"_L1, "TOTAL"_L1, "GROUP_CONCAT"_L1};

constexpr std::array kBehindTable{
    "INNER"_L1, "LEFT"_L1, "RIGHT"_L1, "FULL"_L1, "CROSS"_L1, "OUTER"_L1, "NATURAL"_L1, "JOIN"_L1, "ON"_L1, "USING"_L1};

template <std::size_t Size>
bool isOneOf(QStringView word, const std::array<QLatin1StringView, Size> &words)
{
    return std::ranges::any_of(
        words, [&](QLatin1StringView each) { return word.compare(each, Qt::CaseInsensitive) == 0; });
}

bool isWord(QStringView word, QLatin1StringView what)
{
    return word.compare(what, Qt::CaseInsensitive) == 0;
}

/// One pass over a query, piece by piece: a word, a quoted name, a text, or one sign.
class Ordenador final
{
public:
    Ordenador(QStringView sql, const std::function<QString(QStringView)> &chave) : mSql(sql), mKeyOf(chave) { }

    QString run();

private:
    enum class Lugar { Antes, Colunas, Tabelas, Condicao, Ordem, Fim };

    QStringView next(); ///< empty at the end
    qsizetype endOfPiece() const;
    void take(QStringView piece);
    void takeTable(QStringView piece);
    bool takesPlace(QStringView piece); ///< whether the piece begins another part of the query

    QStringView mSql;
    const std::function<QString(QStringView)> &mKeyOf;
    qsizetype mPlace = 0;
    int mDepth = 0; ///< of parentheses
    Lugar mWhere = Lugar::Antes;
    bool mPlain = true;
    bool mTableDue = false; ///< the next name is a table's
    bool mAliasDue = false; ///< it may be that table's other name
    QStringList mNames; ///< of the tables, as the query may call them
    QStringList mKeys;
    bool mOrdered = false;
    bool mDescending = false; ///< the last term of ORDER BY
    qsizetype mEnd = 0; ///< behind the last piece, a final ";" not counted
};

qsizetype Ordenador::endOfPiece() const
{
    const QChar first = mSql[mPlace];
    qsizetype end = mPlace + 1;
    if (first == u'\'' || first == u'"') {
        while (end < mSql.size() && mSql[end] != first)
            ++end;
        return std::min(end + 1, mSql.size()); // a doubled mark makes two pieces, which does no harm
    }
    if (first.isLetter() || first == u'_') {
        while (end < mSql.size() && (mSql[end].isLetterOrNumber() || mSql[end] == u'_'))
            ++end;
    }
    return end;
}

QStringView Ordenador::next()
{
    while (mPlace < mSql.size() && mSql[mPlace].isSpace())
        ++mPlace;
    if (mPlace >= mSql.size())
        return {};
    const qsizetype start = mPlace;
    mPlace = endOfPiece();
    return mSql.sliced(start, mPlace - start);
}

bool Ordenador::takesPlace(QStringView piece)
{
    if (mDepth > 0)
        return false;
    if (isWord(piece, "SELECT"_L1)) {
        mPlain = mPlain && mWhere == Lugar::Antes;
        mWhere = Lugar::Colunas;
    } else if (isWord(piece, "FROM"_L1)) {
        mWhere = Lugar::Tabelas;
        mTableDue = true;
    } else if (isWord(piece, "WHERE"_L1)) {
        mWhere = Lugar::Condicao;
    } else if (isWord(piece, "ORDER"_L1)) {
        mWhere = Lugar::Ordem;
        mOrdered = true;
    } else if (piece == u";") {
        mPlain = mPlain && mWhere != Lugar::Fim;
        mWhere = Lugar::Fim;
    } else {
        return false;
    }
    return true;
}

void Ordenador::takeTable(QStringView piece)
{
    const bool isName = piece[0].isLetter() || piece[0] == u'_' || piece[0] == u'"';
    if (isWord(piece, "SELECT"_L1)) {
        mPlain = false;
    } else if (isWord(piece, "JOIN"_L1) || piece == u",") {
        mTableDue = true;
        mAliasDue = false;
    } else if (mTableDue && isName) {
        const QString bare = piece[0] == u'"' ? piece.sliced(1, piece.size() - 2).toString() : piece.toString();
        mNames << piece.toString();
        mKeys << mKeyOf(bare);
        mPlain = mPlain && !mKeys.last().isEmpty();
        mTableDue = false;
        mAliasDue = true;
    } else if (mAliasDue && isName && !isWord(piece, "AS"_L1)) {
        if (!isOneOf(piece, kBehindTable))
            mNames.last() = piece.toString();
        mAliasDue = false;
    } else if (piece == u".") {
        mPlain = mPlain && !mAliasDue; // a table of another database
    }
}

void Ordenador::take(QStringView piece)
{
    if (piece == u"(")
        ++mDepth;
    else if (piece == u")")
        --mDepth;
    if (takesPlace(piece))
        return;
    if (mWhere == Lugar::Antes || mWhere == Lugar::Fim || (mDepth == 0 && isOneOf(piece, kNotPlain)))
        mPlain = false;
    else if (mWhere == Lugar::Colunas && isOneOf(piece, kNotPlain))
        mPlain = false;
    else if (mWhere == Lugar::Tabelas)
        takeTable(piece);
    else if (mWhere == Lugar::Ordem)
        mDescending = isWord(piece, "DESC"_L1);
}

QString Ordenador::run()
{
    for (QStringView piece = next(); !piece.isEmpty(); piece = next()) {
        take(piece);
        if (mWhere != Lugar::Fim)
            mEnd = mPlace;
    }
    QString sql = mSql.toString();
    if (!mPlain || mNames.isEmpty())
        return sql;
    QStringList terms;
    for (qsizetype i = 0; i < mNames.size(); ++i)
        terms << mNames[i] + u'.' + mKeys[i] + (mDescending ? " DESC"_L1 : ""_L1);
    return sql.insert(mEnd, (mOrdered ? u", "_s : u" ORDER BY "_s) + terms.join(u", "_s));
}

} // namespace

QString orderedByKeys(const QString &sql, const std::function<QString(QStringView)> &chave)
{
    return chave ? Ordenador(sql, chave).run() : sql;
}

} // namespace quorel
