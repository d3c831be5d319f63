#include "autoria/sourcelines.h"

#include "autoria/exacttext.h"
#include "platform/codec.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <bitset>

namespace quorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int kHex = 16;
constexpr int kHexDigits = 4;

struct Proposal
{
    char16_t foreign;
    QStringView instead;
};
constexpr std::array<Proposal, 20> kProposals{
    {{u'→', u"->"}, {u'←', u"<-"}, {u'⇒', u"=>"}, {u'≤', u"<="}, {u'≥', u">="}, {u'≠', u"<>"}, {u'−', u"-"},
        {u'′', u"'"}, {u'″', u"\""}, {u'≈', u"~"}, {u'∶', u":"}, {u'∕', u"/"}, {u'√', u"raiz de"}, {u'⅓', u"1/3"},
        {u'⅔', u"2/3"}, {u'✓', u"certo"}, {u'☺', u":)"}, {u'‑', u"-"}, {u'ﬁ', u"fi"}, {u'ﬂ', u"fl"}}};

/// The characters of code page 1252.
bool isOfPage(QChar c)
{
    static const auto page = [] {
        constexpr int kBytes = 256;
        std::bitset<1 << 16> set; // NOLINT(readability-magic-numbers): of 16 bits
        for (int byte = 0; byte < kBytes; ++byte)
            set.set(decode1252(QByteArray(1, char(byte)))[0].unicode());
        return set;
    }();
    return page.test(c.unicode());
}

/// What can be written in its place; empty when nothing is known.
QString proposalFor(QStringView character)
{
    const auto *known = std::ranges::find(kProposals, character.front().unicode(), &Proposal::foreign);
    if (known != kProposals.end())
        return known->instead.toString();
    QString plain = character.toString().normalized(QString::NormalizationForm_KD);
    plain.removeIf([](QChar c) { return c.category() == QChar::Mark_NonSpacing; });
    return std::ranges::all_of(plain, isOfPage) ? plain : QString();
}

bool isMark(QChar c)
{
    return c.category() == QChar::Mark_NonSpacing;
}

} // namespace

SourceLines::SourceLines(QByteArrayView utf8, const QString &path, Findings &findings)
    : mPath(path), mFindings(findings)
{
    if (!decode(utf8))
        mText.clear();
}

void SourceLines::add(const Place &place, const QString &code, const QString &text)
{
    mFindings.push_back({mPath, place, Severity::Error, code, text});
}

bool SourceLines::decode(QByteArrayView utf8)
{
    if (utf8.startsWith("\xFF\xFE") || utf8.startsWith("\xFE\xFF")) {
        add({}, u"utf8"_s, u"a fonte está em UTF-16: grave-a em UTF-8"_s);
        return false;
    }
    if (utf8.contains('\0')) {
        add({}, u"binario"_s, u"isto não é um texto: a fonte é um arquivo de texto em UTF-8"_s);
        return false;
    }
    mText = QString::fromUtf8(utf8); // leaves a mark at the beginning out
    const qsizetype bad = mText.indexOf(QChar(QChar::ReplacementCharacter));
    if (bad < 0)
        return true;
    const QStringView before = QStringView(mText).first(bad);
    Place place{1 + int(before.count(u'\n')), int(bad - before.lastIndexOf(u'\n'))};
    add(place, u"utf8"_s, u"a fonte não está em UTF-8: grave-a em UTF-8 (aqui está o primeiro sinal que não se lê)"_s);
    return false;
}

bool SourceLines::nextLine(QStringView &line)
{
    if (mAt >= mText.size())
        return false;
    qsizetype end = mAt;
    while (end < mText.size() && mText[end] != u'\n' && mText[end] != u'\r')
        ++end;
    line = QStringView(mText).sliced(mAt, end - mAt);
    mAt = end + (QStringView(mText).sliced(end).startsWith(u"\r\n") ? 2 : 1);
    ++mNumber;
    return true;
}

/// The line without the blanks at its ends, its letters and accents put together.
SourceLine SourceLines::clean(QStringView line)
{
    QStringView text = withoutBlanks(line);
    const Place place{mNumber, int(text.isEmpty() ? 1 : text.data() - line.data() + 1)};
    if (std::ranges::any_of(text, isMark)) {
        mComposed.push_back(text.toString().normalized(QString::NormalizationForm_C));
        text = mComposed.back();
    }
    return {text, place};
}

void SourceLines::tellForeign(QStringView line)
{
    constexpr std::size_t kMost = 1000;
    QSet<QString> told;
    for (qsizetype n = 0; n < line.size() && mFindings.size() < kMost; ++n) {
        if (isOfPage(line[n]))
            continue;
        const qsizetype size = line[n].isHighSurrogate() && n + 1 < line.size() ? 2 : 1;
        const QString character = line.sliced(n, size).toString();
        if (!told.contains(character)) {
            told.insert(character);
            const QString number = QString::number(character.toUcs4().value(0), kHex).toUpper();
            const QString instead = proposalFor(character);
            add({mNumber, int(n) + 1}, u"fora-da-pagina"_s,
                u"o caractere \""_s + character + u"\" (U+"_s + number.rightJustified(kHexDigits, u'0')
                    + u") não existe na página de código 1252: "_s
                    + (instead.isEmpty() ? u"tire-o"_s : u"escreva \""_s + instead + u'"'));
        }
        n += size - 1;
    }
}

bool SourceLines::next(SourceEntry &into)
{
    into.clear();
    if (mHasAhead)
        into.push_back(mAhead);
    mHasAhead = false;
    for (QStringView line; nextLine(line);) {
        if (line.startsWith(u'#'))
            continue;
        const SourceLine cleaned = clean(line);
        if (cleaned.text.isEmpty())
            continue;
        if (!std::ranges::all_of(cleaned.text, isOfPage))
            tellForeign(line);
        const bool goesOn = line.front() == u' ' || line.front() == u'\t';
        if (goesOn && !into.empty()) {
            into.push_back(cleaned);
        } else if (into.empty()) {
            into.push_back(cleaned);
        } else {
            mAhead = cleaned;
            mHasAhead = true;
            return true;
        }
    }
    return !into.empty();
}

} // namespace quorel
