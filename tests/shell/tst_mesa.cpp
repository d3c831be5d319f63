// On a real display, with a window manager that is slow: the panel's place, and input that comes before its time.
#include "platform/endereco.h"
#include "platform/eventos.h"
#include "platform/programas.h"

#include "cenario.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QPushButton>
#include <QWindow>

#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <optional>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

static constexpr std::array<quint32, 4> kFrame{1, 1, 22, 1}; ///< left, right, top, bottom
static constexpr QPoint kInFrame{1, 22}; ///< of the client area

/// An X server, and a window manager on it that does each thing when it is told to. It draws no frames; the programs
/// know of them by what it says alone.
class Gerente
{
public:
    Gerente()
    {
        mServer = ::popen("exec Xvfb -displayfd 1 -screen 0 1024x768x24 -nolisten tcp -terminate 2>/dev/null", "r");
        char number[16] = {};
        if (!mServer || !std::fgets(number, sizeof number, mServer))
            qFatal("the X server does not start");
        qputenv("DISPLAY", ":" + QByteArray(number).trimmed());
        mConnection = xcb_connect(nullptr, nullptr);
        mRoot = xcb_setup_roots_iterator(xcb_get_setup(mConnection)).data->root;
        const quint32 mask = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(mConnection, mRoot, XCB_CW_EVENT_MASK, &mask);
        const xcb_window_t check = xcb_generate_id(mConnection);
        xcb_create_window(mConnection, XCB_COPY_FROM_PARENT, check, mRoot, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
            XCB_COPY_FROM_PARENT, 0, nullptr);
        for (const xcb_window_t window : {mRoot, check})
            set(window, "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, {check});
        set(mRoot, "_NET_SUPPORTED", XCB_ATOM_ATOM, {atom("_NET_SUPPORTED"), atom("_NET_FRAME_EXTENTS")});
        serve();
    }
    ~Gerente()
    {
        xcb_disconnect(mConnection);
        ::pclose(mServer);
    }

    void tellFrame(const QWidget &window)
    {
        set(id(window), "_NET_FRAME_EXTENTS", XCB_ATOM_CARDINAL, {kFrame.begin(), kFrame.end()});
        xcb_configure_notify_event_t event = {}; // so do managers, whether anything has moved or not
        auto *now = xcb_get_geometry_reply(mConnection, xcb_get_geometry(mConnection, id(window)), nullptr);
        event.response_type = XCB_CONFIGURE_NOTIFY;
        event.event = event.window = id(window);
        event.x = now->x;
        event.y = now->y;
        event.width = now->width;
        event.height = now->height;
        std::free(now);
        xcb_send_event(mConnection, 0, id(window), XCB_EVENT_MASK_STRUCTURE_NOTIFY, reinterpret_cast<char *>(&event));
        serve();
    }
    /// Maps the window where it asked to be, the frame included, or beside that. @return the place of its client area
    QPoint show(const QWidget &window, QPoint beside = {})
    {
        const QPoint at = corner(window) + kInFrame + beside;
        const std::array values{quint32(at.x()), quint32(at.y())};
        xcb_configure_window(mConnection, id(window), XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values.data());
        xcb_map_window(mConnection, id(window));
        serve();
        return at;
    }
    void click(const QWidget &window)
    {
        xcb_button_press_event_t event = {};
        event.event = id(window);
        event.root = mRoot;
        event.detail = XCB_BUTTON_INDEX_1;
        event.event_x = event.event_y = 5;
        event.same_screen = 1;
        for (const quint8 kind : {quint8{XCB_BUTTON_PRESS}, quint8{XCB_BUTTON_RELEASE}}) {
            event.response_type = kind;
            event.state = kind == XCB_BUTTON_RELEASE ? XCB_BUTTON_MASK_1 : 0;
            xcb_send_event(mConnection, 0, id(window), 0, reinterpret_cast<char *>(&event));
        }
        serve();
    }
    /// Where the window was last asked to be, the frame's corner.
    QPoint corner(const QWidget &window)
    {
        serve();
        const auto asked = mAsked.find(id(window));
        if (asked != mAsked.end())
            return asked->second;
        auto *now = xcb_get_geometry_reply(mConnection, xcb_get_geometry(mConnection, id(window)), nullptr);
        const QPoint at(now->x, now->y);
        std::free(now);
        return isStatic(id(window)) ? at - kInFrame : at;
    }

private:
    static xcb_window_t id(const QWidget &window) { return xcb_window_t(window.internalWinId()); }
    xcb_atom_t atom(QByteArrayView name) const
    {
        const auto asked = xcb_intern_atom(mConnection, 0, quint16(name.size()), name.data());
        auto *reply = xcb_intern_atom_reply(mConnection, asked, nullptr);
        const xcb_atom_t atom = reply->atom;
        std::free(reply);
        return atom;
    }
    void set(xcb_window_t window, QByteArrayView name, xcb_atom_t type, const std::vector<quint32> &values)
    {
        xcb_change_property(
            mConnection, XCB_PROP_MODE_REPLACE, window, atom(name), type, 32, quint32(values.size()), values.data());
    }
    /// Whether a place that is asked for means the client area, by the window's hints.
    bool isStatic(xcb_window_t window) const
    {
        static constexpr std::size_t kGravity = 17;
        const auto asked =
            xcb_get_property(mConnection, 0, window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 0, kGravity + 1);
        auto *reply = xcb_get_property_reply(mConnection, asked, nullptr);
        std::array<quint32, kGravity + 1> hints{};
        if (reply && xcb_get_property_value_length(reply) == sizeof hints)
            std::memcpy(hints.data(), xcb_get_property_value(reply), sizeof hints);
        std::free(reply);
        return hints[kGravity] == XCB_GRAVITY_STATIC;
    }
    void serve()
    {
        std::free(xcb_get_input_focus_reply(mConnection, xcb_get_input_focus(mConnection), nullptr));
        while (auto *event = xcb_poll_for_event(mConnection)) {
            if ((event->response_type & 0x7f) == XCB_CONFIGURE_REQUEST) {
                const auto *request = reinterpret_cast<xcb_configure_request_event_t *>(event);
                const QPoint at(request->x, request->y);
                if ((request->value_mask & XCB_CONFIG_WINDOW_Y) != 0)
                    mAsked[request->window] = isStatic(request->window) ? at - kInFrame : at;
            }
            std::free(event);
        }
    }

    std::FILE *mServer = nullptr;
    xcb_connection_t *mConnection = nullptr;
    xcb_window_t mRoot = XCB_NONE;
    std::map<xcb_window_t, QPoint> mAsked;
};

class TstMesa : public QObject
{
    Q_OBJECT
public:
    explicit TstMesa(Gerente &gerente) : mGerente(gerente) { }

private slots:
    void thePanelStandsBesideTheMainWindow_data();
    void thePanelStandsBesideTheMainWindow();
    void clicksWait_data();
    void clicksWait();

private:
    Gerente &mGerente;
};

void TstMesa::thePanelStandsBesideTheMainWindow_data()
{
    QTest::addColumn<QString>(
        "steps"); // F: the main window's frame is told, S: it is placed and shown; f, s: the panel's
    for (const char *steps : {"FSfs", "SFsf", "fsFS", "sfSF", "FfSs", "SsFf"})
        QTest::newRow(steps) << QString::fromLatin1(steps);
}

void TstMesa::thePanelStandsBesideTheMainWindow()
{
    QFETCH(QString, steps);
    Cenario c;
    for (const QChar step : steps) {
        QWidget &window = step.isUpper() ? static_cast<QWidget &>(c.principal()) : c.painel();
        if (step.toUpper() == u'F') {
            mGerente.tellFrame(window);
            QTRY_COMPARE(window.windowHandle()->frameMargins().top(), kInFrame.y());
        } else {
            const QPoint at = mGerente.show(window);
            QTRY_COMPARE(window.geometry().topLeft(), at);
        }
        QEvent something(QEvent::User); // whatever comes first: a paint, a pointer that enters
        QApplication::sendEvent(&window, &something);
    }
    QTRY_COMPARE(mGerente.corner(c.painel()), QPoint(527 + 2, 0)); // (7920 - 10) / 15 and both sides of the frame
    QCOMPARE(mGerente.corner(c.principal()), QPoint(0, 0));
}

void TstMesa::clicksWait_data()
{
    QTest::addColumn<bool>("held");
    QTest::addColumn<std::function<void()>>("wait");
    using Wait = std::function<void()>;
    QTest::newRow("for the end of the start") << true << Wait(eventTurn);
    QTest::newRow("while a program starts, answers and ends") << false << Wait([] {
        constexpr quint32 kSizePlus1000 = 1, kDie = 4; // of the program of the bus's tests
        QVERIFY(startProgramNow({QStringLiteral(QUOREL_BIN "/filho_teste"), u"Vem -platform offscreen"_s, true}));
        const Janela filho = findWindow(u"Vem", false);
        QCOMPARE(sendCopyData(filho, 0, kSizePlus1000, 0, {}), 1000);
        QCOMPARE(sendCopyData(filho, 0, kDie, 0, {}), 0);
    });
}

void TstMesa::clicksWait()
{
    QFETCH(bool, held);
    QFETCH(std::function<void()>, wait);
    int clicks = 0;
    QPushButton button;
    connect(&button, &QPushButton::clicked, this, [&] { ++clicks; });
    button.show();
    const QPoint at = mGerente.show(button);
    QTRY_COMPARE(button.geometry().topLeft(), at);
    std::optional<HeldUserInput> hold;
    if (held)
        hold.emplace();
    mGerente.click(button);
    wait();
    if (held) { // what comes after the click does get through
        mGerente.show(button, {10, 0});
        for (const QDeadlineTimer end(20s); button.geometry().topLeft() == at && !end.hasExpired();)
            wait();
        QVERIFY(button.geometry().topLeft() != at);
    }
    QCOMPARE(clicks, 0);
    hold.reset();
    QTRY_COMPARE(clicks, 1);
}

int main(int argc, char **argv)
{
    Gerente gerente;
    qputenv("QT_QPA_PLATFORM", "xcb");
    int result = 0;
    {
        QApplication app(argc, argv);
        TstMesa test(gerente);
        result = QTest::qExec(&test, argc, argv);
    }
    return result;
}

#include "tst_mesa.moc"
