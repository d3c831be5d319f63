#pragma once

#include <QString>

#include <vector>

namespace quorel {

/// What came of an Aula: nothing yet, an answer that is neither right nor wrong, or one that is.
enum class AulaState { Open, Answered, Right, Wrong };

/// How far a Roteiro is, from what its running tells.
struct RoteiroProgress
{
    std::vector<AulaState> aulas; ///< from 0: Aula 1 first
    int current = 0; ///< from 1; 0 before the first
    bool ended = false; ///< behind the last Aula
    QString awaited; ///< name of the program that is being started; empty for none
    bool operator==(const RoteiroProgress &) const = default;
};

/// Another Aula begins. One of a Roteiro of another length, or the first one after an end, begins anew.
void beginAula(RoteiroProgress &progress, int aula, int count);

/// Notes an answer: "E" in it is something wrong, else "A" something right. The first answer to an Aula stays, as in
/// the marks. Nothing before the first Aula.
void noteAnswer(RoteiroProgress &progress, const QString &answer);

/// What is said of it: "2 de 5" on the way, who is coming, at the end what was right and what may be tried again.
QString progressText(const RoteiroProgress &progress);

} // namespace quorel
