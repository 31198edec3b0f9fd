#pragma once

#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/support/numbers.h>

/// @file
/// Where the entries of a legend stand: a sample of the line or colour, and its text. Device units.
///
///     between  sample  gap  text      rows that end at a right edge are laid out from there to the left
///   ---------|========|---|Target|
///                                R

namespace melkar {

/// Widths of one entry. Those that depend on the text's height may have fractions; ends of samples truncate.
struct LegendSpacing {
    double gap;    ///< from the sample to the text
    double sample; ///< width of the sample
};

/// Where an entry stands.
struct LegendEntry {
    CRect text;   ///< its text
    CRect sample; ///< as high as the text
};

/// The sample left of a text that stands already.
inline CRect LegendSampleOf(const CRect& text, const LegendSpacing& spacing) {
    return {Truncate(text.left - (spacing.gap + spacing.sample)), text.top, Truncate(text.left - spacing.gap),
            text.bottom};
}

/// y of a line through the middle of its sample.
inline int SampleLineY(const CRect& sample) { return (sample.top + sample.bottom) / 2; }

/// The entry whose text, of the size that `size` has, ends at `right`.
inline LegendEntry LegendEntryTo(int right, int top, const CRect& size, const LegendSpacing& spacing) {
    const CRect text(right - size.Width(), top, right, top + size.Height());
    return {text, LegendSampleOf(text, spacing)};
}

/// The entry whose sample begins at `left`.
inline LegendEntry LegendEntryFrom(int left, int top, const CRect& size, const LegendSpacing& spacing) {
    const int textLeft = left + Truncate(spacing.sample + spacing.gap);
    const int bottom = top + size.Height();
    return {CRect(textLeft, top, textLeft + size.Width(), bottom),
            CRect(left, top, left + Truncate(spacing.sample), bottom)};
}

/// The entry that begins at `at`, its sample a square of one line; a text of several lines reaches below it.
inline LegendEntry SquareLegendEntry(CPoint at, int line, const CRect& size) {
    LegendEntry entry = LegendEntryFrom(at.x, at.y, size, {0, double(line)});
    entry.sample.bottom = AddEdge(at.y, line);
    return entry;
}

} // namespace melkar
