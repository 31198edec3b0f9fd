#include "two_scales.h"

#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/frame/data_file.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/registry/catalogue.h>

namespace {

constexpr int kJoinWidth = 3;

// What a profile starts with.
constexpr const char* kStarter = R"(TITLE_LABEL=Weight and body fat
TITLE_HEIGHT=56
TITLE_FONT=28
TITLE_LABEL_RGB=38,50,66
TITLE_BK_RGB=226,234,243
GRAPH_OFFSET_LT=104,88
GRAPH_OFFSET_RB=104,84
GRAPH_BK_RGB=255,255,255
GRAPH_GRID_RGB=198,206,216
GRAPH_VERTICAL_DIVIDE_L=6
GRAPH_VERTICAL_DIVIDE_R=6
GRAPH_HORIZONTAL_DIVIDE=6
GRAPH_VERTICAL_DIVIDE_WIDTH_L=8
GRAPH_VERTICAL_DIVIDE_WIDTH_R=8
GRAPH_HORIZONTAL_DIVIDE_HEIGHT=8
GRAPH_VERTICAL_GRID_L=true
GRAPH_VERTICAL_MAX_L=80
GRAPH_VERTICAL_MIN_L=68
GRAPH_VERTICAL_MAX_R=38
GRAPH_VERTICAL_MIN_R=26
GRAPH_HORIZONTAL_MAX=12
VERTICAL_SCALE_L=true
VERTICAL_SCALE_OFFSET_L=10
VERTICAL_SCALE_WIDTH_L=44
VERTICAL_SCALE_FONT_L=18
VERTICAL_SCALE_FORMAT_L=%.0f
VERTICAL_LABEL_WIDTH_L=32
VERTICAL_LABEL_FONT_L=18
VERTICAL_LABEL_L=Weight (kg)
VERTICAL_SCALE_R=true
VERTICAL_SCALE_OFFSET_R=6
VERTICAL_SCALE_WIDTH_R=32
VERTICAL_SCALE_FONT_R=18
VERTICAL_SCALE_FORMAT_R=%.0f
VERTICAL_LABEL_WIDTH_R=36
VERTICAL_LABEL_FONT_R=18
VERTICAL_LABEL_R=Body fat (%)
HORIZONTAL_SCALE_OFFSET=10
HORIZONTAL_SCALE_HEIGHT=24
HORIZONTAL_SCALE_FONT=18
HORIZONTAL_SCALE_FORMAT=%.0f
HORIZONTAL_LABEL_HEIGHT=26
HORIZONTAL_LABEL_FONT=18
HORIZONTAL_LABEL=week)";

} // namespace

// What a row of the data file says.
struct CTwoScales::Point {
    float x = 0;
    float y = 0;
    int size = 0;
    COLORREF color = 0;
    int connect = 0;
    int right = 0;
};

struct CTwoScales::File : melkar::Columns<Point> {
    static constexpr Form form = Form{1, "point"}.Fewest(1);
    static constexpr Row rows[] = {
        Figure<&G::x>(0, "x")
            .OnScale("GRAPH_HORIZONTAL_MAX")
            .Means("in units of the scale below")
            .Needed()
            .Example("0|4|8|12|0|4|8|12"),
        Figure<&G::y>(1, "y").Means("in units of its scale").Needed().Example("78.6|77.5|75.9|74.2|33.1|32.4|31|29.8"),
        Whole<&G::size>(2, "size", "px").Means("diameter").NotBelow(0).Needed().Example("12"),
        Color<&G::color>(3, "colour")
            .Needed()
            .Example("#264668|#264668|#264668|#264668|#1E828C|#1E828C|#1E828C|#1E828C"),
        Whole<&G::connect>(4, "connect").Means("1: joined to the point before it").Needed().Example("0|1|1|1|0|1|1|1"),
        Whole<&G::right>(5, "scale").Means("1: the right one").Needed().Example("0|0|0|0|1|1|1|1"),
    };
};

melkar::DataTables CTwoScales::DataFiles() { return {melkar::TableOf<File>()}; }

