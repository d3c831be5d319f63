#include "platform/janela.h"

#include "platform/linux/bus.h"
#include "platform/linux/x11windows.h"
#include "platform/protocolo.h"

#include <QApplication>
#include <QWindow>

#include <algorithm>

namespace quorel {

using bus::Bus;
using bus::Entry;

/// The four passes, in order.
struct Pass
{
    bool inner;
    bool whole;
};
static constexpr Pass kPasses[] = {{false, true}, {true, true}, {false, false}, {true, false}};
static constexpr std::size_t kExactPasses = 2;

static bool matches(const Entry &entry, QStringView titulo, Pass pass)
{
    return (entry.parent != 0) == pass.inner
        && (pass.whole ? entry.title == titulo : QStringView(entry.title).startsWith(titulo));
}

/// The addresses of this process, then its other windows, which have no inner ones.
static std::vector<Entry> ownEntries()
{
    std::vector<Entry> own = Bus::instance().windows().entries();
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return own;
    for (const QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->testAttribute(Qt::WA_WState_Created) && !widget->windowTitle().isEmpty())
            own.push_back({handleOf(widget), 0, widget->windowTitle()});
    }
    return own;
}

static Janela foundOnBus(QStringView titulo, Pass pass)
{
    // Those that are dead are removed meanwhile, which changes the list; read again for each, many would take long.
    std::vector<Janela> found;
    for (const Entry &entry : Bus::instance().entries()) {
        if (bus::processOf(entry.handle) != ::getpid() && matches(entry, titulo, pass))
            found.push_back(entry.handle);
    }
    const auto alive =
        std::ranges::find_if(found, [](Janela each) { return Bus::instance().isAlive(bus::processOf(each)); });
    return alive == found.end() ? 0 : *alive;
}

/// A title that only a program on the bus bears.
static bool isOfTheBus(QStringView titulo)
{
    return titulo == QStringView(kTituloGerenciador)
        || std::ranges::any_of(kTitulosDosFilhos, [&](const char16_t *each) { return titulo == QStringView(each); });
}

Janela findWindow(QStringView titulo, bool parcial)
{
    if (titulo.isEmpty())
        return 0;
    const std::vector<Entry> own = ownEntries();
    for (std::size_t i = 0; i < (parcial ? std::size(kPasses) : kExactPasses); ++i) {
        const auto mine =
            std::ranges::find_if(own, [&](const Entry &entry) { return matches(entry, titulo, kPasses[i]); });
        if (mine != own.end())
            return mine->handle;
        if (const Janela found = foundOnBus(titulo, kPasses[i]))
            return found;
    }
    return isOfTheBus(titulo) ? 0 : x11::findWindow(titulo, parcial);
}

void placeWindow(Janela janela, Ordem ordem, unsigned flags)
{
    const pid_t process = bus::processOf(janela);
    if (process == 0) {
        if (janela != 0)
            x11::placeWindow(quint32(janela), ordem, flags);
    } else if (process != ::getpid()) {
        Bus::instance().place({janela, quint32(ordem), flags});
    } else if (QWidget *own = Bus::instance().windows().bodyOf(janela)) {
        bus::placeWidget(*own, ordem, flags);
    }
}

Janela handleOf(const QWidget *window)
{
    return Bus::instance().windows().handleOf(window);
}

/// Without making the window anew, as a change of its flags otherwise would.
static void keepOnTop(QWidget &widget, bool on)
{
    Qt::WindowFlags flags = widget.windowFlags();
    flags.setFlag(Qt::WindowStaysOnTopHint, on);
    widget.overrideWindowFlags(flags);
    if (QWindow *window = widget.windowHandle())
        window->setFlag(Qt::WindowStaysOnTopHint, on);
}

void bus::placeWidget(QWidget &widget, Ordem ordem, unsigned flags)
{
    if ((flags & kKeepPosition) == 0)
        widget.move(0, 0);
    if ((flags & kKeepSize) == 0)
        widget.resize(widget.minimumSize().expandedTo(widget.minimumSizeHint()));
    if (widget.isWindow() && ordem != Ordem::Top)
        keepOnTop(widget, ordem == Ordem::Topmost);
    if (ordem == Ordem::NoTopmost)
        return;
    widget.raise();
    if (widget.isWindow() && widget.isVisible())
        widget.activateWindow();
}

} // namespace quorel
