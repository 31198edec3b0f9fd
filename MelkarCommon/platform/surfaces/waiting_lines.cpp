#include <MelkarCommon/platform/surfaces/waiting_lines.h>

#include <algorithm>

namespace melkar {

void WaitingLines::Begin(POINT from, const LineLook& look, const Stroke& stroke, bool isExposed) {
    m_points.push_back(from);
    m_look = look;
    m_stroke = stroke;
    m_stroke.phase = m_gone;
    m_areExposed = isExposed;
}

std::size_t WaitingLines::AddSome(std::span<const POINT> points) {
    if (m_areExposed || AreMany())
        return 0;
    const std::size_t count = std::min(points.size(), kMost - m_points.size());
    m_points.reserve(m_points.size() + count);
    for (const POINT& point : points.first(count))
        Add(point);
    return count;
}

void WaitingLines::DrawAndGoOn(Backend& backend) {
    Draw(backend);
    m_points.erase(m_points.begin(), m_points.end() - 2);
    m_stroke.drawn = 1;
    m_stroke.phase = m_stroke.IsSolid() ? m_gone : m_before;
}

/// The last line makes a corner with the next one, the first line with the one that closes the path. Between them the
/// path now takes a short cut, which is never drawn: those lines stand on the pixels. A pattern has no corners there.
void WaitingLines::DrawAtOnce(Backend& backend) {
    constexpr std::ptrdiff_t kEnd = 2;
    try {
        Draw(backend);
    } catch (...) {
        Forget(); // it is not to be drawn later
        throw;
    }
    if (!m_stroke.IsSolid())
        m_points.erase(m_points.begin(), m_points.end() - 1);
    else if (m_points.size() > 2 * kEnd)
        m_points.erase(m_points.begin() + kEnd, m_points.end() - kEnd);
    m_stroke.drawn = m_points.size() - 1;
    m_stroke.phase = m_gone;
}

} // namespace melkar
