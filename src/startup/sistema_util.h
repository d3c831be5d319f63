#pragma once

#include "platform/janela.h"

#include <QString>

namespace quorel {

/// The usual `Modo` of ProcuraJanela.
inline constexpr int kModoBusca = 2;

/// The desktop and the system's own directory.
class SistemaUtil final
{
public:
    /// Handle of a window by its title, with case; 0 when there is none. Exact titles come before others that only
    /// begin so, windows of the desktop before inner windows.
    /// @param Modo  not told apart: 2 and 0 search alike @param Parcial  a title that begins so will do
    Janela ProcuraJanela(const QString &Titulo, int Modo, bool Parcial) const;

    /// The Windows directory, without a trailing backslash.
    QString DirWindows() const;

    /// Blocks for that long while window events and messages run.
    void Pausa(float Milissegundos) const;
};

extern const SistemaUtil gSistema;

} // namespace quorel
