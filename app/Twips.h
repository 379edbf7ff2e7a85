#pragma once

namespace app {

/// A twip is 1/1440 inch: 15 to a pixel at 96 dots per inch, the unit of settings and of layout arithmetic.
inline constexpr int kTwipsPerPixel = 15;

/// Whole pixels for a length in twips, to the nearest; logical pixels, which the toolkit scales to the
/// screen.
int PixelsFromTwips(double twips);

/// Twips for a length in logical pixels.
int TwipsFromPixels(int pixels);

} // namespace app
