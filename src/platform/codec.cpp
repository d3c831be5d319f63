#include "platform/codec.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cstdint>

namespace quorel {

/// The characters of bytes 0x80 to 0x9F. The five bytes that the page leaves free keep their number, so that every
/// byte comes back as it was.
static constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC,
    0x0081,
    0x201A,
    0x0192,
    0x201E,
    0x2026,
    0x2020,
    0x2021,
    0x02C6,
    0x2030,
    0x0160,
    0x2039,
    0x0152,
    0x008D,
    0x017D,
    0x008F,
    0x0090,
    0x2018,
    0x2019,
    0x201C,
    0x201D,
    0x2022,
    0x2013,
    0x2014,
    0x02DC,
    0x2122,
    0x0161,
    0x203A,
    0x0153,
    0x009D,
    0x017E,
    0x0178,
};
static constexpr unsigned char kFirstControl = 0x80;
static constexpr unsigned char kFirstLatin = 0xA0;
static constexpr char16_t kLastLatin = 0xFF;

struct PageEntry
{
    char16_t character;
    unsigned char byte;
};

/// The same table the other way, sorted by character.
static constexpr auto kByCharacter = [] {
    std::array<PageEntry, kUpperControls.size()> entries{};
    for (std::size_t i = 0; i < entries.size(); ++i)
        entries[i] = {kUpperControls[i], static_cast<unsigned char>(kFirstControl + i)};
    std::ranges::sort(entries, {}, &PageEntry::character);
    return entries;
}();

static char16_t characterOf(unsigned char byte)
{
    return byte >= kFirstControl && byte < kFirstLatin ? kUpperControls[byte - kFirstControl] : byte;
}

static char byteOf(char16_t c)
{
    if (c < kFirstControl || (c >= kFirstLatin && c <= kLastLatin))
        return static_cast<char>(c);
    const auto found = std::ranges::lower_bound(kByCharacter, c, {}, &PageEntry::character);
    return found != kByCharacter.end() && found->character == c ? static_cast<char>(found->byte) : '?';
}

/// Characters handled at once where their numbers are those of the bytes. The loops over a block are for the compiler
/// to turn into vector instructions: no branch, no early end, a fixed count.
static constexpr qsizetype kBlock = 64;

static bool sameNumbers(const unsigned char *bytes)
{
    constexpr int kSignedFirstLatin = kFirstLatin - 0x100; // as a signed byte only 0x80 to 0x9F lie below it
    unsigned char others = 0;
    for (qsizetype i = 0; i < kBlock; ++i)
        others |= static_cast<signed char>(bytes[i]) < kSignedFirstLatin;
    return others == 0;
}

static bool sameNumbers(const char16_t *characters)
{
    std::uint16_t others = 0;
    for (qsizetype i = 0; i < kBlock; ++i) {
        const auto aboveControls = static_cast<std::uint16_t>(characters[i] - kFirstControl);
        others |=
            static_cast<std::uint16_t>((characters[i] > kLastLatin) | (aboveControls < kFirstLatin - kFirstControl));
    }
    return others == 0;
}

static void decodeInto(QByteArrayView bytes, char16_t *out)
{
    const auto *in = reinterpret_cast<const unsigned char *>(bytes.data());
    qsizetype left = bytes.size();
    for (; left >= kBlock; left -= kBlock, in += kBlock, out += kBlock) {
        if (sameNumbers(in))
            std::copy_n(in, kBlock, out);
        else
            std::transform(in, in + kBlock, out, characterOf);
    }
    std::transform(in, in + left, out, characterOf);
}

static void encodeInto(QStringView text, char *out)
{
    const auto *in = text.utf16();
    qsizetype left = text.size();
    for (; left >= kBlock; left -= kBlock, in += kBlock, out += kBlock) {
        if (sameNumbers(in))
            std::transform(in, in + kBlock, out, [](char16_t c) { return static_cast<char>(c); });
        else
            std::transform(in, in + kBlock, out, byteOf);
    }
    std::transform(in, in + left, out, byteOf);
}

QString decode1252(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    decodeInto(bytes, reinterpret_cast<char16_t *>(text.data()));
    return text;
}

void decode1252(QByteArrayView bytes, QString &into)
{
    into.resize(bytes.size());
    decodeInto(bytes, reinterpret_cast<char16_t *>(into.data()));
}

QString decodeForeign(const QByteArray &bytes)
{
    const auto marked = QStringConverter::encodingForData(bytes);
    // Without a state half a character at the end is an error too: it may be the last letter of another page.
    QStringDecoder decoder(marked.value_or(QStringConverter::Utf8), QStringConverter::Flag::Stateless);
    const QString text = decoder(bytes);
    if (!marked && decoder.hasError())
        return decode1252(bytes);
    return text.normalized(QString::NormalizationForm_C);
}

QByteArray encode1252(QStringView text)
{
    QByteArray bytes;
    encode1252(text, bytes);
    return bytes;
}

void encode1252(QStringView text, QByteArray &appendTo)
{
    const qsizetype start = appendTo.size();
    appendTo.resize(start + text.size());
    encodeInto(text, appendTo.data() + start);
}

char16_t upper1252(char16_t c)
{
    constexpr char16_t kCaseStep = 0x20; // between a letter and its capital, in ASCII and in Latin-1
    constexpr char16_t kDivision = 0xF7; // stands among the letters and is none
    if (c < kFirstControl)
        return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - kCaseStep) : c;
    if (c >= u'à' && c <= u'þ')
        return c == kDivision ? c : static_cast<char16_t>(c - kCaseStep);
    switch (c) {
    case u'ÿ':
        return u'Ÿ';
    case u'š':
        return u'Š';
    case u'œ':
        return u'Œ';
    case u'ž':
        return u'Ž';
    default:
        return c;
    }
}

QString upper1252(QStringView text)
{
    QString upper(text.size(), Qt::Uninitialized);
    std::transform(text.utf16(), text.utf16() + text.size(), reinterpret_cast<char16_t *>(upper.data()),
        [](char16_t c) { return upper1252(c); });
    return upper;
}

bool equalNoCase(QStringView a, QStringView b)
{
    return std::equal(a.utf16(), a.utf16() + a.size(), b.utf16(), b.utf16() + b.size(),
        [](char16_t x, char16_t y) { return upper1252(x) == upper1252(y); });
}

} // namespace quorel
