#include <MelkarCommon/frame/graph.h>

#include <MelkarCommon/frame/day_status.h>
#include <MelkarCommon/frame/frame_layout.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/frame/scale.h>
#include <MelkarCommon/frame/text_limits.h>
#include <MelkarCommon/platform/desktop.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/files/profile_snapshot.h>
#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/bounds.h>
#include <MelkarCommon/support/chart_font.h>
#include <MelkarCommon/support/ring_log.h>
#include <MelkarCommon/support/support.h>
#include <MelkarCommon/support/text_cut.h>
#include <MelkarCommon/support/text_measure.h>

#include <algorithm>

using melkar::DayStatus;
using melkar::ScopedFont;

struct CGraph::KeyRows : melkar::Keys<CGraph> {
    static constexpr Row rows[] = {
        Number<&G::m_nLang>(Common, "LANG", 0, "language number"),
        Text<&G::m_strLocale>(Common, "LOCALE", "locale of dates, such as ja_JP.UTF-8").Example("en_US.UTF-8"),
        Color<&G::m_crCanvas>(Common, "CANVASCOLOR_RGB", "background of the canvas").UnderText(),
        Color<&G::m_crBase>(Common, "BASECOLOR_RGB", "background of the whole graph").UnderText(),
        Color<&G::m_crPen>(Common, "PENCOLOR_RGB", "lines and frames"),
        Color<&G::m_crTextsOfAll>(Common, "TEXTCOLOR_RGB", "texts that no other key has a colour for, instead of black")
            .ForPlainTexts()
            .Else(static_cast<int>(melkar::kNoColor))
            .Example("226,234,243"),
        Color<&G::m_crTexts>(Own, "TEXTCOLOR_RGB", "the same of this graph")
            .ForPlainTexts()
            .Else<&G::m_crTextsOfAll>("TEXTCOLOR_RGB"),
        Color<&G::m_crSideBar>(Own, "SIDEBARCOLOR_RGB", "kept; no graph paints with it").Idle(),
        Text<melkar::In<&G::m_Title, &CText::m_strText>>(Own, "TITLELABEL", "title").Example("\" Steps\""),
        Color<melkar::In<&G::m_Title, &CText::m_crColor>>(Own, "TITLECOLOR_RGB",
                                                          "title; in the background's colour it keeps its room only")
            .TitleOn("BASECOLOR_RGB"),
        Number<melkar::In<&G::m_Title, &CText::m_nSize>>(Own, "TITLESIZE", 0, "title, points").Example("15"),
        Text<&G::m_strFont, melkar::In<&G::m_Title, &CText::m_strFontName>>(Common, "FONT", "face of all texts")
            .Face()
            .Example("DejaVu Sans"),
        Number<&G::m_nCharset, melkar::In<&G::m_Title, &CText::m_dwCharSet>>(
            Common, "CHARSET", 0, "character set of texts that aren't UTF-8"),
        Text<&G::m_strDateFormatType>(Common, "GRAPH_DATE_FORMAT_TYPE",
                                      "key of the date format in section SYSTEM of config.cnf")
            .Example("DATE_SHORT"),
        Text<&G::m_strDateFormatSpan>(Common, "GRAPH_DATE_FORMAT_SPAN", "between the two dates of a period")
            .Example("\" - \""),
        Color<&G::m_crExclude>(Common, "EXCLUDE_COLOR_RGB", "excluded message").TextOn("CANVASCOLOR_RGB"),
        Color<&G::m_crNoData>(Common, "NODATA_COLOR_RGB", "no-data message").TextOn("CANVASCOLOR_RGB"),
        Color<&G::m_crNoRecords>(Common, "NORECORDS_COLOR_RGB", "no-records message").TextOn("CANVASCOLOR_RGB"),
        Message<&G::m_strNoRecordsMessage>(Common, "NORECORDS_MESSAGE", "shown if no day has records")
            .Example("No records yet"),
        Message<&G::m_strNoDataMessage>(Common, "NODATA_MESSAGE", "shown if no day has data")
            .Example("No data __n__ for these days"),
        Message<&G::m_strExcludeMessage>(Common, "EXCLUDE_MESSAGE", "shown if every day is excluded")
            .Example("Excluded __n__ from the evaluation"),
        Number<&G::m_nValueSize>(Common, "VALUESIZE", 14, "figures on the bars, points"),
        Number<&G::m_nTargetSize>(Common, "TARGETSIZE", 10, "legends, points"),
        Number<&G::m_bCoach>(Common, "COACH", 0, "1: every second scale label is left out"),
    };
};

