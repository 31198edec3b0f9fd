#include <MelkarCommon/platform/tests/surface.h>
#include <MelkarCommon/platform/tracing.h>

#include <MelkarCommon/platform/drawing.h>

#include <gtest/gtest.h>

#include <sstream>
#include <utility>

struct TracedPainter {
    void Lines() {}
    long Fills(char*) { return 0; }
};

namespace melkar {
namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);

constexpr StepName kLines = detail::NameOfOperation<&TracedPainter::Lines>();
constexpr StepName kFills = detail::NameOfOperation<&TracedPainter::Fills>();

void Fill(HDC surface, const RECT& rect, COLORREF color) {
    const ScopedBrush brush(surface, color);
    const ScopedSelection rimless(surface, GetStockObject(NULL_PEN));
    Rectangle(surface, rect.left, rect.top, rect.right, rect.bottom);
}

/// A path of two lines in one step; a red square and a blue one on it in another; a white one in none.
void DrawOn(HDC surface) {
    StepScope scope;
    scope.Enter(&kLines);
    const ScopedPen pen(surface, PS_SOLID, 1, kBlue);
    MoveToEx(surface, 50, 10, nullptr);
    LineTo(surface, 70, 10);
    LineTo(surface, 70, 30);
    scope.Enter(&kFills);
    Fill(surface, {10, 10, 30, 30}, kRed);
    Fill(surface, {15, 15, 20, 20}, kBlue);
    scope.Enter(nullptr);
    Fill(surface, {0, 50, 40, 60}, kWhite);
}

TEST(Tracing, KeepsTheStepBesideEachLine) {
    const Surface trace(CreateTracingSurface(100, 60));
    DrawOn(trace);
    std::string text;
    for (const auto& [line, step] : TraceOf(trace))
        text.append(step.owner).append("::").append(step.operation).append(" ").append(line).append("\n");
    EXPECT_EQ(text, "TracedPainter::Lines line 50,10 70,10 #0000FF w1\n" // waited until the next step had begun
                    "TracedPainter::Lines line 70,10 70,30 #0000FF w1\n"
                    "TracedPainter::Fills fill 10,10 20x20 #FF0000\n"
                    "TracedPainter::Fills fill 15,15 5x5 #0000FF\n"
                    ":: fill 0,50 40x10 #FFFFFF\n");
    EXPECT_EQ(RunningStep(), nullptr);
}

/// "2 red 3 blue"
std::string ToText(const std::vector<PixelLayer>& layers) {
    std::ostringstream text;
    for (const auto& [line, color] : layers)
        text << (line == layers.front().line ? "" : " ") << line
             << (color == kRed    ? " red"
                 : color == kBlue ? " blue"
                                  : " white");
    return text.str();
}

TEST(Tracing, TellsWhatDrewOnAPixel) {
    const std::tuple<const char*, POINT, const char*> cases[] = {
        {"one after the other", {17, 17}, "2 red 3 blue"},
        {"beside the second", {12, 12}, "2 red"},
        {"the first line of a path", {60, 10}, "0 blue"},
        {"its corner, which the second line alone draws", {70, 10}, "1 blue"},
        {"the second line", {70, 20}, "1 blue"},
        {"behind its end", {70, 30}, ""},
        {"white on white is drawn, too", {20, 55}, "4 white"},
        {"beyond the surface", {100, 10}, ""},
        {"above it", {10, -1}, ""},
    };
    const Surface trace(CreateTracingSurface(100, 60));
    DrawOn(trace);
    // Copied from a surface that suits it, it is told of as if drawn there.
    const Surface copy(CreateTracingSurface(100, 60));
    {
        const WorkingSurface work(copy, 100, 60);
        DrawOn(work);
        BitBlt(copy, 0, 0, 100, 60, work, 0, 0, SRCCOPY);
    }
    EXPECT_EQ(TraceOf(copy).at(4).step.operation, "Fills") << TraceOf(copy).at(4).text;
    for (const auto& [why, pixel, expected] : cases) {
        EXPECT_EQ(ToText(LayersAt(trace, pixel)), expected) << why;
        EXPECT_EQ(LayersAt(copy, pixel).size(), LayersAt(trace, pixel).size()) << why;
    }
    const Surface pixels(CreateMemorySurface(100, 60));
    DrawOn(pixels);
    EXPECT_TRUE(TraceOf(pixels).empty() && LayersAt(pixels, {17, 17}).empty() && LayersAt(nullptr, {1, 1}).empty());
}

} // namespace
} // namespace melkar
