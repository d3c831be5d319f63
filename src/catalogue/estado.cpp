#include "catalogue/estado.h"

#include "catalogue/interno.h"
#include "catalogue/vistas.h"

namespace quorel {

static Vistas sVistas;
static quint64 sLeitura = 0;

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

quint64 comecaLeitura()
{
    return ++sLeitura;
}

quint64 numeroDaLeitura()
{
    return sLeitura;
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
