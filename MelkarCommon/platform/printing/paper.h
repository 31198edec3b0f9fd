#pragma once

#include <MelkarCommon/platform/measures.h>

#include <span>
#include <string>
#include <string_view>

/// @file
/// Internal. Paper: the platform's codes, the names that printers know, and lengths. Lengths are hundredths of a
/// millimetre, as printers tell them.

namespace melkar {

struct Paper {
    short code;
    const char* media;
    int width; ///< upright
    int height;
};

struct Margins {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool operator==(const Margins&) const = default;
};

/// Null for a code that isn't known.
const Paper* FindPaper(short code);
const Paper* FindPaper(std::string_view media);

constexpr int kUnitsPerInch = kScreenDpi; ///< of a page
constexpr double kHundredthsPerInch = 2540;
constexpr double kPointsPerHundredth = kPointsPerInch / kHundredthsPerInch;

/// A page as it is printed: the sheet in points, and the room on it that takes ink, in device units.
struct SheetLayout {
    double width; ///< points
    double height;
    double left; ///< points from the sheet's edge to the room
    double top;
    int roomWidth; ///< device units, at least 1
    int roomHeight;
};

/// In landscape the page lies on the sheet turned a quarter anticlockwise, as printers do it: its left is the sheet's
/// bottom.
SheetLayout LayOutSheet(const Paper& paper, const Margins& margins, bool isLandscape);

} // namespace melkar
