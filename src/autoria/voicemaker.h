#pragma once

#include <QString>

#include <vector>

namespace quorel {

/// A text that is to be heard, and the name under which the player looks for it.
struct SpokenText
{
    QString name; ///< "V" and the Aula's code; for an option "_" and its number behind it
    QString text;
    bool operator==(const SpokenText &) const = default;
};

/// What a lesson has to be read aloud: heading and text of its first page, and each option. Further pages are "_2",
/// "_3", … where there are no options; with options those numbers are theirs.
/// @param linha  of an Aula @param unnamed  counts the pages that have no name
std::vector<SpokenText> spokenTexts(const QString &linha, int &unnamed);

/// The installed program that turns texts into sounds; empty when there is none.
QString voiceProgram();

/// Makes a sound of a text, by a Portuguese voice. @return WAV; empty, and a sentence, on failure
QByteArray spoken(const QString &program, const QString &text, QString &fault);

} // namespace quorel
