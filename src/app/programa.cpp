#include "app/programa.h"

#include "reports/fgraficos.h"

namespace quorel {

static Aberturas openings(Programa &programa)
{
    return {.mostraAlunos = {}, .mostraDesempenho = [&programa] { programa.mostraDesempenho(); }};
}

Programa::Programa() : mJanelas(openings(*this)) { }

Programa::~Programa() = default;

void Programa::mostraDesempenho()
{
    if (!mDesempenho || mDesempenho->foiDescarregada())
        mDesempenho = std::make_unique<FGraficos>(mJanelas.ativa());
    mDesempenho->mostraModal();
}

} // namespace quorel
