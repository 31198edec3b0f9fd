#include <MelkarCommon/quadrant/square_graph.h>

#include <MelkarCommon/frame/data_table.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/quadrant/quadrant_layout.h>
#include <MelkarCommon/support/activity_figures.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/ring_log.h>

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t kLineLimit = 6399; ///< characters, line end included
constexpr int kTitleSpace = 5;           ///< half title heights above the canvas
constexpr int kMessageSize = 24;         ///< points

} // namespace

struct CSquareGraph::KeyRows : melkar::Keys<CSquareGraph> {
    static constexpr Row rows[] = {
        Number<&G::m_nPointSize>(Own, "POINTSIZE", 0, "marks, points"),
        Text<&G::m_strPoint>(Own, "POINT", "mark of a day"),
        Text<&G::m_strAveragePoint>(Own, "AVE_POINT", "mark of the average").Example("◆"),
        Color<&G::m_crLeftUpper>(Own, "LEFTUPPERR_COLOR_RGB", "left upper quadrant")
            .UnderText()
            .Beside("RIHGTUPPER_COLOR_RGB"),
        Color<&G::m_crRightUpper>(Own, "RIHGTUPPER_COLOR_RGB", "right upper quadrant")
            .UnderText()
            .Beside("RIHGTLOWER_COLOR_RGB"),
        Color<&G::m_crLeftLower>(Own, "LEFTLOWER_COLOR_RGB", "left lower quadrant")
            .UnderText()
            .Beside("LEFTUPPERR_COLOR_RGB"),
        Color<&G::m_crRightLower>(Own, "RIHGTLOWER_COLOR_RGB", "right lower quadrant")
            .UnderText()
            .Beside("LEFTLOWER_COLOR_RGB"),
        Text<&G::m_strLeftUpperLabel>(Own, "LEFTUPPERR_LABEL", "legend of the left upper quadrant"),
        Text<&G::m_strRightUpperLabel>(Own, "RIHGTUPPER_LABEL", "legend of the right upper quadrant"),
        Text<&G::m_strLeftLowerLabel>(Own, "LEFTLOWER_LABEL", "legend of the left lower quadrant"),
        Text<&G::m_strRightLowerLabel>(Own, "RIHGTLOWER_LABEL", "legend of the right lower quadrant"),
        Text<&G::m_strVAxsLabel>(Own, "VAXSLABEL", "vertical caption; `__d__` stands for the level number"),
        Text<&G::m_strHAxsLabel>(Own, "HAXSLABEL", "horizontal caption"),
        Number<&G::m_nVAxsSize>(Own, "VAXSSIZE", 0, "all texts but the marks, points"),
        Number<&G::m_nHAxsSize>(Own, "HAXSSIZE", 0, "kept; no painting uses it").Idle(),
        Text<&G::m_strTargetLabel>(Own, "TARGETLABEL", "for derived classes").Example("Target"),
        Text<&G::m_strAverageLabel>(Own, "AVERAGELABEL", "for derived classes").Example("Average"),
        Color<&G::m_crTarget>(Own, "TARGET_COLOR_RGB", "for derived classes"),
        Color<&G::m_crAverage>(Own, "AVERAGE_COLOR_RGB", "for derived classes"),
        Text<&G::m_strLeftSpace>(Own, "LEFT_SPACE", "sample text: its width is the room left of the canvas"),
        Text<&G::m_strRightSpace>(Own, "RIGHT_SPACE", "sample text: its width is the room right of the canvas"),
    };
};

CSquareGraph::CSquareGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CGraph(window, dc, section, shared, second, balloon) {
    m_nTitleSpace = kTitleSpace;
    m_nMessageSize = kMessageSize;
    CSquareGraph::ReadIniFile(GraphProfile());
}

CSquareGraph::~CSquareGraph() = default;

long CSquareGraph::ReadIniFile(char* path) {
    melkar::ReadKeys(KeyRows::rows, *this, path, m_strSection);
    return 0;
}

melkar::ClassKeys CSquareGraph::ProfileKeys() { return {"CSquareGraph", melkar::InfoOf(KeyRows::rows)}; }

long CSquareGraph::ClearArrays() {
    m_saDayField5.RemoveAll();
    m_saDayField11.RemoveAll();
    m_saDayLevelSum.RemoveAll();
    return 0;
}

/// What the head rows say.
struct CSquareGraph::Head {
    CString target1, target2, isFixed; ///< of row 0, as the level; those below of row 1
    CString levelName;
    int level = 0;
    CString laterTarget1, laterTarget2, laterIsFixed;
    CString laterLevelName;
    int laterLevel = 0;
    CString average1, average2, average3;

    /// Moves up what row 1 says in the place of row 0. Where each day has its own targets, the first one is empty.
    void Settle() {
        if (levelName.IsEmpty()) {
            levelName = laterLevelName;
            level = laterLevel;
        }
        if (target1.IsEmpty() && laterIsFixed != "0") {
            target1 = laterTarget1;
            target2 = laterTarget2;
        } else if (isFixed != "1") {
            target1 = "";
        }
    }
    bool HasTargets() const { return !target1.IsEmpty(); }
};

