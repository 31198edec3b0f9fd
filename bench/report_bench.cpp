// The sample report into a PDF file: charts on its first pages, then sheets of days, four a page.

#include "bench_support.h"

#include <month_report.h>

#include <filesystem>
#include <fstream>

namespace {

constexpr int kHeadLines = 2;
constexpr int kShortWeekLines = 6; ///< from a Wednesday, with the line that ends it
constexpr int kWeekLines = 8;

/// The month of the samples, with so many whole weeks of sheets behind its short one.
void WriteMonth(int weeks) {
    namespace fs = std::filesystem;
    BenchDirectory::Instance();
    const fs::path samples = fs::path(MELKAR_SAMPLES) / "data";
    fs::copy(samples, ".", fs::copy_options::overwrite_existing);
    std::ifstream from(samples / "week-print.csv");
    const auto take = [&from](int lines) {
        std::string text;
        for (std::string line; lines > 0 && std::getline(from, line); --lines)
            text += line + "\n";
        return text;
    };
    std::ofstream to("week-print.csv");
    to << take(kHeadLines + kShortWeekLines);
    const std::string week = take(kWeekLines);
    for (int i = 0; i < weeks; ++i)
        to << week;
}

void Report(benchmark::State& state) {
    WriteMonth(static_cast<int>(state.range(0)));
    char printer[] = "report.pdf";
    char section[] = "REPORT";
    int pages = 0;
    for (auto _ : state)
        pages = CMonthReport(printer, DMPAPER_A4, 0, section, ".", "report-header.csv").Print();
    state.counters["pages"] = pages;
    state.counters["per_page"] =
        benchmark::Counter(pages, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(Report)->Arg(5)->Arg(28)->Arg(57)->Arg(114)->Unit(benchmark::kMillisecond);

} // namespace
