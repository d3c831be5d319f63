#pragma once

#include "platform/endereco.h"
#include "platform/linux/busdirectory.h"

#include <QPointer>

#include <map>
#include <memory>
#include <vector>

namespace quorel::bus {

/// The procedure in force of an address; it may be replaced while it runs.
struct Procedure
{
    std::shared_ptr<WindowProc> inForce;
};

/// A window of this process that others find on the bus.
struct OwnWindow
{
    Entry entry;
    QPointer<QWidget> body;
    std::shared_ptr<Procedure> procedure;
};

/// The windows of this process that have a handle: those on the bus, and the widgets that were asked for theirs.
class OwnWindows final
{
public:
    Janela newHandle();
    Janela handleOf(const QWidget *widget);

    void add(OwnWindow window);
    bool setTitle(Janela handle, const QString &title); ///< @return whether it is published and bore another one
    /// Takes a top-level window and its inner ones off. @return their handles
    std::vector<Janela> remove(Janela handle);

    bool contains(Janela handle) const { return find(handle) != nullptr; }
    /// The procedure in force; null when there is no such window.
    std::shared_ptr<WindowProc> procedureOf(Janela handle) const;
    QWidget *bodyOf(Janela handle) const; ///< null when there is none, or when it is gone
    std::vector<Entry> entries() const; ///< in the order of publishing

private:
    const OwnWindow *find(Janela handle) const;

    quint32 mLast = 0; ///< number of the last handle given
    std::vector<OwnWindow> mPublished;
    std::map<Janela, QPointer<const QWidget>> mWidgets;
};

} // namespace quorel::bus
