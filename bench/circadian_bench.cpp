// The sheet and the circle of a day redrawn with another day at each turn.

#include "bench_support.h"

#include <array>
#include <random>

namespace {

constexpr int kDays = 64; ///< more days than any cache of texts holds figures
const CRect kDaySheet(0, 0, 900, 160);

/// A day of its own: hours at rest, at a desk and on foot, with a value that differs from the next.
struct Day {
    explicit Day(unsigned seed) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> jitter(0.0, 1.0);
        std::uniform_int_distribution<int> level(0, 8);
        for (std::size_t hour = 0; hour < 24; ++hour) {
            const int base = level(random);
            for (std::size_t i = 0; i < 30; ++i)
                intensity[hour * 30 + i] = base + jitter(random);
        }
        for (int i = 0; i < 9; ++i)
            levels.Add(std::to_string(level(random) * 7 + jitter(random)).c_str());
        for (const char* event : {"700", "1230", "1845"})
            events.Add(event);
        steps = static_cast<int>(random() % 20000);
    }

    void HandTo(CCircadianGraph& graph, HDC surface) {
        graph.Set(nullptr, surface, kDaySheet, "", "", 4.0, 6.0, &levels, "20260302", 1, 0, &events, intensity.data(),
                  0, steps, steps / 30, 1500 + steps / 30, 42.5, 0, 3.5F);
    }

    std::array<double, CCircadianGraph::kValues> intensity{};
    CStringArray levels;
    CStringArray events;
    int steps;
};

void DaySheet(benchmark::State& state) {
    BenchDirectory::Instance();
    Host host;
    CCircadianGraph graph(nullptr, host.shared, "DAY", host.shared, host.second, host.balloon);
    std::vector<Day> days;
    for (unsigned seed = 0; seed < kDays; ++seed)
        days.emplace_back(seed);
    std::size_t next = 0;
    Floor floor(kDaySheet.Width(), kDaySheet.Height());
    MeasureAgainst(
        state,
        [&] {
            days[next++ % days.size()].HandTo(graph, host.shared);
            char path[] = "";
            graph.Draw(kDaySheet, path);
        },
        [&] { floor.Run(); });
}
BENCHMARK(DaySheet)->UseManualTime()->Unit(benchmark::kMicrosecond);

void Circle(benchmark::State& state) {
    BenchDirectory::Instance();
    Host host;
    CCircleGraph graph(nullptr, host.shared, "CIRCLE", host.shared, host.second, host.balloon);
    std::vector<CStringArray> days(kDays);
    for (int day = 0; day < kDays; ++day)
        for (int level = 0; level < 9; ++level)
            days[static_cast<std::size_t>(day)].Add(std::to_string((level * 37 + day * 11) % 70 + 1).c_str());
    std::size_t next = 0;
    Floor floor;
    MeasureAgainst(
        state,
        [&] {
            graph.SetData(&days[next++ % days.size()]);
            graph.Draw(CRect(0, 0, kWidth, kHeight), nullptr);
        },
        [&] { floor.Run(); });
}
BENCHMARK(Circle)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
