#pragma once

#include <QJsonObject>
#include <QString>

#include <vector>

namespace quorel {

/// The numbers are those that editors know (Language Server Protocol).
enum class Severity : int { Error = 1, Warning = 2, Note = 3 };

/// A place of a text: lines and characters, both from 1.
struct Place
{
    int line = 1;
    int column = 1;
    bool operator==(const Place &) const = default;
};

/// Something to mend in a block file or in its source, or (a note) something to know.
struct Finding
{
    QString file; ///< native path, as the user named it
    Place place;
    Severity severity = Severity::Error;
    QString code; ///< stays the same whatever the text says: "figura", "sem-certa"
    QString text; ///< one line, in Portuguese
    bool operator==(const Finding &) const = default;
};
using Findings = std::vector<Finding>;

/// "file:line:column: erro|aviso|nota: text [code]", without a line end, which editors read as it is.
QString gnuLine(const Finding &finding);

/// As a Diagnostic of the Language Server Protocol, whose lines and characters count from 0; the file stands in
/// data.arquivo.
QJsonObject diagnostic(const Finding &finding);

/// Whether there is an error or a warning: notes need no mending.
bool needMending(const Findings &findings);

/// In the order of the places, files apart; those of one place stay as they came.
void sortByPlace(Findings &findings);

} // namespace quorel
