#pragma once

#include <QString>

namespace quorel {

class Janelas;

// What the small buttons around the windows start. A program or document that is not there, or can't be started, is
// passed over without a message.

/// The help document, from the blocks' directory, else from that in the Windows directory.
void abreAjuda();

/// A game of a roteiro, likewise. @param nome  its file name
void abreJogo(const QString &nome);

/// The drawing tool.
void abreDesenho();

/// The didactic material: the page that is installed, else one that the user points out.
void abreMaterialDidatico();

/// The suite's program, in the place of this one: starts it and ends.
void chamaQuorel(Janelas &janelas);

/// The maker's page. Without a connection a warning and a question come first; on a No fPrincip comes to the front.
void acessaPagina(Janelas &janelas, bool conectado);

} // namespace quorel
