#pragma once

#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/pages/paper_lines.h>
#include <MelkarCommon/platform/seam/pixel_buffer.h>
#include <MelkarCommon/platform/seam/slice.h>

/// @file
/// Internal. What strokes and pictures are on paper, whatever the format of the page.

namespace melkar {

/// A stroke as paper shows it: what is thinner than half a point gets lost in print.
Stroke OnPaper(const Stroke& stroke, int dpi);

/// Slices reach as far as a pixel of a screen that shows the page as large as it is, a device unit at least.
inline SliceReach ReachOnPaper(int dpi) { return {std::max(1.0, dpi / double{kScreenDpi}), true}; }

/// Draws polylines through `draw(line, stroke)`; keeps the last one, to cover its seam with the next.
class PaperPen {
public:
    template <class Draw>
    void Stroke(std::span<const POINT> points, const RECT& clip, const melkar::Stroke& stroke, const Draw& draw) {
        constexpr double kThin = 2; // wider ones overlap when they are a unit apart
        for (const PaperLine& line : LinesOnPaper(points, clip, stroke))
            draw(line, stroke);
        const bool mayHaveSeam = stroke == m_lastStroke && stroke.width < kThin && stroke.IsSolid();
        if (const auto seam = mayHaveSeam ? SeamBetween(m_lastLines, points) : std::nullopt)
            draw(*seam, stroke);
        m_lastLines.assign(points.begin(), points.end());
        m_lastStroke = stroke;
    }
    /// Something else is drawn over the last line.
    void Lift() { m_lastLines.clear(); }

private:
    std::vector<POINT> m_lastLines;
    melkar::Stroke m_lastStroke;
};

/// Pixels of the source rectangle, tightly packed, their channels multiplied by their alpha, that act on paper like the
/// operation on pixels. Paper has no bits to combine: "and" is exact on white and for grey sources, "or" on black,
/// where masked pictures go.
std::vector<Color> OnPaper(const PixelBuffer& pixels, const RECT& source, DWORD operation);

} // namespace melkar
