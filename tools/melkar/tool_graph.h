#pragma once

#include "kinds.h"

#include <MelkarCommon/bars/bar_graph.h>

#include <concepts>
#include <utility>

namespace melkar::tool {

/// A graph with what a host adds by deriving from it: more series, a target, figures switched off.
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

    /// Adds the target to the days just read, since most data files carry none.
    long ReadDataFile(char* path) override {
        const long result = G::ReadDataFile(path);
        if constexpr (kHasBars) {
            for (int day = 0; !m_options.target.empty() && day < this->m_saDates.GetSize(); ++day)
                this->m_saTargets.SetAtGrow(day, m_options.target.c_str());
        }
        return result;
    }

    CGraph& Graph() override { return *this; }

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

    /// The colours of the series are keys of the profile, one for each series: they are read anew for the new number.
    void RaiseSeries() {
        this->m_nSeriesCount = m_options.series;
        char profile[] = "..\\conf\\graph.cnf";
        G::ReadIniFile(profile);
    }

    ChartOptions m_options;
};

} // namespace melkar::tool
