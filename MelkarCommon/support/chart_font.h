#pragma once

#include <MelkarCommon/platform/types.h>

/// @file
/// The one way in which fonts of charts and reports are made: upright, plain but for their weight.

namespace melkar {

/// @param emHeight pixels; 0 is the default height @param escapement tenths of a degree. The caller owns the font.
HFONT MakeFont(int emHeight, int weight, int charset, const char* face, int escapement = 0);

/// A regular one of `points` (11 if it is 0 or negative) on `surface`.
HFONT MakeChartFont(HDC surface, int points, int charset, const char* face, int escapement = 0);

// Escapements of turned texts, tenths of a degree.
constexpr int kUpwards = 900;
constexpr int kDownwards = 2700;

constexpr int kMostPoints = 20000; ///< text sizes beyond it are as good as this one

} // namespace melkar
