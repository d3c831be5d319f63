#include "platform/pressfilter.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QStyleHints>
#include <QTextEdit>

#include <cmath>
#include <utility>

namespace quorel {

/// Whether Enter is a line end there, and no press of the window's button.
static bool takesLines(const QWidget &receiver)
{
    const auto *plain = qobject_cast<const QPlainTextEdit *>(&receiver);
    const auto *rich = qobject_cast<const QTextEdit *>(&receiver);
    return (plain && !plain->isReadOnly()) || (rich && !rich->isReadOnly());
}

/// Whether a key presses something where it arrives. Letters, arrows and what deletes type and move.
static bool presses(const QWidget &receiver, const QKeyEvent &key)
{
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return !takesLines(receiver);
    case Qt::Key_Space:
        return !receiver.testAttribute(Qt::WA_InputMethodEnabled); // text boxes that may be written in have it
    case Qt::Key_Select:
    case Qt::Key_Escape:
        return true;
    default:
        return key.key() >= Qt::Key_F1 && key.key() <= Qt::Key_F35;
    }
}

bool PressFilter::drops(QObject &receiver, const QEvent &event)
{
    switch (event.type()) {
    case QEvent::ShortcutOverride:
        mRepeating = static_cast<const QKeyEvent &>(event).isAutoRepeat();
        return false;
    case QEvent::Shortcut:
        return mRepeating;
    case QEvent::KeyPress: {
        const auto &key = static_cast<const QKeyEvent &>(event);
        if (receiver.isWindowType()) // it comes before the widget
            mRepeating = repeats(key);
        const auto *widget = qobject_cast<const QWidget *>(&receiver);
        return widget && (mRepeating || key.isAutoRepeat()) && presses(*widget, key);
    }
    case QEvent::KeyRelease:
        if (receiver.isWindowType()) {
            const auto &key = static_cast<const QKeyEvent &>(event);
            mKey = {key.key(), key.timestamp(), true};
        }
        return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        auto *widget = qobject_cast<QWidget *>(&receiver);
        return widget && event.spontaneous() && dropsPress(*widget, static_cast<const QMouseEvent &>(event));
    }
    case QEvent::MouseButtonRelease:
        return receiver.isWidgetType() && event.spontaneous() && std::exchange(mDropped, false);
    default:
        return false;
    }
}

// The toolkit takes a repetition for a press of its own when something else happened at the same time, as it does while
// windows take turns; a release may have gone to another window or to none.
bool PressFilter::repeats(const QKeyEvent &press)
{
    constexpr quint64 kLongestDelay = 1000; // ms until a held key repeats first
    const quint64 passed = press.timestamp() - mKey.time;
    const bool again = press.key() == mKey.key && mKey.time != 0 && passed <= (mKey.released ? 0 : kLongestDelay);
    mKey = {press.key(), press.timestamp(), false};
    return again || press.isAutoRepeat();
}

bool PressFilter::dropsPress(QWidget &target, const QMouseEvent &press)
{
    const QStyleHints &hints = *QGuiApplication::styleHints();
    const QPointF moved = press.globalPosition() - mAt;
    const double near = hints.mouseDoubleClickDistance();
    const bool second = mTime != 0 && press.timestamp() - mTime <= quint64(hints.mouseDoubleClickInterval())
        && std::abs(moved.x()) < near && std::abs(moved.y()) < near;
    mTime = press.timestamp();
    mAt = press.globalPosition();
    // A list that a press has opened keeps its own rules.
    mDropped = second && mTarget != &target && target.window()->windowType() != Qt::Popup;
    if (!mDropped)
        mTarget = &target;
    return mDropped;
}

} // namespace quorel
