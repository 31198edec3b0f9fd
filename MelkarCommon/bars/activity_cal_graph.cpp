#include <MelkarCommon/bars/activity_cal_graph.h>

#include <MelkarCommon/bars/day_file.h>
#include <MelkarCommon/platform/desktop.h>
#include <MelkarCommon/support/ring_log.h>
#include <MelkarCommon/support/support.h>

using melkar::CsvRow;

namespace {

constexpr int kSmallDesktop = 820; ///< pixels
constexpr int kSmallerDates = 3;   ///< points

} // namespace

CActivityCalGraph::CActivityCalGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CExpenditureGraph(window, dc, section, shared, second, balloon) {
    m_nSeriesCount = 1;
    m_bPrintTarget = 1;
    m_bLines = 0;
    m_nLineCount = 0;
    m_bClickEnabled = 0;
    CRect desktop; // like the size from the profile it may hold anything: differences end at the edge of an int
    if (SystemParametersInfoA(SPI_GETWORKAREA, 0, &desktop, 0) && desktop.Width() <= kSmallDesktop)
        m_nDateSize = melkar::SubtractEdge(m_nDateSize, kSmallerDates);
}

long CActivityCalGraph::ReadDataFile(char* path) {
    enum { Average = 2 };                                        // of the third row
    enum { FirstDay = 1, LastDay = 2, Target = 9, Figure = 11 }; // of a slot
    return melkar::ReadGuarded([&] {
        melkar::LogText("CActivityCalGraph::ReadDataFile");
        ResetGraphMeasure();
        melkar::DataFile file(path);
        if (!file.IsOpen())
            return melkar::kNoFile;
        ForgetPeriod();
        file.Head(melkar::kHeadLimit);
        TakeHeaderFields(file.Head(melkar::kHeadLimit));
        m_strAverageIntake = "0";
        RepairChartMax();
        m_strAverage = file.Head(melkar::kHeadLimit).Field(Average);

        const CString format = melkar::DateFormat(m_strDateFormatType); // one look at the date profile for all days
        const auto dateText = [&](const CString& day) { return ::FormatDate(day, format, m_strLocale); };
        const long result = melkar::ReadDays(file, [&](const CsvRow& row) {
            const bool hasFigures = AddDay(row);
            const CString first = row.Field(FirstDay);
            const CString last = row.Field(LastDay);
            const bool isOneDay = first == last;
            m_saDates.SetAt(Days() - 1,
                            isOneDay ? dateText(first) : " " + dateText(first) + m_strDateFormatSpan + dateText(last));
            m_saTargets.Add(row.Field(Target));
            m_saValues.Add(hasFigures ? row.Field(Figure) : CString());
        });
        if (result == melkar::kOk)
            GetGraphMeasure();
        return result;
    });
}

void CActivityCalGraph::DrawSecExs() {}
