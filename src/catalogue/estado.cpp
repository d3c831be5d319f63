#include "catalogue/estado.h"

#include "catalogue/vistas.h"
#include "catalogue/vistas_em_uso.h"

namespace quorel {

static Vistas sVistas;

void usaVistas(const Vistas &vistas)
{
    sVistas = vistas;
}

template <typename Vista>
static Vista &present(Vista *vista)
{
    if (!vista)
        throw ErroExecucao(kFalhaObjeto);
    return *vista;
}

VistaRoteiros &vistaRoteiros()
{
    return present(sVistas.roteiros);
}

VistaPalco &vistaPalco()
{
    return present(sVistas.palco);
}

VistaMeses &vistaMeses()
{
    return present(sVistas.meses);
}

void reiniciaCatalogue()
{
    gTextoDB.clear();
    gArquivos = {};
    gRoteiros = {};
    gDisciplina = 0;
    gNomeDisciplina.clear();
    gRotSelec.clear();
    gSelecionando = false;
    sVistas = {};
}

} // namespace quorel