CGraph::CGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : m_hWnd(window), m_hDC(dc), m_Ini(GraphProfile()), m_strSection(section),
      m_Title("Title", 20, 0, "", 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0), m_hGMemDC(shared), m_hGMemDCCir(second),
      m_hGMemDCBalloon(balloon) {
    melkar::ForgetProfile(); // the classes of one object share a reading, two objects never
    CGraph::ReadIniFile(GraphProfile());
}

char* CGraph::GraphProfile() { return melkar::GraphProfile(); }

bool CGraph::IsDesktopNarrow() {
    constexpr int kNarrow = 820; // pixels
    CRect desktop;
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &desktop, 0);
    return desktop.Width() <= kNarrow;
}

CGraph::~CGraph() { FreeSurface(); }

long CGraph::ClearArrays() {
    m_saValues.RemoveAll();
    m_saDates.RemoveAll();
    m_dwaStatus.RemoveAll();
    m_saDateEnds.RemoveAll();
    return 0;
}

long CGraph::ReadDataFile(char*) { return 0; }

long CGraph::ReadIniFile(char* path) {
    const melkar::HostDirectory here(Host());
    const melkar::KeyReader reader(path, m_strSection);
    reader.LogWhatIsMissing();
    melkar::ReadKeys(KeyRows::rows, *this, reader);
    m_Title.m_nWeight = FW_BOLD;
    return 0;
}

melkar::ClassKeys CGraph::ProfileKeys() { return {"CGraph", melkar::InfoOf(KeyRows::rows)}; }

struct CGraph::Cycle : melkar::Steps<CGraph> {
    static constexpr Step whole[] = {{Do<&G::BeginCycle>, Needed}};
    static constexpr Step firstHalf[] = {
        Do<&G::FillGraph>,     Do<&G::DrawSideBar>,          Do<&G::DrawTitle>,         Do<&G::SetCanvasRect>,
        Do<&G::JudgeStatuses>, Do<&G::DrawNoRecordsMessage>, Do<&G::DrawNoDataMessage>, Do<&G::DrawExcludeMessage>,
    };
};

long CGraph::Draw(CRect area, char* path) { return melkar::RunCycle(*this, Cycle::whole, area, path); }

long CGraph::PrepareCycle(const CRect& area) {
    if (!m_hDC)
        return melkar::kNoSurface;
    if (!melkar::MakesSense(area)) {
        melkar::LogText("CGraph::Draw: rectangle beyond all bounds");
        return melkar::kDrawFailed;
    }
    if (!PrepareSurface(area)) {
        melkar::LogText("CGraph::Draw: no memory for the picture");
        return melkar::kDrawFailed;
    }
    return melkar::kOk;
}

long CGraph::BeginCycle(const CRect& area) {
    return melkar::DrawGuarded([&] {
        const long failure = PrepareCycle(area);
        return failure != melkar::kOk ? failure : RunSteps(*this, Cycle::firstHalf);
    });
}

long CGraph::Redraw() { return 0; }
long CGraph::OnClick() { return 0; }
long CGraph::OnMouseMove() { return 0; }

long CGraph::Initialize(HWND window, HDC dc, HDC shared, HDC second, HDC balloon) {
    m_hWnd = window;
    m_hDC = dc;
    if (shared)
        m_hGMemDC = shared;
    if (second)
        m_hGMemDCCir = second;
    if (balloon)
        m_hGMemDCBalloon = balloon;
    return 0;
}

