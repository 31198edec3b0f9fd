#include <MelkarCommon/quadrant/square_graph.h>

#include <MelkarCommon/frame/data_file.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/quadrant/quadrant_layout.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/ring_log.h>

#include <algorithm>

using melkar::CsvRow;

namespace {

constexpr std::size_t kLineLimit = 6399; ///< characters, line end included
constexpr int kTitleSpace = 5;           ///< half title heights above the canvas
constexpr int kMessageSize = 24;         ///< points

constexpr int kLevels = 9;
constexpr double kPerCount = 1.0 / 15;

// Columns of the head rows
struct First {
    enum { Target1 = 7, Target2, LevelName, Level, IsFixed = 15 };
};
struct Second {
    enum { Target1 = 5, Target2, IsFixed = 9, LevelName = 20, Level };
};
struct Third {
    enum { Average1 = 1, Average3, Average2 = 4 };
};

} // namespace

struct CSquareGraph::KeyRows : melkar::Keys<CSquareGraph> {
    static constexpr Row rows[] = {
        Number<&G::m_nPointSize>(Own, "POINTSIZE", 0, "marks, points"),
        Text<&G::m_strPoint>(Own, "POINT", "mark of a day"),
        Text<&G::m_strAveragePoint>(Own, "AVE_POINT", "mark of the average").Example("◆"),
        Color<&G::m_crLeftUpper>(Own, "LEFTUPPERR_COLOR_RGB", "left upper quadrant"),
        Color<&G::m_crRightUpper>(Own, "RIHGTUPPER_COLOR_RGB", "right upper quadrant"),
        Color<&G::m_crLeftLower>(Own, "LEFTLOWER_COLOR_RGB", "left lower quadrant"),
        Color<&G::m_crRightLower>(Own, "RIHGTLOWER_COLOR_RGB", "right lower quadrant"),
        Text<&G::m_strLeftUpperLabel>(Own, "LEFTUPPERR_LABEL", "legend of the left upper quadrant"),
        Text<&G::m_strRightUpperLabel>(Own, "RIHGTUPPER_LABEL", "legend of the right upper quadrant"),
        Text<&G::m_strLeftLowerLabel>(Own, "LEFTLOWER_LABEL", "legend of the left lower quadrant"),
        Text<&G::m_strRightLowerLabel>(Own, "RIHGTLOWER_LABEL", "legend of the right lower quadrant"),
        Text<&G::m_strVAxsLabel>(Own, "VAXSLABEL", "vertical caption; `__d__` stands for the level number"),
        Text<&G::m_strHAxsLabel>(Own, "HAXSLABEL", "horizontal caption"),
        Number<&G::m_nVAxsSize>(Own, "VAXSSIZE", 0, "all texts but the marks, points"),
        Number<&G::m_nHAxsSize>(Own, "HAXSSIZE", 0, "kept; no painting uses it"),
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

/// The pair that holds for all days, and what stands in for a day's second target.
struct CSquareGraph::Targets {
    CString fixed1, fixed2;
    CString substitute;

    bool AreFixed() const { return !fixed1.IsEmpty(); }
};

CSquareGraph::Targets CSquareGraph::TakeHead(melkar::DataFile& file) {
    Targets targets;
    const CsvRow& first = file.Head(kLineLimit);
    const bool firstHasPair = !first.Field(First::Target1).IsEmpty();
    if (firstHasPair && first.Field(First::IsFixed) == "1") {
        targets.fixed1 = first.Field(First::Target1);
        targets.fixed2 = first.Field(First::Target2);
    }
    m_strLevelName = first.Field(First::LevelName);
    m_nLevel = first.IntField(First::Level);

    const CsvRow& second = file.Head(kLineLimit);
    if (m_strLevelName.IsEmpty()) {
        m_strLevelName = second.Field(Second::LevelName);
        m_nLevel = second.IntField(Second::Level);
    }
    if (!firstHasPair && second.Field(Second::IsFixed) != "0") {
        targets.fixed1 = second.Field(Second::Target1);
        targets.fixed2 = second.Field(Second::Target2);
    }
    targets.substitute = second.Field(Second::Target2);

    const CsvRow& third = file.Head(kLineLimit);
    m_strAverage1 = third.Field(Third::Average1);
    m_strAverage2 = third.Field(Third::Average2);
    m_strAverage3 = third.Field(Third::Average3);
    return targets;
}

/// Of the nine levels those from `m_nLevel` on; all of them for a level below 1, none above 9.
CString CSquareGraph::LevelSum(const CsvRow& row) const {
    enum { FirstLevel = 15 };
    double sum = 0;
    for (int level = std::max(m_nLevel, 1); level <= kLevels; ++level) {
        const double count = melkar::ToDouble(row.Field(FirstLevel + level - 1));
        if (count > 0)
            sum += count;
    }
    return melkar::FormatFixed(sum * kPerCount, 1);
}

void CSquareGraph::TakeDay(const CsvRow& row, const Targets& targets) {
    enum { Status, Target2 = 3, Kept5 = 5, Target1 = 9, Kept11 = 11, HasTarget2 = 26 };
    m_dwaStatus.Add(static_cast<DWORD>(row.IntField(Status)));
    m_saDayField5.Add(row.Field(Kept5));
    m_saDayField11.Add(row.Field(Kept11));
    m_saDayLevelSum.Add(LevelSum(row));
    m_strTarget1 = targets.AreFixed() ? targets.fixed1 : row.Field(Target1);
    if (targets.AreFixed())
        m_strTarget2 = targets.fixed2;
    else
        m_strTarget2 = row.Field(HasTarget2) == "0" ? targets.substitute : row.Field(Target2);
}

long CSquareGraph::ReadDataFile(char* path) {
    return melkar::ReadGuarded([&] {
        melkar::LogText("CSquareGraph::ReadDataFile");
        m_nLeftUpperCount = m_nLeftLowerCount = m_nRightUpperCount = m_nRightLowerCount = 0;
        melkar::DataFile file(path);
        if (!file.IsOpen())
            return melkar::kNoFile;
        ClearArrays();
        m_dwaStatus.RemoveAll();
        CSquareGraph::ClearArrays();
        const Targets targets = TakeHead(file);
        while (const CsvRow* row = file.Next(kLineLimit))
            TakeDay(*row, targets);
        return melkar::kOk;
    });
}

struct CSquareGraph::Cycle : melkar::Steps<CSquareGraph> {
    static constexpr Step steps[] = {
        &G::ReadDataFile,  &G::GetGraphMeasure,   {&G::BeginCycle, Needed}, {&G::DrawNoRecordsMessage, LastIfPainted},
        &G::DrawCanvas,    &G::DrawTargetAverage, &G::DrawPoints,           &G::DrawVAxsLabel,
        &G::DrawHAxsLabel, &G::DrawSecExs,        &G::DrawNoDataMessage,    &G::DrawExcludeMessage,
    };
};

long CSquareGraph::Draw(CRect area, char* path) { return melkar::RunCycle(*this, Cycle::steps, area, path); }

long CSquareGraph::GetGraphMeasure() { return 0; }
