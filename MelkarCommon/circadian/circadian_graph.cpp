#include <MelkarCommon/circadian/circadian_graph.h>

#include <MelkarCommon/circadian/circadian_layout.h>
#include <MelkarCommon/frame/day_status.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/frame/text_limits.h>
#include <MelkarCommon/platform/desktop.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/bounds.h>

#include <algorithm>
#include <iterator>
#include <utility>

using melkar::ScopedFont;

static_assert(CCircadianGraph::kValues == melkar::kDayValues);

namespace {

constexpr int kSectionBytes = 255;

} // namespace

struct CCircadianGraph::KeyRows : melkar::Keys<CCircadianGraph> {
    static constexpr Row rows[] = {
        Color<&G::m_crDate>(Own, "DATECOLOR_RGB", "kept; no painting uses it").Idle(),
        Color<&G::m_crDateBack>(Own, "DATEBAKCOLOR_RGB", "kept; no painting uses it").Idle(),
        Color<&G::m_crVigorous>(Own, "VIGOROUSCOLOR_RGB", "vigorous class: strip and bars; its label is black")
            .UnderText()
            .Beside("MODERATECOLOR_RGB"),
        Color<&G::m_crModerate>(Own, "MODERATECOLOR_RGB", "moderate class").UnderText().Beside("LIGHTCOLOR_RGB"),
        Color<&G::m_crLight>(Own, "LIGHTCOLOR_RGB", "light class").UnderText(),
        Text<&G::m_strVigorousLabel>(Own, "VIGOROUSLABEL", "vigorous class, reading upwards"),
        Text<&G::m_strModerateLabel>(Own, "MODERATELABEL", "moderate class"),
        Text<&G::m_strLightLabel>(Own, "LIGHTLABEL", "light class"),
        Text<&G::m_strCalmLabel>(Own, "CALMLABEL", "kept; no painting uses it").Idle(),
        Color<&G::m_crPolygon>(Own, "POLYGONCOLOR_RGB", "fill of the day's profile; the summary on it is black")
            .UnderText(),
        Color<&G::m_crEvent>(Own, "EVENTCOLOR_RGB", "event marks").MarkOn("CANVASCOLOR_RGB"),
        Text<&G::m_strIntensityLabel>(Own, "INTENSITY", "above the minutes at the levels"),
        Text<&G::m_strMinLabel>(Own, "MIN", "unit below the minutes at the levels"),
        Text<&G::m_strStepUnit>(Own, "STEPUNIT", "behind the steps"),
        Text<&G::m_strActCalUnit>(Own, "ACTCALUNIT",
                                  "behind the activity calories; two blanks break the line, except under LANG 0"),
        Text<&G::m_strTotalCalUnit>(Own, "TOTALCALUNIT", "behind the total calories"),
        Text<&G::m_strTimeUnit>(Own, "TIMEUNIT", "behind the time figure, which LANG 0 leaves out").Example("min"),
        Text<&G::m_strExerciseUnit>(Own, "EXERCISE_UNIT", "behind the exercise amount, which LANG 0 alone shows"),
        Text<&G::m_strExerciseLabel>(Own, "EXERCISE_LABEL", "before the exercise amount"),
        Text<&G::m_strToroken>(Own, "TOROKEN", "last line of the summary of a day that is flagged so")
            .Example("Entered by hand in part"),
        Message<&G::m_strNoDataMessage>(Own, "NODATA_MESSAGE", "shown on a day without data")
            .Else<&G::m_strNoDataMessage>("that of COMMON")
            .Example("No data __n__ for this day"),
        Message<&G::m_strExcludeMessage>(Own, "EXCLUDE_MESSAGE", "shown on an excluded day")
            .Else<&G::m_strExcludeMessage>("that of COMMON")
            .Example("Excluded __n__ from the evaluation"),
    };
};

CCircadianGraph::CCircadianGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CGraph(window, dc, section, shared, second, balloon) {
    if (IsDesktopNarrow())
        m_nSummaryFontSize -= 2;
    CCircadianGraph::ReadIniFile(GraphProfile());
    m_Title.m_strText = "";
    const melkar::ClassBounds bounds = melkar::UsualBounds(m_nLang);
    m_dModerateFrom = bounds.from;
    m_dModerateTo = bounds.to;
}

CCircadianGraph::~CCircadianGraph() = default;

long CCircadianGraph::ReadIniFile(char* path) {
    melkar::ReadKeys(KeyRows::rows, *this, path, Limited(m_strSection, kSectionBytes));
    for (int day = 0; day < std::ssize(m_strDayNames); ++day) {
        char name[100] = "";
        GetLocaleInfoA(LOCALE_USER_DEFAULT | LOCALE_NOUSEROVERRIDE, LOCALE_SABBREVDAYNAME1 + static_cast<DWORD>(day),
                       name, sizeof name);
        m_strDayNames[day] = name;
    }
    return 0;
}

