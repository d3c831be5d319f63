#include "autoria/importdraft.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

// Escaped signs stand for themselves; while a question is cut they are characters that no text holds.
constexpr QStringView kSigns = u"~=#{}:\\";
constexpr char16_t kHidden = 0xE000;

QString hideEscapes(const QString &text)
{
    QString out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar next = i + 1 < text.size() ? text[i + 1] : QChar();
        const qsizetype sign = text[i] == u'\\' && !next.isNull() ? kSigns.indexOf(next) : -1;
        if (sign >= 0)
            out += QChar(char16_t(kHidden + sign));
        else if (text[i] == u'\\' && next == u'n')
            out += u'\n';
        else
            out += text[i];
        if (sign >= 0 || (text[i] == u'\\' && next == u'n'))
            ++i;
    }
    return out;
}

/// The text with its signs, without tags and the name of its format.
QString plainOf(QString text)
{
    static const QRegularExpression format(u"^\\s*\\[(html|moodle|plain|markdown)\\]"_s);
    static const QRegularExpression breaks(
        u"<\\s*(br|/p|/div|/li)\\s*/?>"_s, QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression tag(u"</?[A-Za-z][^<>]*>"_s);
    const bool html = text.contains(u"[html]"_s);
    text.remove(format);
    if (html) {
        text.replace(breaks, u"\n"_s).remove(tag);
        text.replace("&lt;"_L1, "<"_L1).replace("&gt;"_L1, ">"_L1).replace("&nbsp;"_L1, " "_L1);
        text.replace("&quot;"_L1, "\""_L1).replace("&amp;"_L1, "&"_L1);
    }
    for (qsizetype i = 0; i < kSigns.size(); ++i)
        text.replace(QChar(char16_t(kHidden + i)), kSigns[i]);
    return text.trimmed();
}

/// One answer of a question: "=text#feedback", "~%50%text".
struct Answer
{
    bool equal = false;
    double weight = 0; ///< percent; of "=" without one 100
    QString text, feedback;
};

std::vector<Answer> answersOf(const QString &body)
{
    static const QRegularExpression one(u"([=~])\\s*(?:%(-?[\\d.]+)%)?([^=~]*)"_s);
    std::vector<Answer> all;
    for (auto it = one.globalMatch(body); it.hasNext();) {
        const auto match = it.next();
        const bool equal = match.capturedView(1) == u"=";
        constexpr double kWhole = 100;
        const double weight = match.capturedView(2).isEmpty() ? (equal ? kWhole : 0) : match.captured(2).toDouble();
        all.push_back({equal, weight, plainOf(match.captured(3).section(u'#', 0, 0)),
            plainOf(match.captured(3).section(u'#', 1))});
    }
    return all;
}

/// One question: "::title:: text {answers} more text".
class GiftQuestion final
{
public:
    GiftQuestion(int line, const QString &text, ImportBuilder &builder) : mText(hideEscapes(text)), mBuilder(builder)
    {
        mQuestion.line = line;
    }
    void read();

private:
    void readBody(const QString &body);
    bool trueOrFalse(const QString &body);
    bool number(const QString &body);
    void texts(const std::vector<Answer> &answers);
    void choices(const std::vector<Answer> &answers);

    QString mText;
    ImportBuilder &mBuilder;
    DraftQuestion mQuestion;
};

void GiftQuestion::read()
{
    static const QRegularExpression title(u"^\\s*::(.*?)::"_s, QRegularExpression::DotMatchesEverythingOption);
    if (const auto match = title.match(mText); match.hasMatch()) {
        mQuestion.title = plainOf(match.captured(1));
        mText.remove(0, match.capturedEnd());
    }
    const qsizetype open = mText.indexOf(u'{'), close = mText.indexOf(u'}', open);
    if (open < 0) {
        mQuestion.text = plainOf(mText);
        mQuestion.onlyPage = true;
        mBuilder.add(mQuestion);
        return;
    }
    if (close < 0) {
        mBuilder.tell(
            mQuestion.line, u"falta a chave } que fecha as respostas; a pergunta ficou de fora"_s, u"chave"_s);
        return;
    }
    const QString before = mText.first(open), after = mText.sliced(close + 1);
    mQuestion.text = plainOf(after.trimmed().isEmpty() ? before : before + u"____"_s + after);
    readBody(mText.sliced(open + 1, close - open - 1).trimmed());
}

void GiftQuestion::readBody(const QString &body)
{
    const QString general = plainOf(body.section(u"####"_s, 1));
    const QString own = body.section(u"####"_s, 0, 0).trimmed();
    mQuestion.hint = general;
    const std::vector<Answer> answers = answersOf(own);
    if (own.contains(u"->"_s)) {
        mBuilder.notUnderstood(mQuestion.line, u"ligar colunas (->), que não há aqui: "_s + mQuestion.text);
        return;
    }
    if (!trueOrFalse(own) && !number(own)) {
        if (std::ranges::all_of(answers, &Answer::equal))
            texts(answers);
        else
            choices(answers);
    }
    mBuilder.add(mQuestion);
}

bool GiftQuestion::trueOrFalse(const QString &body)
{
    static const QRegularExpression form(u"^(T|TRUE|F|FALSE)\\s*(?:#([^#]*))?(?:#([^#]*))?$"_s);
    const auto match = form.match(body);
    if (!match.hasMatch())
        return false;
    const bool right = body.startsWith(u'T');
    mQuestion.options = {{u"Verdadeiro"_s, right}, {u"Falso"_s, !right}};
    if (!match.capturedView(2).isEmpty())
        mQuestion.hint = plainOf(match.captured(2)); // said after a wrong answer
    mQuestion.praise = plainOf(match.captured(3));
    return true;
}

/// A number; a margin or a range can't be asked for here.
bool GiftQuestion::number(const QString &body)
{
    if (!body.startsWith(u'#'))
        return false;
    static const QRegularExpression form(u"^#\\s*=?\\s*(-?[\\d.]+)(?::0*\\.?0*)?\\s*(?:#.*)?$"_s);
    if (const auto match = form.match(body); match.hasMatch()) {
        const QString value = match.captured(1);
        mQuestion.answers = {value};
        if (value.contains(u'.'))
            mQuestion.answers.prepend(QString(value).replace(u'.', u','));
    } else {
        mBuilder.tell(mQuestion.line,
            u"resposta numérica com margem ou várias: escreva as que valem, separadas por |"_s, u"margem"_s);
    }
    return true;
}

void GiftQuestion::texts(const std::vector<Answer> &answers)
{
    for (const Answer &each : answers) {
        mQuestion.answers += each.text;
        if (mQuestion.praise.isEmpty())
            mQuestion.praise = each.feedback;
    }
}

void GiftQuestion::choices(const std::vector<Answer> &answers)
{
    for (const Answer &each : answers) {
        const bool right = each.equal || each.weight > 0;
        mQuestion.options.push_back({each.text, right});
        QString &said = right ? mQuestion.praise : mQuestion.hint;
        if (said.isEmpty())
            said = each.feedback;
    }
}

} // namespace

void readGift(const QStringList &lines, ImportBuilder &builder)
{
    static const QRegularExpression category(u"^\\s*\\$CATEGORY:\\s*(.*)$"_s);
    int begun = 0; // line of the question that is gathered; 0 for none
    QString text;
    const auto end = [&] {
        if (begun != 0)
            GiftQuestion(begun, text, builder).read();
        begun = 0;
        text.clear();
    };
    for (int i = 0; i < lines.size(); ++i) {
        const QString &line = lines[i];
        if (line.trimmed().startsWith(u"//"_s))
            continue;
        if (const auto match = category.match(line); match.hasMatch()) {
            end();
            builder.setName(match.captured(1).section(u'/', -1));
        } else if (line.trimmed().isEmpty()) { // empty lines part questions
            end();
        } else {
            begun = begun == 0 ? i + 1 : begun;
            text += line.trimmed() + u'\n';
        }
    }
    end();
}

} // namespace quorel
