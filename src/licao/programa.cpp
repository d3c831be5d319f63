#include "licao/programa.h"

#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr std::array<CaraterRec, 5> kCarateres{{
    {Programa::Zeto, u"Zeto", u"Zeto - Quorel", u"ZETO", u"Zeto", u"exercícios e desafios", 0xFF1D4E9E},
    {Programa::Desenho, u"Desenho", u"Editor de Desenhos - Quorel", u"", u"Editor de Desenhos", u"desenhos",
        0xFF7A2E8E},
    {Programa::Vrel, u"Vrel", u"Histórias - Quorel", u"", u"Histórias", u"histórias", 0xFF0B665B},
    {Programa::Livros, u"Livros", u"Livros - Quorel", u"Livros", u"Livros", u"livros e textos", 0xFF8A3B12},
    {Programa::Calc, u"Calc", u"Calculadora - Quorel", u"", u"Calculadora", u"contas e problemas", 0xFFA11B45},
}};

const CaraterRec &carater(Programa programa)
{
    return *std::ranges::find(kCarateres, programa, &CaraterRec::programa);
}

std::span<const CaraterRec> carateres()
{
    return kCarateres;
}

Programa programaDe(QStringView arquivo)
{
    const qsizetype slash = std::max(arquivo.lastIndexOf(u'/'), arquivo.lastIndexOf(u'\\'));
    QStringView name = arquivo.sliced(slash + 1);
    if (name.endsWith(u".exe", Qt::CaseInsensitive))
        name.chop(4);
    if (name.compare(u"Desenhos", Qt::CaseInsensitive) == 0)
        return Programa::Desenho;
    const auto found = std::ranges::find_if(
        kCarateres, [&](const CaraterRec &c) { return name.compare(c.arquivo, Qt::CaseInsensitive) == 0; });
    return found == kCarateres.end() ? Programa::Zeto : found->programa;
}

ParametrosRec leParametros(const QString &linha)
{
    ParametrosRec parametros;
    const QStringList switches = linha.split(u'/').sliced(1);
    for (const QString &one : switches) {
        const qsizetype colon = one.indexOf(u':');
        const QString name = one.first(colon < 0 ? one.size() : colon).trimmed().toUpper();
        if (name == "HOOK"_L1)
            parametros.Gancho = true;
        else if ((name == "CFG"_L1 || name == "CNF"_L1) && colon >= 0)
            parametros.Cfg = one.sliced(colon + 1).remove(u'"').trimmed();
    }
    return parametros;
}

} // namespace quorel
