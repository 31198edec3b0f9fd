// A month of the bar family redrawn with changed figures, hovering, and what a constructor reads.

#include "bench_support.h"

#include <random>

namespace {

constexpr int kDays = 31;
constexpr int kFiles = 64; ///< more figures than any cache of texts holds

/// Data files that differ in every figure.
std::vector<std::string> WriteMonths(const std::string& name, const std::string& head,
                                     const std::function<std::string(int day, int figure)>& row) {
    std::mt19937 random(4711);
    std::uniform_int_distribution<int> figures(500, 11500);
    std::vector<std::string> paths;
    for (int file = 0; file < kFiles; ++file) {
        std::string content = head;
        for (int day = 1; day <= kDays; ++day)
            content += row(day, figures(random));
        paths.push_back(BenchDirectory::Instance().Write(name + std::to_string(file) + ".csv", content));
    }
    return paths;
}

std::string Date(int day) { return (day < 10 ? "03/0" : "03/") + std::to_string(day); }
std::string LongDate(int day) { return (day < 10 ? "2026030" : "202603") + std::to_string(day); }

template <class Graph>
void Redraw(benchmark::State& state, const char* section, const std::vector<std::string>& months) {
    Host host;
    Graph graph(nullptr, host.shared, section, host.shared, host.second, host.balloon);
    std::size_t next = 0;
    Floor floor;
    MeasureAgainst(
        state,
        [&] {
            std::string path = months[next++ % months.size()];
            graph.Draw(CRect(0, 0, kWidth, kHeight), path.data());
        },
        [&] { floor.Run(); });
}

void MonthOfBars(benchmark::State& state) {
    Redraw<CBarGraph>(state, "BAR_MONTH", WriteMonths("bar", "head\nhead\n", [](int day, int figure) {
                          return "0," + Date(day) + "," + std::to_string(figure) + "\n";
                      }));
}
BENCHMARK(MonthOfBars)->UseManualTime()->Unit(benchmark::kMicrosecond);

void MonthOfSteps(benchmark::State& state) {
    Redraw<CStepGraph>(state, "STEPS",
                       WriteMonths("steps", "head\n20260301,20260331,,,,,,14000,,7421\n", [](int day, int figure) {
                           return "0," + Date(day) + ",,," + std::to_string(figure) + "\n";
                       }));
}
BENCHMARK(MonthOfSteps)->UseManualTime()->Unit(benchmark::kMicrosecond);

void MonthOfExpenditure(benchmark::State& state) {
    Redraw<CExpenditureGraph>(
        state, "EXPENDITURE",
        WriteMonths("expenditure", "head\n20260301,20260331,2100,,13500,0\n", [](int day, int figure) {
            return "0," + Date(day) + "," + std::to_string(figure + 1500) + ",1500\n";
        }));
}
BENCHMARK(MonthOfExpenditure)->UseManualTime()->Unit(benchmark::kMicrosecond);

void MonthOfSimulation(benchmark::State& state) {
    const auto months = WriteMonths("simulation", "head\n20260301,20260331\n,,600\n", [](int day, int figure) {
        return "0," + LongDate(day) + "," + LongDate(day) + ",,,,,,,600,," + std::to_string(figure / 12) + "\n";
    });
    std::string plan = "head\n20260301,72,,66\n";
    for (int day = 1; day <= kDays; ++day)
        plan += LongDate(day) + "," + std::to_string(71 - day * 0.1) + "," + std::to_string(71 - day * 0.12) + "\n";
    for (int file = 0; file < kFiles; ++file)
        BenchDirectory::Instance().Write("simulation" + std::to_string(file) + ".csv.sim", plan);
    Redraw<CSimulation>(state, "SIMULATION", months);
}
BENCHMARK(MonthOfSimulation)->UseManualTime()->Unit(benchmark::kMicrosecond);

/// Against copying the picture once.
void Hovering(benchmark::State& state) {
    const auto months = WriteMonths("bar", "head\nhead\n", [](int day, int figure) {
        return "0," + Date(day) + "," + std::to_string(figure) + "\n";
    });
    Host host;
    CBarGraph graph(nullptr, host.shared, "BAR_MONTH", host.shared, host.second, host.balloon);
    std::string path = months[0];
    graph.Draw(CRect(0, 0, kWidth, kHeight), path.data());
    BitBlt(host.balloon, 0, 0, kWidth, kHeight, host.shared, 0, 0, SRCCOPY);
    int x = 0;
    MeasureAgainst(
        state,
        [&] {
            x = (x + 7) % kWidth;
            graph.OnMouseMove(CPoint(x, 420));
        },
        [&] { BitBlt(host.shared, 0, 0, kWidth, kHeight, host.balloon, 0, 0, SRCCOPY); });
}
BENCHMARK(Hovering)->UseManualTime()->Unit(benchmark::kMicrosecond);

void Construct(benchmark::State& state) {
    BenchDirectory::Instance();
    Host host;
    for (auto _ : state)
        CBarGraph graph(nullptr, host.shared, "BAR_MONTH", host.shared, host.second, host.balloon);
}
BENCHMARK(Construct)->Unit(benchmark::kMicrosecond);

} // namespace
