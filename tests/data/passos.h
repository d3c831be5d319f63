#pragma once

#include <QString>

namespace quorel {
class RecordSet;
}

namespace quorel::teste {

class Registro;

/// Plays steps on a record set, separated by "; ", each a word and what follows it: "add d; first; update".
/// first, last, next, previous; move N START; bookmark MARK; end (behind the last record); read FIELD;
/// add [NAME] (AddNew and the name); name NAME; set FIELD=VALUE; null FIELD; update; batch; cancel; cancelbatch;
/// remove [N], remove all; resync; requery; find, filter, sort TEXT; text; cache N; close; file SQL (another program's
/// work on the register). NAME goes into CL_Nome.
void play(RecordSet &set, const Registro &registro, const QString &steps);

/// "BOF EOF position/count mode name"; the number of the failure where there is no CL_Nome to read.
QString stateOf(const RecordSet &set);

} // namespace quorel::teste
