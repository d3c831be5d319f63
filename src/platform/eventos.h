#pragma once

#include <QtGlobal>

namespace quorel {

/// "Window events run": one pass of the message loop, in which clicks and messages may enter. Never waits.
/// Takes no user input while a HeldUserInput stands.
void eventTurn();

/// While one stands, turns of events take no user input: during the start and the end of the program. It comes in when
/// the last one has gone.
class HeldUserInput final
{
    Q_DISABLE_COPY_MOVE(HeldUserInput)
public:
    HeldUserInput();
    ~HeldUserInput();
};

/// Whether this process is inside a sendCopyData() of its own, at any depth.
bool insideSend();

} // namespace quorel
