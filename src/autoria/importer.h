#pragma once

#include "autoria/model.h"

namespace quorel {

/// How questions that a teacher already has are written.
enum class ImportForm {
    Aiken, ///< question, "A. option", …, "ANSWER: A"
    Gift, ///< ::title:: question { =right ~wrong }
    Sheet, ///< an exercise sheet of a word processor: "1)", "a)", …, "Gabarito: b" or "Resposta: b"
};

/// The form that a text looks like; Sheet where nothing tells.
ImportForm importFormOf(const QString &text);

struct ImportRequest
{
    QString path; ///< the findings' file
    QString name; ///< of the Roteiro, where the text has none
    QString code; ///< of the first Roteiro; further ones count on
};

struct Imported
{
    BlockSource source; ///< head, one Roteiro for each 90 questions, each ended by a page without an exercise
    Findings findings; ///< every line that was not understood, and what an author has to look at
    int questions = 0;
};

/// Never fails: what is not understood is told and left out.
/// @param text  any line ends
Imported importQuestions(ImportForm form, const QString &text, const ImportRequest &request);

} // namespace quorel
