#pragma once

#include "kinds.h"

#include <MelkarCommon/bars/line_graph.h>
#include <MelkarCommon/support/fields.h>

#include <concepts>
#include <fstream>
#include <string>
#include <utility>

namespace melkar::tool {

/// A graph with what a host adds by deriving from it: more series, a target, line values, figures switched off.
template <class G> class ToolGraph final : public G, public Chart {
public:
    explicit ToolGraph(ChartOptions options)
        : G(nullptr, nullptr, options.section.data(), nullptr, nullptr, nullptr), m_options(std::move(options)) {
        if constexpr (kHasBars) {
            if (m_options.series > 0)
                RaiseSeries();
            if (!m_options.figures)
                this->m_bValueOnBar = 0;
        }
    }

    long ReadDataFile(char* path) override {
        const long result = G::ReadDataFile(path);
        if constexpr (kHasBars) {
            if (!m_options.target.empty())
                SetTargets();
        }
        if constexpr (std::same_as<G, CLineGraph>) {
            if (result == 0)
                ReadLines(path);
        }
        return result;
    }

    long Read(char* path) override { return this->ReadDataFile(path); }

    void Bind(const Surfaces& surfaces) override {
        this->Initialize(nullptr, surfaces.dc, surfaces.shared, surfaces.second, surfaces.balloon);
        this->SetDirectOutput(surfaces.isDirect);
    }

    long Paint(const CRect& area, char* path) override { return this->Draw(area, path); }

    long Click([[maybe_unused]] CPoint point) override {
        if constexpr (kHasBars)
            return this->OnClick(point);
        return -1;
    }

    void Hover([[maybe_unused]] CPoint point) override {
        if constexpr (kHasBars)
            this->OnMouseMove(point);
    }

    std::string DateOf(long day) const override {
        if (day < 0 || day >= this->m_saDates.GetSize())
            return {};
        return static_cast<const char*>(this->m_saDates.GetAt(static_cast<int>(day)));
    }

private:
    static constexpr bool kHasBars = std::derived_from<G, CBarGraph>;

    /// One target for the days just read, since most data files carry none.
    void SetTargets() {
        for (int day = 0; day < this->m_saDates.GetSize(); ++day)
            this->m_saTargets.SetAtGrow(day, m_options.target.c_str());
    }

    /// The line values of a day stand behind its series; the library leaves them to the host.
    void ReadLines(const char* path) {
        constexpr int kHeadRows = 2;
        const int first = 2 + this->m_nSeriesCount;
        std::ifstream file(path);
        std::string row;
        this->m_saLineValues.RemoveAll();
        for (int i = -kHeadRows; std::getline(file, row); ++i) {
            for (int line = 0; i >= 0 && line < this->m_nLineCount; ++line)
                this->m_saLineValues.Add(getCSV(row.c_str(), first + line));
        }
    }

    /// The colours of the series are keys of the profile, one for each series: they are read anew for the new number.
    void RaiseSeries() {
        this->m_nSeriesCount = m_options.series;
        char profile[] = "..\\conf\\graph.cnf";
        G::ReadIniFile(profile);
    }

    ChartOptions m_options;
};

} // namespace melkar::tool
