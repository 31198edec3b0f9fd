#include "circadian_charts.h"

#include <MelkarCommon/circadian/circle_graph.h>
#include <MelkarCommon/circadian/weekly_circadian.h>

#include <fstream>
#include <string>
#include <utility>

namespace melkar::tool {
namespace {

constexpr int kDaysOfWeek = 7;
constexpr int kEighthLine = 8; ///< ends a week in the print file
constexpr long kNothingToPrint = -1;

class Week : public CWeeklyCircadian, public Chart {
public:
    explicit Week(const ChartOptions& options)
        : CWeeklyCircadian(nullptr, nullptr, options.section.c_str(), nullptr, nullptr, nullptr) {}

    long Read(char* path) override { return ReadDataFile(path); }

    void Bind(const Surfaces& surfaces) override {
        Initialize(nullptr, surfaces.dc, surfaces.shared, surfaces.second, surfaces.balloon);
        for (CCircadianGraph& day : m_Day)
            day.SetDirectOutput(surfaces.isDirect);
    }

    long Paint(const CRect& area, char* path) override { return Draw(area, path); }
};

/// The library prints the page in which a file ends. This host keeps all its weeks in one file: a page whose eighth
/// line was read is a whole week.
class PrintedWeek final : public Week {
public:
    explicit PrintedWeek(const ChartOptions& options) : Week(options), m_page(options.page) {}

    long Read(char* path) override {
        const long count = ReadWeekDataFile(path, m_page);
        return count >= 0 && count <= kDaysOfWeek ? 0 : count;
    }
    long Paint(const CRect& area, char* path) override { return DrawWeek(area, path, m_page); }

    long ReadWeekDataFile(char* file, int page) override {
        m_weeksRead = 0;
        const long count = CWeeklyCircadian::ReadWeekDataFile(file, page);
        const bool isWhole = m_weeksRead > page && page >= 0;
        return count == kNothingToPrint && isWhole ? kDaysOfWeek : count;
    }

    long SetDayData(int day, double from, double to, CString date, int status, int steps, int actCal, int totalCal,
                    double time, CStringArray* events, CStringArray* levels, double* intensity, int toroken,
                    float exercise) override {
        m_weeksRead += day == kEighthLine;
        return Week::SetDayData(day, from, to, std::move(date), status, steps, actCal, totalCal, time, events, levels,
                                intensity, toroken, exercise);
    }

private:
    int m_page;
    int m_weeksRead = 0;
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
