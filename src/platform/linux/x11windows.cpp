#include "platform/linux/x11windows.h"

#include <QByteArray>
#include <QString>

#include <poll.h>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

namespace quorel::x11 {

using namespace Qt::StringLiterals;

static constexpr quint32 kLongestProperty = 16 * 1024; ///< in units of four bytes
/// The least size of a window whose program names none: still to be seen, and to be drawn larger.
static constexpr quint32 kLeastWidth = 112, kLeastHeight = 27;
/// A server that is silent for this long counts as stopped, or a search would hold up all messages with it.
static constexpr std::chrono::seconds kServerLimit{5};
static constexpr quint32 kSourcePager = 2; ///< window managers obey a pager where they would hold an application back

struct Freed
{
    void operator()(void *reply) const { std::free(reply); }
};
template <typename T>
using Answer = std::unique_ptr<T, Freed>;

/// The connection to the X server, with the names used on it.
class Display final
{
    Q_DISABLE_COPY_MOVE(Display)
public:
    Display() : mConnection(xcb_connect(nullptr, &mScreenNumber)) { intern(); }
    ~Display() { xcb_disconnect(mConnection); }

    bool works() const { return mRoot != XCB_NONE && xcb_connection_has_error(mConnection) == 0; }
    bool answers(); ///< false for a stopped server until it goes on
    bool hasWindowManager();
    std::vector<xcb_window_t> topLevels();
    QString titleOf(xcb_window_t window);
    quint32 processOf(xcb_window_t window); ///< as the window tells; 0 when it does not
    void placeByManager(xcb_window_t window, Ordem ordem, unsigned flags);
    void placeDirectly(xcb_window_t window, Ordem ordem, unsigned flags);
    void forgetErrors();

private:
    enum Name { ClientList, NetName, Process, Utf8, Check, State, Above, Active, MoveResize, NameCount };
    static constexpr std::array<const char *, NameCount> kNames{"_NET_CLIENT_LIST", "_NET_WM_NAME", "_NET_WM_PID",
        "UTF8_STRING", "_NET_SUPPORTING_WM_CHECK", "_NET_WM_STATE", "_NET_WM_STATE_ABOVE", "_NET_ACTIVE_WINDOW",
        "_NET_MOVERESIZE_WINDOW"};

    void intern();
    bool poll(unsigned request, void *&reply);
    /// Nothing when the request failed, or the server has stopped.
    template <typename T>
    Answer<T> answerTo(unsigned request);
    QByteArray property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type);
    std::vector<xcb_window_t> windowsIn(xcb_window_t window, Name name);
    std::vector<xcb_window_t> mappedChildren();
    std::optional<std::array<quint32, 2>> cornerOf(xcb_window_t window);
    std::array<quint32, 2> leastSizeOf(xcb_window_t window);
    void tellManager(xcb_window_t window, Name message, const std::array<quint32, 5> &data);

    int mScreenNumber = 0;
    xcb_connection_t *mConnection; ///< owned, closed at the end
    xcb_window_t mRoot = XCB_NONE;
    std::array<xcb_atom_t, NameCount> mAtoms{};
    unsigned mUnanswered = 0; ///< request that the server has stopped at; 0 for none
};

/// Whether a request is done with: its reply has come, an error instead, or the connection is lost.
bool Display::poll(unsigned request, void *&reply)
{
    xcb_generic_error_t *error = nullptr;
    const bool come = xcb_poll_for_reply(mConnection, request, &reply, &error) != 0;
    std::free(error);
    return come || xcb_connection_has_error(mConnection) != 0;
}

bool Display::answers()
{
    void *reply = nullptr;
    if (mUnanswered != 0 && poll(mUnanswered, reply))
        mUnanswered = 0;
    std::free(reply);
    return mUnanswered == 0;
}

template <typename T>
Answer<T> Display::answerTo(unsigned request)
{
    using Clock = std::chrono::steady_clock;
    if (mUnanswered != 0) {
        xcb_discard_reply(mConnection, request);
        return nullptr;
    }
    xcb_flush(mConnection);
    void *reply = nullptr;
    for (const auto end = Clock::now() + kServerLimit; !poll(request, reply);) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        if (left.count() <= 0) {
            mUnanswered = request;
            break;
        }
        pollfd incoming{xcb_get_file_descriptor(mConnection), POLLIN, 0};
        ::poll(&incoming, 1, int(left.count()));
    }
    return Answer<T>(static_cast<T *>(reply));
}