bool CTwoScales::Register() {
    return melkar::Register({"two-scales", "CTwoScales", "CPlotGraph",
                             "points on two scales, joined in their colours, by samples/hosts/two_scales.h", kStarter,
                             nullptr, DataFiles, melkar::MakeGraph<CTwoScales>, "", melkar::ContentsOf<CTwoScales>});
}

long CTwoScales::ReadDataFile(char* path) {
    return melkar::ReadFile(*this, "CTwoScales::ReadDataFile", path, [this](melkar::DataFile& file) {
        m_vecPlots.clear();
        m_isOnRight.clear();
        Point point;
        melkar::ReadHeads<File>(point, file);
        return melkar::ReadRows<File>(point, file, [&](const melkar::CsvRow&) {
            AddPlot(CPlot(point.x, point.y, point.size, point.color, point.connect));
            m_isOnRight.push_back(point.right == 1);
        });
    });
}

long CTwoScales::Draw(CRect area, char* path) {
    const long result = CPlotGraph::Draw(area, path, path);
    if (result == melkar::kOk)
        BitBlt();
    return result;
}

CPoint CTwoScales::PlaceOf(const CRect& graph, int point) {
    const CPlot plot = Plot(point);
    const bool right = IsOnRight(point);
    const float across = right ? RateX_R(plot.PlotX()) : RateX_L(plot.PlotX());
    const float up = right ? RateY_R(plot.PlotY()) : RateY_L(plot.PlotY());
    return {graph.left + AlongAxis(graph.Width(), across), graph.bottom - AlongAxis(graph.Height(), up)};
}

void CTwoScales::DrawPlot(CRect graph) {
    for (int point = 1; point < PlotSize(); ++point)
        if (Plot(point).IsConnect() != 0)
            DrawJoin(PlaceOf(graph, point - 1), PlaceOf(graph, point), Plot(point).Color());
    for (int point = 0; point < PlotSize(); ++point)
        DrawCircle(PlaceOf(graph, point), Plot(point).Size(), Plot(point).Color());
}

void CTwoScales::DrawPlotConnect(CRect, int, int) {}

void CTwoScales::DrawJoin(const CPoint& from, const CPoint& to, COLORREF color) const {
    const melkar::ScopedPen pen(m_hMemDC, PS_SOLID, kJoinWidth, color);
    MoveToEx(m_hMemDC, from.x, from.y, nullptr);
    LineTo(m_hMemDC, to.x, to.y);
}

void CTwoScales::DrawCircle(const CPoint& at, int size, COLORREF color) const {
    const melkar::ScopedPen pen(m_hMemDC, PS_SOLID, 0, color);
    const melkar::ScopedBrush brush(m_hMemDC, color);
    const CRect circle = CircleAt(at, size);
    Ellipse(m_hMemDC, circle.left, circle.top, circle.right, circle.bottom);
}

// `CPlotGraph` tells of each point as if it stood by the left scale, where it would paint it itself.
melkar::Contents CTwoScales::Shown() const {
    melkar::Contents contents = CPlotGraph::Shown();
    const CRect graph = GetGraphRect(m_rcGraph);
    for (int point = 0; point < PlotSize(); ++point) {
        const CPlot plot = Plot(point);
        const auto isOff = [](float value, float low, float high) { return !(value >= low && value <= high); };
        melkar::ShownItem& item = contents.items[static_cast<std::size_t>(point)];
        melkar::ShownFigure& figure = item.figures.front();
        // Rates are asked for by operations that aren't const and change nothing.
        item.area = figure.area = CircleAt(const_cast<CTwoScales*>(this)->PlaceOf(graph, point), plot.Size());
        if (!IsOnRight(point))
            continue;
        figure.isClipped = isOff(plot.PlotX(), m_vsMinR.x, m_vsMaxR.x) || isOff(plot.PlotY(), m_vsMinR.y, m_vsMaxR.y);
        contents.series[static_cast<std::size_t>(figure.series)].axis = melkar::AxisSide::Right;
    }
    return contents;
}
