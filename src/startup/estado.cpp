#include "startup/estado.h"

#include "startup/arquivo_util.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"
#include "startup/unidade_util.h"

namespace quorel {

const TextoUtil gTexto;
const SistemaUtil gSistema;
const UnidadeUtil gUnidades;
ArquivoUtil gArquivo;
Quorel_Zeto gConfig;

QString gNivel;
QString gNomeNivel;
QString gArquivoCfg;
QString gLinhaComando;
bool gEscolas = false;
qint32 gClasse = 0;
QString gNomeClasse;
qint32 gAluno = 0;
QString gDirMM;
QString gDirFiguras;

void reiniciaStartup()
{
    for (QString *text : {&gNivel, &gNomeNivel, &gArquivoCfg, &gLinhaComando, &gNomeClasse, &gDirMM, &gDirFiguras})
        text->clear();
    gEscolas = false;
    gClasse = 0;
    gAluno = 0;
    gConfig = {};
    gArquivo = {};
}

} // namespace quorel
