#pragma once

#include <QString>

namespace quorel {

/// Runs one lesson in the child program of its type: finds the program by its title, or starts it, and sends it the
/// lesson. Empty arguments do nothing; a program that can't be started is passed over in silence.
/// Both texts may be changed for the caller (type names, lessons of the calculator), always before the first turn of
/// events; after that they are not touched, so they may belong to a record that a newer reading replaces.
/// @param aula  the Linha of an Aula; for type "Calc" also a code of fewer than 6 characters
/// @throws ErroExecucao 9 for a calculator lesson when gRotAtual names no Roteiro
void ExecutaAula(QString &aula, QString &tipo);

/// The Aula of the last Roteiro whose code has the same numeric value: Linha, "<TIPO>", Tipo. Empty when there is none.
/// @throws ErroExecucao 9 when no Roteiro was read
QString BuscaAulaCalc(const QString &codigo);

/// Waits until the viewer of an HTML lesson is closed (6 s at least), then runs the next Aula of the Roteiro, if any.
/// @throws ErroExecucao 9 when gRotAtual names no Roteiro, 6 beyond Aula 32767
void AguardaQuadrinhos();

/// Starts a Roteiro with its first Aula. A statement that fails is passed over, as in the whole picture click.
/// @param indice  position in gRoteiros, from 1
void iniciaRoteiro(int indice);

} // namespace quorel
