#pragma once

#include <MelkarCommon/bars/bar_text_layout.h>
#include <MelkarCommon/frame/scale.h>

/// @file
/// Where the band of the average intake and the legend of the two parts stand. Device units.
///
///     [0][1]whole    [1]part   ==== target      squares as high as their text
///   +----------------------------+
///   |                            |
///   |############################| intake       the label wraps in the right margin, from the band's top down
///   +############################+

namespace melkar {

/// bottom - trunc(height x v) / top of the scale, the division between integers.
inline CRect IntakeBandOf(const CRect& canvas, const ScalePixels& on, double intake) {
    const int most = Truncate(on.scale.max);
    const int height = most == 0 ? 0 : Truncate(on.Height() * intake) / most;
    return {canvas.left, canvas.bottom - height, canvas.right, canvas.bottom};
}

/// Where the band's label is measured.
constexpr CRect IntakeLabelStart(const CRect& band, int graphRight) {
    return {band.right, band.top, graphRight, band.top};
}

struct PartsLegend {
    LegendEntry whole;
    CRect besideWhole; ///< the legend of both parts has a square for each: this one is the first part's
    LegendEntry part;
};

/// Left of the target's legend, at its top.
inline PartsLegend PartsLegendOf(const CRect& target, const CRect& wholeSize, const CRect& partSize) {
    constexpr double kSampleGap = 3;   ///< from a square to its text
    constexpr int kSquaresBetween = 2; ///< between the texts of two entries, in heights of the right one
    const auto square = [](const CRect& size) { return LegendSpacing{kSampleGap, double(size.Height())}; };
    const int right = LegendSampleOf(target, kLineLegend).left - kLegendBetween;
    const LegendEntry part = LegendEntryTo(right, target.top, partSize, square(partSize));
    const LegendEntry whole =
        LegendEntryTo(part.text.left - kSquaresBetween * partSize.Height(), target.top, wholeSize, square(wholeSize));
    CRect beside = whole.sample;
    beside.OffsetRect(-beside.Width(), 0);
    return {whole, beside, part};
}

} // namespace melkar
