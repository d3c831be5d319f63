#include "licao/exercicio.h"

#include "licao/digitacao.h"
#include "licao/escolha.h"

namespace quorel {

Exercicio *criaExercicio(const LicaoRec &licao, const Midia &midia, QRgb cor, QWidget *parent)
{
    if (licao.Tipo == TipoExercicio::Digitada)
        return new Digitacao(licao, parent);
    return licao.Opcoes.empty() ? nullptr : new Escolha(licao, midia, cor, parent);
}

} // namespace quorel
