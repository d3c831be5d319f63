#pragma once

#include <QString>

namespace quorel {

/// The queries of the system, in the provider's dialect; codes are put in as decimal digits.
namespace consultas {

QString todasClasses(); ///< "Select * From CL_Classes"
QString todosAlunos(); ///< "Select * From AL_Alunos"
QString todasLigacoes(); ///< "Select * From CLxAL"
QString alunosEClasses(); ///< pupils with their classes, all of them; read-only
QString alunosEClasses(qint32 classe); ///< those of one class
QString alunosPorNome();
QString classesPorNome();
QString alunosDaClasse(qint32 classe); ///< AL_Cod and AL_Nome, by name; has no CL_Cod
QString ligacoes(); ///< "SELECT * FROM CLxAL", for the register of pupils
QString logDoAluno(qint32 aluno, qint32 classe); ///< newest first
QString nomeNoLog(qint32 aluno, qint32 classe); ///< rows with answers, with the pupil's name
/// Rows with answers of a period, newest first. @param inicio,fim  "mm/dd/yyyy", both inclusive, at midnight
QString logDoPeriodo(const QString &inicio, const QString &fim, qint32 aluno, qint32 classe);
/// Finished roteiros of the authoring side. @param classe  class code, or with "Manu" in tipo a text whose part behind
/// the first "=" is an exercise code
QString roteirosProntos(const QString &classe, const QString &tipo);

} // namespace consultas

} // namespace quorel
