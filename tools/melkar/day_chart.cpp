#include "day_chart.h"

#include <MelkarCommon/circadian/weekly_circadian.h>
#include <MelkarCommon/frame/results.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace melkar::tool {
namespace {

/// Reads a weekly file and hands one of its days to a sheet of its own.
class DayPicker final : public CWeeklyCircadian {
public:
    DayPicker(CCircadianGraph& sheet, const ChartOptions& options)
        : CWeeklyCircadian(nullptr, nullptr, options.section.c_str(), nullptr, nullptr, nullptr), m_sheet(sheet),
          m_date(options.date) {}

    long SetDayData(int day, double from, double to, CString date, int status, int steps, int actCal, int totalCal,
                    double time, CStringArray* events, CStringArray* levels, double* intensity, int toroken,
                    float exercise) override {
        if (m_isFound || (!m_date.empty() && date != m_date.c_str()))
            return 0;
        m_isFound = true;
        m_sheet.Set(nullptr, nullptr, m_rcDay, "", "", from, to, levels, date, day, 0, events, intensity, status, steps,
                    actCal, totalCal, time, toroken, exercise);
        return 0;
    }
    bool IsFound() const { return m_isFound; }

private:
    CCircadianGraph& m_sheet;
    const std::string& m_date;
    bool m_isFound = false;
};

/// The sheet of one day of a weekly file: the day of the date asked for, else the first.
class Day final : public CCircadianGraph, public Chart {
public:
    explicit Day(ChartOptions options)
        : CCircadianGraph(nullptr, nullptr, options.section.c_str(), nullptr, nullptr, nullptr),
          m_options(std::move(options)) {}

    long Read(char* path) override {
        DayPicker picker(*this, m_options);
        const long code = picker.ReadDataFile(path);
        if (code == kOk && !picker.IsFound())
            throw std::runtime_error("the data file has no such day: " + m_options.date);
        return code;
    }

    void Bind(const Surfaces& surfaces) override {
        Initialize(nullptr, surfaces.dc, surfaces.shared, surfaces.second, surfaces.balloon);
        SetDirectOutput(surfaces.isDirect);
    }

    long Paint(const CRect& area, char* path) override { return Draw(area, path); }

private:
    ChartOptions m_options;
};

} // namespace

std::unique_ptr<Chart> MakeDay(const ChartOptions& options) { return std::make_unique<Day>(options); }

} // namespace melkar::tool
