#pragma once

#include "kinds.h"

#include <MelkarCommon/circadian/circadian_graph.h>

#include <string>
#include <utility>

namespace melkar::tool {

/// The sheet of one day of a weekly file: the day of the date asked for, else the first.
class DayChart final : public CCircadianGraph, public Chart {
public:
    explicit DayChart(ChartOptions options)
        : CCircadianGraph(nullptr, nullptr, options.section.c_str(), nullptr, nullptr, nullptr),
          m_options(std::move(options)) {}

    /// @return 0; 101 if the file can't be opened. Throws if it has no such day.
    long Read(char* path) override;

    void Bind(const Surfaces& surfaces) override {
        Initialize(nullptr, surfaces.dc, surfaces.shared, surfaces.second, surfaces.balloon);
        SetDirectOutput(surfaces.isDirect);
    }

    long Paint(const CRect& area, char* path) override { return Draw(area, path); }

private:
    void TakeDay(const char* line);

    ChartOptions m_options;
};

} // namespace melkar::tool
