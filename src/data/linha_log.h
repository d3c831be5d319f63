#pragma once

#include <QDateTime>
#include <QString>

namespace quorel {

/// One row for the table LG_LogAulas, on its way there.
struct LinhaLog
{
    QString uuid = {}; ///< names the row wherever it goes; made before the first attempt
    qint32 aluno = 0;
    qint32 classe = 0;
    QDateTime data = {};
    qint32 roteiro = 0;
    QString respostas = {}; ///< what LG_Resp is to hold
    QString origem = {}; ///< machine and account that logged it

    /// Of a row that had to wait:
    bool esperou = false;
    bool incerta = false; ///< a commit with it failed: it may be in the register already, without its uuid
    bool semNomes = false; ///< a person has said that the codes are right: names are not compared
    QString cadastro = {}; ///< identity of the register that it is for; empty: not known
    QString nomeAluno = {}; ///< what the code stood for; null: not known
    QString nomeClasse = {};
    bool operator==(const LinhaLog &) const = default;
};

/// What became of a row that was to be logged.
enum class SorteLinha {
    Entrou,
    JaEstava, ///< an earlier attempt had taken it
    Apagada, ///< its pupil's data was erased: it is to be forgotten
    OutroNome, ///< the code of its pupil or class stands for another one now, or for none
    Espera, ///< nobody can tell yet whether an older register has it
};

} // namespace quorel
