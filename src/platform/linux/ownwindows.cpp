#include "platform/linux/ownwindows.h"

#include <algorithm>

namespace quorel::bus {

Janela OwnWindows::newHandle()
{
    return handleIn(::getpid(), ++mLast);
}

Janela OwnWindows::handleOf(const QWidget *widget)
{
    if (!widget)
        return 0;
    std::erase_if(mWidgets, [](const auto &known) { return known.second.isNull(); });
    const auto known = std::ranges::find(mWidgets, widget, [](const auto &each) { return each.second.data(); });
    if (known != mWidgets.end())
        return known->first;
    const Janela handle = newHandle();
    mWidgets.emplace(handle, widget);
    return handle;
}

void OwnWindows::add(OwnWindow window)
{
    mPublished.push_back(std::move(window));
}

bool OwnWindows::setTitle(Janela handle, const QString &title)
{
    for (OwnWindow &window : mPublished) {
        if (window.entry.handle == handle && window.entry.title != title) {
            window.entry.title = title;
            return true;
        }
    }
    return false;
}

std::vector<Janela> OwnWindows::remove(Janela handle)
{
    std::vector<Janela> removed;
    std::erase_if(mPublished, [&](const OwnWindow &window) {
        if (window.entry.handle != handle && window.entry.parent != handle)
            return false;
        removed.push_back(window.entry.handle);
        return true;
    });
    return removed;
}

std::shared_ptr<WindowProc> OwnWindows::procedureOf(Janela handle) const
{
    const OwnWindow *window = find(handle);
    return window ? window->procedure->inForce : nullptr;
}

QWidget *OwnWindows::bodyOf(Janela handle) const
{
    if (const OwnWindow *window = find(handle))
        return window->body;
    const auto known = mWidgets.find(handle);
    // The list holds widgets that were only asked for their handle; placing is what changes them.
    return known == mWidgets.end() ? nullptr : const_cast<QWidget *>(known->second.data());
}

std::vector<Entry> OwnWindows::entries() const
{
    std::vector<Entry> all;
    std::ranges::transform(mPublished, std::back_inserter(all), &OwnWindow::entry);
    return all;
}

const OwnWindow *OwnWindows::find(Janela handle) const
{
    const auto found =
        std::ranges::find(mPublished, handle, [](const OwnWindow &window) { return window.entry.handle; });
    return found == mPublished.end() ? nullptr : &*found;
}

} // namespace quorel::bus
