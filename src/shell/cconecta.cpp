#include "shell/cconecta.h"

#include "platform/sistema.h"
#include "startup/texto_util.h"

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr int kJanelaNormal = 1;

bool cConecta::ConexaoAtiva()
{
    mResultado = dialUpConnected() ? 0 : 1;
    return mResultado == 0;
}

void cConecta::AtivarDialUp(const QString &Nome)
{
    gTexto.Executa(u"rundll32.exe rnaui.dll,RnaDial "_s + Nome, kJanelaNormal, false, QString());
}

} // namespace quorel
