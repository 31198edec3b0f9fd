// The drawing layer by itself, against clearing and copying a picture of the same size: what sheets and plots are made
// of.

#include <MelkarCommon/platform/bench/floor.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/platform/surface.h>

#include <random>

namespace {

constexpr int kDayHeight = 160;
constexpr int kColumns = 690;
constexpr int kLeft = 100;
constexpr int kBaseline = 150;

/// 720 values from 0 to `top` levels, one after the other without any order, over a flat baseline: 722 corners.
std::vector<POINT> SpikyDay(int top) {
    std::mt19937 random(4711);
    std::uniform_int_distribution<int> levels(0, top);
    constexpr int kValues = 720;
    constexpr int kLevel = 14;
    std::vector<POINT> corners;
    for (int i = 0; i < kValues; ++i)
        corners.push_back({kLeft + i * kColumns / (kValues - 1), kBaseline - levels(random) * kLevel});
    corners.push_back({kLeft + kColumns, kBaseline});
    corners.push_back({kLeft, kBaseline});
    return corners;
}

void FillPolygon(HDC surface, const std::vector<POINT>& corners, COLORREF color) {
    HRGN region = CreatePolygonRgn(corners.data(), static_cast<int>(corners.size()), ALTERNATE);
    HBRUSH brush = CreateSolidBrush(color);
    FillRgn(surface, region, brush);
    DeleteObject(brush);
    DeleteObject(region);
}

void Outline(HDC surface, const std::vector<POINT>& corners, COLORREF color) {
    const melkar::ScopedPen pen(surface, PS_SOLID, 1, color);
    MoveToEx(surface, corners.back().x, corners.back().y, nullptr);
    for (const POINT& corner : corners)
        LineTo(surface, corner.x, corner.y);
    MoveToEx(surface, 0, 0, nullptr); // whatever follows: the lines are drawn
}

/// A picture that is drawn on again and again, white to begin with.
struct Canvas {
    Canvas(int width, int height, int dpi) : surface(CreateMemorySurface(width, height, dpi)) {}
    ~Canvas() { DeleteDC(surface); }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC surface;
};

void FillOfADay(benchmark::State& state) {
    const Canvas canvas(kWidth, kDayHeight, 96);
    const auto day = SpikyDay(static_cast<int>(state.range(0)));
    Floor floor(kWidth, kDayHeight);
    MeasureAgainst(
        state, [&] { FillPolygon(canvas.surface, day, RGB(40, 90, 200)); }, [&] { floor.Run(); });
}
BENCHMARK(FillOfADay)->Arg(9)->Arg(4)->UseManualTime()->Unit(benchmark::kMicrosecond);

void OutlineOfADay(benchmark::State& state) {
    const Canvas canvas(kWidth, kDayHeight, static_cast<int>(state.range(1)));
    const auto day = SpikyDay(static_cast<int>(state.range(0)));
    Floor floor(kWidth, kDayHeight);
    MeasureAgainst(
        state, [&] { Outline(canvas.surface, day, RGB(20, 40, 90)); }, [&] { floor.Run(); });
}
BENCHMARK(OutlineOfADay)
    ->Args({9, 96})
    ->Args({4, 96})
    ->Args({9, 192})
    ->Args({4, 192})
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

void FillAndOutlineOfADay(benchmark::State& state) {
    const Canvas canvas(kWidth, kDayHeight, 96);
    const auto day = SpikyDay(static_cast<int>(state.range(0)));
    Floor floor(kWidth, kDayHeight);
    MeasureAgainst(
        state,
        [&] {
            FillPolygon(canvas.surface, day, RGB(40, 90, 200));
            Outline(canvas.surface, day, RGB(20, 40, 90));
        },
        [&] { floor.Run(); });
}
BENCHMARK(FillAndOutlineOfADay)->Arg(9)->Arg(4)->UseManualTime()->Unit(benchmark::kMicrosecond);

/// Filled and outlined, against the floor of a month.
void MonthOfDiscs(benchmark::State& state) {
    const Canvas canvas(kWidth, kHeight, 96);
    const auto size = static_cast<int>(state.range(0));
    const melkar::ScopedBrush brush(canvas.surface, RGB(200, 60, 40));
    const melkar::ScopedPen pen(canvas.surface, PS_SOLID, 1, RGB(90, 20, 10));
    Floor floor;
    MeasureAgainst(
        state,
        [&] {
            for (int day = 0; day < 31; ++day)
                Ellipse(canvas.surface, 40 + day * 26, 100 + day * 7, 40 + day * 26 + size, 100 + day * 7 + size);
        },
        [&] { floor.Run(); });
}
BENCHMARK(MonthOfDiscs)->Arg(8)->Arg(14)->Arg(24)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
