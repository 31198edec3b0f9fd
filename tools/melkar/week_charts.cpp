#include "week_charts.h"

#include <printed_weeks.h>

#include <MelkarCommon/circadian/weekly_circadian.h>
#include <MelkarCommon/registry/shown_by.h>

namespace melkar::tool {
namespace {

constexpr long kDaysOfWeek = 7;

template <class Sheets> class SheetsChart : public Sheets, public Chart {
public:
    explicit SheetsChart(const ChartOptions& options)
        : Sheets(nullptr, nullptr, options.section.c_str(), nullptr, nullptr, nullptr) {}

    void Bind(const Surfaces& surfaces) override {
        this->Initialize(nullptr, surfaces.dc, surfaces.shared, surfaces.second, surfaces.balloon);
        for (CCircadianGraph& day : this->m_Day)
            day.SetDirectOutput(surfaces.isDirect);
    }

    std::vector<Contents> Shown() const override { return ShownBy(*this); }
};

class Week final : public SheetsChart<CWeeklyCircadian> {
public:
    using SheetsChart::SheetsChart;
    long Read(char* path) override { return ReadDataFile(path); }
    long Paint(const CRect& area, char* path) override { return Draw(area, path); }
};

/// One of the weeks that a file holds.
class PrintedWeek final : public SheetsChart<CPrintedWeeks> {
public:
    explicit PrintedWeek(const ChartOptions& options) : SheetsChart(options), m_page(options.page) {}

    long Read(char* path) override {
        const long count = ReadWeekDataFile(path, m_page);
        return count >= 0 && count <= kDaysOfWeek ? 0 : count;
    }
    long Paint(const CRect& area, char* path) override { return DrawWeek(area, path, m_page); }

private:
    int m_page;
};

} // namespace

std::unique_ptr<Chart> MakeWeek(const ChartOptions& options) { return std::make_unique<Week>(options); }
std::unique_ptr<Chart> MakePrintedWeek(const ChartOptions& options) { return std::make_unique<PrintedWeek>(options); }

} // namespace melkar::tool
