#pragma once

#include <QPointF>
#include <QPointer>
#include <QWidget>

class QEvent;
class QKeyEvent;
class QMouseEvent;

namespace quorel {

/// What counts as a press, in every window of the program: a key that repeats by itself counts once, and nothing that
/// has come up under the pointer takes the second press of a double click. Typing, moving and scrolling repeat.
class PressFilter final
{
public:
    /// Sees each event before its receiver does. @return whether the receiver is not to have it
    bool drops(QObject &receiver, const QEvent &event);

private:
    /// The last that was heard of a key.
    struct Key
    {
        int key = 0;
        quint64 time = 0; ///< as below
        bool released = true;
    };

    bool repeats(const QKeyEvent &press);
    bool dropsPress(QWidget &target, const QMouseEvent &press);

    Key mKey;
    bool mRepeating = false; ///< the key at hand repeats; its shortcut, if it is one, or its widget comes next
    bool mDropped = false; ///< the press of the button that is down was dropped; its release goes with it
    QPointer<QWidget> mTarget; ///< of the last press that counted
    QPointF mAt; ///< of the last press, on the screen
    quint64 mTime = 0; ///< of the last press, in ms of the system's own clock; 0: not known
};

} // namespace quorel
