// Windows of programs that are not on the bus, and viewers, on a real X server, with a window manager and without.
#include "platform/preparo.h"

#include "filho_em_teste.h"

#include <QUrl>

#include <xcb/xcb.h>

#include <csignal>
#include <cstdlib>

using namespace quorel;
using namespace quorel::teste;

template <typename Reply>
using Answer = std::unique_ptr<Reply, decltype(&std::free)>;

template <typename Reply>
static Answer<Reply> answer(Reply *reply)
{
    return {reply, std::free};
}

/// An X server of its own and what stands on it, as the server itself tells.
class Tela
{
public:
    explicit Tela(bool comGerente) : mServer("sh", {"-c", "exec Xvfb -displayfd 1 -nolisten tcp 2>/dev/null"})
    {
        while (!mServer.canReadLine() && mServer.waitForReadyRead(kPatience)) { }
        qputenv("DISPLAY", ":" + mServer.readLine().trimmed());
        mConnection.reset(xcb_connect(nullptr, nullptr));
        if (xcb_connection_has_error(mConnection.get()) != 0)
            qFatal("the X server does not answer");
        mRoot = xcb_setup_roots_iterator(xcb_get_setup(mConnection.get())).data->root;
        if (comGerente)
            startManager();
    }

    void startManager()
    {
        mManager = std::make_unique<ChildProcess>("openbox", QStringList{"--sm-disable"});
        // Its number of desktops comes after all else that it announces.
        if (!QTest::qWaitFor([this] { return !values(mRoot, "_NET_NUMBER_OF_DESKTOPS").isEmpty(); }, kPatience))
            qFatal("the window manager does not come up");
    }
    void killManager() { mManager.reset(); }
    void killServer() { mServer.end(); }
    void stopServer(bool stop) { ::kill(pid_t(mServer.processId()), stop ? SIGSTOP : SIGCONT); }