/// Each cycle works on a fresh surface; under direct output on the device context itself. A rectangle without area
/// needs no bitmap. @return false if the bitmap can't be made
bool CGraph::PrepareSurface(const CRect& area) {
    FreeSurface();
    m_rcGraph = area;
    m_hMemDC = CreateCompatibleDC(m_hDC);
    m_ownsMemDC = !m_bDirectOutput;
    if (m_bDirectOutput)
        return true;
    m_nOriginX = area.left;
    m_nOriginY = area.top;
    m_rcGraph.OffsetRect(-area.left, -area.top);
    m_hBitmap = CreateCompatibleBitmap(m_hDC, m_rcGraph.Width(), m_rcGraph.Height());
    m_hOldBitmap = static_cast<HBITMAP>(SelectObject(m_hMemDC, m_hBitmap));
    return m_hBitmap || m_rcGraph.Width() <= 0 || m_rcGraph.Height() <= 0;
}

void CGraph::FreeSurface() {
    if (m_ownsMemDC) {
        SelectObject(m_hMemDC, m_hOldBitmap);
        DeleteDC(m_hMemDC); // lets the bitmap go even if there was no memory for what waits to be drawn on it
        DeleteObject(m_hBitmap);
    }
    m_hMemDC = nullptr;
    m_hBitmap = m_hOldBitmap = nullptr;
    m_ownsMemDC = false;
}

void CGraph::JudgeStatuses() {
    const int days = m_dwaStatus.GetSize();
    m_bNoRecords = 1;
    m_bExclude = m_bNoData = days > 0;
    for (int day = 0; day < days; ++day) {
        const DayStatus status = melkar::ToDayStatus(m_dwaStatus[day]);
        m_bNoRecords &= HasNoRecords(status);
        m_bExclude &= IsExcluded(status) || HasNoData(status);
        m_bNoData &= HasNoData(status);
    }
}

void CGraph::DrawTick(const melkar::Tick& tick) const {
    DrawLine(m_hMemDC, CPoint(tick.x, tick.from), CPoint(tick.x, tick.to), nullptr);
}

void CGraph::FillGraph() { DrawRectangle(m_hMemDC, m_rcGraph, m_crBase, m_crBase, 0); }

void CGraph::FillCanvas() { DrawRectangle(m_hMemDC, m_rcCanvas, m_crCanvas, m_crCanvas, 1); }

void CGraph::SetSideBar() { m_rcSideBar = melkar::SideBarOf(m_rcGraph); }

void CGraph::DrawSideBar() { SetSideBar(); }

void CGraph::SetTitleRect() { m_rcTitle = melkar::TitleStart(m_rcGraph, m_rcSideBar); }

void CGraph::DrawTitle() {
    SetTitleRect();
    const CString title = Limited(m_Title.m_strText, melkar::kLabelBytes);
    const ScopedFont font(m_hMemDC, PlainFont(m_Title.m_nSize, 0, FW_BOLD, m_Title.m_strFontName));
    SetBkMode(m_hMemDC, m_Title.m_nBkMode); // stays, and black with it: derived classes paint in them
    SetTextColor(m_hMemDC, m_Title.m_crColor);
    m_rcTitle = MeasureText(title, DT_CALCRECT | DT_SINGLELINE, m_rcTitle);
    if (IsTitleShown())
        melkar::PaintTextAsSet(m_hMemDC, title, m_rcTitle, DT_SINGLELINE);
    SetTextColor(m_hMemDC, TextColorOr(melkar::kBlack));
}

void CGraph::SetCanvasRect() {
    const int scaleRoom = MeasureText("99999 999", DT_CALCRECT).Width();
    m_rcCanvas = melkar::CanvasOf(m_rcGraph, m_rcSideBar, m_rcTitle.Height(), m_nTitleSpace, scaleRoom);
}

CString CGraph::FormatDate(int day) {
    const melkar::HostDirectory here(Host());
    return ::FormatDateEx(m_saDates.GetAt(day), m_strDateFormatType, m_strLocale);
}

long CGraph::DrawNoRecordsMessage() {
    if (!m_bNoRecords)
        return 0;
    SetBkMode(m_hMemDC, TRANSPARENT);
    PaintMessage(m_strNoRecordsMessage, m_crNoRecords);
    SetBkMode(m_hMemDC, OPAQUE); // stays, for what a derived class paints where there is nothing to show
    return -1;
}

