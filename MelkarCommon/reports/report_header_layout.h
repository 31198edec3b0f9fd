#pragma once

#include <MelkarCommon/reports/header_cells.h>

/// @file
/// Where the cells of a report's heading block stand, as the sketch in header_cells.h shows them.

namespace melkar {

/// Where what follows a block may begin whose last row holds `cell`.
inline int BelowHeader(const CRect& cell) {
    constexpr int kRoom = 5;
    return cell.bottom + kRoom;
}

/// The whole grid. No cell has an area in a block that makes no sense.
void LayOutGraphHeader(HeaderCells& cells, const CRect& block, const HeaderSamples& samples);
/// Rows 0 to 4 of it, column F in row 3 alone; other cells stay.
void LayOutCircadianHeader(HeaderCells& cells, const CRect& block, const HeaderSamples& samples);

} // namespace melkar
