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
/// A member of BD is called on the alias "RS", without its last parameters: "MoveProximoRegistro", "Mover 1 0",
/// "RegistroTroca CL_Nome=d", "Pesquisa CL_Cod=1" (the field asked for is CL_Cod), "lista CL_Nome CL_Prof". "Posicao"
/// gives all that BD tells of the place.
/// @return what the last step gave, as text; null for nothing, which is also an invalid variant
QString play(RecordSet &set, const Registro &registro, const QString &steps);

/// "BOF EOF position/count mode name"; the number of the failure where there is no CL_Nome to read.
QString stateOf(const RecordSet &set);

} // namespace quorel::teste
