#include <MelkarCommon/bars/line_graph.h>

#include <MelkarCommon/bars/bar_text_layout.h>
#include <MelkarCommon/frame/day_status.h>
#include <MelkarCommon/frame/frame_layout.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/frame/scale.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/chart_font.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/support.h>

#include <algorithm>
#include <climits>
#include <cstdint>

using melkar::ScalePixels;
using melkar::ScopedBrush;
using melkar::ScopedFont;
using melkar::ScopedPen;

namespace {

constexpr double kLabelShare = 0.1; ///< of its height, from the label of the right scale to the edge of the graph
constexpr double kLabelGap = 5;     ///< and so many pixels

} // namespace

struct CLineGraph::KeyRows : melkar::Keys<CLineGraph> {
    static constexpr Row rows[] = {
        Text<&G::m_strVLineAxsLabel>(Own, "VLINEAXSLABEL", "label of the right scale"),
        Number<&G::m_nVLineAxsSize>(Own, "VLineAXSSIZE", 0, "kept; no painting uses it").Idle(),
        Colors<&G::m_crLine, &G::m_nLineCount>(Own, "LINESCOLOR%d_RGB", "dots and strokes of a line")
            .MarkOn("CANVASCOLOR_RGB")
            .Beside("LINESCOLOR%d_RGB"),
        Colors<&G::m_crLineTarget, &G::m_nLineCount>(Own, "LINES_TARGETCOLOR%d_RGB", "kept; no painting uses it")
            .Idle(),
        Number<&G::m_dChartLineMax, &G::m_nDefLineMax>(Own, "CHARTLINEMAX", 0, "top of the right scale")
            .FreeTopFrom("CHARTLINEMIN"),
        Number<&G::m_dChartLineMin>(Own, "CHARTLINEMIN", 0, "bottom of the right scale"),
        Number<&G::m_dChartLineInterval, &G::m_nDefLineInterval>(Own, "CHARTLINEINTERVAL", 0, "step of the right scale")
            .StepTo("CHARTLINEMAX"),
        Number<&G::m_nChartLineMaxBig, &G::m_nDefLineMaxBig>(Own, "CHARTLINEMAX_BIG", 0, "kept; nothing selects it")
            .Idle(),
        Number<&G::m_nChartLineIntervalBig, &G::m_nDefLineIntervalBig>(Own, "CHARTLINEINTERVAL_BIG", 0,
                                                                       "kept; nothing selects it")
            .Idle(),
    };
};

CLineGraph::CLineGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CBarGraph(window, dc, section, shared, second, balloon) {
    CLineGraph::ReadIniFile(GraphProfile());
}

CLineGraph::~CLineGraph() { CLineGraph::ClearArrays(); }

long CLineGraph::ReadIniFile(char* path) {
    melkar::ReadKeys(KeyRows::rows, *this, path, m_strSection);
    return 0;
}

melkar::ClassKeys CLineGraph::ProfileKeys() { return {"CLineGraph", melkar::InfoOf(KeyRows::rows)}; }

long CLineGraph::ClearArrays() {
    CBarGraph::ClearArrays();
    m_saLineValues.RemoveAll();
    m_oaLineRects.RemoveAll();
    return 0;
}

int CLineGraph::ResetGraphMeasure() {
    CBarGraph::ResetGraphMeasure();
    m_dChartLineMax = m_nDefLineMax;
    m_dChartLineInterval = m_nDefLineInterval;
    m_nChartLineMaxBig = m_nDefLineMaxBig;
    m_nChartLineIntervalBig = m_nDefLineIntervalBig;
    return 0;
}

void CLineGraph::SetCanvasRect() {
    CBarGraph::SetCanvasRect();
    m_rcCanvas = melkar::BetweenScales(m_rcCanvas, m_rcGraph);
}

int CLineGraph::LineCount() const { return std::clamp(m_nLineCount, 0, kMostLines); }

ScalePixels CLineGraph::RightScale() const {
    return melkar::PixelsOf({m_dChartLineMin, m_dChartLineMax, m_dChartLineInterval}, m_rcCanvas);
}

long CLineGraph::DrawBarChart() {
    CBarGraph::DrawBarChart();
    if (!m_bLines)
        return 0;
    m_oaLineRects.RemoveAll();
    const ScalePixels scale = RightScale();
    for (int day = 0; day < Days(); ++day) {
        for (int line = 0; line < LineCount(); ++line) {
            const double value = melkar::ToDouble(LineValue(day, line));
            m_oaLineRects.Add(melkar::LineBoxOf(m_rcCanvas, day, Days(), melkar::FigureY(scale, value)));
            DrawDot(day, line);
        }
    }
    return 0;
}

/// The host's stride counts, also where it has more lines than are painted.
const CString& CLineGraph::LineValue(int day, int line) const {
    const std::int64_t index = std::int64_t{day} * m_nLineCount + line;
    return m_saLineValues[static_cast<int>(std::min<std::int64_t>(index, INT_MAX))];
}

bool CLineGraph::HasDot(int day, int line) const {
    return HasFigures(melkar::ToDayStatus(m_dwaStatus[day])) && !LineValue(day, line).IsEmpty();
}

/// A day's dot, and the stroke to the dot of the day before.
void CLineGraph::DrawDot(int day, int line) {
    if (!HasDot(day, line))
        return;
    const ScopedPen pen(m_hMemDC, PS_SOLID, 1, m_crLine[line]);
    const ScopedBrush brush(m_hMemDC, m_crLine[line]);
    const CRect box = *m_oaLineRects[day * LineCount() + line];
    const CRect dot = melkar::DotOf(box);
    Pie(m_hMemDC, dot.left, dot.top, dot.right, dot.bottom, dot.left, dot.top, dot.left, dot.top);
    if (day > 0 && HasDot(day - 1, line))
        DrawLine(m_hMemDC, melkar::PeakOf(box), melkar::PeakOf(*m_oaLineRects[(day - 1) * LineCount() + line]),
                 nullptr);
}

long CLineGraph::DrawCanvasMeasure() {
    CBarGraph::DrawCanvasMeasure();
    if (!m_bLines || !m_bLineMeasure)
        return 0;
    if (!(m_dChartLineInterval > 0))
        m_dChartLineInterval = melkar::kStepOfNone;
    {
        const ScopedFont font(m_hMemDC, ChartFont(m_nVMeasureSize));
        std::vector<melkar::ScaleStep> steps = ScaleSteps(RightScale(), m_nLineDecimals);
        if (m_bCoach)
            std::erase_if(steps, [](const melkar::ScaleStep& step) { return step.even; });
        DrawRightLabels(steps, melkar::kScaleGap);
    }
    DrawVLineAxsLabel();
    return 0;
}

long CLineGraph::DrawVLineAxsLabel() {
    if (m_bLines)
        DrawDownwardLabel(m_strVLineAxsLabel, kLabelShare, kLabelGap);
    return 0;
}

void CLineGraph::DrawDownwardLabel(const CString& text, double share, double gap) {
    const ScopedFont font(m_hMemDC, ChartFont(m_nVMeasureLabelSize, melkar::kDownwards));
    const CRect size = MeasureText(text, DT_CALCRECT | DT_BOTTOM);
    PaintTurned(melkar::DownwardLabelStart(m_rcCanvas, m_rcGraph.right, size, share, gap), text);
}
