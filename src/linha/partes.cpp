#include "linha/partes.h"

namespace quorel {

namespace {

/// Marks begin with a bracket, which texts hardly have: to look for it alone is quickest.
qsizetype findMark(QStringView text, QStringView mark, qsizetype from = 0)
{
    qsizetype at = text.indexOf(mark.front(), from);
    while (at >= 0 && !beginsWith(text.sliced(at), mark))
        at = text.indexOf(mark.front(), at + 1);
    return at;
}

QStringView before(QStringView text, QStringView mark)
{
    const qsizetype at = findMark(text, mark);
    return at < 0 ? text : text.first(at);
}

/// Parts the bracket that a block begins with from what follows; a block without one has no head.
void takeHead(QStringView block, QStringView &head, QStringView &rest)
{
    const qsizetype size = block.startsWith(u'(') ? block.indexOf(u')') + 1 : 0;
    head = block.first(size);
    rest = block.sliced(size);
}

template <typename Find>
void split(QStringView text, qsizetype size, Find find, std::vector<QStringView> &into)
{
    into.clear();
    qsizetype from = 0;
    for (qsizetype at = find(from); at >= 0; at = find(from)) {
        into.push_back(text.sliced(from, at - from));
        from = at + size;
    }
    into.push_back(text.sliced(from));
}

} // namespace

void splitAtMark(QStringView text, QStringView mark, std::vector<QStringView> &into)
{
    split(
        text, mark.size(), [&](qsizetype from) { return findMark(text, mark, from); }, into);
}

void splitAtTab(QStringView text, std::vector<QStringView> &into)
{
    split(
        text, 1, [&](qsizetype from) { return text.indexOf(u'\t', from); }, into);
}

PartesDaLinha parteLinha(QStringView linha)
{
    constexpr QStringView kAvulsa = u"CMDEXEC";
    constexpr QStringView kRespostas = u"<VAA>";
    constexpr QStringView kOpcoes = u"<VOA>";
    PartesDaLinha partes;
    partes.avulsa = linha.endsWith(kAvulsa);
    if (partes.avulsa)
        linha.chop(kAvulsa.size());
    partes.linha = linha;
    takeHead(before(linha, u"<VETPECA>"), partes.cabecaPecas, partes.pecas);
    partes.pecas = before(partes.pecas, kRespostas);
    partes.comCampos = findMark(partes.pecas, kMarcaCampo) >= 0;

    const qsizetype respostas = findMark(linha, kRespostas);
    partes.comRespostas = respostas >= 0;
    if (!partes.comRespostas)
        return partes;
    const QStringView rest = linha.sliced(respostas + kRespostas.size());
    const qsizetype opcoes = findMark(rest, kOpcoes);
    takeHead(opcoes < 0 ? rest : rest.first(opcoes), partes.cabecaRespostas, partes.respostas);
    partes.comOpcoes = opcoes >= 0;
    if (partes.comOpcoes)
        takeHead(before(rest.sliced(opcoes + kOpcoes.size()), u"<VCM>"), partes.cabecaOpcoes, partes.opcoes);
    return partes;
}

} // namespace quorel
