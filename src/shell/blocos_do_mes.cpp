#include "shell/blocos_do_mes.h"

#include "platform/codec.h"

namespace quorel {

using namespace Qt::StringLiterals;

QString ImgDisc(int indice)
{
    static const std::array<QString, 11> nomes{QString(), u"Avaliação"_s, u"Ciências"_s,
        u"Desenvolvimento Sensório Motor"_s, u"Divertimentos"_s, u"Educação Artística"_s, u"Estudos Sociais"_s,
        u"Geografia"_s, u"História"_s, u"Matemática"_s, u"Português"_s};
    return indice > 0 && indice < int(nomes.size()) ? nomes[std::size_t(indice)] : QString();
}

static int blocoDa(const QString &disciplina)
{
    if (disciplina.isEmpty())
        return 0;
    for (int bloco = 1; bloco <= kNumBlocos; ++bloco) {
        if (equalNoCase(disciplina, ImgDisc(bloco)))
            return bloco;
    }
    return 0;
}

BlocosDoMes blocosDoMes(const Vetor<ArquivoRec> &arquivos, double mes)
{
    BlocosDoMes blocos;
    blocos.fill(-1);
    if (!arquivos.isDimensioned())
        return blocos;
    for (int i = 0; i <= arquivos.upperBound(); ++i) {
        const ArquivoRec &arquivo = arquivos[i];
        if (double(arquivo.Mes) != mes)
            continue;
        if (const int bloco = blocoDa(arquivo.Disciplina); bloco > 0)
            blocos[std::size_t(bloco)] = i;
    }
    return blocos;
}

} // namespace quorel
