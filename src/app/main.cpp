#include "app/inicio.h"

#include "app/programa.h"
#include "platform/aplicacao.h"
#include "visual/aparencia.h"

using namespace quorel;

int main(int argc, char **argv)
{
    const QString linhaDeComando = rawCommandLine(argc, argv);
    Aplicacao app(argc, argv);
    vesteAplicacao();
    try {
        Programa programa;
        iniciaPrograma(linhaDeComando, programa.janelas());
        return QApplication::exec();
    } catch (const std::exception &falha) {
        encerraPorFalha(falha);
    }
}
