#pragma once

#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/support/numbers.h>

#include <algorithm>

/// @file
/// The bound within which layouts compute. Whoever takes a rectangle from a caller asks `MakesSense`, and draws nothing
/// if it doesn't; positions that come from figures or a profile are brought within the bound by `Edge`.

namespace melkar {

/// Whether a layout can compute with the rectangle: no edge lies beyond `kFarOff`.
constexpr bool MakesSense(const CRect& area) {
    const auto fits = [](int edge) { return edge >= -kFarOff && edge <= kFarOff; };
    return fits(area.left) && fits(area.top) && fits(area.right) && fits(area.bottom);
}

/// A position cut to a whole unit, and at `kFarOff`; what is no number is 0.
inline int Edge(double position) { return std::clamp(Truncate(position), -kFarOff, kFarOff); }

} // namespace melkar
