#pragma once

#include <MelkarCommon/platform/seam/backend.h>

#include <vector>

namespace melkar {

/// What a line's stroke depends on, on one surface.
struct LineLook {
    int style;
    int width;
    COLORREF color;
    int bkMode;
    COLORREF bkColor;

    bool operator==(const LineLook&) const = default;
};

/// Internal. Lines of one look that follow each other: they are drawn as one path, so that their corners are whole and
/// an outline is one stroke. Mostly all of it waits until something else happens; on memory that was handed out each
/// line is drawn as it comes.
class WaitingLines {
public:
    /// True if a line from `from` of this look goes on where they end. Where they end, so does their pattern.
    bool GoOnAt(POINT from, const LineLook& look) const;
    /// A path from `from` on. None may wait.
    void Begin(POINT from, const LineLook& look, const Stroke& stroke);
    void Add(POINT to);
    /// Whether they should be drawn to make room: a path may have no end.
    bool AreMany() const;
    /// Draws what isn't drawn yet, and keeps what a line needs that goes on there.
    void DrawAndGoOn(Backend& backend);
    /// The same, for pixels: of what is drawn no more is kept than the corners to come need, however long the path.
    void DrawAtOnce(Backend& backend);

    bool AreWaiting() const { return m_points.size() > m_stroke.drawn + 1; }
    void Draw(Backend& backend) const { backend.StrokePolyline(m_points, m_stroke); }
    void Forget() { m_points.clear(); }
    /// Of the pattern, for whatever line comes next.
    void RestartPattern() { m_gone = 0; }

private:
    std::vector<POINT> m_points; ///< empty: no path
    LineLook m_look{};
    Stroke m_stroke;
    double m_gone = 0;   ///< along the pattern since it started, device units
    double m_before = 0; ///< without the last line
};

} // namespace melkar
