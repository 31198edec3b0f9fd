#pragma once

#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/types.h>

#include <algorithm>
#include <cstdint>

/// @file
/// Internal. Rectangles in 64 bits, for coordinates that come from anywhere.

namespace melkar {

/// A rectangle whose edges can't overflow; made from ints by adding and subtracting.
struct Box {
    std::int64_t left;
    std::int64_t top;
    std::int64_t right;
    std::int64_t bottom;
};

constexpr Box ToBox(const RECT& r) { return {r.left, r.top, r.right, r.bottom}; }
constexpr bool IsEmptyRect(const RECT& r) { return r.left >= r.right || r.top >= r.bottom; }

constexpr bool Covers(const RECT& outer, const RECT& inner) {
    return outer.left <= inner.left && outer.top <= inner.top && outer.right >= inner.right &&
           outer.bottom >= inner.bottom;
}

/// The part of `box` within `clip`; all zero if there is none.
constexpr RECT ClipBox(const Box& box, const RECT& clip) {
    const Box common{std::max<std::int64_t>(box.left, clip.left), std::max<std::int64_t>(box.top, clip.top),
                     std::min<std::int64_t>(box.right, clip.right), std::min<std::int64_t>(box.bottom, clip.bottom)};
    if (common.left >= common.right || common.top >= common.bottom)
        return {0, 0, 0, 0};
    return {static_cast<int>(common.left), static_cast<int>(common.top), static_cast<int>(common.right),
            static_cast<int>(common.bottom)};
}

/// The rectangle with each edge at the nearest int.
constexpr RECT ToRect(const Box& box) {
    return {NearestInt(box.left), NearestInt(box.top), NearestInt(box.right), NearestInt(box.bottom)};
}

/// Grows (or, below 0, shrinks) by `by` on every side.
constexpr RECT Grown(const RECT& r, int by) {
    const Box box = ToBox(r);
    return ToRect(Box{box.left - by, box.top - by, box.right + by, box.bottom + by});
}

} // namespace melkar
