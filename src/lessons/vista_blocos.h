#pragma once

#include "platform/janela.h"

namespace quorel {

/// What the running of lessons needs of the windows.
struct VistaBlocos
{
    virtual ~VistaBlocos() = default;
    /// Gives fBlocos the focus without showing it. @throws ErroExecucao 5 when it is hidden
    virtual void focusBlocos() = 0;
    virtual void unloadBlocos() = 0; ///< runs the Unload handler of fBlocos, which may turn it into a hide
    virtual Janela handlePrincip() = 0; ///< sender of lessons; janelaBlocos() while fPrincip has no window yet
    virtual Janela handleActive() = 0; ///< active form of the screen, 0 for none
};

/// The view in force; it must outlive its use. Null disconnects.
void setVistaBlocos(VistaBlocos *vista);

/// @throws ErroExecucao 91 while none is connected
VistaBlocos &vistaBlocos();

} // namespace quorel
