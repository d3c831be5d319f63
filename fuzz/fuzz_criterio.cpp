// Criteria of searches and filters, and sort orders. A criterion that can be read must find the same rows in the
// compact form of a record set's rows as in their values one by one.
#include "data/avaliador.h"
#include "data/criterio.h"
#include "data/errobd.h"
#include "data/linhas.h"

#include <QByteArrayView>

#include <cstdlib>

using namespace quorel;
using namespace Qt::StringLiterals;

static const std::vector<Coluna> kColumns{{u"CL_Cod"_s, {}, {}, TipoCampo::Longo},
    {u"CL_Nome"_s, {}, {}, TipoCampo::Texto}, {u"LG_Data"_s, {}, {}, TipoCampo::Data},
    {u"RO_Pronta"_s, {}, {}, TipoCampo::Logico}, {u"Soma"_s, {}, {}, TipoCampo::Variante},
    {u"Media"_s, {}, {}, TipoCampo::Duplo}};

static Linhas someRows()
{
    Linhas rows(static_cast<int>(kColumns.size()));
    const std::vector<QByteArray> texts{"", "Ana", "CONCEIÇÃO", "joão d'ávila", "😀*%_", "9999"};
    for (int i = 0; const QByteArray &text : texts) {
        rows.addInteger(i * 2000 - 1);
        rows.addText(text);
        rows.addText(i % 2 == 0 ? "2026-11-25 00:00:00" : "ontem");
        rows.addInteger(i % 2);
        if (i % 3 == 0)
            rows.addReal(i / 8.0);
        else
            rows.addText(text);
        rows.addNull();
        ++i;
    }
    return rows;
}

static void check(const QString &text)
{
    static const Linhas rows = someRows();
    try {
        const Avaliador reader(readCriterio(text), kColumns);
        const TipoCampo type = kColumns[static_cast<size_t>(reader.column())].tipo;
        for (qsizetype row = 0; row < rows.rowCount(); ++row) {
            if (reader.matches(rows, row) != reader.matches(cellValue(rows, row, reader.column(), type)))
                std::abort();
        }
    } catch (const ErroBD &) { } // refused
    try {
        for (const TermoOrdem &term : readOrdem(text)) {
            if (term.coluna.isEmpty())
                std::abort();
        }
    } catch (const ErroBD &) { }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    check(QString::fromUtf8(QByteArrayView(data, static_cast<qsizetype>(size))));
    return 0;
}
