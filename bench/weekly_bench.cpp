// The sheet of a week: its files read, against a plain pass over their bytes, and drawn.

#include "bench_support.h"

#include <MelkarCommon/platform/files/paths.h>

#include <algorithm>
#include <random>

namespace {

constexpr int kWeekDays = 7;
constexpr int kColumns = 786;
constexpr int kFiles = 16; ///< more figures than any cache of texts holds
const CRect kWeekSheet(0, 0, 900, 1120);

/// A line of random days; `intensity` is the first of its 720 columns.
std::string DayLine(std::mt19937& random, int intensity, const std::string& head) {
    std::uniform_int_distribution<int> tenths(0, 12);
    std::string line = head;
    int level = 0;
    for (int column = static_cast<int>(std::count(head.begin(), head.end(), ',')); column < kColumns; ++column) {
        if (column >= intensity && column < intensity + 720) {
            level = std::clamp(level + tenths(random) - 6, 0, 89);
            line += std::to_string(level / 10) + "." + std::to_string(level % 10);
        }
        line += column + 1 < kColumns ? "," : "\n";
    }
    return line;
}

std::string ScreenFile(const std::string& name, unsigned seed) {
    std::mt19937 random(seed);
    std::string content = "week\n20260302,\nstatus,date\n";
    for (int day = 2; day < 2 + kWeekDays; ++day) {
        const std::string steps = std::to_string(random() % 20000);
        content +=
            DayLine(random, 64, "0,2026030" + std::to_string(day) + ",,,," + steps + ",,,785,,,512,2011,,,30,20");
    }
    return BenchDirectory::Instance().Write(name, content);
}

std::string PrintFile(int weeks) {
    std::mt19937 random(4711);
    std::string content = "weeks\n20260302,,,4,6\n";
    for (int week = 0; week < weeks; ++week) {
        for (int day = 0; day < kWeekDays; ++day)
            content += DayLine(random, 24, "20260302,0,7315,512,2011,30,20,10");
        content += "\n";
    }
    return BenchDirectory::Instance().Write("weeks" + std::to_string(weeks) + ".csv", content);
}

/// Reads the file and looks at each byte once: commas outside of quotes.
void PlainPass(const std::string& path) {
    bool found = false;
    const std::string bytes = melkar::ReadWholeFile(path, &found);
    std::size_t commas = 0;
    bool isQuoted = false;
    for (const char byte : bytes) {
        isQuoted ^= byte == '"';
        commas += byte == ',' && !isQuoted;
    }
    benchmark::DoNotOptimize(commas);
}

void ReadWeeks(benchmark::State& state) {
    std::string path = PrintFile(static_cast<int>(state.range(0)));
    Host host;
    CWeeklyCircadian week(nullptr, host.shared, "DAY", host.shared, host.second, host.balloon);
    MeasureAgainst(
        state, [&] { week.ReadWeekDataFile(path.data(), 1000); }, [&] { PlainPass(path); });
}
BENCHMARK(ReadWeeks)->Arg(1)->Arg(8)->Arg(64)->UseManualTime()->Unit(benchmark::kMicrosecond);

void WeekSheet(benchmark::State& state) {
    std::vector<std::string> paths;
    for (unsigned seed = 0; seed < kFiles; ++seed)
        paths.push_back(ScreenFile("week" + std::to_string(seed) + ".csv", seed));
    HDC shared = CreateMemorySurface(kWeekSheet.Width(), kWeekSheet.Height());
    {
        CWeeklyCircadian week(nullptr, shared, "DAY", shared, nullptr, nullptr);
        std::size_t next = 0;
        Floor floor(kWeekSheet.Width(), kWeekSheet.Height());
        MeasureAgainst(
            state, [&] { week.Draw(kWeekSheet, paths[next++ % paths.size()].data()); }, [&] { floor.Run(); });
    }
    DeleteDC(shared);
}
BENCHMARK(WeekSheet)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
