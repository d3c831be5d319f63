#pragma once

#include "autoria/finding.h"

#include <functional>

namespace quorel {

/// Something to mend in a lesson text.
struct LessonFault
{
    qsizetype at = 0; ///< in characters from 0, from the beginning of the lesson text
    Severity severity = Severity::Error;
    QString code;
    QString text;
};

/// Whether a figure or a sound of that name is found.
using MediaSearch = std::function<bool(const QString &name)>;

/// What a lesson text is, besides what is wrong with it.
struct LessonCheck
{
    std::vector<LessonFault> faults;
    bool hasExercise = false; ///< an answer of it is reported
};

/// Looks for what the player would not play as it was meant. A text without fields is a page, and nothing is wrong
/// with it. @param hasFig,hasSound  null: media are not looked for
LessonCheck checkLesson(QStringView linha, const MediaSearch &hasFig, const MediaSearch &hasSound);

} // namespace quorel
