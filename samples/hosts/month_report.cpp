#include "month_report.h"

#include <MelkarCommon/bars/expenditure_graph.h>
#include <MelkarCommon/bars/simulation.h>
#include <MelkarCommon/bars/step_graph.h>
#include <MelkarCommon/gauges/bmi_graph_eng.h>
#include <MelkarCommon/gauges/himand_graph.h>
#include <MelkarCommon/support/platform/desktop.h>
#include <MelkarCommon/support/platform/drawing.h>
#include <MelkarCommon/support/platform/surface.h>
#include <MelkarCommon/support/scoped.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <type_traits>

namespace {

constexpr int kChartHeight = 230; // at least: its scale is readable then
constexpr int kSheetHeight = 230;
constexpr int kLineHeight = 20; // of what the report writes itself; units, 96 an inch
constexpr int kTextSize = 9;    // points
constexpr int kGap = 16;
constexpr int kPointsPerInch = 72;
constexpr COLORREF kInk = RGB(38, 50, 66);

// Paints a graph straight onto the page. Thirty days leave no room for figures on the bars; the data files name no
// target.
template <class Graph> class OnPage : public Graph {
public:
    OnPage(HDC page, const char* section) : Graph(nullptr, page, section, page, page, page) {
        this->SetDirectOutput(1);
        if constexpr (requires { this->m_bValueOnBar; })
            this->m_bValueOnBar = 0;
        if constexpr (std::is_same_v<Graph, CStepGraph>)
            this->SetPrintTarget(0);
    }
    void Show(const CRect& area, std::string file) { this->Draw(area, file.data()); }
};

template <class Graph> void ShowOn(HDC page, const char* section, const CRect& area, const std::string& file) {
    OnPage<Graph>(page, section).Show(area, file);
}

struct Chart {
    const char* section;
    const char* file;
    void (*show)(HDC page, const char* section, const CRect& area, const std::string& file);
};
constexpr Chart kCharts[] = {
    {"STEPS", "steps-month.csv", ShowOn<CStepGraph>},
    {"EXPENDITURE", "expenditure-month.csv", ShowOn<CExpenditureGraph>},
    {"SIMULATION", "simulation-plan.csv", ShowOn<CSimulation>},
};
constexpr int kChartCount = static_cast<int>(std::size(kCharts));

// How many boxes at least `least` high stand below each other.
int RowsOf(const CRect& area, int least) { return std::max(1, (area.Height() + kGap) / (least + kGap)); }

CRect RowOf(const CRect& area, int rows, int row) {
    const int pitch = (area.Height() + kGap) / rows;
    return {area.left, area.top + row * pitch, area.right, area.top + (row + 1) * pitch - kGap};
}

// Sheets choose the size of their summary by the width of the desktop when they are made: here that is the page.
class PageAsDesktop {
public:
    explicit PageAsDesktop(const CRect& page) {
        SystemParametersInfoA(SPI_GETWORKAREA, 0, &m_former, 0);
        SetWorkArea(page);
    }
    ~PageAsDesktop() { SetWorkArea(m_former); }
    PageAsDesktop(const PageAsDesktop&) = delete;
    PageAsDesktop& operator=(const PageAsDesktop&) = delete;

private:
    RECT m_former{};
};

} // namespace

CMonthReport::CMonthReport(char* printer, int paper, int orientation, char* section, const char* dataDirectory,
                           const char* headerFile)
    : CReport(printer, paper, orientation, section, nullptr, nullptr, nullptr, dataDirectory, headerFile, ""),
      m_header(section), m_weekFile(DataFile("week-print.csv")),
      m_pageLabel(m_Ini.ReadString("", section, "PAGE_LABEL", "")),
      m_obesityLabel(m_Ini.ReadString("", section, "OBESITY_LABEL", "")) {
    const PageAsDesktop narrow(m_rcPage);
    m_weeks = std::make_unique<CPrintedWeeks>(nullptr, m_hPrnDC, "WEEK", m_hPrnDC, m_hPrnDC, m_hPrnDC);
    for (CCircadianGraph& day : m_weeks->m_Day)
        day.SetDirectOutput(1);
    m_sheets = m_weeks->Sheets(m_weekFile.data());
    CMonthReport::CalcRects();
}

int CMonthReport::CalcRects() {
    const int width = m_rcPage.Width();
    const int height = m_rcPage.Height();
    const int margin = width / 14;
    m_rcHeader = CRect(margin, height * 5 / 100, width - margin, height * 21 / 100);
    m_rcGraphs = CRect(margin, height * 23 / 100, width - margin, height * 76 / 100);
    m_rcFooter = CRect(margin, height * 78 / 100, width - margin, height * 94 / 100);
    return 0;
}

int CMonthReport::ChartPages() const {
    const int rows = RowsOf(m_rcGraphs, kChartHeight);
    return (kChartCount + rows - 1) / rows;
}

int CMonthReport::Print() {
    const int rows = RowsOf(SheetArea(), kSheetHeight);
    m_pages = ChartPages() + (static_cast<int>(m_sheets.size()) + rows - 1) / rows;
    if (DocStart() <= 0)
        return 0;
    for (m_page = 0; m_page < m_pages; ++m_page) {
        PageStart();
        Draw();
        PageEnd();
    }
    return DocEnd() > 0 ? m_pages : 0;
}

