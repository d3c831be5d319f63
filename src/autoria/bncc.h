#pragma once

#include <QString>
#include <QStringList>

namespace quorel {

/// Whether a text has the form of a code of the national curriculum: EF02MA06, EF15LP01, EI03EO01, EM13MAT101.
bool isBnccCode(QStringView text);

/// The skills that a Roteiro names: those of a list between commas, semicolons or blanks, then those in brackets at the
/// end of a description, "Conte até 10. [EF01MA01]". Each once, in upper case; words of another form are left out.
QStringList bnccCodes(QStringView list, QStringView desc);

/// The words of such a list that have another form.
QStringList wordsOfNoBnccCode(QStringView list);

} // namespace quorel
