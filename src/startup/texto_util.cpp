#include "startup/texto_util.h"

#include <QStringList>

#include <algorithm>

namespace quorel {

/// Place of a delimiter from `from` on, -1 when there is none; an empty one never occurs.
static qsizetype placeOf(const QString &text, const QString &delimiter, qsizetype from = 0)
{
    return delimiter.isEmpty() ? -1 : text.indexOf(delimiter, from);
}

QStringView semBrancos(QStringView texto)
{
    while (texto.startsWith(u' '))
        texto = texto.sliced(1);
    while (texto.endsWith(u' '))
        texto.chop(1);
    return texto;
}

QString TextoUtil::TextoAntes(const QString &Texto, const QString &Delimitador, bool Estrito) const
{
    const qsizetype place = placeOf(Texto, Delimitador);
    if (place < 0)
        return Estrito ? QString() : Texto;
    return Texto.first(place);
}

QString TextoUtil::TextoDepois(const QString &Texto, const QString &Delimitador) const
{
    const qsizetype place = placeOf(Texto, Delimitador);
    return place < 0 ? QString() : Texto.sliced(place + Delimitador.size());
}

int TextoUtil::ContaDelimitador(const QString &Texto, const QString &Delimitador, int) const
{
    int count = 0;
    for (qsizetype place = placeOf(Texto, Delimitador); place >= 0;
         place = placeOf(Texto, Delimitador, place + Delimitador.size()))
        ++count;
    return count;
}

QString TextoUtil::DiretorioDe(const QString &Caminho) const
{
    return Caminho.first(Caminho.lastIndexOf(u'\\') + 1);
}

QString TextoUtil::Campo(const QString &Texto, int N, const QString &Delimitador, int) const
{
    if (N < 1)
        return {};
    qsizetype start = 0;
    for (int field = 1; field < N; ++field) {
        const qsizetype place = placeOf(Texto, Delimitador, start);
        if (place < 0)
            return {};
        start = place + Delimitador.size();
    }
    const qsizetype end = placeOf(Texto, Delimitador, start);
    return semBrancos(QStringView(Texto).sliced(start, (end < 0 ? Texto.size() : end) - start)).toString();
}

QString TextoUtil::OrdenaLista(
    const QString &Texto, const QString &Separador, const QString &NovoSeparador, int, int, int) const
{
    QStringList fields = Separador.isEmpty() ? QStringList{Texto} : Texto.split(Separador);
    std::ranges::stable_sort(fields);
    return fields.join(NovoSeparador);
}

} // namespace quorel
