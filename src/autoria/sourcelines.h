#pragma once

#include "autoria/finding.h"

#include <QStringView>

#include <deque>
#include <vector>

namespace quorel {

/// A line of a source without the blanks at its ends, and where it stands.
struct SourceLine
{
    QStringView text;
    Place place;
};

/// A line that says something, with those that go on with it.
using SourceEntry = std::vector<SourceLine>;

/// Cuts a source into entries: empty lines and comments are left out, a line that begins with a blank goes on with the
/// entry above. Characters that the page lacks are told, once a line.
class SourceLines final
{
public:
    /// What is no text at all is told and leaves no lines. @param path  the findings' file
    SourceLines(QByteArrayView utf8, const QString &path, Findings &findings);

    /// @param into  the next entry; views hold as long as this object @return false behind the last one
    bool next(SourceEntry &into);

private:
    bool decode(QByteArrayView utf8);
    bool nextLine(QStringView &line);
    SourceLine clean(QStringView line);
    void tellForeign(QStringView line);
    void add(const Place &place, const QString &code, const QString &text);

    QString mPath;
    Findings &mFindings;
    QString mText;
    std::deque<QString> mComposed; ///< lines whose letters and accents came apart
    qsizetype mAt = 0;
    int mNumber = 0;
    SourceLine mAhead;
    bool mHasAhead = false;
};

} // namespace quorel
