#include <MelkarCommon/declarative/pie_layout.h>

#include <MelkarCommon/declarative/panel_layout.h>

#include <cmath>

namespace melkar {
namespace {

bool HaveOneDirection(const CPoint& middle, const PieRadials& radials) {
    const double x1 = double(radials.from.x) - middle.x;
    const double y1 = double(radials.from.y) - middle.y;
    const double x2 = double(radials.to.x) - middle.x;
    const double y2 = double(radials.to.y) - middle.y;
    return x1 * y2 == y1 * x2 && x1 * x2 + y1 * y2 >= 0; // a pie without pixels has none: all radials are alike
}

} // namespace

PieSquare PieSquareOf(const CRect& graph) {
    const int width = graph.Width();
    const int height = graph.Height();
    if (width > height) {
        const int middle = (graph.left + graph.right) / 2;
        const int radius = height / 2;
        return {{middle - radius, graph.top, middle + radius, graph.bottom}, radius};
    }
    const int middle = (graph.top + graph.bottom) / 2;
    const int radius = width / 2;
    return {{graph.left, middle - radius, graph.right, middle + radius}, radius};
}

std::vector<PieSlice> PieSlicesOf(const std::vector<double>& values, double leastShare) {
    double sum = 0;
    for (const double value : values)
        sum += value;
    std::vector<PieSlice> slices;
    double angle = 0;
    for (int index = static_cast<int>(values.size()) - 1; index >= 0; --index) {
        const double share = values[static_cast<std::size_t>(index)] / sum;
        if (share < leastShare || share == 0 || !std::isfinite(share))
            continue;
        const double to = angle + 2 * kPi * share;
        slices.push_back({index, angle, to});
        angle = to;
    }
    return slices;
}

CPoint PieRimAt(const PieSquare& pie, double angle) {
    const CPoint middle = pie.Middle();
    return {middle.x - Truncate(std::sin(angle) * pie.radius), middle.y - Truncate(std::cos(angle) * pie.radius)};
}

std::optional<PieRadials> PieRadialsOf(const PieSquare& pie, const PieSlice& slice) {
    const PieRadials radials{PieRimAt(pie, slice.from), PieRimAt(pie, slice.to)};
    if (HaveOneDirection(pie.Middle(), radials) && !slice.IsMost())
        return std::nullopt;
    return radials;
}

CRect PieLabelBox(const CPoint& outer, const CPoint& centre, int radius, int textSize) {
    const int x = (outer.x + centre.x) / 2;
    const int y = (outer.y + centre.y) / 2;
    return {x - radius / 3, Edge(double(y) - textSize), x + radius / 3, Edge(double(y) + textSize)};
}

} // namespace melkar
