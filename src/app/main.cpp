#include "app/inicio.h"

#include "platform/aplicacao.h"
#include "platform/erro.h"
#include "shell/janelas.h"
#include "visual/aparencia.h"

using namespace quorel;

int main(int argc, char **argv)
{
    const QString linhaDeComando = rawCommandLine(argc, argv);
    Aplicacao app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    vesteAplicacao();
    try {
        Janelas janelas;
        iniciaPrograma(linhaDeComando, janelas);
        return QApplication::exec();
    } catch (const ErroExecucao &falha) {
        encerraPorFalha(falha);
    }
}
