#include "lessons/mensagens.h"

#include "lessons/andamento.h"
#include "lessons/espia.h"
#include "lessons/gancho.h"
#include "platform/codec.h"
#include "platform/erro.h"
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

void despedeFilhos()
{
    for (const Janela *filho : {&gJanelaZeto, &gJanelaLivros, &gJanelaCalc, &gJanelaVrel, &gJanelaDesenho})
        ignora([&] { EnviaTexto(*filho, janelaBlocos(), MSG_SAI, QString()); });
}

} // namespace quorel
