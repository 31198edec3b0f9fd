#include <MelkarCommon/declarative/panel_layout.h>

namespace melkar {

ScaleBoxes LeftScaleBoxes(const CRect& graph, double step, const ScaleExtents& extents) {
    const int top = Edge(graph.top - step * 0.5);
    const int bottom = Edge(graph.bottom + step * 0.5);
    const int right = Edge(double(graph.left) - extents.offset);
    const int left = Edge(double(right) - extents.figures);
    return {{left, top, right, bottom}, {Edge(double(left) - extents.caption), top, left, bottom}};
}

ScaleBoxes RightScaleBoxes(const CRect& graph, double step, const ScaleExtents& extents) {
    const int top = Edge(graph.top - step * 0.5);
    const int bottom = Edge(graph.bottom + step * 0.5);
    const int left = Edge(double(graph.right) + extents.offset);
    const int right = Edge(double(left) + extents.figures);
    return {{left, top, right, bottom}, {right, top, Edge(double(right) + extents.caption), bottom}};
}

ScaleBoxes BottomScaleBoxes(const CRect& graph, double step, const ScaleExtents& extents) {
    const int left = Edge(graph.left - step * 0.5);
    const int right = Edge(graph.right + step * 0.5);
    const int top = Edge(double(graph.bottom) + extents.offset);
    const int bottom = Edge(double(top) + extents.figures);
    return {{left, top, right, bottom}, {left, bottom, right, Edge(double(bottom) + extents.caption)}};
}

} // namespace melkar
