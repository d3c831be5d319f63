#pragma once

#include "platform/endereco.h"

#include <QPointer>

#include <map>
#include <memory>
#include <vector>

#include <qt_windows.h>

namespace quorel::win {

/// The procedure in force of an address, shared by its windows; it may be replaced while it runs.
struct Procedure
{
    std::shared_ptr<WindowProc> inForce;
    bool reachable = false; ///< published and not withdrawn
};

/// A window of the system through which an address is reached.
struct Place
{
    std::shared_ptr<Procedure> procedure;
    QPointer<QWidget> body; ///< that moves when the window is placed; null when the window itself is all there is
    WNDPROC before = nullptr; ///< what a widget's own window was served by; null for a window of the class "Quorel"
};

/// The windows of this process that belong to an address.
class Addresses final
{
    Q_DISABLE_COPY_MOVE(Addresses)
public:
    static Addresses &instance();

    /// Makes an invisible window of the class "Quorel". @param parent  null for a top-level one
    HWND create(Place place, HWND parent);
    void adopt(HWND window, Place place); ///< puts our procedure before the one of a widget's native window
    /// Destroys the one made; gives the adopted one its procedure back, unless another was put before ours since.
    void release(HWND window);
    void releaseAll();

    const Place *find(HWND window) const; ///< null for a window that belongs to no address
    void forget(HWND window) { mPlaces.erase(window); } ///< the system has destroyed it

private:
    Addresses() = default;

    std::map<HWND, Place> mPlaces;
};

/// Calls the procedure of an address with a message; 0 when it was withdrawn, or for a size that is not true.
qintptr deliver(HWND window, const Place &place, Janela sender, CopyData data);

} // namespace quorel::win
