#include <MelkarCommon/platform/bench/floor.h>

#include <algorithm>
#include <chrono>

Floor::Floor(int width, int height)
    : m_picture(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)), m_screen(m_picture.size()) {}

void Floor::Run() {
    std::fill(m_picture.begin(), m_picture.end(), 0xFFFFFFFFU);
    benchmark::DoNotOptimize(m_picture.data());
    std::copy(m_picture.begin(), m_picture.end(), m_screen.begin());
    benchmark::DoNotOptimize(m_screen.data());
    benchmark::ClobberMemory();
}

namespace {

double Median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double Seconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

void MeasureAgainst(benchmark::State& state, const std::function<void()>& work, const std::function<void()>& floor) {
    std::vector<double> works;
    std::vector<double> floors;
    for (auto _ : state) {
        floors.push_back(Seconds(floor));
        works.push_back(Seconds(work));
        state.SetIterationTime(works.back());
    }
    const double least = Median(floors);
    state.counters["floor_us"] = least * 1e6;
    state.counters["ratio"] = Median(works) / least;
}
