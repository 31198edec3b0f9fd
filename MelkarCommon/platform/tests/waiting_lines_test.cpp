// Lines on memory that was handed out are drawn as they come: what of them has to be kept for the corners.

#include <MelkarCommon/platform/path.h>
#include <MelkarCommon/platform/surfaces/waiting_lines.h>
#include <MelkarCommon/platform/tests/canvas.h>
#include <MelkarCommon/platform/tests/surface.h>

#include <gtest/gtest.h>

namespace melkar {
namespace {

constexpr LineLook kLook{PS_SOLID, 1, 0, TRANSPARENT, 0};

/// Draws each line as it comes.
void DrawAtOnce(Backend& backend, std::span<const POINT> points, const Stroke& stroke) {
    WaitingLines lines;
    lines.Begin(points[0], kLook, stroke, true);
    for (const POINT& to : points.subspan(1)) {
        lines.Add(to);
        lines.DrawAtOnce(backend);
    }
    EXPECT_TRUE(!lines.AreWaiting() && lines.GoOnAt(points.back(), kLook));
}

/// The same by a path of all that went before.
void DrawWithAllBefore(Backend& backend, std::span<const POINT> points, Stroke stroke) {
    for (std::size_t count = 2; count <= points.size(); ++count) {
        stroke.drawn = count - 2;
        backend.StrokePolyline(points.first(count), stroke);
    }
}

TEST(WaitingLines, WhatIsKeptMakesTheCornersOfAllThatWentBefore) {
    const std::pair<const char*, std::vector<POINT>> cases[] = {
        {"square corners, closed", {{10, 10}, {60, 10}, {60, 60}, {10, 60}, {10, 10}}},
        {"closed by a sloped line", {{10, 10}, {60, 15}, {50, 60}, {30, 40}, {20, 60}, {10, 10}}},
        {"goes on behind the point where it closes", {{10, 10}, {60, 10}, {60, 60}, {10, 10}, {30, 70}, {70, 70}}},
        {"back to the second point", {{10, 10}, {40, 40}, {70, 10}, {40, 40}, {10, 70}, {10, 10}}},
        {"to and fro", {{10, 10}, {60, 40}, {10, 10}, {60, 40}, {60, 10}, {10, 10}}},
        {"a line of no length", {{10, 10}, {60, 10}, {60, 10}, {30, 60}, {30, 60}, {70, 70}, {10, 10}}},
    };
    Stroke dashes = Dashes(7, 4);
    dashes.width = 3;
    for (const auto& [why, points] : cases)
        for (const Stroke& stroke : {Width(1), Width(3), Width(8), dashes}) {
            Canvas kept;
            Canvas all;
            DrawAtOnce(*kept.backend, points, stroke);
            DrawWithAllBefore(*all.backend, points, stroke);
            EXPECT_EQ(kept.memory, all.memory) << why << ", width " << stroke.width;
        }
}

/// Counts the points of polylines.
struct CountingBackend final : Backend {
    void SetClip(const RECT&) override {}
    void FillRect(const RECT&, Color) override {}
    void FillShape(const Shape&, Color) override {}
    void StrokeShape(const Shape&, const Stroke&) override {}
    void StrokePolyline(std::span<const POINT> points, const Stroke&) override { count += points.size(); }
    void PaintText(const std::shared_ptr<const TextLayout>&, std::size_t, POINT, int, Color, const RECT&) override {}
    void Blit(const RECT&, const PixelBuffer&, const RECT&, DWORD) override {}

    std::size_t count = 0;
};

TEST(WaitingLines, EachCostsTheSameHoweverManyWentBefore) {
    std::vector<POINT> points;
    for (int i = 0; i <= 10000; ++i)
        points.push_back({i, i % 2});
    for (const Stroke& stroke : {Width(8), Dashes(3, 3)}) {
        CountingBackend backend;
        DrawAtOnce(backend, points, stroke);
        EXPECT_LE(backend.count, 5 * points.size());
    }
}

/// What two paths leave in the memory, which is handed out if `isExposed`: more points than wait at once, then some of
/// another pen and of none.
std::vector<std::uint32_t> TwoPaths(int style, bool isExposed, void (*draw)(HDC, std::span<const POINT>)) {
    std::vector<POINT> points;
    for (int i = 0; i < 5000; ++i)
        points.push_back({i % 79, i % 61 + i / 1000});
    std::vector<std::uint32_t> memory(kSide * kSide, kWhitePixel);
    const Surface picture(isExposed ? WrapPixels(memory.data(), kSide, kSide, 4 * kSide)
                                    : CreateMemorySurface(kSide, kSide));
    for (const int next : {style, PS_SOLID, PS_NULL}) {
        const ScopedPen pen(picture, next, 1, RGB(200, next, 0));
        draw(picture, points);
        draw(picture, std::span(points).first(9));
    }
    LineTo(picture, 70, 70);
    const PixelView view = GetPixels(picture);
    return {view.pixels, view.pixels + kSide * kSide};
}

TEST(WaitingLines, ManyInOneCallAreThoseOfACallForEach) {
    const auto each = [](HDC surface, std::span<const POINT> points) {
        for (const POINT& point : points)
            LineTo(surface, point.x, point.y);
    };
    for (const int style : {PS_SOLID, PS_DASH})
        for (const bool isExposed : {false, true})
            EXPECT_EQ(TwoPaths(style, isExposed, LinesTo), TwoPaths(style, isExposed, each)) << style << isExposed;
}

} // namespace
} // namespace melkar
