#include "data/comparacao.h"

#include "platform/codec.h"

#include <QString>

#include <algorithm>
#include <array>

namespace quorel {

static constexpr uchar kFirstNonAscii = 0x80;

static constexpr std::array<char, 256> foldTable()
{
    std::array<char, 256> table{};
    for (size_t i = 0; i < table.size(); ++i)
        table[i] = static_cast<char>(i >= 'a' && i <= 'z' ? i - 'a' + 'A' : i);
    return table;
}

static constexpr std::array<char, 256> kFold = foldTable();

static char fold(char c)
{
    return kFold[static_cast<uchar>(c)];
}

static bool isAscii(QByteArrayView text)
{
    return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<uchar>(c) >= kFirstNonAscii; });
}

/// The plain letter of an accented capital of the code page; any other character as it is.
static char16_t plainLetter(char16_t c)
{
    static constexpr char16_t kFirst = u'À';
    static constexpr std::u16string_view kPlain = u"AAAAAAÆCEEEEIIIIÐNOOOOO×ØUUUUY";
    if (c >= kFirst && c < kFirst + kPlain.size())
        return kPlain[static_cast<size_t>(c - kFirst)];
    switch (c) {
    case u'Ÿ':
        return u'Y';
    case u'Š':
        return u'S';
    case u'Ž':
        return u'Z';
    default:
        return c;
    }
}

int compareNoCase(QStringView a, QStringView b)
{
    int accents = 0; // decides when the plain letters are the same
    const qsizetype common = std::min(a.size(), b.size());
    for (qsizetype i = 0; i < common; ++i) {
        const char16_t x = upper1252(a[i].unicode());
        const char16_t y = upper1252(b[i].unicode());
        if (x == y)
            continue;
        const int plain = int(plainLetter(x)) - int(plainLetter(y));
        if (plain != 0)
            return plain < 0 ? -1 : 1;
        if (accents == 0)
            accents = x < y ? -1 : 1;
    }
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    return accents;
}

int compareForOrder(QStringView a, QStringView b)
{
    const int order = compareNoCase(a, b);
    if (order != 0)
        return order;
    const int codes = a.compare(b, Qt::CaseSensitive);
    return (codes > 0) - (codes < 0);
}

int compareForOrder(QByteArrayView a, QByteArrayView b)
{
    if (!isAscii(a) || !isAscii(b))
        return compareForOrder(QString::fromUtf8(a), QString::fromUtf8(b));
    const qsizetype common = std::min(a.size(), b.size());
    for (qsizetype i = 0; i < common; ++i) {
        if (fold(a[i]) != fold(b[i]))
            return fold(a[i]) < fold(b[i]) ? -1 : 1;
    }
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    const int codes = std::char_traits<char>::compare(a.data(), b.data(), static_cast<size_t>(common));
    return (codes > 0) - (codes < 0);
}

/// What is left of a name without case, accents and blanks.
static QString bareName(QStringView name)
{
    QString bare;
    for (const QChar c : name.toString().normalized(QString::NormalizationForm_C)) {
        if (!c.isSpace())
            bare += QChar(plainLetter(upper1252(c.unicode())));
    }
    return bare;
}

bool sameName(QStringView a, QStringView b)
{
    return bareName(a) == bareName(b);
}

Procurado::Procurado(QStringView texto) : mFolded(upper1252(texto)), mBytes(mFolded.toUtf8()), mAscii(isAscii(mBytes))
{ }

bool Procurado::foldedAscii(QByteArrayView utf8, qsizetype from) const
{
    const char *text = utf8.data() + from;
    for (qsizetype i = 0; i < mBytes.size(); ++i) {
        if (fold(text[i]) != mBytes.data()[i])
            return false;
    }
    return true;
}

bool Procurado::equals(QByteArrayView utf8) const
{
    if (mAscii) // no other character folds to an ASCII one
        return utf8.size() == mBytes.size() && foldedAscii(utf8, 0);
    return upper1252(QString::fromUtf8(utf8)) == mFolded;
}

bool Procurado::startsWith(QByteArrayView utf8) const
{
    if (mAscii)
        return utf8.size() >= mBytes.size() && foldedAscii(utf8, 0);
    return upper1252(QString::fromUtf8(utf8)).startsWith(mFolded);
}

bool Procurado::endsWith(QByteArrayView utf8) const
{
    if (mAscii)
        return utf8.size() >= mBytes.size() && foldedAscii(utf8, utf8.size() - mBytes.size());
    return upper1252(QString::fromUtf8(utf8)).endsWith(mFolded);
}

bool Procurado::isWithin(QByteArrayView utf8) const
{
    return upper1252(QString::fromUtf8(utf8)).contains(mFolded);
}

} // namespace quorel
