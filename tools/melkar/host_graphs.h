#pragma once

#include "kinds.h"

#include <quadrant_days.h>

#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/declarative/fixed_text.h>
#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/registry/from_file.h>

#include <stdexcept>
#include <string>
#include <utility>

/// @file
/// Graphs with what a host decides, by deriving from them or by handing it over.

namespace melkar::tool {

/// More series, a target, figures switched off.
template <class G> class HostBars final : public G {
public:
    explicit HostBars(ChartOptions options)
        : G(nullptr, nullptr, options.section.data(), nullptr, nullptr, nullptr), m_options(std::move(options)) {
        if (m_options.series > 0)
            RaiseSeries();
        if (!m_options.figures)
            this->m_bValueOnBar = 0;
    }

    long ReadDataFile(char* path) override {
        const long result = G::ReadDataFile(path);
        if (!m_options.target.empty())
            SetTargets();
        return result;
    }

private:
    /// One target for the days just read, since most data files carry none.
    void SetTargets() {
        for (int day = 0; day < this->m_saDates.GetSize(); ++day)
            this->m_saTargets.SetAtGrow(day, m_options.target.c_str());
    }

    /// The colours of the series are keys of the profile, one for each series: they are read anew for the new number.
    void RaiseSeries() {
        this->m_nSeriesCount = m_options.series;
        char profile[] = "..\\conf\\graph.cnf";
        G::ReadIniFile(profile);
    }

    ChartOptions m_options;
};

/// The day of a date.
class HostDay final : public DayFromFile {
public:
    explicit HostDay(const ChartOptions& options)
        : DayFromFile(nullptr, nullptr, options.section.c_str(), nullptr, nullptr, nullptr), m_date(options.date) {
        SetDate(m_date.c_str());
    }

    /// A date that isn't in the file is no picture of a day without figures.
    long ReadDataFile(char* path) override {
        const long result = DayFromFile::ReadDataFile(path);
        return result != kNoDays ? result : throw std::runtime_error("the data file has no such day: " + m_date);
    }

private:
    std::string m_date;
};

/// Bounds of the moderate class.
template <class G> class HostCircle final : public G {
public:
    explicit HostCircle(const ChartOptions& options)
        : G(nullptr, nullptr, options.section.c_str(), nullptr, nullptr, nullptr) {
        this->m_nModerateFrom = options.moderateFrom;
        this->m_nModerateTo = options.moderateTo;
    }
};

/// The example that hosts are shown.
class HostQuadrant final : public CQuadrantDays {
public:
    explicit HostQuadrant(const ChartOptions& options)
        : CQuadrantDays(nullptr, nullptr, options.section.c_str(), nullptr, nullptr, nullptr) {}
};

/// The text of any key.
class HostText final : public CFixedText {
public:
    explicit HostText(const ChartOptions& options)
        : CFixedText(nullptr, nullptr, options.section.c_str(), options.key.c_str(), nullptr, nullptr, nullptr,
                     DT_VCENTER, kMargin) {}

private:
    static constexpr int kMargin = 8;
};

} // namespace melkar::tool
