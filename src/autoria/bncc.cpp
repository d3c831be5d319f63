#include "autoria/bncc.h"

#include "platform/codec.h"

#include <QRegularExpression>

namespace quorel {

using namespace Qt::StringLiterals;

bool isBnccCode(QStringView text)
{
    static const QRegularExpression form(
        u"\\A(EI0[1-3][A-Z]{2}\\d{2}|EF\\d{2}[A-Z]{2}\\d{2}|EM13[A-Z]{2,3}\\d{2,3})\\z"_s);
    return form.match(text.toString()).hasMatch();
}

static QStringList words(const QString &list)
{
    static const QRegularExpression between(u"[\\s,;]+"_s);
    return upper1252(list).split(between, Qt::SkipEmptyParts);
}

QStringList wordsOfNoBnccCode(QStringView list)
{
    QStringList others = words(list.toString());
    others.removeIf([](const QString &word) { return isBnccCode(word); });
    return others;
}

QStringList bnccCodes(QStringView list, QStringView desc)
{
    static const QRegularExpression brackets(u"\\[([^\\[\\]]*)\\]\\s*\\z"_s);
    QString all = list.toString();
    if (const QRegularExpressionMatch match = brackets.match(desc.toString()); match.hasMatch())
        all += u' ' + match.captured(1);
    QStringList codes;
    for (const QString &word : words(all)) {
        if (isBnccCode(word) && !codes.contains(word))
            codes += word;
    }
    return codes;
}

} // namespace quorel
