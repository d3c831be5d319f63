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

QStringList bnccCodes(QStringView list, QStringView desc)
{
    static const QRegularExpression between(u"[\\s,;]+"_s);
    static const QRegularExpression brackets(u"\\[([^\\[\\]]*)\\]\\s*\\z"_s);
    QString words = list.toString();
    if (const QRegularExpressionMatch match = brackets.match(desc.toString()); match.hasMatch())
        words += u' ' + match.captured(1);
    QStringList codes;
    for (const QString &word : upper1252(words).split(between, Qt::SkipEmptyParts)) {
        if (isBnccCode(word) && !codes.contains(word))
            codes += word;
    }
    return codes;
}

} // namespace quorel
