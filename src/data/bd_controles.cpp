#include "data/bd.h"

#include "data/ligacoes.h"
#include "data/recordset.h"
#include "platform/twips.h"
#include "startup/valor.h"

#include <QComboBox>
#include <QListView>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace quorel {

static QVariant firstField(const RecordSet &set)
{
    const QVariant code = set.value(0);
    return isNullValue(code) ? QVariant(u""_s) : code;
}

/// First column of the chosen record, or of the current one when nothing is chosen; the second column when the first
/// is not above 0, if that is asked for.
static QVariant chosenCode(RecordSet &set, const QVariant &selected, bool orSecond)
{
    if (set.BOF() && set.EOF_())
        return {};
    if (set.EOF_())
        set.MoveFirst();
    if (selected.isNull()) {
        if (set.RecordCount() < 1)
            return 0;
    } else {
        set.setBookmark(selected);
    }
    QVariant code = firstField(set);
    if (!orSecond || valorNumerico(variantText(code)) > 0)
        return code;
    const QVariant second = set.value(1);
    return isNullValue(second) ? QVariant(u""_s) : second;
}

void BD::Combo_Set(QComboBox &Controle, const QVariant &Alias, QString &Campo)
{
    const auto set = resolved(Alias);
    LigacaoCombo &binding = LigacaoCombo::of(Controle);
    if (set->RecordCount() <= 0) {
        Controle.clearEditText(); // Kept: the list stays what it was until Combo_Zera
        return;
    }
    if (Campo.isEmpty())
        Campo = NomeCampo(0, Alias);
    binding.setList(set, Campo);
}

void BD::Combo_Zera(QComboBox &Controle)
{
    LigacaoCombo::of(Controle).clearList();
}

QVariant BD::Combo_Cod(QComboBox &Controle, const QVariant &Alias)
{
    const auto set = setOf(Resolve_Alias(Alias, false));
    return chosenCode(*set, LigacaoCombo::of(Controle).selectedItem(), false);
}

void BD::List_Set(QListView &Controle, const QVariant &Alias, QString &Campo)
{
    const auto set = resolved(Alias);
    if (Campo.isEmpty())
        Campo = NomeCampo(0, Alias);
    LigacaoLista::of(Controle).setList(set, Campo);
}

void BD::List_Zera(QListView &Controle)
{
    LigacaoLista::of(Controle).clearList();
}

QVariant BD::List_Cod(QListView &Controle, const QVariant &Alias)
{
    return chosenCode(*resolved(Alias), LigacaoLista::of(Controle).selectedItem(), true);
}

void BD::Grid_Set(QTableView &Controle, const QVariant &Alias, qint32 Largura0, qint32 Largura1)
{
    LigacaoLista::of(Controle).setList(resolved(Alias), QString());
    if (Largura0 > 0)
        Controle.setColumnWidth(0, pixels(Largura0));
    if (Largura1 > 0)
        Controle.setColumnWidth(1, pixels(Largura1));
}

void BD::Grid_Zera(QTableView &Controle)
{
    LigacaoLista::of(Controle).clearList();
}

QVariant BD::Grid_Cod(QTableView &Controle, const QVariant &Alias)
{
    return chosenCode(*resolved(Alias), LigacaoLista::of(Controle).selectedItem(), true);
}

void BD::Obj_Set(QWidget &Controle, const QVariant &Alias, const QString &Campo)
{
    const auto set = resolved(Alias);
    if (set->RecordCount() > 0)
        LigacaoCampo::of(Controle).setField(set, Campo);
}

} // namespace quorel
