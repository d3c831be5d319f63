#pragma once

#include <QSize>

namespace quorel {

/// The largest of 100, 125, 150, 175 and 200 % at which the windows that stand side by side (a window of pictures, and
/// the panel or the register) fit a screen with their frames; 75 where even 100 does not fit.
/// @param freeArea  of the screen, in its own pixels; an empty one leaves the size to Qt
/// @return per cent, 0 for an empty area
int fittingZoom(QSize freeArea);

} // namespace quorel
