// The right panel: minutes at the nine levels.

#include <MelkarCommon/circadian/circadian_graph.h>

#include <MelkarCommon/circadian/circadian_layout.h>
#include <MelkarCommon/frame/text_limits.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/support.h>

using melkar::ScopedFont;
using melkar::ScopedPen;

namespace {

constexpr int kCaptionGap = 2; ///< between the panel and the caption above it
constexpr UINT kMeasureCentred = DT_CALCRECT | DT_SINGLELINE | DT_CENTER;
constexpr UINT kPaintCentred = DT_SINGLELINE | DT_CENTER;

} // namespace

void CCircadianGraph::DrawRightGraph() {
    if (m_nLang == melkar::kLangLeftOnly)
        return;
    DrawRectangle(m_hMemDC, m_rcRight, m_crCanvas, m_crCanvas, 0);
    const ScopedFont font(m_hMemDC, PlainFont(m_nAxisFontSize));
    // Left to a derived class, as is the ground of the figures.
    SetTextColor(m_hMemDC, TextColorOr(melkar::kBlack));
    SetBkMode(m_hMemDC, TRANSPARENT);
    DrawLevelFigures();
    DrawMinuteScale();
    for (int level = 1; level <= melkar::kLevels && level <= m_saLevelMinutes.GetSize(); ++level)
        DrawLevelBar(level);
    DrawTransParentRectangle(m_hMemDC, m_rcRight, m_crPen, m_crPen, 1);
}

void CCircadianGraph::DrawLevelFigures() {
    const CRect size = MeasureText("9", kMeasureCentred);
    for (int level = 1; level <= melkar::kLevels; ++level)
        PaintText(std::to_string(level).c_str(), melkar::LevelFigureOf(m_rcRight, level, size.Width(), size.Height()),
                  DT_SINGLELINE);
}

void CCircadianGraph::DrawMinuteScale() {
    DrawMinute(0, m_rcRight.left);
    {
        const ScopedPen pen(m_hMemDC, PS_DOT, 1, m_crPen);
        for (const int minutes : melkar::MinuteLines(m_rcRight, m_nRightStep, m_nRightMax)) {
            const int x = melkar::MinuteX(m_rcRight, minutes, m_nRightMax);
            DrawLine(m_hMemDC, {x, m_rcRight.top}, {x, m_rcRight.bottom}, nullptr);
            DrawMinute(minutes, x);
        }
    }
    DrawScaleCaptions(DrawMinute(m_nRightMax, m_rcRight.right));
}

/// @return the box of the figure, centred on x below the panel
CRect CCircadianGraph::DrawMinute(int minutes, int x) {
    const CString text = std::to_string(minutes).c_str();
    const CRect figure = melkar::MinuteFigureOf(m_rcRight, x, MeasureText(text, kMeasureCentred));
    PaintText(text, figure, kPaintCentred);
    return figure;
}

/// The unit begins below the last figure, the caption stands above the panel.
void CCircadianGraph::DrawScaleCaptions(const CRect& lastFigure) {
    const CString unit = Limited(m_strMinLabel, melkar::kLabelBytes);
    CRect unitBox = MeasureText(unit, kMeasureCentred);
    unitBox.OffsetRect(m_rcRight.right - lastFigure.Width() / 2, lastFigure.bottom + lastFigure.Height() / 5);
    PaintText(unit, unitBox, kPaintCentred);

    const CString caption = Limited(m_strIntensityLabel, melkar::kLabelBytes);
    CRect captionBox = MeasureText(caption, kMeasureCentred);
    captionBox.OffsetRect(m_rcRight.left, m_rcRight.top - captionBox.Height() - kCaptionGap);
    PaintText(caption, captionBox, kPaintCentred);
}

COLORREF CCircadianGraph::ClassColorOf(int level) const {
    switch (melkar::ClassOf(level, {m_dModerateFrom, m_dModerateTo})) {
    case melkar::IntensityClass::Light:
        return m_crLight;
    case melkar::IntensityClass::Moderate:
        return m_crModerate;
    case melkar::IntensityClass::Vigorous:
        break;
    }
    return m_crVigorous;
}

double CCircadianGraph::MinutesAt(int level) const { return melkar::ToDouble(m_saLevelMinutes[level - 1]); }

/// A figure behind the bar clears the dots of the scale under it; one that doesn't fit there stands on the bar.
void CCircadianGraph::DrawLevelBar(int level) {
    const double minutes = MinutesAt(level);
    const CRect bar = melkar::LevelBarOf(m_rcRight, level, minutes);
    DrawRectangle(m_hMemDC, bar, ClassColorOf(level), m_crPen, 1);
    const CString text = melkar::MinutesText(minutes);
    const CRect measured = MeasureText(text, DT_CALCRECT | DT_SINGLELINE, melkar::BarFigureBox(m_rcRight, bar));
    const melkar::BarFigure figure = melkar::BarFigureOf(m_rcRight, bar, measured);
    SetBkColor(m_hMemDC, m_crCanvas);
    if (figure.inside)
        PaintText(text, figure.box, DT_SINGLELINE | DT_RIGHT);
    else
        PaintTextOn(m_crCanvas, text, figure.box, DT_SINGLELINE | DT_RIGHT);
}
