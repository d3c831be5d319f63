#pragma once

namespace quorel {

inline constexpr int kTwipsPerPixel = 15;

/// Pixels of a measure in twips, 15 twips a pixel, halves to even. Qt scales pixels on dense screens.
int pixels(double twips);

} // namespace quorel
