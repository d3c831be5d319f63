#pragma once

#include "shell/progress_view.h"
#include "visual/janela_ativa.h"

#include <functional>
#include <memory>

namespace quorel {

class fAux;
class fBlocos;
class fPrincip;

/// What the panel opens of other folders; an empty function opens nothing.
struct Aberturas
{
    std::function<void()> mostraAlunos; ///< shows fAlunos; the panel hides after it
    std::function<void()> mostraDesempenho; ///< shows FGraficos, modally
};

/// The windows of the shell, each of which knows the others through this. Making it builds controls and loads none.
/// Needs a QApplication, and outlives every use of the windows.
class Janelas final
{
    Q_DISABLE_COPY_MOVE(Janelas)
public:
    explicit Janelas(Aberturas aberturas = {});
    ~Janelas();

    fPrincip &principal() { return *mPrincipal; }
    fBlocos &blocos() { return *mBlocos; }
    fAux &painel() { return *mPainel; }

    VistaAndamento &andamento() { return mAndamento; }

    JanelaAtiva &ativa() { return mAtiva; }
    const Aberturas &aberturas() const { return mAberturas; }

    /// Fills and shows fBlocos: the roteiros of gDisciplina in the month of the panel.
    void abreDisciplina();

    /// Another window is on top: gImgApontada becomes the picture there that lies under the mouse, or -1.
    void apontaNaDeCima();

    /// The ordered end of the program. Does not return the first time; while it runs, further calls return at once.
    void encerra();

private:
    Aberturas mAberturas;
    JanelaAtiva mAtiva;
    std::unique_ptr<fPrincip> mPrincipal;
    std::unique_ptr<fBlocos> mBlocos;
    std::unique_ptr<fAux> mPainel;
    ProgressView mAndamento;
    bool mEncerrando = false;
};

} // namespace quorel
