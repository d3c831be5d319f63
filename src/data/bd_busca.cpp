#include "data/bd.h"

#include "data/errobd.h"
#include "data/recordset.h"
#include "platform/codec.h"
#include "startup/texto_util.h"
#include "startup/valor.h"

using namespace Qt::StringLiterals;

namespace quorel {

std::shared_ptr<RecordSet> BD::readySearch(QString &Criterio, const QVariant &Alias)
{
    if (Criterio.isEmpty())
        return nullptr;
    Criterio = upper1252(Criterio);
    auto set = resolved(Alias);
    if (set->EOF_() && set->BOF())
        return nullptr;
    if (!set->EOF_() && !set->BOF() && set->EditMode() == kEdicaoEmCurso)
        set->CancelBatch();
    return set;
}

/// Whether a criterion, in upper case, is searched for.
static bool hasValue(const QString &Criterio)
{
    // Kept: what counts is text behind the first "=", so a criterion with < or <> alone is no search.
    return Criterio.contains("LIKE"_L1) || !gTexto.TextoDepois(Criterio, u"="_s).trimmed().isEmpty();
}

QString BD::foundText(RecordSet &set, const QVariant &Alias, const QVariant &Campo)
{
    if (set.EOF_())
        return {};
    if (valorNumerico(variantText(Campo)) >= 0)
        return variantText(this->Campo(Campo, Alias));
    QString text;
    for (int i = 0; i < set.fieldCount(); ++i)
        text += variantText(set.value(i)) + u'\t';
    return text;
}

QString BD::Pesquisa(QString &Criterio, const QVariant &Alias, const QVariant &Campo, bool Avisa)
{
    QString result;
    reported(Alias, u"Pesquisa"_s, Avisa, [&] {
        const auto set = readySearch(Criterio, Alias);
        if (!set)
            return;
        set->MoveFirst();
        if (!hasValue(Criterio))
            return;
        set->Find(Criterio);
        result = foundText(*set, Alias, Campo);
    });
    return result;
}

QString BD::LocalizarProxima(QString &Criterio, const QVariant &Alias, const QVariant &Campo)
{
    const auto set = readySearch(Criterio, Alias);
    if (!set || !hasValue(Criterio))
        return {};
    set->MoveNext();
    set->Find(Criterio);
    return foundText(*set, Alias, Campo);
}

void BD::Filtro(const QString &Criterio, const QVariant &Alias)
{
    if (variantText(Alias).isEmpty())
        return;
    const auto set = resolved(Alias);
    set->setFilter(QString());
    if (Criterio.isEmpty() || set->RecordCount() == 0)
        return;
    set->MoveFirst();
    set->setFilter(Criterio);
}

void BD::Sort(const QString &Criterio, const QVariant &Alias)
{
    reported(Alias, u"Sort"_s, true, [&] { resolved(Alias)->setSort(Criterio); });
}

void BD::SeekEx(const QVariant &Alias)
{
    reported(Alias, u"SeekEx"_s, true, [&] { Resolve_Alias(Alias); });
}

/// Fills an added record with the fields of another set's current one, by number. Kept: fields of other types than
/// whole number, boolean and text are left out, dates among them.
static void fillFrom(const RecordSet &from, RecordSet &to, int firstField)
{
    for (int i = firstField; i < from.fieldCount(); ++i) {
        const QVariant value = from.value(i);
        if (to.field(i).numera || !to.writable(i))
            continue;
        switch (from.field(i).tipo) {
        case TipoCampo::Longo:
            to.setValue(i, valorNumerico(variantText(value)));
            break;
        case TipoCampo::Logico:
            to.setValue(i, convertedTo(TipoCampo::Logico, value.isNull() ? QVariant(u""_s) : value));
            break;
        case TipoCampo::Texto:
        case TipoCampo::Memo:
            to.setValue(i, variantText(value));
            break;
        default:
            break;
        }
    }
}

void BD::CopiaRegistro(const QVariant &Alias, const QVariant &AliasDestino)
{
    reported(Alias, u"CopiaRegistro"_s, true, [&] {
        const auto from = resolved(Alias);
        const auto to = resolved(AliasDestino);
        to->AddNew();
        fillFrom(*from, *to, 0);
        to->Update();
    });
}

void BD::CopiaTabela(const QVariant &Alias, const QVariant &AliasDestino, bool Avanca)
{
    reported(Alias, u"CopiaTabela"_s, true, [&] {
        const auto from = resolved(Alias);
        const auto to = resolved(AliasDestino);
        for (; !from->EOF_(); from->MoveNext()) {
            to->AddNew();
            fillFrom(*from, *to, Avanca ? 1 : 0);
            to->Update();
        }
    });
}

} // namespace quorel
