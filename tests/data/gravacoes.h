#pragma once

#include <QString>

namespace quorel::teste {

/// The saves that fault tests break off, as the windows make them, on gBD.

/// Opens the classes under "RsClasses", by name.
void openClasses();
void saveNewClass(const QString &text); ///< a class whose teacher, name and password are that text
void saveFirstClass(const QString &text); ///< the first class gets that text in all three
void logRow(qint32 roteiro); ///< GravaLog() for pupil and class 9999

} // namespace quorel::teste
