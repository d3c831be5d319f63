#include "app/inicio.h"

#include "app/mensagens_no_terminal.h"
#include "app/programa.h"
#include "app/screen_fit.h"
#include "platform/aplicacao.h"
#include "platform/zoom.h"
#include "startup/parametros.h"
#include "visual/aparencia.h"

using namespace quorel;

int main(int argc, char **argv)
{
    QString linhaDeComando = rawCommandLine(argc, argv);
    if (takeMensagens(linhaDeComando))
        mensagensNoTerminal();
    const int asked = askedZoom(linhaDeComando);
    Aplicacao app(argc, argv, asked != 0 ? asked : fittingZoom(freeScreenArea()));
    vesteAplicacao();
    try {
        Programa programa;
        iniciaPrograma(linhaDeComando, programa.janelas());
        return QApplication::exec();
    } catch (const std::exception &falha) {
        encerraPorFalha(falha);
    }
}
