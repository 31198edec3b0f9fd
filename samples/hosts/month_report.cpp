#include "month_report.h"

#include <MelkarCommon/bars/expenditure_graph.h>
#include <MelkarCommon/bars/simulation.h>
#include <MelkarCommon/bars/step_graph.h>
#include <MelkarCommon/gauges/bmi_graph_eng.h>
#include <MelkarCommon/gauges/himand_graph.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/platform/surface.h>
#include <MelkarCommon/registry/shown_by.h>
#include <MelkarCommon/telling/speech.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

namespace {

// Units, 96 an inch.
constexpr int kMargin = 48;
constexpr int kGap = 16;
constexpr int kLineHeight = 20;  // of what the report writes itself
constexpr int kGaugeWidth = 320; // at most; the gauges' own sizes
constexpr int kBmiHeight = 36;
constexpr int kDiscHeight = 90;
constexpr int kChartHeight = 256; // at least, of full letters: the figures of its scale don't touch
constexpr int kSheetHeight = 172; // the same
constexpr int kFigureHeight = 18; // a line of the summary
constexpr int kBmiTop = 4 * kFigureHeight + kGap / 2 + kLineHeight;
constexpr int kSideBySide = 2 * kGaugeWidth + kGap; // on narrower paper the gauges stand one below the other
constexpr int kLegendsWidth = 640; // at least: the steps' title, target and average in one row; samples don't shrink

constexpr int kTextSize = 9; // points
constexpr int kPointsPerInch = 72;
constexpr COLORREF kInk = RGB(38, 50, 66);

// Paints a graph straight onto the page. Thirty days leave no room for figures on the bars.
template <class Graph> class OnPage : public Graph {
public:
    OnPage(HDC page, const char* section) : Graph(nullptr, page, section, page, page, page) {
        this->SetDirectOutput(1);
        if constexpr (requires { this->m_bValueOnBar; })
            this->m_bValueOnBar = 0;
    }
    void Show(const CRect& area, std::string file) { this->Draw(area, file.data()); }
};

// A chart whose letters suit the paper.
template <class Graph> class ChartOnPage : public OnPage<Graph> {
public:
    ChartOnPage(HDC page, const char* section, const Letters& letters) : OnPage<Graph>(page, section) {
        for (int* size : {&this->m_Title.m_nSize, &this->m_nTargetSize, &this->m_nVMeasureSize,
                          &this->m_nVMeasureLabelSize, &this->m_nHMeasureLabelSize, &this->m_nDateSize})
            *size = letters.Of(*size);
    }
};

// The file of the steps names no target; the head of the report does.
class StepsOnPage : public ChartOnPage<CStepGraph> {
public:
    StepsOnPage(HDC page, const char* section, const Letters& letters, const CString& target)
        : ChartOnPage(page, section, letters), m_target(target) {}

    long ReadDataFile(char* path) override {
        const long result = ChartOnPage::ReadDataFile(path);
        for (int day = 0; day < m_saDates.GetSize(); ++day)
            m_saTargets.SetAtGrow(day, m_target);
        return result;
    }

private:
    CString m_target;
};

struct Paper {
    HDC page;
    Letters letters;
    CString stepTarget;
};

// What was shown, for those who can't see it.
template <class Graph>
melkar::Contents ShowOn(const Paper& paper, const char* section, const CRect& area, const std::string& file) {
    ChartOnPage<Graph> chart(paper.page, section, paper.letters);
    chart.Show(area, file);
    return melkar::ShownBy(chart);
}

melkar::Contents ShowSteps(const Paper& paper, const char* section, const CRect& area, const std::string& file) {
    StepsOnPage steps(paper.page, section, paper.letters, paper.stepTarget);
    if (area.Width() < kLegendsWidth)
        steps.SetPrintAverage(0); // a line of the summary says it
    steps.Show(area, file);
    return melkar::ShownBy(steps);
}

struct Chart {
    const char* section;
    const char* file;
    melkar::Contents (*show)(const Paper& paper, const char* section, const CRect& area, const std::string& file);
};
constexpr Chart kCharts[] = {
    {"STEPS", "steps-month.csv", ShowSteps},
    {"EXPENDITURE", "expenditure-month.csv", ShowOn<CExpenditureGraph>},
    {"SIMULATION", "simulation-plan.csv", ShowOn<CSimulation>},
};

// "7402" of the reader's " 7402 Steps ", whose words are English.
CString NumberOf(const char* figure) {
    const std::string text(figure);
    const auto from = std::min(text.find_first_not_of(' '), text.size());
    return text.substr(from, text.find(' ', from) - from).c_str();
}

// Without the blanks that the reader leaves at the ends of a text.
CString WithoutEnds(const char* text) {
    const std::string_view all(text);
    const auto from = std::min(all.find_first_not_of(' '), all.size());
    return std::string(all.substr(from, all.find_last_not_of(' ') + 1 - from)).c_str();
}

// "Steps, average: 7402 steps", with the unit of the profile.
CString FigureLine(const char* label, const char* figure, const CString& unit) {
    return CString(label) + " " + NumberOf(figure) + " " + unit;
}

int SummaryHeight(int width) {
    return kBmiTop + kBmiHeight + (width >= kSideBySide ? 0 : kGap / 2 + kLineHeight + kDiscHeight);
}

// Boxes in their order on the pages.
constexpr int kSummaryBox = 0;
constexpr int kFirstChart = 1;
constexpr int kFirstSheet = kFirstChart + static_cast<int>(std::size(kCharts));

} // namespace