melkar::ClassKeys CCircadianGraph::ProfileKeys() { return {"CCircadianGraph", melkar::InfoOf(KeyRows::rows)}; }

void CCircadianGraph::Set(HWND window, HDC dc, CRect area, CString extra1, CString extra2, double from, double to,
                          CStringArray* levels, CString date, int dayIndex, int reserved, CStringArray* events,
                          double* intensity, int status, int steps, int actCal, int totalCal, double time, int toroken,
                          float exercise) {
    m_hWnd = window;
    m_hDC = dc;
    m_rcGraph = melkar::MakesSense(area) ? area : CRect();
    m_strExtra1 = std::move(extra1);
    m_strExtra2 = std::move(extra2);
    m_dModerateFrom = from;
    m_dModerateTo = to;
    m_saLevelMinutes = levels ? *levels : CStringArray();
    m_strDate = std::move(date);
    m_nDayIndex = dayIndex;
    m_nReserved = reserved;
    m_saEvents = events ? *events : CStringArray();
    if (intensity)
        std::copy_n(intensity, kValues, m_dIntensity);
    else
        std::fill(std::begin(m_dIntensity), std::end(m_dIntensity), 0.0);
    m_nDayStatus = status;
    m_nSteps = steps;
    m_nActCal = actCal;
    m_nTotalCal = totalCal;
    m_dTime = time;
    m_bToroken = toroken;
    m_fExercise = exercise;
    m_Title.m_strText = "";
    CalcLongestDay();
}

/// The first of the widest; without a surface to measure on, the first of all.
void CCircadianGraph::CalcLongestDay() {
    const ScopedFont font(m_hMemDC, PlainFont(m_nDateFontSize));
    int widest = -1;
    for (const CString& name : m_strDayNames) {
        const int width = MeasureText(Limited(name, melkar::kLabelBytes), DT_CALCRECT).Width();
        if (width > widest) {
            widest = width;
            m_strLongestDay = name;
        }
    }
}

/// A day is worth showing even if a step of the first half failed.
struct CCircadianGraph::Cycle : melkar::Steps<CCircadianGraph> {
    static constexpr Step steps[] = {
        Do<&G::BeginCycle>,        {Do<&G::DrawNoRecordsMessage>, LastIfPainted},
        Do<&G::SetLeftRect>,       Do<&G::SetRightRect>,
        Do<&G::DrawLeftGraph>,     Do<&G::DrawRightGraph>,
        Do<&G::DrawNoDataMessage>, Do<&G::DrawExcludeMessage>,
    };
};

long CCircadianGraph::Draw(CRect area, char* path) {
    melkar::RunCycle(*this, Cycle::steps, area, path);
    return melkar::kOk;
}

void CCircadianGraph::DrawSideBar() {}

long CCircadianGraph::DrawNoRecordsMessage() {
    if (!melkar::HasNoRecords(melkar::ToDayStatus(m_nDayStatus)))
        return 0;
    m_bNoRecords = 1;
    CGraph::DrawNoRecordsMessage();
    return -1;
}

long CCircadianGraph::DrawNoDataMessage() {
    if (!melkar::HasNoData(melkar::ToDayStatus(m_nDayStatus)))
        return 0;
    m_bNoData = 1;
    CGraph::DrawNoDataMessage();
    return -1;
}

long CCircadianGraph::DrawExcludeMessage() {
    if (!melkar::IsExcluded(melkar::ToDayStatus(m_nDayStatus)))
        return 0;
    m_bExclude = 1;
    m_bNoData = 0;
    m_bNoRecords = 0;
    CGraph::DrawExcludeMessage();
    return -1;
}

CRect CCircadianGraph::MeasureClassLabel(const CString& label) const {
    return MeasureText(" " + label + " ", DT_CALCRECT | DT_CENTER);
}

void CCircadianGraph::SetLeftRect() {
    const auto lineOf = [this](int size, std::initializer_list<const CString*> labels) {
        const ScopedFont font(m_hMemDC, PlainFont(size));
        CRect widest;
        for (const CString* label : labels)
            if (const CRect box = MeasureClassLabel(*label); box.Width() > widest.Width())
                widest = box;
        return widest.Height();
    };
    const int classLine = lineOf(m_nClassFontSize, {&m_strLightLabel, &m_strModerateLabel, &m_strVigorousLabel});
    const int dateLine = lineOf(m_nDateFontSize, {&m_strVigorousLabel});
    const int axisLine = lineOf(m_nAxisFontSize, {&m_strVigorousLabel});
    m_rcLeft = melkar::LeftPanelOf(m_rcGraph, classLine, dateLine, axisLine, m_nLang);
}

void CCircadianGraph::SetRightRect() {
    const ScopedFont font(m_hMemDC, PlainFont(m_nAxisFontSize));
    m_rcRight = melkar::RightPanelOf(m_rcGraph, m_rcLeft, MeasureText("000", DT_CALCRECT | DT_CENTER).Width());
}
