#pragma once

#include <QByteArray>
#include <QString>

namespace quorel {

/// Text of bytes in code page 1252. Every byte has a character (the five free ones keep their number), so all 256
/// round-trip; one byte is one QChar, positions and lengths agree. NUL bytes are kept.
QString decode1252(QByteArrayView bytes);

/// As above, into a buffer whose memory is used again; for messages and other hot paths.
void decode1252(QByteArrayView bytes, QString &into);

/// Text of a file that somebody else's program wrote: UTF-16 or UTF-8 where a mark at its beginning says so, else UTF-8
/// where all of it is that, else code page 1252. The mark is left out; letters and their accents come as one character.
QString decodeForeign(const QByteArray &bytes);

/// Bytes in code page 1252; a character outside the page, or half of a surrogate pair, is written as "?".
QByteArray encode1252(QStringView text);

/// As above, appended to a buffer whose memory is used again.
void encode1252(QStringView text, QByteArray &appendTo);

/// Upper case, character by character inside code page 1252: the length never changes (ß stays, ÿ becomes Ÿ).
/// Characters outside the page are left alone.
QString upper1252(QStringView text);
char16_t upper1252(char16_t c);

/// Whether two texts are equal without regard to case, by upper1252 of each character.
bool equalNoCase(QStringView a, QStringView b);

} // namespace quorel
