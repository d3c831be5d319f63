#pragma once

namespace quorel {

/// "Window events run": one pass of the message loop, in which clicks and messages may enter. Never waits.
/// Takes no user input while holdUserInput(true) is in force.
void eventTurn();

/// During the start of the program turns of events take no user input.
void holdUserInput(bool hold);

/// Whether this process is inside a sendCopyData() of its own, at any depth.
bool insideSend();

} // namespace quorel
