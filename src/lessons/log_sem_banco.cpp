#include "lessons/log_aulas.h"

#include "lessons/andamento.h"
#include "platform/eventos.h"
#include "startup/estado.h"

#include <QDebug>

using namespace Qt::StringLiterals;

namespace quorel {

/// Where there is no database the answers of a Roteiro go to the diagnostic channel instead of the log.
static void registraSemBanco(const QString &respostas)
{
    qInfo("%d %d %d %s", gAluno, gClasse, gCodRoteiro, qUtf8Printable(gNomeRoteiro + "<rot>"_L1 + respostas));
}

void AbreLog()
{
    if (gAluno != 0)
        eventTurn();
}

void GravaLog(QString &respostas)
{
    if (gAluno != 0 && gCodRoteiro > 0)
        registraSemBanco(respostas);
    respostas.clear();
}

} // namespace quorel
