#pragma once

#include <MelkarCommon/platform/text/glyph_run.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// Internal. The steps of a text's way from characters to coverage.

namespace melkar {

/// Characters to lines by line ends alone, as `LayOutText` says. What remains in them is printable or a blank.
std::vector<std::string> SplitLines(std::string_view utf8, bool singleLine);

/// The part of a line that stays when it is wrapped behind it.
std::string_view WithoutTrailingBlanks(std::string_view line);

/// Adds the lines of one paragraph, shaped by Pango.
void ShapeParagraph(TextFace& face, const std::string& paragraph, int wrapWidth, std::vector<TextLine>& lines);

/// Adds the lines of one paragraph by the built-in metrics: characters of one width, no glyphs.
void MeasureParagraph(const TextFace& face, const std::string& paragraph, int wrapWidth, std::vector<TextLine>& lines);

/// A layout without lines.
TextLayout StartLayout(const TextFace& face);

/// `LayOutText` without cache and ready-made figures: what these have to agree with.
TextLayout LayOutAnew(TextFace& face, std::string_view bytes, bool singleLine, int wrapWidth);

/// A layout of this line alone, for a picture that has `scale` pixels a unit: it counts in pixels.
TextLayout EnlargeLine(const TextLayout& layout, const TextLine& line, double scale);

/// The coverage of a line as cairo draws it; without pixels if there is no ink or too much.
CoverageMask DrawMask(const TextLayout& layout, const TextLine& line, int escapement);

/// Bytes that the masks made on this thread take.
std::ptrdiff_t MaskBytes();

} // namespace melkar
