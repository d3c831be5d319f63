#include "data/dialeto.h"

#include "data/datas.h"
#include "data/dialeto_ordem.h"
#include "data/errobd.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

bool isWordStart(QChar c)
{
    return c.isLetter() || c == u'_';
}

bool isWordPart(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}

bool isWord(QStringView word, QLatin1StringView what)
{
    return word.compare(what, Qt::CaseInsensitive) == 0;
}

/// One pass over a query, token by token.
class Tradutor final
{
public:
    Tradutor(QStringView sql, const Dialeto &dialeto) : mSql(sql), mDialeto(dialeto) { }

    QString run()
    {
        while (mPlace < mSql.size())
            token();
        endTerm();
        return mOut;
    }

private:
    void token();
    void word();
    void plain(QChar c);
    QString quoted(QChar end); ///< the text up to the closing mark, doubled marks made single
    void dateLiteral();
    void endTerm(); ///< of an ORDER BY list
    bool afterDot() const { return mOut.endsWith(u'.'); }

    QStringView mSql;
    const Dialeto &mDialeto;
    QString mOut;
    QString mLastWord; ///< upper case
    QString mTermColumn; ///< last name of the ORDER BY term so far
    qsizetype mTermEnd = -1; ///< place in mOut behind that name
    int mDepth = 0; ///< of parentheses
    int mOrderDepth = -1; ///< that of the ORDER BY we are in
    qsizetype mPlace = 0;
};

void Tradutor::token()
{
    const QChar c = mSql[mPlace];
    if (isWordStart(c))
        return word();
    ++mPlace;
    if (c == u'\'') {
        const QString text = quoted(c);
        mOut += u'\'' + QString(text).replace(u'\'', "''"_L1) + u'\'';
    } else if (c == u'"') {
        mOut += u'\'' + quoted(c).replace(u'\'', "''"_L1) + u'\'';
    } else if (c == u'[' || c == u'`') {
        mTermColumn = quoted(c == u'[' ? QChar(u']') : c);
        mOut += u'"' + QString(mTermColumn).replace(u'"', "\"\""_L1) + u'"';
        mTermEnd = mOut.size();
    } else if (c == u'#') {
        dateLiteral();
    } else {
        plain(c);
    }
}

void Tradutor::plain(QChar c)
{
    if (c == u'(')
        ++mDepth;
    const bool ends = mDepth == mOrderDepth && (c == u',' || c == u';' || c == u')');
    if (ends)
        endTerm();
    if (c == u')' && --mDepth < mOrderDepth)
        mOrderDepth = -1;
    if (!c.isSpace() && c != u'.' && c != u',' && mTermEnd >= 0)
        mTermColumn.clear(); // an expression, not a column
    mOut += c;
}

void Tradutor::word()
{
    const qsizetype start = mPlace;
    while (mPlace < mSql.size() && isWordPart(mSql[mPlace]))
        ++mPlace;
    const QStringView text = mSql.sliced(start, mPlace - start);
    if (isWord(text, "DISTINCTROW"_L1) && !afterDot())
        return;
    if ((isWord(text, "TRUE"_L1) || isWord(text, "FALSE"_L1)) && !afterDot()) {
        mOut += isWord(text, "TRUE"_L1) ? mDialeto.verdadeiro : mDialeto.falso;
        return;
    }
    if (isWord(text, "LIMIT"_L1) || isWord(text, "UNION"_L1)) {
        endTerm();
        mOrderDepth = -1;
    }
    const bool direction = isWord(text, "ASC"_L1) || isWord(text, "DESC"_L1);
    mOut += text;
    if (mOrderDepth == mDepth && !direction) {
        mTermColumn = text.toString();
        mTermEnd = mOut.size();
    }
    if (isWord(text, "BY"_L1) && mLastWord == "ORDER"_L1) {
        mOrderDepth = mDepth;
        mTermColumn.clear();
        mTermEnd = -1;
    }
    mLastWord = text.toString().toUpper();
}

QString Tradutor::quoted(QChar end)
{
    QString text;
    for (; mPlace < mSql.size(); ++mPlace) {
        if (mSql[mPlace] != end) {
            text += mSql[mPlace];
        } else if (end != u']' && mPlace + 1 < mSql.size() && mSql[mPlace + 1] == end) {
            text += end;
            ++mPlace;
        } else {
            ++mPlace;
            return text;
        }
    }
    throw ErroBD(kErroSql, u"Falta %1 na instrução SQL."_s.arg(end));
}

void Tradutor::dateLiteral()
{
    static const QRegularExpression form(u"^\\s*(\\d{1,2})/(\\d{1,2})/(\\d{4})\\s*$"_s);
    const QString text = quoted(u'#');
    const QRegularExpressionMatch match = form.match(text);
    const QDate date(
        match.capturedView(3).toInt(), match.capturedView(1).toInt(), match.capturedView(2).toInt()); // month first
    if (!match.hasMatch() || !date.isValid())
        throw ErroBD(kErroSql, u"A data #%1# não existe."_s.arg(text));
    mOut += u'\'' + storedDate(wallClock(date, QTime(0, 0))) + u'\'';
}

void Tradutor::endTerm()
{
    if (mOrderDepth == mDepth && mTermEnd >= 0 && !mTermColumn.isEmpty() && mDialeto.colunaTexto(mTermColumn))
        mOut.insert(mTermEnd, mDialeto.ordemTexto);
    mTermColumn.clear();
    mTermEnd = -1;
}

} // namespace

QString translated(QStringView sql, const Dialeto &dialeto)
{
    return orderedByKeys(Tradutor(sql, dialeto).run(), dialeto.chave);
}

} // namespace quorel
