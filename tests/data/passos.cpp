#include "passos.h"

#include "apoio.h"

#include <QHash>

#include <functional>
#include <type_traits>

using namespace Qt::StringLiterals;

namespace quorel::teste {

static const QString kName = u"CL_Nome"_s;
static const QString kAlias = u"RS"_s;

/// Something to do with a set and the rest of a step's text; what it gives becomes text, null for nothing.
class Passo final
{
public:
    template <typename Action>
    Passo(Action action)
        : mCall([action](RecordSet &set, const QString &rest) {
              QVariant given;
              if constexpr (std::is_void_v<std::invoke_result_t<Action, RecordSet &, const QString &>>)
                  action(set, rest);
              else
                  given = action(set, rest);
              return given.isValid() ? u""_s + given.toString() : QString();
          })
    { }
    QString operator()(RecordSet &set, const QString &rest) const { return mCall(set, rest); }

private:
    std::function<QString(RecordSet &, const QString &)> mCall;
};

static void add(RecordSet &set, const QString &name)
{
    set.AddNew();
    if (!name.isEmpty())
        set.setValue(kName, name);
}

static void deleteRows(RecordSet &set, const QString &which)
{
    if (which != "all"_L1)
        return set.Delete(which.isEmpty() ? 1 : which.toInt());
    for (set.Delete(1); set.RecordCount() > 0; set.Delete(1))
        set.MoveNext();
}

static QString before(const QString &text, QChar mark = u'=')
{
    return text.section(mark, 0, 0);
}

static QString behind(const QString &text, QChar mark = u'=')
{
    return text.section(mark, 1);
}

static const QHash<QString, Passo> kOfTheSet{
    {u"first"_s, [](auto &set, auto &) { set.MoveFirst(); }},
    {u"last"_s, [](auto &set, auto &) { set.MoveLast(); }},
    {u"next"_s, [](auto &set, auto &) { set.MoveNext(); }},
    {u"previous"_s, [](auto &set, auto &) { set.MovePrevious(); }},
    {u"move"_s, [](auto &set, auto &rest) { set.Move(before(rest, u' ').toInt(), behind(rest, u' ').toInt()); }},
    {u"bookmark"_s, [](auto &set, auto &mark) { set.setBookmark(mark); }},
    {u"end"_s, [](auto &set, auto &) { set.Move(set.RecordCount() + 1, kInicioAtual); }},
    {u"read"_s, [](auto &set, auto &field) { return set.value(field); }},
    {u"add"_s, add},
    {u"name"_s, [](auto &set, auto &name) { set.setValue(kName, name); }},
    {u"set"_s, [](auto &set, auto &rest) { set.setValue(before(rest), behind(rest)); }},
    {u"null"_s, [](auto &set, auto &field) { set.setValue(field, QVariant(QMetaType::fromType<QString>())); }},
    {u"update"_s, [](auto &set, auto &) { set.Update(); }},
    {u"batch"_s, [](auto &set, auto &) { set.UpdateBatch(); }},
    {u"cancel"_s, [](auto &set, auto &) { set.CancelUpdate(); }},
    {u"cancelbatch"_s, [](auto &set, auto &) { set.CancelBatch(); }},
    {u"remove"_s, deleteRows},
    {u"resync"_s, [](auto &set, auto &) { set.Resync(); }},
    {u"requery"_s, [](auto &set, auto &) { set.Requery(); }},
    {u"find"_s, [](auto &set, auto &criterion) { set.Find(criterion); }},
    {u"filter"_s, [](auto &set, auto &criterion) { set.setFilter(criterion); }},
    {u"sort"_s, [](auto &set, auto &order) { set.setSort(order); }},
    {u"text"_s, [](auto &set, auto &lines) { return set.GetString(lines.toInt(), u","_s, u";"_s); }},
    {u"cache"_s, [](auto &set, auto &size) { set.setCacheSize(size.toInt()); }},
    {u"close"_s, [](auto &set, auto &) { set.Close(); }},
};

/// Posicao, PosicaoRegistroAtual and count, then what is true of end, beginning, no records, empty table.
static QString positions()
{
    const QString numbers = u"%1 %2 %3"_s.arg(gBD->Posicao(kAlias))
                                .arg(gBD->PosicaoRegistroAtual(kAlias))
                                .arg(gBD->NumeroTotalDeRegistros());
    return numbers + (gBD->FimDeArquivo(kAlias) ? u" end"_s : QString())
        + (gBD->ComecoDeArquivo(kAlias) ? u" beginning"_s : QString())
        + (gBD->RecordSetVazia(kAlias) ? u" none"_s : QString()) + (gBD->TabelaVazia(kAlias) ? u" empty"_s : QString());
}

static const QHash<QString, Passo> kOfBD{
    {u"Campo"_s, [](auto &, auto &field) { return gBD->Campo(field, kAlias); }},
    {u"lista"_s,
        [](auto &, auto &rest) { return gBD->lista(kAlias, before(rest, u' '), u";"_s, behind(rest, u' '), u"-"_s); }},
    {u"NomeCampo"_s, [](auto &, auto &index) { return gBD->NomeCampo(index.toShort(), kAlias, u","_s); }},
    {u"Posicao"_s, [](auto &, auto &) { return positions(); }},
    {u"ModoEdicao"_s, [](auto &, auto &) { return gBD->ModoEdicao(kAlias); }},
    {u"MoveProximoRegistro"_s, [](auto &, auto &) { return gBD->MoveProximoRegistro(kAlias); }},
    {u"MoveRegistroAnterior"_s, [](auto &, auto &) { return gBD->MoveRegistroAnterior(kAlias); }},
    {u"MoveParaComecoDeArquivo"_s, [](auto &, auto &) { return gBD->MoveParaComecoDeArquivo(kAlias); }},
    {u"MoveParaFimDeArquivo"_s, [](auto &, auto &) { return gBD->MoveParaFimDeArquivo(kAlias); }},
    {u"Mover"_s,
        [](auto &, auto &rest) { gBD->Mover(before(rest, u' ').toInt(), behind(rest, u' ').toInt(), kAlias); }},
    {u"RetornaRegistroString"_s,
        [](auto &, auto &lines) { return gBD->RetornaRegistroString(lines.toShort(), kAlias, u","_s, u";"_s); }},
    {u"MarcaPosicao"_s, [](auto &, auto &) { return gBD->MarcaPosicao(kAlias); }},
    {u"VoltaPosicao"_s, [](auto &, auto &) { return gBD->VoltaPosicao(kAlias); }},
    {u"RegistroAdiciona"_s, [](auto &, auto &) { gBD->RegistroAdiciona(kAlias); }},
    {u"RegistroTroca"_s, [](auto &, auto &rest) { gBD->RegistroTroca(before(rest), behind(rest), kAlias); }},
    {u"RegistroAtualiza"_s, [](auto &, auto &) { gBD->RegistroAtualiza(kAlias); }},
    {u"RegistroApaga"_s, [](auto &, auto &rest) { gBD->RegistroApaga(kAlias, kAfetaAtual, rest == "pergunta"_L1); }},
    {u"ReAtualizaRecordSet"_s, [](auto &, auto &) { gBD->ReAtualizaRecordSet(kAlias); }},
    {u"CancelaAdicao"_s, [](auto &, auto &) { gBD->CancelaAdicao(kAlias); }},
    {u"CancelaEdicao"_s, [](auto &, auto &) { gBD->CancelaEdicao(kAlias); }},
    {u"Pesquisa"_s, [](auto &, QString criterion) { return gBD->Pesquisa(criterion, kAlias, u"CL_Cod"_s); }},
    {u"LocalizarProxima"_s,
        [](auto &, QString criterion) { return gBD->LocalizarProxima(criterion, kAlias, u"CL_Cod"_s); }},
    {u"Filtro"_s, [](auto &, auto &criterion) { gBD->Filtro(criterion, kAlias); }},
    {u"Sort"_s, [](auto &, auto &order) { gBD->Sort(order, kAlias); }},
};

QString play(RecordSet &set, const Registro &registro, const QString &steps)
{
    QString given;
    for (const QString &step : steps.split(u"; "_s, Qt::SkipEmptyParts)) {
        const QString word = before(step, u' ');
        const QString rest = behind(step, u' ');
        if (word == "file"_L1)
            registro.sql(rest);
        else if (const auto found = kOfTheSet.find(word); found != kOfTheSet.end())
            given = (*found)(set, rest);
        else if (const auto member = kOfBD.find(word); member != kOfBD.end())
            given = (*member)(set, rest);
        else
            qFatal("no step %s", qPrintable(step));
    }
    return given;
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
