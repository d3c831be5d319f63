#include "passos.h"

#include "apoio.h"

#include "data/recordset.h"

#include <QHash>

#include <functional>

using namespace Qt::StringLiterals;

namespace quorel::teste {

static const QString kName = u"CL_Nome"_s;

static void deleteRows(RecordSet &set, const QString &which)
{
    if (which != "all"_L1)
        return set.Delete(which.isEmpty() ? 1 : which.toInt());
    for (set.Delete(1); set.RecordCount() > 0; set.Delete(1))
        set.MoveNext();
}

static void add(RecordSet &set, const QString &name)
{
    set.AddNew();
    if (!name.isEmpty())
        set.setValue(kName, name);
}

using Passo = std::function<void(RecordSet &, const QString &)>;

static const QHash<QString, Passo> &known()
{
    static const QHash<QString, Passo> steps{
        {u"first"_s, [](auto &set, auto &) { set.MoveFirst(); }},
        {u"last"_s, [](auto &set, auto &) { set.MoveLast(); }},
        {u"next"_s, [](auto &set, auto &) { set.MoveNext(); }},
        {u"previous"_s, [](auto &set, auto &) { set.MovePrevious(); }},
        {u"move"_s,
            [](auto &set, auto &text) { set.Move(text.section(u' ', 0, 0).toInt(), text.section(u' ', 1).toInt()); }},
        {u"bookmark"_s, [](auto &set, auto &text) { set.setBookmark(text); }},
        {u"end"_s, [](auto &set, auto &) { set.Move(set.RecordCount() + 1, kInicioAtual); }},
        {u"read"_s, [](auto &set, auto &text) { set.value(text); }},
        {u"add"_s, add},
        {u"name"_s, [](auto &set, auto &text) { set.setValue(kName, text); }},
        {u"set"_s, [](auto &set, auto &text) { set.setValue(text.section(u'=', 0, 0), text.section(u'=', 1)); }},
        {u"null"_s, [](auto &set, auto &text) { set.setValue(text, QVariant(QMetaType::fromType<QString>())); }},
        {u"update"_s, [](auto &set, auto &) { set.Update(); }},
        {u"batch"_s, [](auto &set, auto &) { set.UpdateBatch(); }},
        {u"cancel"_s, [](auto &set, auto &) { set.CancelUpdate(); }},
        {u"cancelbatch"_s, [](auto &set, auto &) { set.CancelBatch(); }},
        {u"remove"_s, deleteRows},
        {u"resync"_s, [](auto &set, auto &) { set.Resync(); }},
        {u"requery"_s, [](auto &set, auto &) { set.Requery(); }},
        {u"find"_s, [](auto &set, auto &text) { set.Find(text); }},
        {u"filter"_s, [](auto &set, auto &text) { set.setFilter(text); }},
        {u"sort"_s, [](auto &set, auto &text) { set.setSort(text); }},
        {u"text"_s, [](auto &set, auto &) { set.GetString(0, u"|"_s, u"\n"_s); }},
        {u"cache"_s, [](auto &set, auto &text) { set.setCacheSize(text.toInt()); }},
        {u"close"_s, [](auto &set, auto &) { set.Close(); }},
    };
    return steps;
}

void play(RecordSet &set, const Registro &registro, const QString &steps)
{
    for (const QString &step : steps.split(u"; "_s, Qt::SkipEmptyParts)) {
        const QString word = step.section(u' ', 0, 0);
        const QString rest = step.section(u' ', 1);
        if (word == "file"_L1) {
            registro.sql(rest);
            continue;
        }
        if (!known().contains(word))
            qFatal("no step %s", qPrintable(step));
        known()[word](set, rest);
    }
}

QString stateOf(const RecordSet &set)
{
    QString name;
    const int failure = failureOf([&] {
        const QVariant value = set.value(kName);
        name = isNullValue(value) ? u"Null"_s : value.toString();
    });
    return (set.BOF() ? u"BOF "_s : QString()) + (set.EOF_() ? u"EOF "_s : QString())
        + u"%1/%2 %3 "_s.arg(set.AbsolutePosition()).arg(set.RecordCount()).arg(set.EditMode())
        + (failure != 0 ? QString::number(failure) : name);
}

} // namespace quorel::teste
