#include "paper_sheets.h"

#include "level_minutes.h"

#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/registry/shown_by.h>
#include <MelkarCommon/support/support.h>

#include <algorithm>
#include <utility>

namespace {

constexpr int kDaysOfWeek = 7; // a line behind them ends the week
constexpr int kDaysAtHand = 256;

// Points.
constexpr int kDateSize = 10;
constexpr int kTextSize = 8;
constexpr int kMessageSize = 20;

constexpr int kHalfLine = 6; // units, of a text of 8 points

} // namespace

CPaperDay::CPaperDay(HDC page, const char* section, const Letters& letters)
    : CCircadianGraph(nullptr, page, section, page, page, page), m_letters(letters) {
    SetDirectOutput(1);
    m_nDateFontSize = letters.Of(kDateSize);
    m_nClassFontSize = m_nAxisFontSize = m_nSummaryFontSize = letters.Of(kTextSize);
    m_nMessageSize = letters.Of(kMessageSize);
}

// The library begins in the middle between the panel's top and the first line of its scale, and puts the remark on a
// second line. Half a line higher nothing is crossed; panels without a scale have room. The remark stands beside the
// date, so that it meets no summary, however long.
void CPaperDay::WriteMessage() {
    const CRect panel = m_rcLeft;
    const int hasRemark = std::exchange(m_bToroken, 0);
    if (m_nLang == 0)
        m_rcLeft.OffsetRect(0, -m_letters.Of(kHalfLine));
    CCircadianGraph::WriteMessage();
    m_rcLeft = panel;
    m_bToroken = hasRemark;
    if (hasRemark != 0)
        WriteRemark();
}

CString CPaperDay::Date() const { return FormatDateEx(m_strDate, m_strDateFormatType, m_strLocale); }

void CPaperDay::WriteRemark() {
    const CRect band(m_rcLeft.left, m_rcGraph.top, m_rcLeft.right, m_rcLeft.top);
    const melkar::ScopedFont font(m_hMemDC, ChartFont(m_letters.Of(kTextSize)));
    PaintText(m_strToroken, band, DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
}

CPaperSheets::CPaperSheets(HDC page, const char* section, std::string file, const Letters& letters)
    : CWeeklyCircadian(nullptr, page, section, page, page, page), m_sheet(page, section, letters),
      m_file(std::move(file)) {
    ReadFrom(0);
}

// Another page than the last one asked for would end the reading early.
void CPaperSheets::ReadFrom(int sheet) {
    m_first = sheet;
    m_count = 0;
    m_days.clear();
    ReadWeekDataFile(m_file.data(), INT_MAX);
}

long CPaperSheets::SetDayData(int day, double from, double to, CString date, int status, int steps, int actCal,
                              int totalCal, double, CStringArray* events, CStringArray* levels, double* intensity,
                              int toroken, float exercise) {
    if (day > kDaysOfWeek)
        return 0;
    if (m_count >= m_first && m_count - m_first < kDaysAtHand) {
        Day& kept = m_days.emplace_back(Day{from,
                                            to,
                                            std::move(date),
                                            status,
                                            steps,
                                            actCal,
                                            totalCal,
                                            MinutesFromLevel(*levels, from),
                                            *events,
                                            *levels,
                                            {},
                                            toroken,
                                            exercise});
        std::copy_n(intensity, kept.intensity.size(), kept.intensity.begin());
    }
    ++m_count;
    return 0;
}

melkar::Contents CPaperSheets::DrawSheet(const CRect& area, int sheet) {
    if (sheet < m_first || sheet >= m_first + static_cast<int>(m_days.size()))
        ReadFrom(sheet);
    if (m_days.empty())
        return {};
    Day& day = m_days[static_cast<std::size_t>(sheet - m_first)];
    m_sheet.Set(m_hWnd, m_hDC, area, "", "", day.from, day.to, &day.levels, day.date, 0, 0, &day.events,
                day.intensity.data(), day.status, day.steps, day.actCal, day.totalCal, day.time, day.toroken,
                day.exercise);
    char none[] = "";
    m_sheet.Draw(area, none);
    return melkar::ShownBy(static_cast<const CGraph&>(m_sheet));
}
