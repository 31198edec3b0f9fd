#pragma once

#include "kinds.h"

#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/registry/shown_by.h>

#include <utility>

namespace melkar::tool {

/// A graph as any host draws it.
class GraphChart final : public Chart {
public:
    explicit GraphChart(std::unique_ptr<CGraph> graph) : m_graph(std::move(graph)) {}

    long Read(char* path) override { return m_graph->ReadDataFile(path); }

    void Bind(const Surfaces& surfaces) override {
        m_graph->Initialize(nullptr, surfaces.dc, surfaces.shared, surfaces.second, surfaces.balloon);
        m_graph->SetDirectOutput(surfaces.isDirect);
    }

    long Paint(const CRect& area, char* path) override { return m_graph->Draw(area, path); }

    long Click(CPoint point) override { return Bars() ? Bars()->OnClick(point) : -1; }

    bool HasBalloons() const override { return Bars() != nullptr; }
    bool Hover(CPoint point) override { return Bars() && Bars()->OnMouseMove(point) >= 0; }

    std::string DateOf(long day) const override {
        return static_cast<const char*>(m_graph->m_saDates[static_cast<int>(day)]);
    }

    std::vector<Contents> Shown() const override { return {ShownBy(*m_graph)}; }

private:
    CBarGraph* Bars() const { return dynamic_cast<CBarGraph*>(m_graph.get()); }

    std::unique_ptr<CGraph> m_graph;
};

} // namespace melkar::tool
