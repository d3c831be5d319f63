#include "shell/blocos_do_mes.h"

#include "catalogue/catalogo.h"
#include "platform/codec.h"

namespace quorel {

QString ImgDisc(int indice)
{
    return NomeDisciplina(QString::number(indice));
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
