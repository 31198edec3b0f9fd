#include <MelkarCommon/declarative/plot_layout.h>

#include <MelkarCommon/declarative/panel_layout.h>

#include <cmath>

namespace melkar {

CPoint PlotAt(const CRect& graph, float rateX, float rateY) {
    const float right = rateX * static_cast<float>(graph.Width());
    const float up = rateY * static_cast<float>(graph.Height());
    return {Truncate(right + static_cast<float>(graph.left)), Truncate(static_cast<float>(graph.bottom) - up)};
}

CRect PlotCircle(const CPoint& at, int size) {
    const double radius = size / 2; // NOLINT(bugprone-integer-division): truncated on purpose
    return {Edge(at.x - radius), Edge(at.y - radius), Edge(at.x + radius), Edge(at.y + radius)};
}

std::optional<PlotJoin> JoinOf(const CPoint& from, int fromSize, const CPoint& to, int toSize) {
    const double dx = double(to.x) - from.x;
    const double dy = double(to.y) - from.y;
    const double length = std::sqrt(dy * dy + dx * dx);
    if (!(length > 0))
        return std::nullopt;
    const double fromRadius = std::trunc(fromSize * 0.5);
    const double toRadius = std::trunc(toSize * 0.5);
    return PlotJoin{{Edge(from.x + fromRadius * dx / length), Edge(from.y + fromRadius * dy / length)},
                    {Edge(to.x - toRadius * dx / length), Edge(to.y - toRadius * dy / length)}};
}

} // namespace melkar
