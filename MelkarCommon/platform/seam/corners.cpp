#include <MelkarCommon/platform/seam/corners.h>
#include <MelkarCommon/platform/seam/slice.h>

namespace melkar {

namespace {

constexpr double kSmallestRadius = 1.0 / 256; ///< less can't be told from nothing
constexpr int kFarSlicePoints = 4096;         ///< an ellipse that reaches too far becomes that many corners

bool HasArea(const EllipseShape& ellipse) {
    const auto& [center, radius] = ellipse;
    const bool numbers =
        std::isfinite(center.x) && std::isfinite(center.y) && std::isfinite(radius.x) && std::isfinite(radius.y);
    return numbers && radius.x >= kSmallestRadius && radius.y >= kSmallestRadius;
}

using Corners = std::vector<PointD>;

Corners CornersOf(const PolygonShape& polygon) {
    Corners corners;
    for (const POINT& point : polygon.points)
        corners.push_back({static_cast<double>(point.x), static_cast<double>(point.y)});
    return corners;
}

/// Corners along the arc.
Corners CornersOf(const EllipseShape& ellipse, double from, double sweep) {
    Corners corners;
    for (int i = 0; i <= kFarSlicePoints; ++i)
        corners.push_back(RimPoint(ellipse, from + sweep * i / kFarSlicePoints));
    return corners;
}

Corners CornersOf(const EllipseShape& ellipse) { return CornersOf(ellipse, 0, kTurn); }

Corners CornersOf(const SliceShape& slice) {
    if (slice.sweep >= kTurn)
        return CornersOf(slice.whole);
    Corners corners = CornersOf(slice.whole, slice.from, slice.sweep);
    corners.push_back(slice.apex);
    return corners;
}

/// Cuts off what lies beyond `edge`; `side` is 1 to keep the greater values, -1 to keep the smaller ones.
Corners CutSide(const Corners& corners, double PointD::*axis, double edge, int side) {
    Corners kept;
    const auto inside = [&](const PointD& p) { return (p.*axis - edge) * side >= 0; };
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const PointD& one = corners[i];
        const PointD& next = corners[(i + 1) % corners.size()];
        if (inside(one))
            kept.push_back(one);
        if (inside(one) == inside(next))
            continue;
        const double part = (edge - one.*axis) / (next.*axis - one.*axis);
        PointD cut{one.x + (next.x - one.x) * part, one.y + (next.y - one.y) * part};
        cut.*axis = edge;
        kept.push_back(cut);
    }
    return kept;
}

std::vector<PointD> Near(Corners corners) {
    corners = CutSide(corners, &PointD::x, -kNearEdge, 1);
    corners = CutSide(corners, &PointD::x, kNearEdge, -1);
    corners = CutSide(corners, &PointD::y, -kNearEdge, 1);
    return CutSide(corners, &PointD::y, kNearEdge, -1);
}

void Cut(LinePart& part, double start, double distance, double low, double high) {
    if (distance == 0) {
        if (start < low || start > high)
            part.last = -1;
        return;
    }
    const double one = (low - start) / distance;
    const double other = (high - start) / distance;
    part.first = std::max(part.first, std::min(one, other));
    part.last = std::min(part.last, std::max(one, other));
}

} // namespace

bool HasArea(const Shape& shape) {
    return std::visit(Overloaded{
                          [](const PolygonShape& polygon) { return polygon.points.size() >= 3; },
                          [](const EllipseShape& ellipse) { return HasArea(ellipse); },
                          [](const SliceShape& slice) {
                              return HasArea(slice.whole) && std::isfinite(slice.from) && slice.sweep > 0;
                          },
                      },
                      shape);
}

bool Touches(const Area& bounds, const RECT& clip, double margin) {
    return bounds.left - margin < clip.right && bounds.right + margin > clip.left &&
           bounds.top - margin < clip.bottom && bounds.bottom + margin > clip.top;
}

bool IsNear(const Area& bounds) {
    return bounds.left > -kNearEdge && bounds.top > -kNearEdge && bounds.right < kNearEdge && bounds.bottom < kNearEdge;
}

std::vector<PointD> NearCorners(const PolygonShape& polygon) { return Near(CornersOf(polygon)); }
std::vector<PointD> NearCorners(const EllipseShape& ellipse) { return Near(CornersOf(ellipse)); }
std::vector<PointD> NearCorners(const SliceShape& slice) { return Near(CornersOf(slice)); }

LinePart PartWithin(PointD start, PointD way, const RECT& clip, double margin) {
    LinePart part;
    Cut(part, start.x, way.x, clip.left - margin, clip.right + margin);
    Cut(part, start.y, way.y, clip.top - margin, clip.bottom + margin);
    return part;
}

} // namespace melkar
