#include "app/programa.h"

#include "register/falunos.h"
#include "reports/fgraficos.h"
#include "shell/faux.h"
#include "shell/fprincip.h"

namespace quorel {

static Aberturas openings(Programa &programa)
{
    return {.mostraAlunos = [&programa] { programa.alunos().mostra(); },
        .mostraDesempenho = [&programa] { programa.mostraDesempenho(); }};
}

static Arredores surroundings(Programa &programa)
{
    Janelas &janelas = programa.janelas();
    return {.lugarDoPainel = [&janelas] { return janelas.painel().lugarDaJanela(); },
        .mostraPainel = [&janelas] { janelas.painel().setVisivel(true); },
        .setTituloPrincipal = [&janelas](const QString &titulo) { janelas.principal().setWindowTitle(titulo); },
        .mostraDesempenho = [&programa] { programa.mostraDesempenho(); }};
}

Programa::Programa() : mJanelas(openings(*this)) { }

Programa::~Programa() = default;

fAlunos &Programa::alunos()
{
    if (!mAlunos)
        mAlunos = std::make_unique<fAlunos>(mJanelas.ativa(), surroundings(*this));
    return *mAlunos;
}

void Programa::mostraDesempenho()
{
    if (!mDesempenho || mDesempenho->foiDescarregada())
        mDesempenho = std::make_unique<FGraficos>(mJanelas.ativa());
    mDesempenho->mostraModal();
}

} // namespace quorel
