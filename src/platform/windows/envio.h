#pragma once

#include <QtGlobal>

#include <qt_windows.h>

namespace quorel::win {

/// While a message is being served: its sender's process waits in a send of its own, for as long as we need.
class Serving final
{
    Q_DISABLE_COPY_MOVE(Serving)
public:
    explicit Serving(HWND sender);
    ~Serving();
};

DWORD processOf(HWND window); ///< 0 when there is no such window

/// Serves the sends that have come in, and nothing else.
void serveSends();

} // namespace quorel::win