CMonthReport::CMonthReport(char* printer, int paper, int orientation, char* section, const char* dataDirectory,
                           const char* headerFile)
    : CReport(printer, paper, orientation, section, nullptr, nullptr, nullptr, dataDirectory, headerFile, ""),
      m_letters(m_rcPage.right - 2 * kMargin, m_rcPage.bottom - 2 * kMargin), m_header(section, m_letters),
      m_sheets(std::make_unique<CPaperSheets>(m_hPrnDC, "WEEK", DataFile("week-print.csv"), m_letters)),
      m_pageLabel(m_Ini.ReadString("", section, "PAGE_LABEL", "")),
      m_obesityLabel(m_Ini.ReadString("", section, "OBESITY_LABEL", "")),
      m_title(m_Ini.ReadString("", section, "TITLE", "")) {
    CMonthReport::CalcRects();
    LayOutBoxes();
}

// The cells of the heading block tell how high it is.
int CMonthReport::CalcRects() {
    const CRect room(kMargin, kMargin, m_rcPage.right - kMargin, m_rcPage.bottom - kMargin);
    m_header.CalcRect(m_hPrnDC, room, m_strHeaderFile);
    m_rcHeader = room;
    m_rcHeader.bottom = m_header.m_rcCells[melkar::A3].bottom;
    m_rcFooter = room;
    m_rcFooter.top = room.bottom - kLineHeight;
    m_rcGraphs = CRect(room.left, m_rcHeader.bottom + kGap, room.right, m_rcFooter.top - kGap / 2);
    return 0;
}

void CMonthReport::LayOutBoxes() {
    std::vector<FlowBox> boxes = {{SummaryHeight(m_rcGraphs.Width()), false}};
    boxes.insert(boxes.end(), std::size(kCharts), {m_letters.Of(kChartHeight), true});
    boxes.insert(boxes.end(), static_cast<std::size_t>(m_sheets->Count()), {m_letters.Of(kSheetHeight), true});
    m_places = FlowOverPages(boxes, m_rcGraphs.Height(), kGap);
    m_pages = m_places.back().page + 1;
}

int CMonthReport::Print(melkar::ShownReport* shown) {
    m_shown = shown;
    if (DocStart() <= 0)
        return 0;
    SetDocumentTitle(m_hPrnDC, Title().c_str());
    if (m_shown)
        m_shown->title = Title();
    for (m_page = 0; m_page < m_pages; ++m_page) {
        if (m_shown)
            m_shown->pages.emplace_back();
        PageStart();
        Draw();
        PageEnd();
    }
    return DocEnd() > 0 ? m_pages : 0;
}

// Whose month it is, and which.
std::string CMonthReport::Title() const {
    return m_words.Say(m_title + ", " + WithoutEnds(m_header.m_szName) + ", " + WithoutEnds(m_header.m_szDuring));
}

// The date of printing is the base class's. On later pages the block is there for the eye: nobody wants to hear it
// again.
int CMonthReport::DrawHeader() {
    std::optional<melkar::ScopedPagePart> title;
    if (m_page == 0)
        title.emplace(m_hPrnDC, PageRole::Title, m_rcHeader, Title().c_str());
    m_header.CReportHeader::Draw(m_hPrnDC, m_rcHeader, m_strHeaderFile);
    m_header.Draw(m_hPrnDC, m_rcHeader, m_strHeaderFile);
    if (melkar::ShownPage* page = PageShown())
        page->heading = melkar::ShownBy(static_cast<const CGraphHeader&>(m_header));
    return 0;
}

