#pragma once

#include <MelkarCommon/MelkarCommon.h>

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

/// A working directory of its own with the profile of the samples: made once, removed at the end.
class BenchDirectory {
public:
    static BenchDirectory& Instance();
    /// Writes a file beside the profile. @return its path.
    std::string Write(const std::string& name, const std::string& content) const;

private:
    BenchDirectory();
    ~BenchDirectory();

    std::string m_root;
};

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

/// The three surfaces that a host gives to a graph.
struct Host {
    HDC shared = CreateMemorySurface(kWidth, kHeight);
    HDC second = CreateMemorySurface(kWidth, kHeight);
    HDC balloon = CreateMemorySurface(kWidth, kHeight);

    Host() = default;
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
};
