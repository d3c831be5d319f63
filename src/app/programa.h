#pragma once

#include "app/entregador.h"
#include "shell/janelas.h"

#include <memory>

namespace quorel {

class FGraficos;
class fAlunos;

/// All windows of the program; each folder's are handed what they need of the others'.
class Programa final
{
    Q_DISABLE_COPY_MOVE(Programa)
public:
    Programa();
    ~Programa();

    Janelas &janelas() { return mJanelas; }
    fAlunos &alunos(); ///< made at its first use: most visits do without it

    /// Shows FGraficos and returns when it is closed. It is made at its first use, and anew after the user closed it by
    /// its frame.
    void mostraDesempenho();

private:
    Janelas mJanelas;
    std::unique_ptr<fAlunos> mAlunos;
    std::unique_ptr<FGraficos> mDesempenho;
    Entregador mEntregador;
};

} // namespace quorel
