#include "reports/periodo.h"

#include "data/datas.h"
#include "platform/costuras.h"

namespace quorel {

using namespace Qt::StringLiterals;

QString dataEmDias(int dias)
{
    return agora().date().addDays(dias).toString(u"dd/MM/yy"_s);
}

Periodo lePeriodo(const QString &inicial, const QString &final)
{
    if (inicial.contains(u'_') || final.contains(u'_'))
        return {};
    const auto inicio = readDate(inicial);
    const auto fim = readDate(final);
    if (!inicio || !fim)
        return {EstadoPeriodo::Invalido, {}, {}};
    const QString monthFirst = u"MM/dd/yyyy"_s;
    return {EstadoPeriodo::Valido, inicio->date().toString(monthFirst), fim->date().toString(monthFirst)};
}

} // namespace quorel