struct CSquareGraph::HeadColumns : melkar::Columns<Head> {
    static constexpr Form form = Form{3, "day"}
                                     .Limit(kLineLimit)
                                     .Note("What targets, averages and the fields 5 and 11 mean is for the derived "
                                           "class to say.");
    static constexpr Row rows[] = {
        Text<&G::target1>(7, "target 1").Means("of all days, with 1 in column 15").InHead(0).Example("8000"),
        Text<&G::target2>(8, "target 2").Means("its partner").InHead(0).Example("20"),
        Text<&G::levelName>(9, "level name").Means("of the level beside it").InHead(0).Example("brisk"),
        Whole<&G::level>(10, "level").Means("the first that counts").InHead(0).Within(1, melkar::kLevels).Example("4"),
        Text<&G::isFixed>(15, "fixed").Means("1: the targets of this row hold").InHead(0).Example("1"),
        Text<&G::laterTarget1>(5, "target 1").Means("of all days, if row 0 has none").InHead(1),
        Text<&G::laterTarget2>(6, "target 2").Means("its partner; also of days with 0 in column 26").InHead(1),
        Text<&G::laterIsFixed>(9, "fixed").Means("0: the targets of this row don't hold").InHead(1),
        Text<&G::laterLevelName>(20, "level name").Means("if row 0 has none").InHead(1),
        Whole<&G::laterLevel>(21, "level").Means("likewise").InHead(1).Within(1, melkar::kLevels),
        Text<&G::average1>(1, "average 1").InHead(2).Example("8167"),
        Text<&G::average3>(2, "average 3").InHead(2),
        Text<&G::average2>(4, "average 2").InHead(2).Example("19.1"),
    };
};

struct CSquareGraph::Day {
    CString target1, target2, hasTarget2;
    std::array<double, melkar::kLevels> levels{};
};

struct CSquareGraph::DayColumns : melkar::Columns<Day> {
    static constexpr Row rows[] = {
        Text<&G::target2>(3, "target 2").Means("of the day, where no pair holds for all days").Example("20"),
        Text<&G::target1>(9, "target 1").Means("likewise").Example("8000"),
        Figure<&G::levels>(15, "level")
            .Means("counts at the levels 1 to 9, of which 15 make one")
            .NotBelow(0)
            .Each(melkar::kLevels)
            .Needed()
            .Example("4013|2257|1003|150|60|0|0|0|0|4013|2257|1003|248|123|91|33|0|0|4013|2257|1003|270|120|0|0|0|0|"
                     "4013|2257|1003|330|60|30|0|0|0|4013|2257|1003|180|30|0|0|0|0|4013|2257|1003|300|180|60|15|0|0|"
                     "4013|2257|1003|255|90|30|0|0|0"),
        Text<&G::hasTarget2>(26, "has target 2").Means("0: the second target is that of row 1"),
    };
};

struct CSquareGraph::File : melkar::Columns<CSquareGraph> {
    static constexpr Form form = HeadColumns::form;
    static constexpr Row rows[] = {
        DayStatus(0),
        Text<&G::m_saDayField5>(5, "field 5").Example("5017|9268|6835|4120|10250|11840|7130"),
        Text<&G::m_saDayField11>(11, "field 11").Example("190"),
    };
};

void CSquareGraph::TakeHead(const Head& head) {
    m_strLevelName = head.levelName;
    m_nLevel = head.level;
    m_strAverage1 = head.average1;
    m_strAverage2 = head.average2;
    m_strAverage3 = head.average3;
}

/// Of the nine levels those from `m_nLevel` on; all of them for a level below 1, none above 9.
CString CSquareGraph::LevelSum(const Day& day) const {
    double sum = 0;
    for (int level = std::max(m_nLevel, 1); level <= melkar::kLevels; ++level)
        if (const double count = day.levels[static_cast<std::size_t>(level - 1)]; count > 0)
            sum += count;
    return melkar::FormatFixed(sum * melkar::kMinutesPerCount, 1);
}

void CSquareGraph::TakeDay(const Day& day, const Head& head) {
    m_saDayLevelSum.Add(LevelSum(day));
    m_strTarget1 = head.HasTargets() ? head.target1 : day.target1;
    if (head.HasTargets())
        m_strTarget2 = head.target2;
    else
        m_strTarget2 = day.hasTarget2 == "0" ? head.laterTarget2 : day.target2;
}

melkar::DataTables CSquareGraph::DataFiles() { return {melkar::TableOf<HeadColumns, File, DayColumns>()}; }

long CSquareGraph::ReadDataFile(char* path) {
    return melkar::ReadGuarded([&] {
        const melkar::HostDirectory here(Host());
        melkar::LogText("CSquareGraph::ReadDataFile");
        m_nLeftUpperCount = m_nLeftLowerCount = m_nRightUpperCount = m_nRightLowerCount = 0;
        melkar::DataFile file(path);
        if (!file.IsOpen())
            return melkar::kNoFile;
        ClearArrays();
        m_dwaStatus.RemoveAll();
        CSquareGraph::ClearArrays();
        Head head;
        melkar::ReadHeads<HeadColumns>(head, file);
        head.Settle();
        TakeHead(head);
        Day day;
        melkar::ReadRows<File>(*this, file, [&](const melkar::CsvRow& line) {
            melkar::TakeRow<DayColumns>(day, line);
            TakeDay(day, head);
        });
        return melkar::kOk;
    });
}

struct CSquareGraph::Cycle : melkar::Steps<CSquareGraph> {
    static constexpr Step steps[] = {
        Do<&G::ReadDataFile>,         Do<&G::GetGraphMeasure>,
        {Do<&G::BeginCycle>, Needed}, {Do<&G::DrawNoRecordsMessage>, LastIfPainted},
        Do<&G::DrawCanvas>,           Do<&G::DrawTargetAverage>,
        Do<&G::DrawPoints>,           Do<&G::DrawVAxsLabel>,
        Do<&G::DrawHAxsLabel>,        Do<&G::DrawSecExs>,
        Do<&G::DrawNoDataMessage>,    Do<&G::DrawExcludeMessage>,
    };
};

long CSquareGraph::Draw(CRect area, char* path) { return melkar::RunCycle(*this, Cycle::steps, area, path); }

long CSquareGraph::GetGraphMeasure() { return 0; }
