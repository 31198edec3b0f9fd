#pragma once

#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/pages/paper_lines.h>
#include <MelkarCommon/platform/seam/area.h>
#include <MelkarCommon/platform/seam/pixel_buffer.h>
#include <MelkarCommon/platform/seam/slice.h>

#include <utility>

/// @file
/// Internal. What strokes and pictures are on paper, whatever the format of the page.

namespace melkar {

/// A stroke as paper shows it: what is thinner than half a point gets lost in print.
Stroke OnPaper(const Stroke& stroke, int dpi);

/// Slices reach as far as a pixel of a screen that shows the page as large as it is, a device unit at least.
inline SliceReach ReachOnPaper(int dpi) { return {std::max(1.0, dpi / double{kScreenDpi}), true}; }

/// The middle of a frame of `width` units along the inside of `outer`, so that frame and ground are one path; nothing
/// if it has no inside, or is cut off.
std::optional<Area> FrameOnPaper(const RECT& outer, int width, const RECT& clip);

/// Draws through `draw(line, stroke)` and `draw(polygon, color)`. Solid polylines wait for those that follow, since
/// what lies side by side is one outline, and a polygon for the line around it.
class PaperPen {
public:
    /// What waits is drawn already.
    void Fill(const PolygonShape& polygon, Color color) { m_fill = WaitingFill{polygon, color}; }
    template <class Draw>
    void Stroke(std::span<const POINT> points, const RECT& clip, const melkar::Stroke& stroke, const Draw& draw) {
        constexpr std::size_t kMostWaiting = 4096;
        const bool goesOn = m_stroke.IsSolid() && stroke == m_stroke && m_waiting.size() < kMostWaiting;
        if (!m_waiting.empty() && !goesOn)
            Lift(clip, draw);
        m_stroke = stroke;
        m_waiting.push_back(WithoutRepeats(points));
    }
    /// Draws what waits, within the clip of its time: something else follows.
    template <class Draw> void Lift(const RECT& clip, const Draw& draw) {
        const std::vector<std::vector<POINT>> waiting = std::exchange(m_waiting, {});
        std::span lines(waiting);
        if (const auto fill = std::exchange(m_fill, std::nullopt)) {
            if (const auto outline = FilledOutline(fill->polygon, fill->color, lines, m_stroke)) {
                draw(*outline, m_stroke);
                lines = lines.subspan(1);
            } else {
                draw(fill->polygon, fill->color);
            }
        }
        for (const PaperLine& line : RowsOnPaper(lines, clip, m_stroke))
            draw(line, m_stroke);
    }

private:
    struct WaitingFill {
        PolygonShape polygon;
        Color color;
    };

    std::optional<WaitingFill> m_fill; ///< before the lines
    std::vector<std::vector<POINT>> m_waiting;
    melkar::Stroke m_stroke;
};

/// Pixels of the source rectangle, tightly packed, their channels multiplied by their alpha, that act on paper like the
/// operation on pixels. Paper has no bits to combine: "and" is exact on white and for grey sources, "or" on black,
/// where masked pictures go.
std::vector<Color> OnPaper(const PixelBuffer& pixels, const RECT& source, DWORD operation);

} // namespace melkar
