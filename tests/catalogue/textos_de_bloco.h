#pragma once

#include <QByteArray>

#include <random>

namespace quorel::teste {

using Acaso = std::mt19937;

/// A number from 0 to `below` - 1.
int sorteia(Acaso &acaso, int below);

/// A well-formed block file. Bytes of code page 1252.
/// @param linha  size of the filling of each Linha, in bytes
QByteArray blocoCerto(int roteiros, int aulas, int linha);

/// Markers, numbers and rubbish in no order.
QByteArray blocoConfuso(Acaso &acaso);

/// A text with pieces taken out, doubled, moved and overwritten.
QByteArray estraga(Acaso &acaso, QByteArray texto);

} // namespace quorel::teste