long CGraph::DrawNoDataMessage() {
    if (m_bNoData)
        PaintMessage(m_strNoDataMessage, m_crNoData);
    return 0;
}

long CGraph::DrawExcludeMessage() {
    if (IsExcludedShown())
        PaintMessage(m_strExcludeMessage, m_crExclude);
    return 0;
}

/// Centred across the graph, its lines as a block in the middle of the height, in the mode that the surface has. Black
/// stays as the colour of texts.
void CGraph::PaintMessage(const CString& message, COLORREF color) {
    const CString text = Limited(message, melkar::kMessageBytes);
    const ScopedFont font(m_hMemDC, PlainFont(m_nMessageSize));
    SetTextColor(m_hMemDC, color);
    const int height = MeasureText(text, DT_CALCRECT | DT_CENTER | DT_VCENTER).Height();
    CRect box = m_rcGraph;
    box.OffsetRect(0, m_rcGraph.Height() / 2 - height / 2);
    melkar::PaintTextAsSet(m_hMemDC, text, box, DT_CENTER | DT_VCENTER);
    SetTextColor(m_hMemDC, TextColorOr(melkar::kBlack));
}

void CGraph::BitBlt() {
    if (m_bDirectOutput)
        return;
    ::BitBlt(ShownOn(), m_nOriginX, m_nOriginY, m_rcGraph.Width(), m_rcGraph.Height(), m_hMemDC, 0, 0, SRCCOPY);
}

HDC CGraph::CreateCompatibleDC(HDC surface) const { return m_bDirectOutput ? surface : ::CreateCompatibleDC(surface); }

HFONT CGraph::ChartFontFor(HDC surface, int size, int escapement) const {
    return melkar::MakeChartFont(surface, size, m_nCharset, m_strFont, escapement);
}

HFONT CGraph::PlainFont(int size, int escapement) const { return PlainFont(size, escapement, FW_NORMAL, m_strFont); }

HFONT CGraph::PlainFont(int size, int escapement, int weight, const CString& face) const {
    const int points = std::clamp(size, -melkar::kMostPoints, melkar::kMostPoints);
    return melkar::MakeFont(MulDiv(points, GetDeviceCaps(m_hMemDC, LOGPIXELSY), melkar::kPointsPerInch), weight,
                            m_nCharset, face, escapement);
}

std::optional<melkar::ScopedTextColor> CGraph::TextColorOn(HDC surface) const {
    if (!HasTextColor())
        return std::nullopt;
    return std::optional<melkar::ScopedTextColor>(std::in_place, surface, m_crTexts);
}

CRect CGraph::MeasureText(const CString& text, UINT format, CRect box) const {
    return melkar::MeasureText(m_hMemDC, text, format, box);
}

void CGraph::PaintText(const CString& text, CRect box, UINT format) const {
    melkar::PaintText(m_hMemDC, text, box, format);
}

void CGraph::PaintTextOn(COLORREF ground, const CString& text, CRect box, UINT format) const {
    melkar::PaintTextOn(m_hMemDC, ground, text, box, format);
}

void CGraph::PaintTurned(const CPoint& start, const CString& text) const { melkar::PaintTurned(m_hMemDC, start, text); }

std::vector<melkar::ScaleStep> CGraph::ScaleSteps(const melkar::ScalePixels& on, int decimals) const {
    const melkar::ScaleWalk walk = melkar::WalkScale(on, MeasureText("0", DT_CALCRECT).Height());
    std::vector<melkar::ScaleStep> steps;
    for (int line = 0; line < walk.count; ++line) {
        const double value = walk.At(line);
        const CString label = melkar::ScaleLabel(value, decimals);
        steps.push_back({label, MeasureText(label, DT_CALCRECT), melkar::ScaleLineY(on, value), line % 2 == 0});
    }
    return steps;
}

void CGraph::DrawRightLabels(const std::vector<melkar::ScaleStep>& steps, int gap) const {
    for (const melkar::ScaleStep& step : steps)
        PaintText(step.label, melkar::LabelBoxFrom(m_rcCanvas.right + gap, step), DT_LEFT);
}

CString CGraph::Limited(const CString& text, int bytes) const { return melkar::CutText(text, bytes, m_nCharset); }
