#include "shell/janelas.h"

#include "catalogue/catalogo.h"
#include "catalogue/estado.h"
#include "shell/estado.h"
#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/fim_da_sessao.h"
#include "shell/fprincip.h"
#include "startup/valor.h"

namespace quorel {

Janelas::Janelas(Aberturas aberturas)
    : mAberturas(std::move(aberturas)), mPrincipal(std::make_unique<fPrincip>(*this)),
      mBlocos(std::make_unique<fBlocos>(*this)), mPainel(std::make_unique<fAux>(*this))
{ }

Janelas::~Janelas() = default;

void Janelas::abreDisciplina()
{
    AbreDisciplina(inteiro16(valorNumerico(mPainel->selectedMonth())), gDisciplina);
    apontaNaDeCima();
}

void Janelas::apontaNaDeCima()
{
    gImgApontada = mBlocos->isVisible() ? mBlocos->figuraSobOMouse() : mPrincipal->figuraSobOMouse();
}

void Janelas::encerra()
{
    if (mEncerrando)
        return;
    mEncerrando = true;
    encerraSessao(*this);
}

} // namespace quorel
