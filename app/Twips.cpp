#include "app/Twips.h"

#include "base/Numbers.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace app {

int PixelsFromTwips(double twips) {
    const std::int64_t pixels = base::RoundHalfToEven(twips / kTwipsPerPixel);
    return static_cast<int>(
        std::clamp<std::int64_t>(pixels, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

int TwipsFromPixels(int pixels) {
    constexpr int kLargest = std::numeric_limits<int>::max() / kTwipsPerPixel;
    return std::clamp(pixels, -kLargest, kLargest) * kTwipsPerPixel;
}

} // namespace app
