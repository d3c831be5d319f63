#include "data/armazem.h"

#include "data/armazem_sqlite.h"
#include "data/errobd.h"

#include <QMap>

using namespace Qt::StringLiterals;

namespace quorel {

Armazem::~Armazem() = default;

/// Keys in upper case. A piece without "=" belongs to the value before it: a path may hold a semicolon.
static QMap<QString, QString> readPairs(const QString &text)
{
    QMap<QString, QString> pairs;
    QString key;
    for (const QStringView piece : QStringView(text).tokenize(u';')) {
        const qsizetype equals = piece.indexOf(u'=');
        if (equals >= 0) {
            key = piece.first(equals).trimmed().toString().toUpper();
            pairs[key] = piece.sliced(equals + 1).toString();
        } else if (!key.isEmpty() && !piece.isEmpty()) {
            pairs[key] += u';' + piece.toString();
        }
    }
    return pairs;
}

std::unique_ptr<Armazem> openStore(const QString &linhaConexao, Espera espera)
{
    const QMap<QString, QString> pairs = readPairs(linhaConexao);
    const QString provider = pairs.value(u"PROVIDER"_s).trimmed();
    if (!provider.startsWith("Microsoft.Jet.OLEDB"_L1, Qt::CaseInsensitive))
        throw ErroBD(kErroArmazem, u"O provedor \"%1\" não é conhecido."_s.arg(provider));
    return openSqlite(pairs.value(u"DATA SOURCE"_s), espera);
}

} // namespace quorel
