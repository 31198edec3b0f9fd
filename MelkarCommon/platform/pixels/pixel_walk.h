#pragma once

#include <MelkarCommon/platform/types.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

/// @file
/// Internal. Where a sloped line goes, in numbers.
///
///       minor ->           one step per pixel of the longer direction; across it the line covers `width` from
///    m  ##.                `start` on, in 32.32 fixed point
///    a  .##
///    j   ##.
///    o   .##

namespace melkar {

constexpr std::int64_t kFixedOne = std::int64_t{1} << 32;

/// Added to a position once, so that cutting it to 256ths rounds: a third of a pixel, three times, is a whole one.
constexpr std::int64_t kHalfWeight = std::int64_t{1} << 23;

inline std::int64_t ToFixed(double pixels) {
    return static_cast<std::int64_t>(pixels * static_cast<double>(kFixedOne));
}

/// A sloped line in terms of its longer ("major") and shorter ("minor") direction.
struct Walk {
    bool steep; ///< the major direction is down
    std::int64_t major;
    std::int64_t minor;
    std::int64_t length; ///< steps, never 0
    std::int64_t rise;   ///< minor distance, signed; not more than the length
    bool up;             ///< the major coordinate grows
};

inline Walk PlanWalk(POINT from, POINT to) {
    const std::int64_t dx = std::int64_t{to.x} - from.x;
    const std::int64_t dy = std::int64_t{to.y} - from.y;
    if (std::abs(dy) > std::abs(dx))
        return {true, from.y, from.x, std::abs(dy), dx, dy > 0};
    return {false, from.x, from.y, std::abs(dx), dy, dx > 0};
}

/// Where a line lies across its walk, counted from the minor position: `width` from `start` on, in fixed point. A line
/// of width 1 takes one pixel's worth of colour at every slope, a wider one is as wide as it says at a right angle to
/// itself.
struct Breadth {
    std::int64_t start;
    std::int64_t width;
};

/// @param middle of the line in the pixels that its ends name, along both axes; steps are taken at the middle of pixels
inline Breadth BreadthOf(const Walk& walk, int width, double middle) {
    if (width == 1)
        return {0, kFixedOne};
    const auto length = static_cast<double>(walk.length);
    const auto rise = static_cast<double>(walk.rise);
    const double across = width * std::sqrt(length * length + rise * rise) / length;
    const double stepsAside = walk.up ? 0.5 - middle : middle - 0.5;
    const double toMiddleOfStep = stepsAside != 0 ? stepsAside * rise / length : 0;
    return {ToFixed(middle + toMiddleOfStep - across / 2), ToFixed(across)};
}

/// Whether a sloped line lies against one of the same colour drawn just before, a pixel further in its shorter
/// direction. Each of them shares pixels with the other, which then are covered whole: lines one beside the other make
/// a thick one without a seam.
enum class Neighbour { None, Before, Behind };

/// True if nothing of the line lies beyond the clip, nor a pixel further to its sides: then no step has to look where
/// it is.
inline bool IsInside(const Walk& walk, const Breadth& breadth, const RECT& clip) {
    const std::int64_t low = walk.steep ? clip.left : clip.top;
    const std::int64_t high = walk.steep ? clip.right : clip.bottom;
    const std::int64_t start = walk.steep ? clip.top : clip.left;
    const std::int64_t end = walk.steep ? clip.bottom : clip.right;
    const std::int64_t margin = breadth.width / (2 * kFixedOne) + 2;
    const std::int64_t last = walk.up ? walk.major + walk.length - 1 : walk.major - walk.length + 1;
    return std::min(walk.minor, walk.minor + walk.rise) - margin >= low &&
           std::max(walk.minor, walk.minor + walk.rise) + margin < high && std::min(walk.major, last) >= start &&
           std::max(walk.major, last) < end;
}

/// part / whole in fixed point, cut off towards zero; both below 2^20 in size. Numbers of 52 bits are exact in a
/// double, which is divided in half the time.
inline std::int64_t FixedRatio(std::int64_t part, std::int64_t whole) {
    return static_cast<std::int64_t>(static_cast<double>(kFixedOne * part) / static_cast<double>(whole));
}

} // namespace melkar
