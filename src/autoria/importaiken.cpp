#include "autoria/importdraft.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace quorel {

void readAiken(const QStringList &lines, ImportBuilder &builder)
{
    static const QRegularExpression option(u"^\\s*([A-Z])[.)]\\s+(.*\\S)\\s*$"_s);
    static const QRegularExpression answer(u"^\\s*ANSWER:\\s*([A-Z])\\s*$"_s);
    DraftQuestion question;
    for (int i = 0; i < lines.size(); ++i) {
        const QString &line = lines[i];
        const int number = i + 1;
        if (const auto right = answer.match(line); right.hasMatch()) {
            const auto which = std::size_t(right.capturedView(1).front().unicode() - u'A');
            if (which < question.options.size())
                question.options[which].right = true;
            else
                builder.tell(number, u"a resposta é uma letra que não está entre as opções"_s, u"letra"_s);
            builder.add(question);
            question = {};
        } else if (const auto one = option.match(line); one.hasMatch() && question.line != 0) {
            const char16_t wanted = char16_t(u'A' + question.options.size());
            if (one.capturedView(1).front() != wanted)
                builder.tell(number, u"esperava a opção %1"_s.arg(QChar(wanted)), u"letra"_s);
            question.options.push_back({one.captured(2), false});
        } else if (line.trimmed().isEmpty()) {
            continue;
        } else if (!question.options.empty()) {
            builder.notUnderstood(number, line);
        } else {
            question.line = question.line == 0 ? number : question.line;
            question.text += line.trimmed() + u'\n';
        }
    }
    if (question.line != 0 && !question.options.empty())
        builder.add(question); // its missing answer is told
    else if (question.line != 0)
        builder.notUnderstood(question.line, question.text);
}

} // namespace quorel
