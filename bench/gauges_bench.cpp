// Gauges and the quadrant graph redrawn with changed figures.

#include "bench_support.h"

#include <quadrant_days.h>

#include <string>

namespace {

constexpr int kFiles = 64; ///< more figures than any cache of texts holds

template <class Graph> void RedrawAll(benchmark::State& state, const char* section, const std::string& name,
                                      const std::function<std::string(int file)>& content) {
    std::vector<std::string> paths;
    for (int file = 0; file < kFiles; ++file)
        paths.push_back(BenchDirectory::Instance().Write(name + std::to_string(file) + ".csv", content(file)));
    Host host;
    Graph graph(nullptr, host.shared, section, host.shared, host.second, host.balloon);
    std::size_t next = 0;
    Floor floor;
    MeasureAgainst(
        state, [&] { graph.Draw(CRect(0, 0, kWidth, kHeight), paths[next++ % paths.size()].data()); },
        [&] { floor.Run(); });
}

void BmiGauge(benchmark::State& state) {
    RedrawAll<CBMIGraph_Eng>(state, "BMI", "bmi",
                             [](int file) { return "head\n" + std::to_string(16 + file * 0.4) + "\n"; });
}
BENCHMARK(BmiGauge)->UseManualTime()->Unit(benchmark::kMicrosecond);

void ObesityGauge(benchmark::State& state) {
    RedrawAll<CHimandGraph>(state, "HIMAND", "himand",
                            [](int file) { return "head\n" + std::to_string(file - 30) + ".5\n"; });
}
BENCHMARK(ObesityGauge)->UseManualTime()->Unit(benchmark::kMicrosecond);

/// A month whose days move and whose shares change.
void QuadrantMonth(benchmark::State& state) {
    RedrawAll<CQuadrantDays>(state, "QUADRANT", "quadrant", [](int file) {
        std::string content = "20260301,20260331,,,,,,8000,20,brisk,4,,,,,1\n\n,8000,,,20.0\n";
        for (int day = 1; day <= 31; ++day) {
            const int steps = 3000 + (day * 977 + file * 131) % 11000;
            content += "0,,,20,," + std::to_string(steps) + ",,,,8000,,190,,,,4000,2000,1000," +
                       std::to_string(steps / 30) + ",90,30,10,0,0,,,\n";
        }
        return content;
    });
}
BENCHMARK(QuadrantMonth)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
