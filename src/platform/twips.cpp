#include "platform/twips.h"

#include <cmath>

namespace quorel {

int pixels(double twips)
{
    return static_cast<int>(std::lrint(twips / kTwipsPerPixel)); // the processor's rounding: halves to even
}

} // namespace quorel