int CMonthReport::DrawGraphs() {
    const auto isBefore = [](const FlowPlace& place, int page) { return place.page < page; };
    auto place = std::lower_bound(m_places.begin(), m_places.end(), m_page, isBefore);
    for (; place != m_places.end() && place->page == m_page; ++place) {
        const CRect area(m_rcGraphs.left, m_rcGraphs.top + place->top, m_rcGraphs.right,
                         m_rcGraphs.top + place->bottom);
        DrawBox(static_cast<int>(place - m_places.begin()), area);
    }
    return 0;
}

void CMonthReport::DrawBox(int box, const CRect& area) {
    if (box == kSummaryBox)
        return DrawSummary(area);
    if (box >= kFirstSheet) {
        melkar::Contents sheet = m_sheets->DrawSheet(area, box - kFirstSheet);
        return Tell(std::move(sheet), m_sheets->Date());
    }
    const Chart& chart = kCharts[box - kFirstChart];
    Tell(
        chart.show({m_hPrnDC, m_letters, NumberOf(m_header.m_szStepTarget)}, chart.section, area, DataFile(chart.file)),
        "");
}

// To those who can't see it, what was drawn last. The label is the title of what paints none.
void CMonthReport::Tell(melkar::Contents shown, const CString& label) const {
    if (shown.title.empty())
        shown.title = m_words.Say(label);
    SetPageWords(m_hPrnDC, melkar::WordsFor({shown}, m_words));
    if (melkar::ShownPage* page = PageShown())
        page->pictures.push_back(std::move(shown));
}

int CMonthReport::DrawFooter() {
    CString number;
    number.Format("%d / %d", m_page + 1, m_pages);
    const CString name = m_pageLabel + " " + number;
    Write(m_rcFooter, name, DT_RIGHT);
    if (melkar::ShownPage* page = PageShown())
        page->name = m_words.Say(name);
    return 0;
}

// Null if nobody asks.
melkar::ShownPage* CMonthReport::PageShown() const { return m_shown ? &m_shown->pages.back() : nullptr; }

// Figures and body mass index at the left, the degree of obesity at the right or below them.
void CMonthReport::DrawSummary(const CRect& area) {
    const int width = std::min(kGaugeWidth, area.Width());
    const int right = area.Width() >= kSideBySide ? area.right : area.left + width; // of the lower gauge
    const CRect bmi(area.left, area.top + kBmiTop, area.left + width, area.top + kBmiTop + kBmiHeight);
    DrawFigures(CRect(area.left, area.top, bmi.right, bmi.top - kLineHeight));
    DrawGauge<CBMIGraph_Eng>("BMI", CString(m_header.m_szBmiLabel), bmi, "bmi.csv");

    const CRect disc(right - width, area.bottom - kDiscHeight, right, area.bottom);
    DrawGauge<CHimandGraph>("HIMAND", m_obesityLabel, disc, "himand.csv");
}

// Below its label, which is its title to those who can't see it.
template <class Gauge>
void CMonthReport::DrawGauge(const char* section, const CString& label, const CRect& area, const char* file) {
    WriteAs(PageRole::Heading, CRect(area.left, area.top - kLineHeight, area.right, area.top), label);
    OnPage<Gauge> gauge(m_hPrnDC, section);
    gauge.Show(area, DataFile(file));
    Tell(melkar::ShownBy(gauge), label);
}

// What the heading block reads and leaves to the report.
void CMonthReport::DrawFigures(const CRect& area) {
    const CString lines[] = {
        CString(m_header.m_szDuringLabel) + m_header.m_szDuring,
        FigureLine(m_header.m_szEffectiveDaysLabel, m_header.m_szEffectiveDays, ""),
        FigureLine(m_header.m_szAveStepLabel, m_header.m_szAveStep, m_header.m_strStepUnit),
        FigureLine(m_header.m_szAveTotalCalLabel, m_header.m_szAveTotalCal, m_header.m_strCalUnit),
    };
    CRect line(area.left, area.top, area.right, area.top + kFigureHeight);
    for (const CString& text : lines) {
        WriteAs(PageRole::Paragraph, line, text);
        line.OffsetRect(0, kFigureHeight);
    }
}

void CMonthReport::WriteAs(PageRole role, const CRect& box, const CString& text) const {
    const melkar::ScopedPagePart part(m_hPrnDC, role, box);
    Write(box, text, DT_LEFT);
    melkar::ShownPage* page = PageShown();
    if (page && role == PageRole::Paragraph) // headings are titles of pictures
        page->texts.push_back(m_words.Say(WithoutEnds(text)));
}

void CMonthReport::Write(CRect box, const CString& text, unsigned format) const {
    const int height = m_letters.Of(kTextSize) * GetDeviceCaps(m_hPrnDC, LOGPIXELSY) / kPointsPerInch;
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
