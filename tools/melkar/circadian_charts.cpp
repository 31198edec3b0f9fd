#include "circadian_charts.h"

#include <printed_weeks.h>

#include <MelkarCommon/circadian/circle_graph.h>
#include <MelkarCommon/circadian/weekly_circadian.h>

#include <fstream>
#include <string>

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

class Circle : public CCircleGraph, public Chart {
public:
    explicit Circle(const ChartOptions& options)
        : CCircleGraph(nullptr, nullptr, options.section.c_str(), nullptr, nullptr, nullptr) {
        m_nModerateFrom = options.moderateFrom;
        m_nModerateTo = options.moderateTo;
    }

    long Read(char* path) override {
        constexpr long kNoFile = 101;
        std::ifstream file(path);
        if (!file)
            return kNoFile;
        CStringArray levels;
        for (std::string line; std::getline(file, line);)
            levels.Add(line.c_str());
        return SetData(&levels);
    }

    void Bind(const Surfaces& surfaces) override {
        Initialize(nullptr, surfaces.dc, surfaces.shared, surfaces.second, surfaces.balloon);
        SetDirectOutput(surfaces.isDirect);
    }

    long Paint(const CRect& area, char* path) override { return Draw(area, path); }
};

class SeparateCircle final : public Circle {
public:
    using Circle::Circle;
    long Paint(const CRect& area, char* path) override { return DrawSeparate(area, path); }
};

} // namespace

std::unique_ptr<Chart> MakeWeek(const ChartOptions& options) { return std::make_unique<Week>(options); }
std::unique_ptr<Chart> MakePrintedWeek(const ChartOptions& options) { return std::make_unique<PrintedWeek>(options); }
std::unique_ptr<Chart> MakeCircle(const ChartOptions& options) { return std::make_unique<Circle>(options); }
std::unique_ptr<Chart> MakeSeparateCircle(const ChartOptions& options) {
    return std::make_unique<SeparateCircle>(options);
}

} // namespace melkar::tool
