// Windows of programs that are not on the bus, and viewers, on a real X server, with a window manager and without.
#include "platform/endereco.h"
#include "platform/janela.h"
#include "platform/preparo.h"
#include "support/suporte.h"

#include "filho_teste.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>

#include <xcb/xcb.h>

#include <csignal>
#include <cstdlib>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

static constexpr int kPatience = 20000; ///< ms until something that has to come counts as missing
static const QSize kSize{400, 300}; ///< of janela_x11
static const QSize kLeast{160, 90};
static const QPoint kPlace{150, 120};

/// A program that ends with its scope.
class Programa
{
public:
    Programa(const QString &program, const QStringList &arguments)
    {
        mProcess.start(program, arguments);
        if (!mProcess.waitForStarted(kPatience))
            qFatal("%s does not start", qPrintable(program));
    }
    ~Programa() { kill(); }
    void kill()
    {
        mProcess.kill();
        mProcess.waitForFinished();
    }
    pid_t pid() const { return pid_t(mProcess.processId()); }
    QByteArray firstLine()
    {
        while (!mProcess.canReadLine() && mProcess.waitForReadyRead(kPatience)) { }
        return mProcess.readLine().trimmed();
    }

private:
    QProcess mProcess;
};

/// An X server of its own and what stands on it, as the server itself tells.
class Tela
{
public:
    explicit Tela(bool comGerente) : mServer(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s})
    {
        qputenv("DISPLAY", ":" + mServer.firstLine());
        mConnection = xcb_connect(nullptr, nullptr);
        if (xcb_connection_has_error(mConnection) != 0)
            qFatal("the X server does not answer");
        mRoot = xcb_setup_roots_iterator(xcb_get_setup(mConnection)).data->root;
        if (comGerente)
            startManager();
    }
    ~Tela() { xcb_disconnect(mConnection); }

    void startManager()
    {
        mManager = std::make_unique<Programa>(u"openbox"_s, QStringList{u"--sm-disable"_s});
        // Its number of desktops comes after all else that it announces.
        if (!QTest::qWaitFor([this] { return !values(mRoot, "_NET_NUMBER_OF_DESKTOPS").isEmpty(); }, kPatience))
            qFatal("the window manager does not come up");
    }
    void killManager() { mManager.reset(); }
    void killServer() { mServer.kill(); }
    void stopServer(bool stop) { ::kill(mServer.pid(), stop ? SIGSTOP : SIGCONT); }

    /// Of the window's frame, from the screen's corner; the frame is the window itself where no manager made one.
    QPoint place(Janela window) const
    {
        const auto asked = xcb_translate_coordinates(mConnection, id(window), mRoot, 0, 0);
        auto *reply = xcb_translate_coordinates_reply(mConnection, asked, nullptr);
        QPoint at = reply ? QPoint(reply->dst_x, reply->dst_y) : QPoint(-1, -1);
        std::free(reply);
        const QList<quint32> frame = values(id(window), "_NET_FRAME_EXTENTS"); // left, right, top, bottom
        return mManager && frame.size() == 4 ? at - QPoint(int(frame[0]), int(frame[2])) : at;
    }
    QSize size(Janela window) const
    {
        auto *reply = xcb_get_geometry_reply(mConnection, xcb_get_geometry(mConnection, id(window)), nullptr);
        const QSize size = reply ? QSize(reply->width, reply->height) : QSize();
        std::free(reply);
        return size;
    }
    bool isAbove(Janela window) const
    {
        return values(id(window), "_NET_WM_STATE").contains(atom("_NET_WM_STATE_ABOVE"));
    }
    /// The window in front of all others, by the manager's list or the server's own order.
    Janela front() const
    {
        if (mManager)
            return lastOf(values(mRoot, "_NET_CLIENT_LIST_STACKING"));
        auto *tree = xcb_query_tree_reply(mConnection, xcb_query_tree(mConnection, mRoot), nullptr);
        const int count = tree ? xcb_query_tree_children_length(tree) : 0;
        const Janela last = count > 0 ? xcb_query_tree_children(tree)[count - 1] : 0;
        std::free(tree);
        return last;
    }

