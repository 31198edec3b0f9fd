#pragma once

#include <MelkarCommon/platform/seam/backend.h>

#include <span>
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
/// line is drawn as it comes. What each `LineTo` runs through is inline: an outline has hundreds of them.
class WaitingLines {
public:
    /// True if a line from `from` of this look goes on where they end. Where they end, so does their pattern.
    bool GoOnAt(POINT from, const LineLook& look) const {
        return !m_points.empty() && m_points.back().x == from.x && m_points.back().y == from.y && m_look == look;
    }
    /// A path from `from` on, while none waits. @param isExposed what is drawn may be looked at after each line
    void Begin(POINT from, const LineLook& look, const Stroke& stroke, bool isExposed);
    void Add(POINT to) {
        const POINT from = m_points.back();
        m_points.push_back(to);
        if (m_stroke.IsSolid())
            return;
        m_before = m_gone;
        m_gone += Distance(from, to);
    }
    /// As many of them as can wait, of a path that was begun. @return how many; throws with none added
    std::size_t AddSome(std::span<const POINT> points);
    bool AreExposed() const { return m_areExposed; }
    /// Whether they should be drawn to make room: a path may have no end.
    bool AreMany() const { return m_points.size() >= kMost; }
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
    static constexpr std::size_t kMost = 4096;

    std::vector<POINT> m_points; ///< empty: no path
    LineLook m_look{};
    Stroke m_stroke;
    bool m_areExposed = false;
    double m_gone = 0;   ///< along the pattern since it started, device units
    double m_before = 0; ///< without the last line
};

} // namespace melkar
