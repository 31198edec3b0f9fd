#include <MelkarCommon/bars/simulation.h>

#include <MelkarCommon/bars/weight_layout.h>
#include <MelkarCommon/frame/data_table.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/support.h>

#include <algorithm>
#include <string>

using melkar::ScopedFont;
using melkar::ScopedPen;
using melkar::ToDouble;
using melkar::Truncate;

namespace {

constexpr int kWeightScaleGap = 2;  ///< between the canvas and a label of the right scale
constexpr double kLabelShare = 0.2; ///< of its height, from the label of the right scale to the edge of the graph

} // namespace

struct CSimulation::KeyRows : melkar::Keys<CSimulation> {
    static constexpr Row rows[] = {
        Color<&G::m_crOverweight>(Own, "OVERWEIGHTCOLOR_RGB", "weight above its target").MarkOn("CANVASCOLOR_RGB"),
        Color<&G::m_crUnderweight>(Own, "UNDERWEIGHTCOLOR_RGB", "weight at or below its target")
            .MarkOn("CANVASCOLOR_RGB")
            .Beside("OVERWEIGHTCOLOR_RGB"),
        Color<&G::m_crTargetWeight>(Own, "TARGETWEIGHTCOLOR_RGB", "target weight line").MarkOn("CANVASCOLOR_RGB"),
        Text<&G::m_strWeightLabel>(Own, "WEIGHTSTRING", "legend of the weights, label of the right scale"),
        Text<&G::m_strTargetWeightLabel>(Own, "TARGETWEIGHTSTRING", "legend of the target weight"),
    };
};

/// What the head of the plan's file says.
struct CSimulation::Plan {
    CString start;
    int highest = 0;
    CString kept;
    int lowest = 0;
};

struct CSimulation::PlanHead : melkar::Columns<Plan> {
    static constexpr Form form{2, "day or period of the data file"};
    static constexpr Row rows[] = {
        Date<&G::start>(0, "start").Means("the day from which on the line of the plan is drawn").InHead(1),
        Whole<&G::highest>(1, "highest", "kg").Means("highest weight to show").InHead(1).Example("76"),
        Text<&G::kept>(2, "field").Means("kept for a host").InHead(1),
        Whole<&G::lowest>(3, "lowest", "kg").Means("lowest weight to show").InHead(1).Example("66"),
    };
};

struct CSimulation::PlanColumns : melkar::Columns<CSimulation> {
    static constexpr Form form = PlanHead::form;
    static constexpr Row rows[] = {
        Date<&G::m_saWeightDates>(0, "day"),
        Figure<&G::m_saWeights>(1, "weight", "kg")
            .Means("as measured: a square; empty for none")
            .Example("75.2|74.6|74.9||73.1|72.4|71.2"),
        Figure<&G::m_saTargetWeights>(2, "plan", "kg")
            .Means("target of the day: the line")
            .Needed()
            .Example("75|74.3|73.6|72.9|72.2|71.5|70.8"),
    };
};

melkar::DataTables CSimulation::DataFiles() {
    melkar::DataTables files = CActivityCalGraph::DataFiles();
    files.push_back(melkar::TableOf<PlanHead, PlanColumns>(".sim"));
    return files;
}