private:
    static Janela lastOf(const QList<quint32> &windows) { return windows.isEmpty() ? 0 : windows.last(); }
    static xcb_window_t id(Janela window) { return xcb_window_t(window); }
    xcb_atom_t atom(QByteArrayView name) const
    {
        const auto asked = xcb_intern_atom(mConnection, 0, quint16(name.size()), name.data());
        auto *reply = xcb_intern_atom_reply(mConnection, asked, nullptr);
        const xcb_atom_t atom = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
        std::free(reply);
        return atom;
    }
    QList<quint32> values(xcb_window_t window, QByteArrayView name) const
    {
        const auto asked = xcb_get_property(mConnection, 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 1024);
        auto *reply = xcb_get_property_reply(mConnection, asked, nullptr);
        QList<quint32> all;
        if (reply && reply->format == 32) {
            const auto *first = static_cast<const quint32 *>(xcb_get_property_value(reply));
            all = QList<quint32>(first, first + reply->value_len);
        }
        std::free(reply);
        return all;
    }

    Programa mServer;
    std::unique_ptr<Programa> mManager;
    xcb_connection_t *mConnection = nullptr;
    xcb_window_t mRoot = XCB_NONE;
};

/// A foreign window, with its handle as the search by the whole title gave it.
struct JanelaX11 : Programa
{
    explicit JanelaX11(const QString &title)
        : Programa(QStringLiteral(QUOREL_BIN "/janela_x11"), {u"-platform"_s, u"xcb"_s, title})
    {
        const QString plain = QString(title).replace(u'—', u'-');
        if (!QTest::qWaitFor([&] { return (janela = findWindow(plain, false)) != 0; }, kPatience))
            qFatal("the window is not found");
    }
    Janela janela = 0;
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
    void placing_data() { titles_data(); }
    void placing();
    void aManagerThatComesAndGoes();
    void aServerThatGoes();
    void aServerThatStops();
    void noServer();
    void documents_data();
    void documents();
};

void TstX11::titles_data()
{
    QTest::addColumn<bool>("comGerente");
    QTest::newRow("with a window manager") << true;
    QTest::newRow("without one") << false;
}

void TstX11::titles()
{
    QFETCH(bool, comGerente);
    const Tela tela(comGerente);
    JanelaX11 outro(u"Quadrinhos - Outro"_s), dia(u"Quadrinhos — Um dia"_s), ruas(u"Quadrinhos"_s);
    const QList<Janela> all{outro.janela, dia.janela, ruas.janela};
    QVERIFY(std::ranges::all_of(all, [](Janela each) { return each != 0 && each >> 32 == 0; }));
    QCOMPARE(findWindow(u"Quadrinhos", true), ruas.janela); // the whole title goes before a beginning
    QCOMPARE(findWindow(u"Quadrinhos - Um", true), dia.janela);
    QCOMPARE(findWindow(u"Quadrinhos — Um", true), dia.janela);
    QCOMPARE(findWindow(u"Quadrinhos - Um", false), Janela(0));
    QCOMPARE(findWindow(u"QUADRINHOS", true), Janela(0));
    QVERIFY(all.contains(findWindow(u"Quad", true)));
    dia.kill();
    QTRY_COMPARE(findWindow(u"Quadrinhos - Um", true), Janela(0));
    placeWindow(dia.janela, Ordem::Topmost, 0); // gone: passed over
    QCOMPARE(findWindow(u"Quadrinhos - O", true), outro.janela);
}

