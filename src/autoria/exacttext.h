#pragma once

#include <QString>

namespace quorel {

/// A line of an exact text as a source writes it: what an editor doesn't show, or would lose, as escapes. The
/// backslash is "\\"; "\t", "\r", "\n" are themselves; "\@" is "@"; "\xHH" is the byte of code page 1252.
/// @param atSign  also escape "@", which parts an option's text from its figure
QString escaped(QStringView line, bool atSign = false);

/// Whether a line means itself when it is read as plain text.
bool isPlain(QStringView line);

struct Unescaped
{
    QString text;
    qsizetype bad = -1; ///< where the first unknown escape stands; -1 when there is none
    bool open = false; ///< a lone backslash ended the line
};
Unescaped unescaped(QStringView line);

/// The text without blanks and tabs at its ends.
QStringView withoutBlanks(QStringView text);

/// In small letters without accents: how words of a source are compared.
QString folded(QStringView word);

} // namespace quorel
