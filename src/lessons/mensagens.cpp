#include "lessons/mensagens.h"

#include "lessons/espia.h"
#include "platform/codec.h"
#include "platform/endereco.h"
#include "platform/eventos.h"

namespace quorel {

bool EnviaTexto(Janela janela, Janela remetente, qint32 codigo, const QString &texto)
{
    if (janela == 0 || remetente == 0)
        return false;
    QByteArray bytes = encode1252(texto);
    bytes.append('\0');
    if (bytes.size() > qsizetype(kMaxCopyData))
        return false;
    eventTurn();
    tellEnvio(janela, codigo, texto);
    const bool taken = sendCopyData(janela, remetente, quint32(codigo), qint32(bytes.size()), bytes) != 0;
    if (!taken)
        tellRecusa(janela, codigo);
    return taken;
}

} // namespace quorel
