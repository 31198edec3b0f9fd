#pragma once

#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <cstdint>

/// @file
/// Where a text or a picture stands in its box. Device units; divisions truncate towards zero.
///
///    +-----------+   +-----------+   +-----------+       +-----------+
///    |text text  |   |           |   |           |       |   +---+   |
///    |text       |   |text text  |   |           |       |   |   |   |   a picture keeps its proportions
///    |           |   |text       |   |text text  |       |   |   |   |   and touches two opposite edges
///    |           |   |           |   |text       |       |   +---+   |
///    +-----------+   +-----------+   +-----------+       +-----------+
///         top            middle          bottom

namespace melkar {

constexpr int kMostBoxBytes = 10000; ///< of a text in a box, which is cut there

/// The text of this height on the bottom of its box; all of the box if it is higher.
constexpr CRect TextAtBottom(const CRect& box, int textHeight) {
    return textHeight > box.Height() ? box
                                     : CRect(box.left, SubtractEdge(box.bottom, textHeight), box.right, box.bottom);
}

/// Half-way up its box; all of the box if it is higher. Both halves are cut, so it may stand a unit above the exact
/// middle.
constexpr CRect TextAtMiddle(const CRect& box, int textHeight) {
    if (textHeight > box.Height())
        return box;
    const int top = static_cast<int>((std::int64_t{box.top} + box.bottom) / 2 - textHeight / 2);
    return {box.left, top, box.right, AddEdge(top, textHeight)};
}

/// Bits; neither bit of a direction stands for left or top, and centring wins.
enum PictureAlignment : unsigned int {
    PictureCenter = 1,
    PictureRight = 2,
    PictureMiddle = 4,
    PictureBottom = 8,
};

/// How many units of the box a pixel of the picture takes so that all of it fits; single precision, so that the longer
/// side comes out whole.
inline float FitRatio(const CRect& box, int width, int height) {
    return std::min(static_cast<float>(box.Width()) / static_cast<float>(width),
                    static_cast<float>(box.Height()) / static_cast<float>(height));
}

/// `width` and `height` (above 0) of the picture scaled by `ratio`, and aligned in the box.
inline CRect PictureIn(const CRect& box, int width, int height, float ratio, unsigned int alignment) {
    const auto place = [](int near, int far, int extent, bool centre, bool atFar) {
        if (centre)
            return NearestInt((std::int64_t{near} + far) / 2 - extent / 2);
        return atFar ? SubtractEdge(far, extent) : near;
    };
    const int drawnWidth = Truncate(static_cast<float>(width) * ratio);
    const int drawnHeight = Truncate(static_cast<float>(height) * ratio);
    const int left = place(box.left, box.right, drawnWidth, alignment & PictureCenter, alignment & PictureRight);
    const int top = place(box.top, box.bottom, drawnHeight, alignment & PictureMiddle, alignment & PictureBottom);
    return {left, top, AddEdge(left, drawnWidth), AddEdge(top, drawnHeight)};
}

} // namespace melkar
