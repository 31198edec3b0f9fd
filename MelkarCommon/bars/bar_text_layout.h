#pragma once

#include <MelkarCommon/bars/bar_layout.h>
#include <MelkarCommon/frame/frame_layout.h>
#include <MelkarCommon/frame/legend_layout.h>

/// @file
/// Where the texts of a bar chart stand. Device units; ends with a fraction truncate.
///
///   goal ======== target                                       legend of a line: the sample ends at the text
///        +------------------------------+
///        |    8123               +---+  |   +-----------+      figure: above its bar, or inside where it wouldn't fit
///        |   +----+              |big|  |   | Mar 2     |      balloon: right of the pointer and above it
///        |   |    |      900     |   |  |   | 9600      |
///        |   |    |     +----+   |   |  |   +-----------+
///        +---+-||-+-----+-||-+---+-||-+-+   ^pointer           tick: about the canvas' bottom, in the middle of a bar
///             Mar 1               Mar 3                        caption: centred on its slot, or turned
///                   label                                      horizontal label: the last but one of its lines

namespace melkar {

/// A line's legend: its sample ends at the text.
constexpr LegendSpacing kLineLegend{0, 60};
/// From the sample of a line's legend to the text of the entry left of it.
constexpr int kLegendBetween = 20;

struct FigureOnBar {
    CRect box;
    bool isAbove; ///< the bar; else inside it
};

/// A figure of this size, centred on its bar.
inline FigureOnBar PlaceFigureOnBar(const RECT& bar, const CRect& size, int canvasTop) {
    constexpr int kGap = 1; ///< between bar and figure
    const bool isAbove = bar.top - size.Height() - 2 * kGap > canvasTop;
    CRect box(0, 0, size.Width(), size.Height());
    box.OffsetRect(PeakOf(bar).x - size.Width() / 2, isAbove ? bar.top - size.Height() - kGap : bar.top + kGap);
    return {box, isAbove};
}

/// How far a text of this size reaches across and down when it is turned by an angle in tenths of a degree.
struct TurnedExtent {
    double across;
    double down;
};
TurnedExtent ExtentOf(const CRect& size, int escapement);

/// Room for the captions of days, whose size and angle are those of the last one: a twentieth more than it reaches
/// down.
int CaptionRoom(const CRect& size, int escapement);

/// Room for the horizontal label: its line, and another one below it.
constexpr int LabelRoom(int textHeight) { return 2 * textHeight; }

/// The horizontal label's box, at the top of its room.
constexpr CRect LabelBox(const CRect& canvas, int graphBottom, int textHeight) {
    const int top = graphBottom - LabelRoom(textHeight);
    return {canvas.left, top, canvas.right, top + textHeight};
}

/// Where a turned caption begins: at the middle of its bar less half of what it reaches across.
CPoint TurnedCaptionStart(const CRect& canvas, int middle, const TurnedExtent& extent);

/// The box that a caption is centred in: its slot, and a canvas width further on both sides, so that a caption wider
/// than its slot isn't cut. It begins half a zero's height below the canvas.
CRect CaptionBox(const CRect& canvas, int graphBottom, int day, int days, int zeroHeight);

/// A tick of the date strip, upwards: `reach` down and up from the canvas' bottom, in single or double precision.
template <class Real> Tick DayTickOf(int middle, int canvasBottom, Real reach) {
    const auto bottom = static_cast<Real>(canvasBottom);
    return {middle, Truncate(bottom + reach), Truncate(bottom - reach)};
}

/// Where a label begins that reads downwards: `share` of its height and `gap` left of the graph's right edge.
CPoint DownwardLabelStart(const CRect& canvas, int graphRight, const CRect& size, double share, double gap);

/// Where the text of a balloon is measured, `width` wide.
CRect BalloonStart(CPoint pointer, int width);

struct BalloonBoxes {
    CRect text;
    CRect frame;
};

/// The text's box as measured from there, moved above the pointer, and the frame around it.
BalloonBoxes BalloonOf(const CRect& measured);

} // namespace melkar