void Display::intern()
{
    if (xcb_connection_has_error(mConnection) != 0)
        return;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(mConnection));
    for (int i = 0; i < mScreenNumber && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    mRoot = screens.data->root;
    std::array<xcb_intern_atom_cookie_t, NameCount> asked{};
    for (std::size_t i = 0; i < kNames.size(); ++i)
        asked[i] = xcb_intern_atom(mConnection, 0, quint16(qstrlen(kNames[i])), kNames[i]);
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        const auto reply = answerTo<xcb_intern_atom_reply_t>(asked[i].sequence);
        mAtoms[i] = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
}

QByteArray Display::property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type)
{
    const auto asked = xcb_get_property(mConnection, 0, window, name, type, 0, kLongestProperty);
    const auto reply = answerTo<xcb_get_property_reply_t>(asked.sequence);
    if (!reply || reply->type == XCB_ATOM_NONE)
        return QByteArray();
    return QByteArray(
        static_cast<const char *>(xcb_get_property_value(reply.get())), xcb_get_property_value_length(reply.get()));
}

std::vector<xcb_window_t> Display::windowsIn(xcb_window_t window, Name name)
{
    const QByteArray bytes = property(window, mAtoms[name], XCB_ATOM_WINDOW);
    std::vector<xcb_window_t> windows(std::size_t(bytes.size()) / sizeof(xcb_window_t));
    if (!windows.empty())
        std::memcpy(windows.data(), bytes.constData(), windows.size() * sizeof(xcb_window_t));
    return windows;
}

/// A manager that died leaves its mark on the root, but not the window that the mark names.
bool Display::hasWindowManager()
{
    const auto check = windowsIn(mRoot, Check);
    return !check.empty() && windowsIn(check.front(), Check) == check;
}

std::vector<xcb_window_t> Display::topLevels()
{
    return hasWindowManager() ? windowsIn(mRoot, ClientList) : mappedChildren();
}

std::vector<xcb_window_t> Display::mappedChildren()
{
    const auto tree = answerTo<xcb_query_tree_reply_t>(xcb_query_tree(mConnection, mRoot).sequence);
    std::vector<xcb_window_t> windows;
    if (!tree)
        return windows;
    const xcb_window_t *children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        const auto asked = xcb_get_window_attributes(mConnection, children[i]);
        const auto attributes = answerTo<xcb_get_window_attributes_reply_t>(asked.sequence);
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE)
            windows.push_back(children[i]);
    }
    return windows;
}

/// Viewers put a long dash between the document's title and their own.
static QString withShortDashes(QString title)
{
    return title.replace(u'\u2013', u'-').replace(u'\u2014', u'-');
}

QString Display::titleOf(xcb_window_t window)
{
    QString title = QString::fromUtf8(property(window, mAtoms[NetName], mAtoms[Utf8]));
    if (title.isEmpty())
        title = QString::fromLatin1(property(window, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY));
    return withShortDashes(title);
}

quint32 Display::processOf(xcb_window_t window)
{
    quint32 process = 0;
    const QByteArray bytes = property(window, mAtoms[Process], XCB_ATOM_CARDINAL);
    if (std::size_t(bytes.size()) >= sizeof process)
        std::memcpy(&process, bytes.constData(), sizeof process);
    return process;
}

/// The upper left corner on the screen, without the frame.
std::optional<std::array<quint32, 2>> Display::cornerOf(xcb_window_t window)
{
    const auto asked = xcb_translate_coordinates(mConnection, window, mRoot, 0, 0);
    const auto reply = answerTo<xcb_translate_coordinates_reply_t>(asked.sequence);
    if (!reply)
        return std::nullopt;
    return std::array{quint32(reply->dst_x), quint32(reply->dst_y)};
}

/// As the program gives it in its size hints.
std::array<quint32, 2> Display::leastSizeOf(xcb_window_t window)
{
    static constexpr quint32 kHasLeast = 1 << 4;
    static constexpr std::size_t kFlags = 0, kWidth = 5, kHeight = 6;
    std::array<quint32, kHeight + 1> hints{};
    const QByteArray bytes = property(window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS);
    if (std::size_t(bytes.size()) < sizeof hints)
        return {kLeastWidth, kLeastHeight};
    std::memcpy(hints.data(), bytes.constData(), sizeof hints);
    if ((hints[kFlags] & kHasLeast) == 0)
        return {kLeastWidth, kLeastHeight};
    return {std::max(hints[kWidth], kLeastWidth), std::max(hints[kHeight], kLeastHeight)};
}