void TstX11::placing()
{
    QFETCH(bool, comGerente);
    const Tela tela(comGerente);
    const JanelaX11 um(u"Um"_s), dois(u"Dois"_s);
    QTRY_COMPARE(tela.size(um.janela), kSize);
    placeWindow(um.janela, Ordem::Topmost, kKeepSize | kKeepPosition);
    QTRY_COMPARE(tela.front(), um.janela);
    QTRY_COMPARE(tela.isAbove(um.janela), comGerente); // only a manager can keep it there
    placeWindow(um.janela, Ordem::NoTopmost, kKeepSize | kKeepPosition);
    QTRY_VERIFY(!tela.isAbove(um.janela));
    placeWindow(dois.janela, Ordem::Top, kKeepSize | kKeepPosition);
    QTRY_COMPARE(tela.front(), dois.janela);
    QVERIFY(!tela.isAbove(dois.janela));
    const QPoint before = tela.place(um.janela);
    QVERIFY(before != QPoint(0, 0));
    QCOMPARE(tela.size(um.janela), kSize);
    placeWindow(um.janela, Ordem::Top, kKeepPosition);
    QTRY_COMPARE(tela.size(um.janela), kLeast); // the program's own least size instead of 0
    QCOMPARE(tela.place(um.janela), before);
    placeWindow(dois.janela, Ordem::Top, kKeepSize);
    QTRY_COMPARE(tela.place(dois.janela), QPoint(0, 0));
    QCOMPARE(tela.size(dois.janela), kSize);
}

void TstX11::aManagerThatComesAndGoes()
{
    Tela tela(false);
    const JanelaX11 um(u"Um"_s);
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
    const JanelaX11 um(u"Um"_s);
    ::signal(SIGPIPE, SIG_DFL); // as in a program that has started none yet
    preparePlatform();
    first.killServer();
    placeWindow(um.janela, Ordem::Top, kKeepSize);
    QCOMPARE(findWindow(u"Um", true), Janela(0));
    QCOMPARE(findWindow(u"Um", true), Janela(0));
    const Tela second(false);
    const JanelaX11 dois(u"Dois"_s);
    QCOMPARE(findWindow(u"Dois", false), dois.janela);
}

void TstX11::aServerThatStops()
{
    Tela tela(true);
    const JanelaX11 um(u"Um"_s);
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

void TstX11::documents_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<QString>("shown"); // empty when it can't be opened
    QTest::newRow("file, without regard to case") << u"\\AULAS\\um dia.HTM"_s << u"/Aulas/Um dia.htm"_s;
    QTest::newRow("directory") << u"\\aulas"_s << u"/Aulas"_s;
    QTest::newRow("missing") << u"\\Aulas\\Outro.htm"_s << QString();
    QTest::newRow("accents and signs") << u"\\aulas\\a&b ção;$x.htm"_s << u"/Aulas/a&b ção;$x.htm"_s;
}

void TstX11::documents()
{
    QFETCH(QString, document);
    QFETCH(QString, shown);
    const Tela tela(false);
    const QTemporaryDir dir;
    for (const QString &name : {u"/Aulas/Um dia.htm"_s, u"/Aulas/a&b ção;$x.htm"_s})
        escreve(dir.path() + name, "x");
    const QString viewer = dir.filePath(u"xdg-open"_s), told = dir.filePath(u"told"_s);
    escreve(viewer, "#!/bin/sh\necho \"$# $1\" >\"$0.out\"; mv \"$0.out\" \"${0%/*}/told\"\n");
    QVERIFY(QFile::setPermissions(viewer, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(dir.path()) + ":" + path);
    Programa filho(QStringLiteral(QUOREL_BIN "/filho_teste"), {u"Abre"_s, u"-platform"_s, u"xcb"_s});
    qputenv("PATH", path);
    QTRY_VERIFY_WITH_TIMEOUT(findWindow(u"Abre", false) != 0, kPatience);
    const QByteArray text = (barras(dir.path()) + document).toUtf8();
    const qintptr opened = sendCopyData(findWindow(u"Abre", false), 0, kOpenDocument, qint32(text.size()), text);
    QCOMPARE(opened, shown.isEmpty() ? 1 : 2);
    if (opened == 2) {
        QTRY_VERIFY(QFile::exists(told));
        QCOMPARE(le(told), "1 " + QUrl::fromLocalFile(dir.path() + shown).toEncoded() + "\n");
    }
    QCOMPARE(QFile::exists(told), opened == 2);
}

QTEST_MAIN(TstX11)
#include "tst_x11.moc"