// The cells are laid out first: they tell how high the frame has to be. The date of printing is the base class's.
int CMonthReport::DrawHeader() {
    m_header.CalcRect(m_hPrnDC, m_rcHeader, m_strHeaderFile);
    CRect block = m_rcHeader;
    block.bottom = m_header.m_rcCells[melkar::A3].bottom;
    m_header.CReportHeader::Draw(m_hPrnDC, block, m_strHeaderFile);
    m_header.Draw(m_hPrnDC, block, m_strHeaderFile);
    if (m_page < ChartPages())
        DrawPeriod(block.bottom + kGap);
    return 0;
}

// What the heading block reads and leaves to the report: the period and its figures.
void CMonthReport::DrawPeriod(int top) {
    const CString rows[] = {
        CString(m_header.m_szDuringLabel) + m_header.m_szDuring,
        CString(m_header.m_szEffectiveDaysLabel) + m_header.m_szEffectiveDays,
        CString(m_header.m_szAveStepLabel) + m_header.m_szAveStep,
        CString(m_header.m_szAveTotalCalLabel) + m_header.m_szAveTotalCal,
    };
    const int middle = (m_rcHeader.left + m_rcHeader.right) / 2;
    for (int i = 0; i < 4; ++i) {
        const int left = i % 2 == 0 ? m_rcHeader.left : middle;
        const int y = top + i / 2 * kLineHeight;
        Write(CRect(left, y, left + middle - m_rcHeader.left, y + kLineHeight), rows[i], kTextSize, DT_LEFT);
    }
}

int CMonthReport::DrawGraphs() {
    if (m_page < ChartPages())
        DrawCharts();
    else
        DrawSheets();
    return 0;
}

void CMonthReport::DrawCharts() {
    const int most = RowsOf(m_rcGraphs, kChartHeight);
    const int first = m_page * most;
    const int rows = std::min(most, kChartCount - first);
    for (int row = 0; row < rows; ++row) {
        const Chart& chart = kCharts[first + row];
        chart.show(m_hPrnDC, chart.section, RowOf(m_rcGraphs, rows, row), DataFile(chart.file));
    }
}

// Sheets take all the room from below the heading, whose rows are some 18 units high, to the page number.
CRect CMonthReport::SheetArea() const {
    constexpr int kHeading = 90;
    return {m_rcHeader.left, m_rcHeader.top + kHeading, m_rcFooter.right, m_rcFooter.bottom};
}

void CMonthReport::DrawSheets() {
    const CRect area = SheetArea();
    const int rows = RowsOf(area, kSheetHeight);
    const std::size_t first = static_cast<std::size_t>(m_page - ChartPages()) * static_cast<std::size_t>(rows);
    for (int row = 0; row < rows && first + row < m_sheets.size(); ++row)
        m_weeks->DrawSheet(RowOf(area, rows, row), m_weekFile.data(), m_sheets[first + row]);
}

// The number stands in the margin below the band.
int CMonthReport::DrawFooter() {
    if (m_page == 0)
        DrawGauges();
    CString number;
    number.Format("%d / %d", m_page + 1, m_pages);
    const CRect line(m_rcFooter.left, m_rcFooter.bottom, m_rcFooter.right, m_rcFooter.bottom + kLineHeight);
    Write(line, m_pageLabel + " " + number, kTextSize, DT_RIGHT);
    return 0;
}

void CMonthReport::DrawGauges() {
    constexpr int kWidth = 280;
    constexpr int kBarHeight = 36;
    constexpr int kDiscHeight = 90;
    const int top = m_rcFooter.top;
    const int below = top + kLineHeight;
    const int right = m_rcFooter.right - kWidth;
    Write(CRect(m_rcFooter.left, top, m_rcFooter.left + kWidth, below), CString(m_header.m_szBmiLabel), kTextSize,
          DT_LEFT);
    OnPage<CBMIGraph_Eng>(m_hPrnDC, "BMI")
        .Show(CRect(m_rcFooter.left, below, m_rcFooter.left + kWidth, below + kBarHeight), DataFile("bmi.csv"));
    Write(CRect(right, top, m_rcFooter.right, below), m_obesityLabel, kTextSize, DT_LEFT);
    OnPage<CHimandGraph>(m_hPrnDC, "HIMAND")
        .Show(CRect(right, below, m_rcFooter.right, below + kDiscHeight), DataFile("himand.csv"));
}

void CMonthReport::Write(CRect box, const CString& text, int size, unsigned format) const {
    const int height = size * GetDeviceCaps(m_hPrnDC, LOGPIXELSY) / kPointsPerInch;
    const melkar::ScopedFont font(m_hPrnDC,
                                  CreateFontA(-height, 0, 0, 0, FW_NORMAL, 0, 0, 0, static_cast<DWORD>(m_nCharset), 0,
                                              0, PROOF_QUALITY, 0, m_strFont));
    const melkar::ScopedBkMode transparent(m_hPrnDC, TRANSPARENT);
    const melkar::ScopedTextColor ink(m_hPrnDC, kInk);
    DrawTextExA(m_hPrnDC, const_cast<char*>(text.GetString()), text.GetLength(), &box,
                format | DT_VCENTER | DT_SINGLELINE, nullptr);
}

std::string CMonthReport::DataFile(const char* name) const {
    namespace fs = std::filesystem;
    const fs::path directory = m_strDataFile.GetString();
    std::error_code ignored;
    const fs::path own = directory / name;
    return fs::exists(own, ignored) ? own.string() : (directory / ".." / name).string();
}
