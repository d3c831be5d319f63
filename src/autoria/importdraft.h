#pragma once

#include "autoria/importer.h"

#include <QStringList>

namespace quorel {

/// A question on its way from another form, whichever it is.
struct DraftQuestion
{
    struct Option
    {
        QString text;
        bool right = false;
    };
    int line = 0; ///< where it begins, from 1; 0 for none yet
    QString title; ///< empty: "Questão n"
    QString text; ///< lines ended by "\n"
    std::vector<Option> options;
    QStringList answers; ///< texts that are right where there are no options
    QString praise, hint;
    bool onlyPage = false; ///< meant to be read: no answer is missed
};

/// Gathers questions into Roteiros and tells what is odd about them.
class ImportBuilder final
{
public:
    ImportBuilder(const ImportRequest &request, Imported &into);

    void setName(const QString &name); ///< of the Roteiros begun from now on
    void add(const DraftQuestion &question);
    void finish(); ///< closes the last Roteiro

    void tell(int line, const QString &text, const QString &code, Severity severity = Severity::Warning);
    void notUnderstood(int line, const QString &text); ///< the line itself is quoted

private:
    void begin();
    void close();
    void examine(const DraftQuestion &question);

    ImportRequest mRequest;
    Imported &mInto;
    int mInRoteiro = 0;
    int mRoteiros = 0;
};

/// Cuts into lines at any line end and takes out what only a word processor sees: soft hyphens, marks without width,
/// blanks that don't break.
QStringList importLines(const QString &text);

// One reader a form.
void readAiken(const QStringList &lines, ImportBuilder &builder);
void readGift(const QStringList &lines, ImportBuilder &builder);
void readSheet(const QStringList &lines, ImportBuilder &builder);

} // namespace quorel
