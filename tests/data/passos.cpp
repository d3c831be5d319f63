#include "passos.h"

#include "apoio.h"

using namespace Qt::StringLiterals;

namespace quorel::teste {

static const QString kName = u"CL_Nome"_s;
static const QString kAlias = u"RS"_s;

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

static Palavras wordsOnTheSet(RecordSet &set)
{
    return {
        {u"first"_s, [&](auto &) { set.MoveFirst(); }},
        {u"last"_s, [&](auto &) { set.MoveLast(); }},
        {u"next"_s, [&](auto &) { set.MoveNext(); }},
        {u"previous"_s, [&](auto &) { set.MovePrevious(); }},
        {u"move"_s, [&](auto &rest) { set.Move(before(rest, u' ').toInt(), behind(rest, u' ').toInt()); }},
        {u"bookmark"_s, [&](auto &mark) { set.setBookmark(mark); }},
        {u"end"_s, [&](auto &) { set.Move(set.RecordCount() + 1, kInicioAtual); }},
        {u"read"_s, [&](auto &field) { return set.value(field); }},
        {u"add"_s, [&](auto &name) { add(set, name); }},
        {u"name"_s, [&](auto &name) { set.setValue(kName, name); }},
        {u"set"_s, [&](auto &rest) { set.setValue(before(rest), behind(rest)); }},
        {u"null"_s, [&](auto &field) { set.setValue(field, QVariant(QMetaType::fromType<QString>())); }},
        {u"update"_s, [&](auto &) { set.Update(); }},
        {u"batch"_s, [&](auto &) { set.UpdateBatch(); }},
        {u"cancel"_s, [&](auto &) { set.CancelUpdate(); }},
        {u"cancelbatch"_s, [&](auto &) { set.CancelBatch(); }},
        {u"remove"_s, [&](auto &which) { deleteRows(set, which); }},
        {u"resync"_s, [&](auto &) { set.Resync(); }},
        {u"requery"_s, [&](auto &) { set.Requery(); }},
        {u"find"_s, [&](auto &criterion) { set.Find(criterion); }},
        {u"filter"_s, [&](auto &criterion) { set.setFilter(criterion); }},
        {u"sort"_s, [&](auto &order) { set.setSort(order); }},
        {u"text"_s, [&](auto &lines) { return set.GetString(lines.toInt(), u","_s, u";"_s); }},
        {u"cache"_s, [&](auto &size) { set.setCacheSize(size.toInt()); }},
        {u"close"_s, [&](auto &) { set.Close(); }},
    };
}

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

static Palavras wordsOnBD()
{
    return {
        {u"Campo"_s, [](auto &field) { return gBD->Campo(field, kAlias); }},
        {u"lista"_s,
            [](auto &rest) { return gBD->lista(kAlias, before(rest, u' '), u";"_s, behind(rest, u' '), u"-"_s); }},
        {u"NomeCampo"_s, [](auto &index) { return gBD->NomeCampo(index.toShort(), kAlias, u","_s); }},
        {u"Posicao"_s, [](auto &) { return positions(); }},
        {u"ModoEdicao"_s, [](auto &) { return gBD->ModoEdicao(kAlias); }},
        {u"MoveProximoRegistro"_s, [](auto &) { return gBD->MoveProximoRegistro(kAlias); }},
        {u"MoveRegistroAnterior"_s, [](auto &) { return gBD->MoveRegistroAnterior(kAlias); }},
        {u"MoveParaComecoDeArquivo"_s, [](auto &) { return gBD->MoveParaComecoDeArquivo(kAlias); }},
        {u"MoveParaFimDeArquivo"_s, [](auto &) { return gBD->MoveParaFimDeArquivo(kAlias); }},
        {u"Mover"_s, [](auto &rest) { gBD->Mover(before(rest, u' ').toInt(), behind(rest, u' ').toInt(), kAlias); }},
        {u"RetornaRegistroString"_s,
            [](auto &lines) { return gBD->RetornaRegistroString(lines.toShort(), kAlias, u","_s, u";"_s); }},
        {u"MarcaPosicao"_s, [](auto &) { return gBD->MarcaPosicao(kAlias); }},
        {u"VoltaPosicao"_s, [](auto &) { return gBD->VoltaPosicao(kAlias); }},
        {u"RegistroAdiciona"_s, [](auto &) { gBD->RegistroAdiciona(kAlias); }},
        {u"RegistroTroca"_s, [](auto &rest) { gBD->RegistroTroca(before(rest), behind(rest), kAlias); }},
        {u"RegistroAtualiza"_s, [](auto &) { gBD->RegistroAtualiza(kAlias); }},
        {u"RegistroApaga"_s, [](auto &rest) { gBD->RegistroApaga(kAlias, kAfetaAtual, rest == "pergunta"_L1); }},
        {u"ReAtualizaRecordSet"_s, [](auto &) { gBD->ReAtualizaRecordSet(kAlias); }},
        {u"CancelaAdicao"_s, [](auto &) { gBD->CancelaAdicao(kAlias); }},
        {u"CancelaEdicao"_s, [](auto &) { gBD->CancelaEdicao(kAlias); }},
        {u"Pesquisa"_s, [](QString criterion) { return gBD->Pesquisa(criterion, kAlias, u"CL_Cod"_s); }},
        {u"LocalizarProxima"_s,
            [](QString criterion) { return gBD->LocalizarProxima(criterion, kAlias, u"CL_Cod"_s); }},
        {u"Filtro"_s, [](auto &criterion) { gBD->Filtro(criterion, kAlias); }},
        {u"Sort"_s, [](auto &order) { gBD->Sort(order, kAlias); }},
    };
}

Palavras wordsOn(RecordSet &set, const Registro &registro)
{
    Palavras words = wordsOnTheSet(set);
    words.insert(wordsOnBD());
    words.insert(u"file"_s, [&](auto &sql) { registro.sql(sql); });
    return words;
}

QString play(const Palavras &words, const QString &steps)
{
    QVariant given;
    for (const QString &step : steps.split(u"; "_s, Qt::SkipEmptyParts)) {
        const auto found = words.find(before(step, u' '));
        if (found == words.end())
            qFatal("no step %s", qPrintable(step));
        given = (*found)(behind(step, u' '));
    }
    return given.isValid() ? u""_s + given.toString() : QString();
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
