#include "platform/zoom.h"

#include <QByteArray>
#include <QRect>

#include <xcb/randr.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace quorel {

struct Disconnect
{
    void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

struct Freed
{
    void operator()(void *reply) const { std::free(reply); }
};
template <typename T>
using Answer = std::unique_ptr<T, Freed>;

/// Qt without X11 gives windows no places, and one that plays offscreen has no screen of anybody's.
static bool qtAsksX11()
{
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    return qEnvironmentVariableIsSet("DISPLAY") && (platform.isEmpty() || platform.startsWith("xcb"));
}

/// The monitor that the corner 0,0 belongs to: windows begin there. The whole screen where monitors can't be asked.
static QRect monitorAtCorner(xcb_connection_t *connection, const xcb_screen_t &screen)
{
    const QRect whole(0, 0, screen.width_in_pixels, screen.height_in_pixels);
    const xcb_query_extension_reply_t *randr = xcb_get_extension_data(connection, &xcb_randr_id);
    if (!randr || !randr->present)
        return whole;
    const Answer<xcb_randr_get_monitors_reply_t> monitors(
        xcb_randr_get_monitors_reply(connection, xcb_randr_get_monitors(connection, screen.root, 1), nullptr));
    if (!monitors)
        return whole;
    for (auto each = xcb_randr_get_monitors_monitors_iterator(monitors.get()); each.rem > 0;
         xcb_randr_monitor_info_next(&each)) {
        const QRect area(each.data->x, each.data->y, each.data->width, each.data->height);
        if (area.contains(0, 0))
            return area;
    }
    return whole;
}

/// What docks leave free on the first desktop, all monitors together; empty when no window manager tells.
static QRect workArea(xcb_connection_t *connection, xcb_window_t root)
{
    static constexpr char kName[] = "_NET_WORKAREA";
    static constexpr quint32 kNumbers = 4;
    const Answer<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 1, sizeof kName - 1, kName), nullptr));
    if (!atom || atom->atom == XCB_NONE)
        return {};
    const Answer<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection, xcb_get_property(connection, 0, root, atom->atom, XCB_ATOM_CARDINAL, 0, kNumbers), nullptr));
    if (!reply || reply->value_len < kNumbers)
        return {};
    const auto *numbers = static_cast<const qint32 *>(xcb_get_property_value(reply.get()));
    return {numbers[0], numbers[1], numbers[2], numbers[3]};
}

QSize freeScreenArea()
{
    if (!qtAsksX11())
        return {};
    int number = 0;
    const Connection connection(xcb_connect(nullptr, &number));
    if (xcb_connection_has_error(connection.get()) != 0)
        return {};
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    for (; number > 0 && screens.rem > 1; --number)
        xcb_screen_next(&screens);
    const QRect monitor = monitorAtCorner(connection.get(), *screens.data);
    const QRect free = workArea(connection.get(), screens.data->root);
    return free.isEmpty() ? monitor.size() : monitor.intersected(free).size();
}

} // namespace quorel
