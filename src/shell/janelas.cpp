#include "shell/janelas.h"

#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/fim_da_sessao.h"
#include "shell/fprincip.h"

namespace quorel {

Janelas::Janelas(Aberturas aberturas)
    : mAberturas(std::move(aberturas)), mPrincipal(std::make_unique<fPrincip>(*this)),
      mBlocos(std::make_unique<fBlocos>(*this)), mPainel(std::make_unique<fAux>(*this))
{ }

Janelas::~Janelas() = default;

void Janelas::encerra()
{
    if (mEncerrando)
        return;
    mEncerrando = true;
    encerraSessao(*this);
}

} // namespace quorel
