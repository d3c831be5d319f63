#include "passos.h"

#include "apoio.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace quorel::teste {

static const QString kName = u"CL_Nome"_s;

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

/// Pesquisa for a field, by its number where it is one. @return its text behind the criterion that is left
static QString found(const QString &alias, const QString &field, QString criterion)
{
    bool isNumber = false;
    const int number = field.toInt(&isNumber);
    const QString text = gBD->Pesquisa(criterion, alias,
        isNumber              ? QVariant(number)
            : field.isEmpty() ? QVariant()
                              : QVariant(field));
    return criterion + u": "_s + text;
}

/// Posicao, PosicaoRegistroAtual and count, then what is true of end, beginning, no records, empty table.
static QString positions(const QString &alias)
{
    const QString numbers = u"%1 %2 %3"_s.arg(gBD->Posicao(alias))
                                .arg(gBD->PosicaoRegistroAtual(alias))
                                .arg(gBD->NumeroTotalDeRegistros(alias));
    return numbers + (gBD->FimDeArquivo(alias) ? u" end"_s : QString())
        + (gBD->ComecoDeArquivo(alias) ? u" beginning"_s : QString())
        + (gBD->RecordSetVazia(alias) ? u" none"_s : QString()) + (gBD->TabelaVazia(alias) ? u" empty"_s : QString());
}

static Palavras wordsOnBD()
{
    const auto on = std::make_shared<QString>(u"RS"_s); // the alias in use
    return {
        {u"open"_s, [](auto &rest) { gBD->Records_Set(behind(rest, u' '), before(rest, u' ')); }},
        {u"alias"_s, [on](auto &name) { *on = name; }},
        {u"Acha"_s, [on](auto &rest) { return found(*on, before(rest, u' '), behind(rest, u' ')); }},
        {u"Campo"_s, [on](auto &field) { return gBD->Campo(field, *on); }},
        {u"lista"_s,
            [on](auto &rest) { return gBD->lista(*on, before(rest, u' '), u";"_s, behind(rest, u' '), u"-"_s); }},
        {u"NomeCampo"_s, [on](auto &index) { return gBD->NomeCampo(index.toShort(), *on, u","_s); }},
        {u"Posicao"_s, [on](auto &) { return positions(*on); }},
        {u"ModoEdicao"_s, [on](auto &) { return gBD->ModoEdicao(*on); }},
        {u"MoveProximoRegistro"_s, [on](auto &) { return gBD->MoveProximoRegistro(*on); }},
        {u"MoveRegistroAnterior"_s, [on](auto &) { return gBD->MoveRegistroAnterior(*on); }},
        {u"MoveParaComecoDeArquivo"_s, [on](auto &) { return gBD->MoveParaComecoDeArquivo(*on); }},
        {u"MoveParaFimDeArquivo"_s, [on](auto &) { return gBD->MoveParaFimDeArquivo(*on); }},
        {u"Mover"_s, [on](auto &rest) { gBD->Mover(before(rest, u' ').toInt(), behind(rest, u' ').toInt(), *on); }},
        {u"RetornaRegistroString"_s,
            [on](auto &lines) { return gBD->RetornaRegistroString(lines.toShort(), *on, u","_s, u";"_s); }},
        {u"MarcaPosicao"_s, [on](auto &) { return gBD->MarcaPosicao(*on); }},
        {u"VoltaPosicao"_s, [on](auto &) { return gBD->VoltaPosicao(*on); }},
        {u"RegistroAdiciona"_s, [on](auto &) { gBD->RegistroAdiciona(*on); }},
        {u"RegistroTroca"_s, [on](auto &rest) { gBD->RegistroTroca(before(rest), behind(rest), *on); }},
        {u"RegistroAtualiza"_s, [on](auto &) { gBD->RegistroAtualiza(*on); }},
        {u"RegistroApaga"_s, [on](auto &rest) { gBD->RegistroApaga(*on, kAfetaAtual, rest == "pergunta"_L1); }},
        {u"ReAtualizaRecordSet"_s, [on](auto &) { gBD->ReAtualizaRecordSet(*on); }},
        {u"CancelaAdicao"_s, [on](auto &) { gBD->CancelaAdicao(*on); }},
        {u"CancelaEdicao"_s, [on](auto &) { gBD->CancelaEdicao(*on); }},
        {u"Pesquisa"_s, [on](QString criterion) { return gBD->Pesquisa(criterion, *on, u"CL_Cod"_s); }},
        {u"LocalizarProxima"_s, [on](QString criterion) { return gBD->LocalizarProxima(criterion, *on, u"CL_Cod"_s); }},
        {u"Filtro"_s, [on](auto &criterion) { gBD->Filtro(criterion, *on); }},
        {u"Sort"_s, [on](auto &order) { gBD->Sort(order, *on); }},
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
