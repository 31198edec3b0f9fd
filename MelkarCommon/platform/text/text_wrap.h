#pragma once

#include <pango/pango.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

/// @file
/// Internal. The one rule by which texts wrap, whatever they are measured with:
///
/// - a line may end where Unicode allows a break, and takes as many words as fit;
/// - blanks at a wrap take no room, and those at the end of the paragraph as much as is left;
/// - blanks at the beginning stay with the first word, so that no empty line comes before it;
/// - a word that is too wide has a line to itself.
///
/// So a text wrapped at the width of its widest line wraps as before, unless one of its words was too wide.

namespace melkar {

/// A paragraph with what wrapping has to know of it. `reach` is how far the bytes before each position advance, in any
/// unit; its last entry is the advance of the whole.
struct WrapText {
    std::string_view text;
    std::vector<std::size_t> breaks; ///< where lines may begin; the end of the text is the last
    std::vector<std::int64_t> reach;
};

/// Bytes of a paragraph on one line; those between two lines are blanks.
struct LineSpan {
    std::size_t start;
    std::size_t end;
};

/// At least one line; `room` is in the unit of `reach`.
std::vector<LineSpan> WrapLines(const WrapText& paragraph, std::int64_t room);

/// Where the lines of a text may begin. `characters` has an entry for each character of it.
std::vector<std::size_t> BreaksOf(std::string_view text, const PangoLogAttr* characters);

} // namespace melkar