    /// Of the window's frame, from the screen's corner; the frame is the window itself where no manager made one.
    QPoint place(Janela window) const
    {
        auto *const x = mConnection.get();
        const auto asked = xcb_translate_coordinates(x, id(window), mRoot, 0, 0);
        const auto reply = answer(xcb_translate_coordinates_reply(x, asked, nullptr));
        const QPoint at = reply ? QPoint(reply->dst_x, reply->dst_y) : QPoint(-1, -1);
        const QList<quint32> frame = values(id(window), "_NET_FRAME_EXTENTS"); // left, right, top, bottom
        return mManager && frame.size() == 4 ? at - QPoint(int(frame[0]), int(frame[2])) : at;
    }
    QSize size(Janela window) const
    {
        auto *const x = mConnection.get();
        const auto reply = answer(xcb_get_geometry_reply(x, xcb_get_geometry(x, id(window)), nullptr));
        return reply ? QSize(reply->width, reply->height) : QSize();
    }
    bool isAbove(Janela window) const
    {
        return values(id(window), "_NET_WM_STATE").contains(atom("_NET_WM_STATE_ABOVE"));
    }
    /// The window in front of all others, by the manager's list or the server's own order.
    Janela front() const
    {
        const QList<quint32> managed = values(mRoot, "_NET_CLIENT_LIST_STACKING");
        if (mManager)
            return managed.isEmpty() ? 0 : managed.last();
        auto *const x = mConnection.get();
        const auto tree = answer(xcb_query_tree_reply(x, xcb_query_tree(x, mRoot), nullptr));
        const int count = tree ? xcb_query_tree_children_length(tree.get()) : 0;
        return count > 0 ? xcb_query_tree_children(tree.get())[count - 1] : 0;
    }

private:
    static xcb_window_t id(Janela window) { return xcb_window_t(window); }
    xcb_atom_t atom(QByteArrayView name) const
    {
        auto *const x = mConnection.get();
        const auto asked = xcb_intern_atom(x, 0, quint16(name.size()), name.data());
        const auto reply = answer(xcb_intern_atom_reply(x, asked, nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
    QList<quint32> values(xcb_window_t window, QByteArrayView name) const
    {
        auto *const x = mConnection.get();
        const auto asked = xcb_get_property(x, 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 1024);
        const auto reply = answer(xcb_get_property_reply(x, asked, nullptr));
        if (!reply || reply->format != 32)
            return {};
        const auto *first = static_cast<const quint32 *>(xcb_get_property_value(reply.get()));
        return QList<quint32>(first, first + reply->value_len);
    }

    ChildProcess mServer;
    std::unique_ptr<ChildProcess> mManager;
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> mConnection{nullptr, xcb_disconnect};
    xcb_window_t mRoot = XCB_NONE;
};

/// A program's window that is not on the bus.
struct Estranho : Filho
{
    explicit Estranho(const QString &title, const QString &how = "--fora") : Filho({title}, {"-platform", "xcb", how})
    { }
};

class TstX11 : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { preparePlatform(); }
    void init() { failOnWarnings(); }
    void cleanup() { qunsetenv("DISPLAY"); }
    void titles_data();
    void titles();
    void whatIsOnTheScreen_data() { titles_data(); }
    void whatIsOnTheScreen();
    void placing_data() { titles_data(); }
    void placing();
    void aManagerThatComesAndGoes();
    void aServerThatGoes();
    void aServerThatStops();
    void noServer();
    void aViewerGetsTheDocumentAsOneArgument();
};

void TstX11::titles_data()
{
    const Table<bool> row("comGerente");
    row("with a window manager", true);
    row("without one", false);
}

void TstX11::titles()
{
    QFETCH(bool, comGerente);
    const Tela tela(comGerente);
    Estranho outro("Quadrinhos - Outro"), dia("Quadrinhos — Um dia"), ruas("Quadrinhos");
    const QList<Janela> all{outro.janela, dia.janela, ruas.janela};
    QVERIFY(std::ranges::all_of(all, [](Janela each) { return each != 0 && each >> 32 == 0; }));
    QCOMPARE(findWindow(u"Quadrinhos", true), ruas.janela); // the whole title goes before a beginning
    QCOMPARE(findWindow(u"Quadrinhos - Um", true), dia.janela);
    QCOMPARE(findWindow(u"Quadrinhos — Um", true), dia.janela);
    QCOMPARE(findWindow(u"Quadrinhos - Um", false), Janela(0));
    QCOMPARE(findWindow(u"QUADRINHOS", true), Janela(0));
    QVERIFY(all.contains(findWindow(u"Quad", true)));
    // Pages whose titles begin like those of programs of ours.
    const Estranho zeto("Zeto - Quorel — Navegador"), ajuda("Gerenciador de Roteiros do Quorel - Ajuda");
    QCOMPARE(findWindow(u"Zeto - Quorel", true), Janela(0));
    QCOMPARE(findWindow(u"Gerenciador de Roteiros do Quorel", true), Janela(0));
    QCOMPARE(findWindow(u"Zeto - Quorel -", true), zeto.janela);
    dia.process.end();
    QTRY_COMPARE(findWindow(u"Quadrinhos - Um", true), Janela(0));
    placeWindow(dia.janela, Ordem::Topmost, kKeepPosition); // gone: passed over
    QCOMPARE(findWindow(u"Quadrinhos - O", true), outro.janela);
}

void TstX11::whatIsOnTheScreen()
{
    QFETCH(bool, comGerente);
    const Tela tela(comGerente);
    Filho filho({"Visto"}, {"-platform", "xcb"});
    QTRY_COMPARE(presenceOf(filho.janela), Presence::Seen);
    QCOMPARE(sendCopyData(filho.janela, 0, kHide, 0, {}), 1);
    QTRY_COMPARE(presenceOf(filho.janela), Presence::Unseen);
    QCOMPARE(presenceOf(filho.janela + 1), Presence::Withdrawn);
    filho.process.end();
    QTRY_COMPARE(presenceOf(filho.janela), Presence::Ended);
}

void TstX11::placing()
{
    QFETCH(bool, comGerente);
    const Tela tela(comGerente);
    const Estranho um("Um"), dois("Dois", "--fora-na-moldura");
    QTRY_COMPARE(tela.size(um.janela), kPlace.size());
    placeWindow(um.janela, Ordem::Topmost, kKeepSize | kKeepPosition);
    QTRY_COMPARE(tela.front(), um.janela);
    QTRY_COMPARE(tela.isAbove(um.janela), comGerente); // only a manager can keep it there
    placeWindow(um.janela, Ordem::NoTopmost, kKeepSize | kKeepPosition);
    QTRY_VERIFY(!tela.isAbove(um.janela));
    placeWindow(dois.janela, Ordem::Top, kKeepSize | kKeepPosition);
    QTRY_COMPARE(tela.front(), dois.janela);
    QVERIFY(!tela.isAbove(dois.janela));
    placeWindow(dois.janela, Ordem::Top, kKeepSize);
    QTRY_COMPARE(tela.place(dois.janela), QPoint(0, 0));
    for (const Janela each : {um.janela, dois.janela}) {
        const QPoint before = tela.place(each);
        QCOMPARE(before == QPoint(0, 0), each == dois.janela);
        QCOMPARE(tela.size(each), kPlace.size());
        placeWindow(each, Ordem::Top, kKeepPosition);
        QTRY_COMPARE(tela.size(each), kLeast); // the program's own least size instead of 0
        QCOMPARE(tela.place(each), before);
    }
}

void TstX11::aManagerThatComesAndGoes()
{
    Tela tela(false);
    const Estranho um("Um");
    tela.startManager();
    QTRY_COMPARE(findWindow(u"Um", false), um.janela);
    tela.killManager();
    QTRY_COMPARE(findWindow(u"Um", false), um.janela);
    placeWindow(um.janela, Ordem::Top, kKeepSize);
    QTRY_COMPARE(tela.place(um.janela), QPoint(0, 0));
}

void TstX11::aServerThatGoes()
{
    Tela first(false);
    const Estranho um("Um");
    ::signal(SIGPIPE, SIG_DFL); // as in a program that has started none yet
    preparePlatform();
    first.killServer();
    placeWindow(um.janela, Ordem::Top, kKeepSize);
    QCOMPARE(findWindow(u"Um", true), Janela(0));
    QCOMPARE(findWindow(u"Um", true), Janela(0));
    const Tela second(false);
    const Estranho dois("Dois");
    QCOMPARE(findWindow(u"Dois", false), dois.janela);
}

void TstX11::aServerThatStops()
{
    Tela tela(true);
    const Estranho um("Um");
    tela.stopServer(true);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(findWindow(u"Um", true), Janela(0));
        placeWindow(um.janela, Ordem::Top, kKeepSize);
    }
    tela.stopServer(false);
    QTRY_COMPARE(findWindow(u"Um", true), um.janela);
    placeWindow(um.janela, Ordem::Top, kKeepSize);
    QTRY_COMPARE(tela.place(um.janela), QPoint(0, 0));
}

void TstX11::noServer()
{
    for (const char *display : {"", ":", ":63999", "no such host:0"}) {
        qputenv("DISPLAY", display);
        QCOMPARE(findWindow(u"Um", true), Janela(0));
        placeWindow(4, Ordem::Topmost, 0);
    }
}

void TstX11::aViewerGetsTheDocumentAsOneArgument()
{
    const Tela tela(false);
    const ScratchDir dir;
    const QString document = "/Aulas/a&b ção;$x.htm", told = dir.native("/told");
    dir.put(document);
    dir.put("/xdg-open", "#!/bin/sh\necho \"$# $1\" >\"$0.out\"; mv \"$0.out\" \"${0%/*}/told\"\n");
    QVERIFY(QFile::setPermissions(dir.native("/xdg-open"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(dir.native()) + ":" + path);
    const Filho filho({"Abre"}, {"-platform", "xcb"});
    qputenv("PATH", path);
    const auto open = [&](const QString &asked) {
        const QByteArray text = dir.at(asked).toUtf8();
        return sendCopyData(filho.janela, 0, kOpenDocument, qint32(text.size()), text) == 2;
    };
    for (const QString &shown : {document, QString("/Aulas")}) {
        QVERIFY(open(barras(shown).toLower()));
        QTRY_COMPARE(le(told), "1 " + QUrl::fromLocalFile(dir.native(shown)).toEncoded() + "\n");
    }
    QVERIFY(QFile::remove(told));
    QVERIFY(!open("\\Aulas\\Outro.htm"));
    QVERIFY(!QFile::exists(told));
}

QTEST_MAIN(TstX11)
#include "tst_x11.moc"
