// Panels redrawn with other points, or other slices, at each turn.

#include "bench_support.h"

namespace {

constexpr int kPoints = 20;

/// Twenty points of their own for each drawing.
class Curve : public CPlotGraph {
public:
    using CPlotGraph::CPlotGraph;

    long ReadPlotDataFile(char*) override {
        m_vecPlots.clear();
        ++m_turn;
        for (int i = 0; i < kPoints; ++i)
            AddPlot(
                CPlot(i * 12.0F / kPoints, 70.0F + static_cast<float>((i * 7 + m_turn) % 9), 12, RGB(38, 70, 104), 1));
        return 0;
    }

private:
    int m_turn = 0;
};

void PanelWithTwoScalesAndPoints(benchmark::State& state) {
    BenchDirectory::Instance();
    Host host;
    Curve graph(nullptr, host.shared, "PANEL_SCALES", host.shared, host.second, host.balloon);
    Floor floor;
    char none[] = "";
    MeasureAgainst(
        state,
        [&] {
            graph.Draw(CRect(0, 0, kWidth, kHeight), none, none);
            graph.BitBlt();
        },
        [&] { floor.Run(); });
}
BENCHMARK(PanelWithTwoScalesAndPoints)->UseManualTime()->Unit(benchmark::kMicrosecond);

void Pie(benchmark::State& state) {
    BenchDirectory::Instance();
    Host host;
    CCircleGraphBase pie(nullptr, host.shared, "PIE_MINUTES", host.shared, host.second, host.balloon, 0.03F);
    Floor floor;
    char none[] = "";
    int turn = 0;
    MeasureAgainst(
        state,
        [&] {
            ++turn;
            pie.SetValue(static_cast<float>(210 + turn % 37), 0);
            pie.SetValue(static_cast<float>(60 + turn % 11), 1);
            pie.SetValue(static_cast<float>(20 + turn % 5), 2);
            pie.Draw(CRect(0, 0, kWidth, kHeight), none);
            pie.BitBlt();
        },
        [&] { floor.Run(); });
}
BENCHMARK(Pie)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
