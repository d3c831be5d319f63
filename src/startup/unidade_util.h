#pragma once

#include <QString>

namespace quorel {

/// The drives of the machine.
class UnidadeUtil final
{
public:
    /// The roots of the drives of a type with their trailing backslashes, each ended by a NUL character; empty when
    /// there is none. @param Tipo  5 is an optical drive
    QString ListaUnidades(int Tipo) const;
};

extern const UnidadeUtil gUnidades;

} // namespace quorel
