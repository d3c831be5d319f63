#pragma once

class QWidget;

namespace quorel {

/// How large lessons are written, in per cent of the usual: chosen by the pupil, kept for this user.
inline constexpr int kSmallestType = 100;
inline constexpr int kLargestType = 200;

/// The size in force; read from the user's settings at first use.
int typeSize();

/// Sets and keeps a size. @param size  in per cent; cut to the limits, and to a step of 25
void setTypeSize(int size);

/// A measure at the size in force. @param pixels  at 100 %
int typePixels(int pixels);

/// Gives a widget a type that follows the size. @param pixels  at 100 %
void setType(QWidget &widget, int pixels, bool bold);

/// Writes everything in a window at the size in force: what setType() was called for. Nothing is built anew, so that
/// an answer begun stays.
void applyTypeSize(QWidget &window);

} // namespace quorel