void Display::tellManager(xcb_window_t window, Name message, const std::array<quint32, 5> &data)
{
    xcb_client_message_event_t event = {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = mAtoms[message];
    std::memcpy(event.data.data32, data.data(), sizeof event.data.data32);
    xcb_send_event(mConnection, 0, mRoot, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char *>(&event));
}

void Display::placeByManager(xcb_window_t window, Ordem ordem, unsigned flags)
{
    // Bits of the message's first field: gravity, then which of x, y, width, height hold, then who asks.
    static constexpr quint32 kFrame = 1, kStatic = 10, kPosition = 3 << 8, kSize = 12 << 8,
                             kFromPager = kSourcePager << 12;
    // The screen's corner is for the frame. A window that keeps its place is told it all the same, without the frame:
    // by a size alone managers move it by the frame's thickness, some windows at once and others at the second time.
    const bool keeps = (flags & kKeepPosition) != 0;
    const bool resizes = (flags & kKeepSize) == 0;
    const auto corner = keeps ? cornerOf(window) : std::array<quint32, 2>{};
    const auto [width, height] = leastSizeOf(window);
    if (corner && (!keeps || resizes)) {
        const quint32 what = (keeps ? kStatic : kFrame) | kPosition | (resizes ? kSize : 0) | kFromPager;
        tellManager(window, MoveResize, {what, corner->front(), corner->back(), width, height});
    }
    if (ordem != Ordem::Top)
        tellManager(window, State, {ordem == Ordem::Topmost ? 1u : 0u, mAtoms[Above], 0, kSourcePager, 0});
    if (ordem != Ordem::NoTopmost)
        tellManager(window, Active, {kSourcePager, XCB_CURRENT_TIME, 0, 0, 0});
    xcb_flush(mConnection);
}

void Display::placeDirectly(xcb_window_t window, Ordem ordem, unsigned flags)
{
    std::vector<quint32> values;
    quint16 mask = 0;
    if ((flags & kKeepPosition) == 0) {
        mask |= XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y;
        values.insert(values.end(), {0, 0});
    }
    if ((flags & kKeepSize) == 0) {
        mask |= XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
        const auto least = leastSizeOf(window);
        values.insert(values.end(), least.begin(), least.end());
    }
    if (ordem != Ordem::NoTopmost) {
        mask |= XCB_CONFIG_WINDOW_STACK_MODE;
        values.push_back(XCB_STACK_MODE_ABOVE);
    }
    xcb_configure_window(mConnection, window, mask, values.data());
    xcb_flush(mConnection);
}

/// Those of windows that went meanwhile; nobody else takes them, or anything, out of the queue.
void Display::forgetErrors()
{
    while (Answer<xcb_generic_event_t>(xcb_poll_for_event(mConnection))) { }
}

/// The display in use; made at the first need, and anew where the server came up or went down meanwhile.
static Display *display()
{
    static std::optional<Display> current;
    if (current && !current->works())
        current.reset();
    if (!current && qEnvironmentVariableIsSet("DISPLAY")) {
        current.emplace();
        if (!current->works())
            current.reset();
    }
    return current && current->answers() ? &*current : nullptr;
}

Janela findWindow(QStringView titulo, bool parcial)
{
    Display *screen = display();
    if (!screen)
        return 0;
    const QString wanted = withShortDashes(titulo.toString());
    xcb_window_t beginning = 0;
    for (const xcb_window_t window : screen->topLevels()) {
        const QString title = screen->titleOf(window);
        if (title == wanted)
            return window;
        if (beginning == 0 && parcial && title.startsWith(wanted))
            beginning = window;
    }
    return beginning;
}

bool showsWindow(pid_t process)
{
    Display *screen = display();
    if (!screen)
        return false;
    const auto all = screen->topLevels();
    return std::ranges::any_of(all, [&](xcb_window_t window) { return pid_t(screen->processOf(window)) == process; });
}

void placeWindow(quint32 window, Ordem ordem, unsigned flags)
{
    Display *screen = display();
    if (!screen)
        return;
    screen->forgetErrors();
    if (screen->hasWindowManager())
        screen->placeByManager(window, ordem, flags);
    else
        screen->placeDirectly(window, ordem, flags);
}

} // namespace quorel::x11
