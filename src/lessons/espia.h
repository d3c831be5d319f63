#pragma once

#include "platform/janela.h"

#include <QString>

#include <functional>

namespace quorel {

/// What passes between the shell and another program, as somebody who looks for a fault wants to see it.
struct Passagem
{
    enum class Tipo {
        Envio, ///< the shell is about to send
        Recusa, ///< the send just told came to nothing: the receiver is gone, silent, or answered 0
        Chegada, ///< a message came, and is about to be handled
        Ausente, ///< no program bears the title that is searched, and none could be started
    };
    Tipo tipo = Tipo::Envio;
    Janela outra = 0; ///< window at the other end
    qint32 codigo = 0;
    qint32 tamanho = 0; ///< characters + 1, as it travels
    QString texto; ///< of the message; of Ausente the title, a line feed, and the command line
    bool operator==(const Passagem &) const = default;
};

using Espia = std::function<void(const Passagem &)>;

/// Tells everything that passes from now on; an empty function ends it. Whoever is told must neither send nor wait.
void setEspia(Espia espia);

/// One line for people, without a line end: direction, program, code with its name, size, text. Control characters
/// and line ends are shown and never written, so that a message can't play with a terminal.
QString textoDaPassagem(const Passagem &passagem);

/// What the senders and the hook call; all do nothing while nobody looks.
void tellEnvio(Janela janela, qint32 codigo, const QString &texto);
void tellRecusa(Janela janela, qint32 codigo);
void tellAusente(const QString &titulo, const QString &comando);
/// @param lParam  address of a CopyData
void tellChegada(Janela remetente, qintptr lParam);

} // namespace quorel
