#pragma once

#include <QtGlobal>

namespace quorel {

/// Number of the picture under the mouse in the window on top, 1-based; -1 when there is none. Both timers read it.
inline qint16 gImgApontada = -1;

inline qint16 gImgDica = 0; ///< the picture for which fPrincip built a tip last; nothing reads it

/// Both as at the start of the program; for tests.
void reiniciaShell();

} // namespace quorel
