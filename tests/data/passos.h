#pragma once

#include <QHash>
#include <QString>
#include <QVariant>

#include <functional>
#include <type_traits>

namespace quorel {
class RecordSet;
}

namespace quorel::teste {

class Registro;

/// What a word of a step does with the rest of the step; it may give something.
class Palavra final
{
public:
    template <typename Action>
    Palavra(Action action)
        : mAction([action](const QString &rest) -> QVariant {
              if constexpr (std::is_void_v<std::invoke_result_t<Action, const QString &>>)
                  return action(rest), QVariant();
              else
                  return action(rest);
          })
    { }
    QVariant operator()(const QString &rest) const { return mAction(rest); }

private:
    std::function<QVariant(const QString &)> mAction;
};

using Palavras = QHash<QString, Palavra>;

/// Words on a record set: first, last, next, previous; move N START; bookmark MARK; end (behind the last record); read
/// FIELD; add [NAME] (AddNew and the name); name NAME; set FIELD=VALUE; null FIELD; update; batch; cancel; cancelbatch;
/// remove [N], remove all; resync; requery; find, filter, sort TEXT; text; cache N; close. NAME goes into CL_Nome.
/// file SQL: another program's work on the register.
/// A member of BD is called on the alias "RS", without its last parameters: "MoveProximoRegistro", "Mover 1 0",
/// "RegistroTroca CL_Nome=d", "Pesquisa CL_Cod=1" (the field asked for is CL_Cod), "lista CL_Nome CL_Prof". "Posicao"
/// gives all that BD tells of the place; "RegistroApaga pergunta" asks first; "Acha FIELD CRITERION" is a search that
/// gives the criterion left and the field. open ALIAS SQL; alias ALIAS: those behind it are called on that one.
Palavras wordsOn(RecordSet &set, const Registro &registro);

/// Plays steps separated by "; ", each a word and what follows it: "add d; first; update".
/// @return what the last step gave, as text; null for nothing, which is also an invalid variant
QString play(const Palavras &words, const QString &steps);

/// "BOF EOF position/count mode name"; the number of the failure where there is no CL_Nome to read.
QString stateOf(const RecordSet &set);

} // namespace quorel::teste
