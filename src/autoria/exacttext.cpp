#include "autoria/exacttext.h"

#include <algorithm>
#include <array>

namespace quorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int kHex = 16;

struct Escape
{
    char16_t letter;
    char16_t meaning;
};
constexpr std::array<Escape, 5> kEscapes{{{u'\\', u'\\'}, {u't', u'\t'}, {u'r', u'\r'}, {u'n', u'\n'}, {u'@', u'@'}}};

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

/// Control characters, the page's free ones, the blank that doesn't break and the hyphen that doesn't show: their
/// numbers are those of the page.
bool isUnseen(QChar c)
{
    constexpr char16_t kDelete = 0x7F;
    constexpr char16_t kHardBlank = 0xA0;
    constexpr char16_t kSoftHyphen = 0xAD;
    return c < u' ' || (c >= kDelete && c <= kHardBlank) || c == kSoftHyphen;
}

void appendHex(QString &to, QChar c)
{
    to += u"\\x"_s + QString::number(c.unicode(), kHex).rightJustified(2, u'0').toUpper();
}

} // namespace

QStringView withoutBlanks(QStringView text)
{
    while (!text.empty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.empty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

bool isPlain(QStringView line)
{
    return withoutBlanks(line).size() == line.size() && std::ranges::none_of(line, isUnseen);
}

QString escaped(QStringView line, bool atSign)
{
    QString said;
    said.reserve(line.size());
    for (qsizetype n = 0; n < line.size(); ++n) {
        const QChar c = line[n];
        const bool atEnd = n == 0 || n == line.size() - 1;
        const auto *named = std::ranges::find(kEscapes, c.unicode(), &Escape::meaning);
        if (named != kEscapes.end() && (c != u'@' || atSign))
            (said += u'\\') += QChar(named->letter);
        else if (isUnseen(c) || (atEnd && isBlank(c)) || (line.size() == 1 && c == u'.'))
            appendHex(said, c);
        else
            said += c;
    }
    return said;
}

Unescaped unescaped(QStringView line)
{
    constexpr qsizetype kHexDigits = 2;
    Unescaped read;
    read.text.reserve(line.size());
    qsizetype at = 0;
    for (qsizetype found = line.indexOf(u'\\'); found >= 0; found = line.indexOf(u'\\', at)) {
        read.text += line.sliced(at, found - at);
        at = found + 1;
        if (at == line.size()) {
            read.open = true;
            return read;
        }
        const char16_t letter = line[at++].unicode();
        const auto *named = std::ranges::find(kEscapes, letter, &Escape::letter);
        bool known = named != kEscapes.end();
        if (known) {
            read.text += QChar(named->meaning);
        } else if (letter == u'x' && line.size() - at >= kHexDigits) {
            read.text += QChar(line.sliced(at, kHexDigits).toUShort(&known, kHex));
            at += kHexDigits;
        }
        if (!known && read.bad < 0)
            read.bad = found;
    }
    read.text += line.sliced(at);
    return read;
}

QString folded(QStringView word)
{
    QString letters = word.toString().normalized(QString::NormalizationForm_D).toLower();
    letters.removeIf([](QChar c) { return c.category() == QChar::Mark_NonSpacing; });
    return letters;
}

} // namespace quorel
