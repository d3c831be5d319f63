#include "autoria/importdraft.h"

#include <QMap>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

const auto kNoCase = QRegularExpression::CaseInsensitiveOption;

/// An exercise sheet as it is pasted from a word processor.
class SheetReader final
{
public:
    SheetReader(const QStringList &lines, ImportBuilder &builder) : mLines(lines), mBuilder(builder) { }
    void run();

private:
    void line(int number, const QString &text);
    bool answerLine(int number, const QString &text);
    void answerList(int number, const QString &list);
    void answerOf(std::size_t question, const QString &answer, int number);
    void plain(int number, const QString &text);
    void addAll();

    const QStringList &mLines;
    ImportBuilder &mBuilder;
    std::vector<std::pair<int, QString>> mHeading; ///< lines before the first question, with their numbers
    std::vector<DraftQuestion> mQuestions;
    QMap<int, std::size_t> mByNumber; ///< the sheet's own numbers; the last one of a number
};

void SheetReader::run()
{
    for (int i = 0; i < mLines.size(); ++i)
        line(i + 1, mLines[i].trimmed());
    addAll();
}

void SheetReader::line(int number, const QString &text)
{
    static const QRegularExpression question(
        u"^(?:quest[ãa]o\\s*)?(\\d{1,3})\\s*(?:[.)ºª°]|[-–—:](?=\\s))[-–—.)]?\\s*(.*)$"_s, kNoCase);
    static const QRegularExpression option(u"^\\(?\\s*([a-hA-H])\\s*(?:\\)|\\.(?=\\s)|[-–—](?=\\s))\\s*(.+)$"_s);
    if (text.isEmpty() || answerLine(number, text))
        return;
    if (const auto one = question.match(text); one.hasMatch()) {
        mQuestions.emplace_back().line = number;
        mQuestions.back().text = one.captured(2) + u'\n';
        mByNumber[one.capturedView(1).toInt()] = mQuestions.size() - 1;
    } else if (const auto each = option.match(text); each.hasMatch() && !mQuestions.empty()) {
        mQuestions.back().options.push_back({each.captured(2).trimmed(), false});
    } else {
        plain(number, text);
    }
}

/// "Gabarito: b", "Resposta: 42", and the list at the end: "Gabarito: 1) b 2) c", one or many a line.
bool SheetReader::answerLine(int number, const QString &text)
{
    static const QRegularExpression answer(
        u"^(?:gabaritos?|respostas?(?:\\s+(?:certas?|corretas?))?|r)\\s*[:=-]\\s*(.*)$"_s, kNoCase);
    static const QRegularExpression heading(u"^(gabaritos?|respostas)\\.?$"_s, kNoCase);
    static const QRegularExpression list(
        u"^\\d{1,3}\\s*[-–—.):]?\\s*\\(?[a-h]\\)?(?:[\\s,;|]+\\d{1,3}\\s*[-–—.):]?\\s*\\(?[a-h]\\)?)*[\\s.;]*$"_s,
        kNoCase);
    if (heading.match(text).hasMatch())
        return true;
    if (list.match(text).hasMatch() && !mQuestions.empty()) {
        answerList(number, text);
        return true;
    }
    const auto one = answer.match(text);
    if (!one.hasMatch())
        return false;
    const QString said = one.captured(1).trimmed();
    if (said.isEmpty())
        return true; // the list stands below
    if (list.match(said).hasMatch())
        answerList(number, said);
    else if (mQuestions.empty())
        mBuilder.notUnderstood(number, text);
    else
        answerOf(mQuestions.size() - 1, said, number);
    return true;
}

void SheetReader::answerList(int number, const QString &list)
{
    static const QRegularExpression pair(u"(\\d{1,3})\\s*[-–—.):]?\\s*\\(?([a-h])\\)?"_s, kNoCase);
    for (auto it = pair.globalMatch(list); it.hasNext();) {
        const auto one = it.next();
        const int which = one.capturedView(1).toInt();
        if (mByNumber.contains(which))
            answerOf(mByNumber[which], one.captured(2), number);
        else
            mBuilder.tell(number, u"o gabarito fala da questão %1, que não há"_s.arg(which), u"gabarito"_s);
    }
}

/// Letters where there are options: "b", "a e c", "letra b", "b) text"; else the text itself, others behind "ou" or
/// "/".
void SheetReader::answerOf(std::size_t which, const QString &answer, int number)
{
    static const QRegularExpression letters(
        u"^(?:letras?\\s+|alternativas?\\s+)?\\(?([a-h])\\)?(?:(?:\\s*[,;/]\\s*|\\s+e\\s+|\\s+)\\(?([a-h])\\)?)*[.\\s]*$"_s,
        kNoCase);
    static const QRegularExpression first(u"^\\(?([a-h])[).]\\s"_s, kNoCase);
    static const QRegularExpression letter(u"(?<![\\p{L}])([a-h])(?![\\p{L}])"_s, kNoCase);
    static const QRegularExpression others(u"\\s+ou\\s+|\\s*[/;|]\\s*"_s, kNoCase);
    DraftQuestion &question = mQuestions[which];
    if (question.options.empty()) {
        QString said = answer;
        question.answers = (said.endsWith(u'.') ? said.chopped(1) : said).split(others, Qt::SkipEmptyParts);
        return;
    }
    QString told = letters.match(answer).hasMatch() ? answer : first.match(answer).captured(1);
    static const QRegularExpression word(u"^(letras?|alternativas?)\\s"_s, kNoCase);
    told.remove(word);
    static const QRegularExpression and_(u"\\s+e\\s+"_s, kNoCase);
    told.replace(and_, u" "_s);
    bool any = false;
    for (auto it = letter.globalMatch(told); it.hasNext();) {
        const auto place = std::size_t(it.next().capturedView(1).front().toLower().unicode() - u'a');
        any = any || place < question.options.size();
        if (place < question.options.size())
            question.options[place].right = true;
    }
    // "Resposta: azul", where an option says so.
    const auto same = std::ranges::find_if(
        question.options, [&](const auto &each) { return each.text.compare(answer, Qt::CaseInsensitive) == 0; });
    if (!any && same != question.options.end())
        same->right = true;
    else if (!any)
        mBuilder.tell(number, u"a resposta não é nenhuma das opções: "_s + answer, u"letra"_s);
}

/// Goes on with what stands above.
void SheetReader::plain(int number, const QString &text)
{
    if (mQuestions.empty())
        mHeading.emplace_back(number, text);
    else if (mQuestions.back().options.empty())
        mQuestions.back().text += text + u'\n';
    else
        mQuestions.back().options.back().text += u' ' + text;
}

void SheetReader::addAll()
{
    // The heading names the sheet; school, name and date are for the paper.
    if (!mHeading.empty() && !mQuestions.empty())
        mBuilder.setName(mHeading.front().second);
    for (std::size_t i = mQuestions.empty() ? 0 : 1; i < mHeading.size(); ++i)
        mBuilder.notUnderstood(mHeading[i].first, mHeading[i].second);
    for (const DraftQuestion &each : mQuestions)
        mBuilder.add(each);
}

} // namespace

void readSheet(const QStringList &lines, ImportBuilder &builder)
{
    SheetReader(lines, builder).run();
}

} // namespace quorel
