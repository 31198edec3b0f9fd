#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <functional>
#include <vector>

constexpr int kWidth = 900;
constexpr int kHeight = 500;

/// Clears a picture and copies it: what no redraw can do without.
class Floor {
public:
    explicit Floor(int width = kWidth, int height = kHeight);
    void Run();

private:
    std::vector<std::uint32_t> m_picture;
    std::vector<std::uint32_t> m_screen;
};

/// Runs `work` and `floor` in turns; the time reported is that of `work`, the counter "ratio" the median of the one by
/// the median of the other.
void MeasureAgainst(benchmark::State& state, const std::function<void()>& work, const std::function<void()>& floor);