CSimulation::CSimulation(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CActivityCalGraph(window, dc, section, shared, second, balloon) {
    m_bLines = 0;
    m_nLineCount = 0;
    m_bValueTransparent = 1;
    CSimulation::ReadIniFile(GraphProfile());
}

long CSimulation::ReadIniFile(char* path) {
    melkar::ReadKeys(KeyRows::rows, *this, path, m_strSection);
    return 0;
}

melkar::ClassKeys CSimulation::ProfileKeys() { return {"CSimulation", melkar::InfoOf(KeyRows::rows)}; }

long CSimulation::ReadWeightDataFile(char* path) {
    return melkar::ReadFile(*this, "CSimulation::ReadWeightDataFile", path, [this](melkar::DataFile& file) {
        m_saTargetWeights.RemoveAll();
        m_saWeights.RemoveAll();
        m_saWeightDates.RemoveAll();
        Plan plan;
        melkar::ReadHeads<PlanHead>(plan, file);
        if (!file.HasHead())
            return melkar::kNoDays; // an empty file says nothing of the scale
        m_strWeightStart = plan.start;
        m_strWeightField2 = plan.kept;
        if (!SetWeightScale(plan.highest, plan.lowest))
            return melkar::kReadFailed;
        return melkar::ReadRows<PlanColumns>(*this, file);
    });
}

/// As many steps as the left scale has. @return false, with the scale as it was, if that has none.
bool CSimulation::SetWeightScale(int highest, int lowest) {
    if (!(m_dChartInterval > 0))
        return false;
    const int steps = Truncate((double(m_nChartMax) - m_nChartMin) / m_dChartInterval);
    const auto scale = melkar::WeightScaleFor(highest, lowest, steps);
    if (!scale)
        return false;
    m_nWeightMax = static_cast<int>(scale->max);
    m_nWeightMin = static_cast<int>(scale->min);
    m_nWeightInterval = static_cast<int>(scale->step);
    return true;
}

melkar::ScalePixels CSimulation::WeightScale() const {
    return melkar::PixelsOf({double(m_nWeightMin), double(m_nWeightMax), double(m_nWeightInterval)}, m_rcCanvas);
}

/// The plan comes behind the data file, whose scale it follows.
struct CSimulation::Cycle : melkar::Steps<CSimulation> {
    static constexpr Step steps[] = {
        Do<&G::ReadDataFile>,      Do<&G::ReadPlan>,     {Do<&G::BeginCycle>, Needed}, Do<&G::FillCanvas>,
        Do<&G::DrawCanvasMeasure>, Do<&G::DrawBarChart>, Do<&G::DrawWeightValue>,      Do<&G::DrawCanvas>,
        Do<&G::DrawValueOnBar>,    Do<&G::DrawDate>,     Do<&G::DrawVAxsLabel>,        Do<&G::DrawHAxsLabel>,
        Do<&G::DrawSecExs>,
    };
};

long CSimulation::Draw(CRect area, char* path) { return melkar::RunCycle(*this, Cycle::steps, area, path); }

/// Beside the data file. Where that has no name, a plan that isn't there is none that is missed.
long CSimulation::ReadPlan(char* path) {
    const bool isNamed = path && *path;
    std::string plan = isNamed ? std::string(path) + ".sim" : ".sim";
    if (!isNamed && !melkar::LineReader(plan.c_str()).IsOpen())
        plan.clear();
    return ReadWeightDataFile(plan.data());
}

long CSimulation::DrawWeightValue() {
    const ScopedPen pen(m_hMemDC, PS_SOLID, 1, m_crTargetWeight);
    for (int row = 0; row < m_saWeights.GetSize(); ++row) {
        if (HasStroke(row))
            DrawTargetStroke(row);
        if (!m_saWeights[row].IsEmpty())
            DrawWeightSquare(row);
    }
    return 0;
}

/// Whether the plan's line leads from the row before to this one.
bool CSimulation::HasStroke(int row) const {
    return row > 0 && row < m_saWeights.GetSize() && m_saWeightDates[row - 1].Compare(m_strWeightStart) > 0;
}

/// Three pixels thick, from this row's target to that of the row before.
void CSimulation::DrawTargetStroke(int row) {
    const auto pointOf = [this](int of) {
        const double target = ToDouble(m_saTargetWeights[of]);
        return CPoint(melkar::WeightX(m_rcCanvas, of, m_saWeights.GetSize()),
                      melkar::TargetWeightY(WeightScale(), target));
    };
    const CPoint from = pointOf(row);
    const CPoint to = pointOf(row - 1);
    for (int shift = -2; shift <= 0; ++shift)
        DrawLine(m_hMemDC, CPoint(from.x, from.y + shift), CPoint(to.x, to.y + shift), nullptr);
}

void CSimulation::DrawWeightSquare(int row) {
    const double weight = ToDouble(m_saWeights[row]);
    if (!(weight >= m_nWeightMin))
        return;
    const CPoint centre(melkar::WeightX(m_rcCanvas, row, m_saWeights.GetSize()),
                        melkar::WeightY(WeightScale(), weight));
    const bool isAbove = Truncate(ToDouble(m_saTargetWeights[row])) < weight;
    const COLORREF color = isAbove ? m_crOverweight : m_crUnderweight;
    DrawRectangle(m_hMemDC, melkar::WeightSquareOf(m_rcCanvas, centre), color, color, 1);
}

long CSimulation::DrawCanvas() {
    CBarGraph::DrawCanvas();
    {
        const ScopedFont font(m_hMemDC, ChartFont(m_nVMeasureLabelSize));
        std::vector<melkar::ScaleStep> steps = ScaleSteps(WeightScale(), 0);
        std::reverse(steps.begin(), steps.end()); // from the top down
        DrawRightLabels(steps, kWeightScaleGap);
    }
    DrawDownwardLabel(m_strWeightLabel, kLabelShare, 0.0);
    return 0;
}

void CSimulation::DrawLegendSquare(const CString& text, const melkar::LegendEntry& entry, COLORREF color) {
    PaintText(text, entry.text, DT_LEFT);
    DrawRectangle(m_hMemDC, entry.sample, color, color, 1);
}

void CSimulation::DrawSecExs() {
    const ScopedFont font(m_hMemDC, ChartFont(m_nTargetSize));
    const auto sizeOf = [this](const CString& text) { return MeasureText(text, DT_CALCRECT); };
    const auto legend = melkar::PlanLegendOf(m_rcCanvas, sizeOf(m_strTargetWeightLabel), sizeOf(m_strWeightLabel),
                                             sizeOf(m_strVAxsLabel));
    PaintText(m_strTargetWeightLabel, legend.line.text, DT_LEFT);
    {
        const ScopedPen pen(m_hMemDC, PS_SOLID, 1, m_crTargetWeight);
        const CRect& sample = legend.line.sample;
        DrawThickLine(sample.left, sample.right, melkar::SampleLineY(sample));
    }
    DrawLegendSquare(m_strWeightLabel, legend.weight, m_crOverweight);
    DrawLegendSquare(m_strVAxsLabel, legend.bars, m_crBar);
}
