#pragma once

#include <MelkarCommon/platform/geometry.h>

#include <optional>
#include <string_view>

/// @file
/// Sizes and points as they are written on the command line.

namespace melkar::tool {

struct Size {
    int width;
    int height;
};

/// "900x500": both from 1 to 32767, what a surface can have. Nothing else may stand in the text.
std::optional<Size> ParseSize(std::string_view text);

/// "120,300": both from -32768 to 32767, so that points outside of the picture can be tried as well.
std::optional<CPoint> ParsePoint(std::string_view text);

} // namespace melkar::tool
