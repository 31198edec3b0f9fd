#pragma once

#include <MelkarCommon/platform/seam/backend.h>
#include <MelkarCommon/platform/seam/box.h>

#include <optional>
#include <span>
#include <vector>

/// @file
/// Internal. Polygons that go to the right once and back once: the profile of a day over its baseline, triangles,
/// diamonds. Corners lie between pixels, so that in each column of pixels such a polygon is what lies between two
/// straight lines, and its coverage is exact without a rasteriser.
///
///         upper chain          column: the pixels between x and x + 1
///       /\      /\ __
///      /  \____/  ' |          solid:  rows that both chains leave whole
///     /_____________|
///         lower chain

namespace melkar {

/// A chain within one column.
struct ChainEdge {
    double high; ///< the smaller y
    double low;  ///< the greater y
};

/// The two chains within one column.
struct ChainColumn {
    ChainEdge upper;
    ChainEdge lower;
};

/// The columns of a polygon from `left` on.
struct ChainColumns {
    int left = 0;
    std::vector<ChainColumn> columns;
};

/// The columns of a polygon between the sides of `clip`. Nothing if it goes to and fro, or if its chains cross within a
/// column: then a general rasteriser has to fill it.
std::optional<ChainColumns> FindChains(std::span<const POINT> polygon, const RECT& clip);

/// `clip` lies within the buffer.
void FillChains(const PixelBuffer& buffer, const RECT& clip, const ChainColumns& chains, Color color);

} // namespace melkar
