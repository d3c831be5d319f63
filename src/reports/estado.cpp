#include "reports/estado.h"

namespace quorel {

std::vector<BlocoArqRec> gBlocosArq(1);

QString gRotCiencias;
QString gRotMatematica;
QString gRotPortugues;
QString gRotDesenv;

void reiniciaReports()
{
    gBlocosArq.assign(1, {});
    for (QString *indice : {&gRotCiencias, &gRotMatematica, &gRotPortugues, &gRotDesenv})
        indice->clear();
}

} // namespace quorel
