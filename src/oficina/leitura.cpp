#include "oficina/leitura.h"

#include "catalogue/leitor_blocos.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorel {

static AulaVista viewOf(const AulaRec &aula)
{
    constexpr qsizetype kCampoArquivo = 8; // 0-based
    AulaVista vista;
    vista.programa = programaDe(aula.Tipo == "Dicionario"_L1 ? u"Livros"_s
            : aula.Tipo == "Calculadora"_L1                  ? u"Calc"_s
                                                             : aula.Tipo);
    if (aula.Tipo == "HTML"_L1)
        vista.pagina = aula.Linha.section(u"<SPÇ>"_s, kCampoArquivo, kCampoArquivo);
    else
        vista.licao = leLicao(aula.Linha);
    return vista;
}

/// An Aula that opens one of the CALC section bears that one's code alone.
static const AulaRec &openedBy(const AulaRec &aula, const Bloco &bloco)
{
    const RoteiroRec &last = bloco.roteiros[bloco.roteiros.upperBound()];
    if (last.Nome != "CALC"_L1 || !last.Aulas.isDimensioned())
        return aula;
    for (int j = 1; j <= last.Aulas.upperBound(); ++j) {
        if (last.Aulas[j].Cod == aula.Linha)
            return last.Aulas[j];
    }
    return aula;
}

static std::vector<std::vector<AulaVista>> viewsOf(const Bloco &bloco)
{
    std::vector<std::vector<AulaVista>> all;
    for (int i = 1; i <= bloco.roteiros.upperBound(); ++i) {
        std::vector<AulaVista> &views = all.emplace_back();
        const Vetor<AulaRec> &aulas = bloco.roteiros[i].Aulas;
        for (int j = 1; aulas.isDimensioned() && j <= aulas.upperBound(); ++j)
            views.push_back(viewOf(openedBy(aulas[j], bloco)));
        if (!views.empty()) {
            views.front().primeira = true;
            views.back().ultima = true;
        }
    }
    return all;
}

static std::vector<LugarDaAula> placesOf(const BlockSource &source)
{
    std::vector<LugarDaAula> places;
    int roteiro = 0, aula = 0;
    for (const ItemSource &item : source.items) {
        if (const auto *begin = std::get_if<RoteiroSource>(&item)) {
            ++roteiro;
            aula = 0;
            places.push_back({begin->place.line, roteiro, 1}); // its head shows its first Aula
        } else if (const auto *lesson = std::get_if<AulaSource>(&item)) {
            places.push_back({lesson->place.line, roteiro, ++aula});
        }
    }
    return places;
}

LeituraDaFonte leFonte(const QString &texto, const QString &caminho, const QString &destino, bool comMidia)
{
    LeituraDaFonte leitura;
    const QByteArray utf8 = texto.toUtf8();
    const BlockFile file = blockFile(destino.isEmpty() ? caminho : destino);
    Findings unused;
    leitura.lugares = placesOf(readSource(utf8, caminho, unused));
    const MadeBlock made = makeBlock(utf8, caminho, file);
    leitura.entendida = made.understood;
    leitura.achados = made.understood ? Checker(comMidia).check(made, file, caminho) : made.findings;
    if (made.understood)
        leitura.roteiros = viewsOf(leBloco(made.edb));
    return leitura;
}

const LugarDaAula *aulaDaLinha(const LeituraDaFonte &leitura, int linha)
{
    const auto behind = std::ranges::upper_bound(leitura.lugares, linha, {}, &LugarDaAula::linha);
    return behind == leitura.lugares.begin() ? nullptr : &*std::prev(behind);
}

} // namespace quorel
