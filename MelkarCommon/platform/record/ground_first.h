#pragma once

#include <MelkarCommon/platform/record/record.h>

#include <optional>

/// @file
/// Internal. A chart is mostly rectangles and level lines, with figures and curves between them. On pixels, where the
/// order shows only where operations meet, most of the former can be filled at once, before all that stands on them.

namespace melkar {

/// A record in another order that gives the same pixels.
struct GroundFirst {
    std::vector<Fill> ground;
    std::vector<const RecordedOp*> rest;
};

GroundFirst SortGroundFirst(std::span<const RecordedOp> ops);

} // namespace melkar
