#include "day_chart.h"

#include <MelkarCommon/circadian/circadian_layout.h>
#include <MelkarCommon/support/fields.h>
#include <MelkarCommon/support/numbers.h>

#include <array>
#include <fstream>
#include <stdexcept>

namespace melkar::tool {
namespace {

constexpr int kHeadLines = 3;
constexpr long kNoFile = 101;
constexpr double kUnitsAMinute = 15; ///< times in the file count fifteenths of a minute

enum Column : int {
    kStatus = 0,
    kDate = 1,
    kSteps = 5,
    kTime = 8,
    kActCal = 11,
    kTotalCal = 12,
    kFirstLevel = 15,
    kFirstEvent = 54,
    kFirstIntensity = 64,
    kToroken = 784,
    kExercise = 785,
};
constexpr int kEvents = 10;

CString MinutesOf(const CString& units) {
    const double value = ToDouble(units);
    return value < 0 ? CString("0") : FormatFixed(value / kUnitsAMinute, 3);
}

/// A value off the scale is rest.
double IntensityOf(const CString& field) {
    const double value = ToDouble(field);
    return value >= 0 && value <= kLevels ? value : 0;
}

} // namespace

long DayChart::Read(char* path) {
    std::ifstream file(path);
    if (!file)
        return kNoFile;
    std::string line;
    for (int head = 0; head < kHeadLines; ++head)
        std::getline(file, line);
    while (std::getline(file, line)) {
        if (m_options.date.empty() || getCSV(line.c_str(), kDate) == m_options.date.c_str()) {
            TakeDay(line.c_str());
            return 0;
        }
    }
    throw std::runtime_error("the data file has no such day: " + m_options.date);
}

void DayChart::TakeDay(const char* line) {
    const CsvRow row(line);
    CStringArray levels;
    for (int level = 0; level < kLevels; ++level)
        levels.Add(MinutesOf(row.Field(kFirstLevel + level)));
    CStringArray events;
    for (int event = 0; event < kEvents; ++event)
        events.Add(row.Field(kFirstEvent + event));
    std::array<double, kValues> intensity;
    for (int i = 0; i < kValues; ++i)
        intensity[static_cast<std::size_t>(i)] = IntensityOf(row.Field(kFirstIntensity + i));
    const ClassBounds bounds = UsualBounds(m_nLang);
    Set(m_hWnd, m_hDC, m_rcGraph, "", "", bounds.from, bounds.to, &levels, row.Field(kDate), 0, 0, &events,
        intensity.data(), row.IntField(kStatus), row.IntField(kSteps), row.IntField(kActCal), row.IntField(kTotalCal),
        ToDouble(row.Field(kTime)) / kUnitsAMinute, row.IntField(kToroken),
        static_cast<float>(ToDouble(row.Field(kExercise))));
}

} // namespace melkar::tool
