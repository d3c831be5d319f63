#include "leitura_literal.h"

#include "platform/codec.h"
#include "startup/valor.h"

namespace quorel::teste {

static QByteArray depois(const QByteArray &texto, const QByteArray &marca)
{
    const qsizetype at = texto.indexOf(marca);
    return at < 0 ? QByteArray() : texto.mid(at + marca.size());
}

static QByteArray antes(const QByteArray &texto, const QByteArray &marca)
{
    const qsizetype at = texto.indexOf(marca);
    return at < 0 ? QByteArray() : texto.left(at);
}

static QString campo(const QByteArray &texto, const QByteArray &abre, const QByteArray &fecha = "\r\n")
{
    return decode1252(antes(depois(texto, abre), fecha));
}

static QString semBrancos(QString texto)
{
    while (texto.startsWith(u' '))
        texto.remove(0, 1);
    while (texto.endsWith(u' '))
        texto.chop(1);
    return texto;
}

static AulaRec aula(const QByteArray &u)
{
    AulaRec a;
    a.Nome = campo(u, "Nome =");
    a.Linha = campo(u, "Linha =", "\r\n\tTipo = ");
    QByteArray tipo = antes(depois(u, "Tipo = "), "\t");
    if (tipo.contains("\r\n"))
        tipo = antes(tipo, "\r\n");
    a.Tipo = decode1252(tipo);
    if (u.contains("Jogo = "))
        a.Jogo = campo(u, "Jogo = ", "#");
    a.Cod = textoDecimal(valorNumerico(decode1252(depois(antes(encode1252(a.Linha), "<SP\xC7>"), ")"))));
    return a;
}

/// @return false when a code that does not fit ends the reading
static bool cabeca(const QByteArray &t, RoteiroRec &r)
{
    r.Nome = campo(t, "NomeRot =");
    const double cod = valorNumerico(campo(t, "CODROT:"));
    if (cod > 2147483647.0 || cod < -2147483648.0)
        return false;
    r.Cod = inteiro32(cod);
    if (r.Nome == QStringLiteral("CALC"))
        return true;
    r.Fig = campo(t, "FIG:");
    r.Som = campo(t, "SOM:");
    r.Desc = semBrancos(campo(t, "<DESC>", "</DESC>"));
    r.Nivel = campo(t, "NIVEL:");
    r.Disc = campo(t, "DISC:");
    r.Titulo = r.Nome + QStringLiteral(" - ") + r.Desc;
    return true;
}

Vetor<RoteiroRec> leituraLiteral(const QByteArray &texto)
{
    Vetor<RoteiroRec> roteiros;
    const int n = int(texto.count("[ROT<"));
    roteiros.dimension(n);
    for (int i = 1; i <= n; ++i) {
        QByteArray t = depois(texto, "[ROT<" + QByteArray::number(i) + ">]");
        const QByteArray ate = antes(t, "[ROT<" + QByteArray::number(i + 1) + ">]");
        if (!ate.isEmpty())
            t = ate;
        if (t.isEmpty())
            continue;
        RoteiroRec &r = roteiros.edit(i);
        if (!cabeca(t, r))
            return roteiros;
        const QByteArray abre = "[<" + QByteArray::number(i) + ">";
        const int m = int(t.count(abre));
        r.Aulas.dimension(m);
        for (int j = 1; j <= m; ++j) {
            QByteArray u = depois(t, abre + QByteArray::number(j) + "]\r\n");
            const QByteArray fim = antes(u, "\r\n" + abre + QByteArray::number(j + 1));
            if (!fim.isEmpty())
                u = fim;
            if (!u.isEmpty())
                r.Aulas.edit(j) = aula(u);
        }
    }
    return roteiros;
}

} // namespace quorel::teste
