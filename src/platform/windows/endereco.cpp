#include "platform/endereco.h"

#include "platform/windows/addresses.h"
#include "platform/windows/janelas.h"
#include "platform/windows/texto.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>
#include <QWinEventNotifier>

#include <array>
#include <memory>
#include <utility>
#include <vector>

namespace quorel {

using win::Addresses;

static QString oneLine(QString title)
{
    return title.replace(u'\n', u' ');
}

static std::shared_ptr<WindowProc> shared(WindowProc proc)
{
    return std::make_shared<WindowProc>(std::move(proc));
}

/// Where a widget has a native window that window is the address; otherwise one of our own is.
struct Endereco::Dados final : QObject
{
    /// An inner window: an invisible child of the body's that stands for a widget.
    struct Inner
    {
        QString title;
        QPointer<QWidget> body;
        HWND window = nullptr;
    };

    bool eventFilter(QObject *watched, QEvent *event) override;
    void attach();
    void detach();
    void attachInner(Inner &inner);
    void applyTitle();

    std::shared_ptr<win::Procedure> procedure = std::make_shared<win::Procedure>();
    QPointer<QWidget> body;
    HWND window = nullptr;
    QString title; ///< empty before it is published and after it is withdrawn
    std::vector<Inner> inner;
};

void Endereco::Dados::attach()
{
    auto *native = body ? HWND(body->winId()) : nullptr; // no window of the system's on a display without windows
    if (native && IsWindow(native)) {
        window = native;
        Addresses::instance().adopt(window, {procedure, body});
    } else {
        window = Addresses::instance().create({procedure, body}, nullptr);
    }
    for (Inner &each : inner)
        attachInner(each);
}

void Endereco::Dados::detach()
{
    for (const Inner &each : inner)
        Addresses::instance().release(each.window);
    Addresses::instance().release(std::exchange(window, nullptr));
}

void Endereco::Dados::attachInner(Inner &each)
{
    each.window = Addresses::instance().create({procedure, each.body}, window);
    SetWindowTextW(each.window, win::wide(each.title));
}

void Endereco::Dados::applyTitle()
{
    const win::Place *place = Addresses::instance().find(window);
    if (place && place->before)
        body->setWindowTitle(title); // Qt writes it again whenever it makes the window anew
    else
        SetWindowTextW(window, win::wide(title));
}

/// Qt makes a widget's window anew when its flags change.
bool Endereco::Dados::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::WinIdChange && body && body->internalWinId() != 0
        && HWND(body->internalWinId()) != window) {
        detach();
        attach();
        applyTitle();
    }
    return QObject::eventFilter(watched, event);
}

Endereco::Endereco(QWidget *corpo) : d(std::make_unique<Dados>())
{
    d->body = corpo;
    d->procedure->inForce =
        shared([](Janela, quint32 message, quintptr, qintptr) { return qintptr(message == kCopyData); });
    d->attach();
    if (corpo)
        corpo->installEventFilter(d.get());
}

Endereco::~Endereco()
{
    withdraw();
    d->detach();
}

Janela Endereco::handle() const
{
    return Janela(d->window);
}

void Endereco::publish(const QString &titulo, const Interna &interna)
{
    d->title = oneLine(titulo);
    d->procedure->reachable = true;
    d->applyTitle();
    if (!interna.titulo.isEmpty())
        publishInner(interna);
}

void Endereco::setTitle(const QString &titulo)
{
    if (!d->procedure->reachable)
        return;
    d->title = oneLine(titulo);
    d->applyTitle();
}

Janela Endereco::publishInner(const Interna &interna)
{
    Dados::Inner &made = d->inner.emplace_back(Dados::Inner{oneLine(interna.titulo), interna.corpo});
    d->attachInner(made);
    return Janela(made.window);
}

void Endereco::withdraw()
{
    if (!d->procedure->reachable)
        return;
    d->procedure->reachable = false;
    for (const Dados::Inner &each : std::exchange(d->inner, {}))
        Addresses::instance().release(each.window);
    d->title.clear();
    SetWindowTextW(d->window, L"");
}

WindowProc Endereco::replaceProc(WindowProc proc)
{
    // The old one may be running: it is copied, not taken away.
    return *std::exchange(d->procedure->inForce, shared(std::move(proc)));
}

void leaveBus()
{
    Addresses::instance().releaseAll();
}

void watchOwner(Janela janela, std::function<void()> gone)
{
    const DWORD process = win::processOf(HWND(janela));
    const HANDLE handle = process == GetCurrentProcessId() ? nullptr : OpenProcess(SYNCHRONIZE, FALSE, process);
    if (!handle)
        return;
    auto *end = new QWinEventNotifier(handle, QCoreApplication::instance());
    QObject::connect(end, &QWinEventNotifier::activated, end, [end, gone = std::move(gone)](HANDLE ended) {
        end->setEnabled(false);
        CloseHandle(ended);
        end->deleteLater();
        gone();
    });
}

Janela publishedWindowOf(Janela janela, QStringView titulo)
{
    return win::titledWindowOf(win::processOf(HWND(janela)), titulo);
}

Janela publishedWindowOfParent(QStringView titulo)
{
    return win::titledWindowOf(win::parentProcess(), titulo);
}

QString whyUnreachable()
{
    return QString();
}

bool sameProcess(Janela a, Janela b)
{
    const DWORD process = win::processOf(HWND(a));
    return process != 0 && process == win::processOf(HWND(b));
}

Presence presenceOf(Janela janela)
{
    auto *window = HWND(janela);
    const DWORD process = win::processOf(window);
    if (process == 0) // what a process sent before its end has been served by the system
        return Presence::Ended;
    std::array<wchar_t, 2> title{};
    if (InternalGetWindowText(window, title.data(), int(title.size())) == 0) // without asking its program
        return Presence::Withdrawn;
    return IsWindowVisible(window) ? Presence::Seen : Presence::Unseen;
}

} // namespace quorel
