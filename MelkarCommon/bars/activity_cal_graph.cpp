#include <MelkarCommon/bars/activity_cal_graph.h>

#include <MelkarCommon/frame/data_table.h>
#include <MelkarCommon/support/dates.h>
#include <MelkarCommon/support/ring_log.h>
#include <MelkarCommon/support/support.h>

namespace {

constexpr int kSmallerDates = 3; ///< points

} // namespace

struct CActivityCalGraph::File : melkar::Columns<CActivityCalGraph> {
    static constexpr Form form{3, "day or period"};
    static constexpr Row rows[] = {
        Text<&G::m_strHeaderField0>(0, "first").Means("kept for a host").InHead(1).Example("20260302"),
        Text<&G::m_strHeaderField1>(1, "last").Means("kept for a host").InHead(1).Example("20260308"),
        Figure<&G::m_strAverage>(2, "average", "kcal").Means("the average line").InHead(2).Example("375"),
        DayStatus(0),
        Figure<&G::m_saTargets>(9, "target", "kcal").Example("350"),
        Figure<&G::m_saValues>(11, "figure", "kcal")
            .OnScale("CHARTMAX", "CHARTMAX_BIG")
            .WithFigures()
            .Needed()
            .Example("493|311|388|290|412|505|270"),
    };
};

/// The slot of a bar.
struct CActivityCalGraph::Period {
    CString first;
    CString last;
};

struct CActivityCalGraph::PeriodColumns : melkar::Columns<Period> {
    static constexpr Row rows[] = {
        Date<&G::first>(1, "first").Means("first day of the period").Needed(),
        Date<&G::last>(2, "last").Means("its last day").Needed(),
    };
};

melkar::DataTables CActivityCalGraph::DataFiles() { return {melkar::TableOf<File, PeriodColumns>()}; }

CActivityCalGraph::CActivityCalGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CExpenditureGraph(window, dc, section, shared, second, balloon) {
    m_nSeriesCount = 1;
    m_bPrintTarget = 1;
    m_bLines = 0;
    m_nLineCount = 0;
    m_bClickEnabled = 0;
    if (IsDesktopNarrow())
        m_nDateSize = melkar::SubtractEdge(m_nDateSize, kSmallerDates); // the profile may say anything
}

long CActivityCalGraph::ReadDataFile(char* path) {
    return melkar::ReadGuarded([&] {
        const melkar::HostDirectory here(Host());
        melkar::LogText("CActivityCalGraph::ReadDataFile");
        ResetGraphMeasure();
        melkar::DataFile file(path);
        if (!file.IsOpen())
            return melkar::kNoFile;
        ForgetPeriod();
        m_strAverageIntake = "0";
        RepairChartMax();
        melkar::ReadHeads<File>(*this, file);

        const CString format = melkar::DateFormat(m_strDateFormatType); // one look at the date profile for all days
        const auto dateText = [&](const CString& day) { return ::FormatDate(day, format, m_strLocale); };
        Period slot;
        const long result = melkar::ReadRows<File>(*this, file, [&](const melkar::CsvRow& line) {
            melkar::TakeRow<PeriodColumns>(slot, line);
            const auto& [first, last] = slot;
            m_saDates.Add(first == last ? dateText(first)
                                        : " " + dateText(first) + m_strDateFormatSpan + dateText(last));
        });
        if (result == melkar::kOk)
            GetGraphMeasure();
        return result;
    });
}

void CActivityCalGraph::DrawSecExs() {}
