#include "autoria/finding.h"

#include <algorithm>

namespace quorel {

using namespace Qt::StringLiterals;

static QString wordOf(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return u"erro"_s;
    case Severity::Warning:
        return u"aviso"_s;
    default:
        return u"nota"_s;
    }
}

QString gnuLine(const Finding &finding)
{
    return finding.file + u':' + QString::number(finding.place.line) + u':' + QString::number(finding.place.column)
        + u": "_s + wordOf(finding.severity) + u": "_s + finding.text.simplified() + u" ["_s + finding.code + u']';
}

QJsonObject diagnostic(const Finding &finding)
{
    const QJsonObject place{
        {u"line"_s, finding.place.line - 1}, {u"character"_s, finding.place.column - 1}}; // one character is marked
    const QJsonObject end{{u"line"_s, finding.place.line - 1}, {u"character"_s, finding.place.column}};
    return {{u"range"_s, QJsonObject{{u"start"_s, place}, {u"end"_s, end}}}, {u"severity"_s, int(finding.severity)},
        {u"code"_s, finding.code}, {u"source"_s, u"quorel-blocos"_s}, {u"message"_s, finding.text.simplified()},
        {u"data"_s, QJsonObject{{u"arquivo"_s, finding.file}}}};
}

bool needMending(const Findings &findings)
{
    return std::ranges::any_of(findings, [](const Finding &f) { return f.severity != Severity::Note; });
}

void sortByPlace(Findings &findings)
{
    std::ranges::stable_sort(findings, [](const Finding &a, const Finding &b) {
        return std::pair(a.place.line, a.place.column) < std::pair(b.place.line, b.place.column);
    });
}

} // namespace quorel
