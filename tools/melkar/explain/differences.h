#pragma once

#include <MelkarCommon/platform/geometry.h>

#include <string>

/// @file
/// Two pictures of one size against each other.

namespace melkar::tool {

struct PictureDifference {
    long pixels = 0; ///< that differ
    long all = 0;
    CRect area; ///< that holds them
};

PictureDifference DifferenceOf(HDC one, HDC other);

/// Both, and behind them the first in pale grey with what differs in red. @return false, with `errno`, if the file
/// can't be written
bool WriteSideBySide(HDC one, HDC other, const std::string& path, const std::string& format);

} // namespace melkar::tool
