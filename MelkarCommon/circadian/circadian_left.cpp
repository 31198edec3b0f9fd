// The left panel: class strip, date, events, and the day's profile over its hours.

#include <MelkarCommon/circadian/circadian_graph.h>

#include <MelkarCommon/circadian/circadian_layout.h>
#include <MelkarCommon/frame/text_limits.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/chart_font.h>
#include <MelkarCommon/support/marks_layout.h>
#include <MelkarCommon/support/polygons.h>
#include <MelkarCommon/support/support.h>

#include <algorithm>

using melkar::ScopedFont;
using melkar::ScopedPen;

/// The order decides what covers what: the profile lies on the grid and on the upper halves of the ticks, the summary
/// on the profile, the frame on all of them.
void CCircadianGraph::DrawLeftGraph() {
    DrawRectangle(m_hMemDC, m_rcLeft, m_crCanvas, m_crCanvas, 1);
    DrawGridLines();
    DrawClasses();
    DrawDate();
    DrawEvent();
    DrawPolygon();
    WriteMessage();
    DrawTransParentRectangle(m_hMemDC, m_rcLeft, m_crPen, m_crPen, 1);
}

void CCircadianGraph::DrawGridLines() {
    const ScopedPen pen(m_hMemDC, PS_SOLID, 1, m_crPen);
    const auto lineAt = [this](int y) { DrawLine(m_hMemDC, {m_rcLeft.left, y}, {m_rcLeft.right, y}, nullptr); };
    if (m_nLang == melkar::kLangExercise) {
        for (int level = 1; level <= melkar::kLevels; ++level)
            lineAt(m_rcLeft.top + melkar::LevelHeight(m_rcLeft, level));
    } else {
        const auto borders = melkar::BorderLinesOf(m_rcLeft, {m_dModerateFrom, m_dModerateTo});
        lineAt(borders.lower);
        lineAt(borders.upper);
    }
}

void CCircadianGraph::DrawClasses() {
    const auto bands = melkar::ClassBandsOf(m_rcGraph, m_rcLeft, {m_dModerateFrom, m_dModerateTo}, m_nLang);
    const struct {
        const CRect& band;
        COLORREF color;
        const CString& label;
    } classes[] = {{bands.vigorous, m_crVigorous, m_strVigorousLabel},
                   {bands.moderate, m_crModerate, m_strModerateLabel},
                   {bands.light, m_crLight, m_strLightLabel}};
    const ScopedFont font(m_hMemDC, PlainFont(m_nClassFontSize, melkar::kUpwards));
    for (const auto& one : classes)
        DrawRectangle(m_hMemDC, one.band, one.color, one.color, 0);
    for (const auto& one : classes) {
        const CString label = Limited(one.label, melkar::kClassLabelBytes);
        const CRect size = MeasureText(label, DT_CALCRECT | DT_SINGLELINE | DT_VCENTER | DT_CENTER);
        PaintTurned(melkar::ClassLabelStart(one.band, size.Width()), label);
    }
    SetBkMode(m_hMemDC, TRANSPARENT); // left to the steps of a derived class
}

CString CCircadianGraph::DateCaption() const { return FormatDateEx(m_strDate, m_strDateFormatType, m_strLocale); }

/// In black, whatever the profile's date colours.
void CCircadianGraph::DrawDate() {
    const ScopedFont font(m_hMemDC, PlainFont(m_nDateFontSize));
    SetTextColor(m_hMemDC, TextColorOr(melkar::kBlack));
    const CString caption = DateCaption();
    m_rcDate = MeasureText(caption, DT_CALCRECT, {m_rcGraph.left, m_rcGraph.top + 1, m_rcLeft.right, 0});
    PaintText(caption, m_rcDate, DT_LEFT);
    // Left to the summary and to the steps of a derived class: black, on what is there or on the graph's colour.
    SetBkMode(m_hMemDC, TRANSPARENT);
    SetBkColor(m_hMemDC, m_crBase);
}

/// The marks are as high as a digit in the font that the surface came with.
void CCircadianGraph::DrawEvent() {
    m_nEventSize = MeasureText("0", DT_CALCRECT).Height();
    for (int event = 0; event < EventCount(); ++event)
        if (const auto box = EventBox(event))
            melkar::FillPolygon(m_hMemDC, melkar::TriangleIn(*box), m_crEvent);
}

int CCircadianGraph::EventCount() const { return std::min(m_saEvents.GetSize(), melkar::kMostEvents); }

/// Around the mark; none for a text that is no time.
std::optional<CRect> CCircadianGraph::EventBox(int event) const {
    const auto minute = melkar::EventMinute(m_saEvents[event]);
    if (!minute)
        return std::nullopt;
    return melkar::EventBoxOf(m_rcGraph, m_rcLeft, *minute, m_nEventSize);
}

void CCircadianGraph::DrawPolygon() {
    DrawHours();
    const melkar::ProfilePoints profile = melkar::ProfileOf(m_rcLeft, m_dIntensity);
    melkar::FillPolygon(m_hMemDC, profile, m_crPolygon);
    const ScopedPen pen(m_hMemDC, PS_SOLID, 1, m_crPen);
    melkar::DrawPath(m_hMemDC, profile);
}

void CCircadianGraph::DrawHours() {
    const ScopedFont font(m_hMemDC, PlainFont(m_nAxisFontSize));
    SetBkMode(m_hMemDC, TRANSPARENT); // left to the summary and to the steps of a derived class
    for (int hour = 0; hour < melkar::kDayHours; ++hour)
        DrawHour(hour);
}

/// The tick takes the pen that the surface came with.
void CCircadianGraph::DrawHour(int hour) {
    const CString text = std::to_string(hour).c_str();
    const CRect figure = melkar::HourFigureOf(MeasureText(text, DT_CALCRECT, melkar::HourBox(m_rcLeft, hour)));
    PaintText(text, figure, DT_CENTER);
    DrawTick(melkar::HourTickOf(m_rcLeft, figure));
}
