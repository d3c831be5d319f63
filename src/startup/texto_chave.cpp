#include "startup/texto_util.h"

#include "platform/codec.h"

#include <optional>

namespace quorel {

/// Where the value of a key stands in a text.
struct ValuePlace
{
    qsizetype start;
    qsizetype length;
};

static std::optional<ValuePlace> findValue(const QString &text, const QString &beginning, const QString &lineEnd)
{
    qsizetype start = 0;
    for (;;) {
        const qsizetype found = lineEnd.isEmpty() ? -1 : text.indexOf(lineEnd, start);
        const qsizetype end = found < 0 ? text.size() : found;
        const QStringView line = QStringView(text).sliced(start, end - start);
        if (equalNoCase(line.left(beginning.size()), beginning))
            return ValuePlace{start + beginning.size(), line.size() - beginning.size()};
        if (found < 0)
            return std::nullopt;
        start = found + lineEnd.size();
    }
}

QString TextoUtil::LeChave(
    const QString &Texto, const QString &Chave, const QString &Igual, const QString &FimLinha) const
{
    const auto place = findValue(Texto, Chave + Igual, FimLinha);
    return place ? Texto.sliced(place->start, place->length) : QString();
}

QString TextoUtil::GravaChave(const QString &Texto, const QString &Chave, const QString &Valor, const QString &Igual,
    const QString &FimLinha) const
{
    if (const auto place = findValue(Texto, Chave + Igual, FimLinha))
        return QString(Texto).replace(place->start, place->length, Valor);
    const bool atLineStart = Texto.isEmpty() || Texto.endsWith(FimLinha);
    return Texto + (atLineStart ? QString() : FimLinha) + Chave + Igual + Valor;
}

} // namespace quorel
