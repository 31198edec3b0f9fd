#pragma once

#include <MelkarCommon/platform/geometry.h>

#include <array>

/// @file
/// The grid of a report's heading block: cells by column letter and row number. Device units.
///
///     A0 label | B0 text ........................ | G0 label | H0 text |
///     A1       | B1 text ................................................|
///     A2       | B2 text ................................................|
///     A3 label | B3 text | C3 label | D3 text | E3 label | F3 text ......|
///     A4       | B4      | C4       | D4      | E4       | F4            |
///     A5       | B5      | C5       | D5      | E5       | F5 ... G5  H5 |
///     A6       | B6 .....................................................|
///
/// Sample texts of the profile fix the widths of the columns; B, F and H end at the right edge of the block.

namespace melkar {

/// Cells behind the last named one are a host's own.
enum HeaderCell : int {
    A0,
    A1,
    A2,
    A3,
    A4,
    A5,
    A6,
    B0,
    B1,
    B2,
    B3,
    B4,
    B5,
    B6,
    C3,
    C4,
    C5,
    D3,
    D4,
    D5,
    E3,
    E4,
    E5,
    F3,
    F4,
    F5,
    G0,
    G5,
    H0,
    H5,
    kHeaderCells = 48,
};
using HeaderCells = std::array<CRect, kHeaderCells>; ///< by `HeaderCell`

/// How large a text is, device units.
struct TextSize {
    int width;  ///< of its widest line
    int height; ///< of all lines
};

/// The sample texts, measured.
struct HeaderSamples {
    TextSize label1; ///< column A
    TextSize text1;  ///< column B
    TextSize label2; ///< column C
    TextSize text2;  ///< column D
    TextSize label3; ///< column E
    TextSize label4; ///< label of the pair at the top right
    TextSize text4;  ///< its text
};

} // namespace melkar
