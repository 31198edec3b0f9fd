#include "canvas.h"

#include <MelkarCommon/platform/pixels/pixel_backend.h>
#include <MelkarCommon/platform/pixels/pixel_blit.h>
#include <MelkarCommon/platform/pixels/pixel_lanes.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

namespace melkar {
namespace {

TEST(PixelLines, LevelLinesFromEndToEnd) {
    const std::tuple<const char*, int, int, Stroke, const char*> cases[] = {
        {"leftwards, end left out", 6, 2, {}, "...####....."},
        {"pattern goes from the start, leftwards", 11, -1, Dashes(3, 2), "##..###..###"},
        {"pattern counts from a hidden start, leftwards", 15, -1, Dashes(3, 2), "#..###..###."},
        {"painted gaps", 1, 9, Dashes(2, 3, 0, true), ".##rrr##r..."},
        {"fractions: pixels at 0, 3, 5, 8, 10 begin a dash", 0, 12, Dashes(1, 1.5), "#..#.#..#.#."},
        {"negative phase", 0, 12, Dashes(3, 2, -1), ".###..###..#"},
    };
    for (const auto& [why, from, to, stroke, row] : cases) {
        Canvas level(12, 3);
        StrokeLine(*level.backend, {from, 1}, {to, 1}, stroke);
        EXPECT_EQ(level.Row(1), row) << why;
        EXPECT_EQ(level.Row(0) + level.Row(2), std::string(24, '.')) << why;
        Canvas upright(3, 12);
        StrokeLine(*upright.backend, {1, from}, {1, to}, stroke);
        EXPECT_EQ(upright.Column(1), row) << why << ", upright";
    }
}

TEST(PixelLines, WidthCoversWholeRows) {
    for (const auto& [width, column] : {std::pair{0.0, "....#...."}, {2.0, "...##...."}, {2.6, "...###..."}}) {
        Canvas canvas(3, 9);
        StrokeLine(*canvas.backend, {0, 4}, {3, 4}, Width(width));
        EXPECT_EQ(canvas.Column(1), column) << width;
    }
}

TEST(PixelLines, SlopedLinesSideBySideHaveNoSeam) {
    // Three lines one pixel apart, in either order, shallow and steep, with a few steps or many in each row: whatever
    // isn't an edge is the whole colour.
    const std::pair<const char*, std::function<void(Backend&, POINT, POINT)>> ways[] = {
        {"line by line", [](Backend& b, POINT from, POINT to) { StrokeLine(b, from, to, {}); }},
        {"each point twice",
         [](Backend& b, POINT from, POINT to) {
             b.StrokePolyline(std::array{from, from, to, to}, {});
         }},
        {"each point twice, drawn as it comes",
         [](Backend& b, POINT from, POINT to) {
             Stroke second;
             second.drawn = 1;
             StrokeLine(b, from, from, {});
             b.StrokePolyline(std::array{from, from, to}, second);
         }},
    };
    for (const auto& [way, draw] : ways)
        for (int i = 0; i < 8; ++i) {
            const bool isSteep = (i & 1) != 0;
            const int direction = (i & 2) != 0 ? 1 : -1;
            const int rise = (i & 4) != 0 ? 17 : 7;
            Canvas canvas(60, 60);
            for (int line = 0; line < 3; ++line) {
                const int shift = 20 + (direction > 0 ? line : 2 - line);
                const POINT from{isSteep ? shift : 5, isSteep ? 5 : shift};
                const POINT to{isSteep ? shift + rise : 55, isSteep ? 55 : shift + rise};
                draw(*canvas.backend, from, to);
            }
            for (int step = 6; step < 54; ++step) {
                const std::string line = isSteep ? canvas.Row(step) : canvas.Column(step);
                EXPECT_NE(line.find("##"), std::string::npos) << way << ", step " << step;
                EXPECT_EQ(line.find("#?#"), std::string::npos) << way << ", step " << step;
            }
        }
}

TEST(PixelLines, SlopedPositionIsExact) {
    const Draw draw = Line({0, 0}, {30, 10}); // a third of a pixel a step
    Canvas canvas(30, 12);
    draw(*canvas.backend);
    for (int x = 0; x < 30; x += 3)
        EXPECT_EQ(canvas.At(x, x / 3), kBlackPixel) << x;
    EXPECT_NEAR(canvas.Blue(1, 0), 85, 1); // a third lies in the next row
    EXPECT_NEAR(canvas.Blue(1, 1), 170, 1);
    ExpectCutAt({10, 3, 25, 7}, draw);
}

/// Those of a curve are drawn some steps at once, those at a clip's edge step by step.
TEST(PixelLines, ShortOnesAreTheSameAtAnEdge) {
    for (int dx = -3; dx <= 3; ++dx)
        for (int dy = -9; dy <= 9; ++dy)
            ExpectCutAt({std::min(dx, 0) + 10, 2, std::max(dx, 0) + 11, 18}, Line({10, 10}, {10 + dx, 10 + dy}));
}

TEST(PixelLines, SlopedPatternCountsTheDistance) {
    Canvas canvas(20, 20);
    StrokeLine(*canvas.backend, {0, 0}, {20, 20}, Dashes(4, 4, 0, true)); // 4 pixels are 2.83 diagonal steps
    std::string diagonal;
    for (int i = 0; i < 20; ++i)
        diagonal += canvas.Letter(i, i);
    EXPECT_EQ(diagonal, "###rrr###rrr###rr###"); // steps 0, 5.7, 11.3, 17 begin a dash
}

/// A picture whose pixels all differ, also from their neighbours' channels.
Canvas Speckled(int width, int height) {
    Canvas canvas(width, height);
    canvas.EachPixel(
        [&](int x, int y) { canvas.At(x, y) = kBlackPixel | static_cast<Color>(x * 0x5D0B37 + y * 0x21F1A3); });
    return canvas;
}

/// Seen before they are written, rectangles give what one after the other gives: whatever lies between two of one
/// colour, however many are large, wide or narrow.
TEST(PixelFills, LookTheSameTogether) {
    constexpr int kWide = 320;
    std::mt19937 random(3);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int count : {1, 2, 3, 5, 8, 13, 90}) {
        for (int turn = 0; turn < 8; ++turn) {
            std::vector<Fill> fills;
            for (int i = 0; i < count; ++i) {
                const int x = below(kWide);
                const int y = below(kWide);
                fills.push_back({{x - 40, y - 40, x + 1 + below(i % 3 == 0 ? 9 : 300), y + 1 + below(300)},
                                 below(2) == 0 ? kRed : kBlackPixel});
            }
            Canvas together(kWide, kWide);
            together.backend->FillRects(fills);
            Canvas apart(kWide, kWide);
            for (const auto& [rect, color] : fills)
                for (int py = std::max(rect.top, 0); py < std::min(rect.bottom, kWide); ++py)
                    for (int px = std::max(rect.left, 0); px < std::min(rect.right, kWide); ++px)
                        apart.At(px, py) = color;
            ASSERT_TRUE(together.memory == apart.memory) << count << " fills, turn " << turn;
        }
    }
}

TEST(PixelBlit, CopiesOntoItselfInAllDirections) {
    const Canvas before = Speckled(20, 20);
    for (const DWORD operation : {SRCCOPY, SRCPAINT})
        for (int way = 0; way < 9; ++way) {
            const int dx = way % 3 - 1;
            const int dy = way / 3 - 1;
            const CRect target(5 + dx, 5 + dy, 15 + dx, 15 + dy);
            Canvas after = Speckled(20, 20);
            after.backend->Blit(target, after.buffer, {5, 5, 15, 15}, operation);
            after.EachPixel([&](int x, int y) {
                const Color under = before.At(x, y);
                const Color kept = operation == SRCCOPY ? 0 : under;
                ASSERT_EQ(after.At(x, y), target.PtInRect({x, y}) ? before.At(x - dx, y - dy) | kept : under)
                    << operation << " by " << dx << "," << dy;
            });
        }
}

TEST(PixelBlit, MasksTakeTheNearestAndPicturesBlend) {
    std::uint32_t halves[] = {kBlackPixel, kWhitePixel};
    const PixelBuffer picture{halves, 2, 1, 2};
    Canvas mask(9, 1);
    mask.backend->Blit({0, 0, 8, 1}, picture, {0, 0, 2, 1}, SRCAND);
    EXPECT_EQ(mask.Row(0), "####.....");
    Canvas smooth(9, 1);
    smooth.backend->Blit({0, 0, 8, 1}, picture, {0, 0, 2, 1}, SRCCOPY);
    EXPECT_EQ(smooth.Row(0), "##????...") << "ends stay, the middle passes over";
    EXPECT_EQ(smooth.At(3, 0), 0xFF606060U) << "centre at 0.375 of the way: 255 * 0.375 = 95.6";

    std::uint32_t fine[] = {kBlackPixel, kWhitePixel, kWhitePixel, kWhitePixel};
    Canvas coarse(2, 1, kBlackPixel);
    coarse.backend->Blit({0, 0, 2, 1}, {fine, 4, 1, 4}, {0, 0, 4, 1}, SRCPAINT);
    EXPECT_EQ(coarse.Row(0), "..") << "the centres lie on the second and the fourth";
    Canvas average(1, 1, kRed);
    average.backend->Blit({0, 0, 1, 1}, {fine, 4, 1, 4}, {0, 0, 4, 1}, SRCCOPY);
    EXPECT_EQ(average.At(0, 0), 0xFFBFBFBFU) << "three quarters of 255 = 191";
}

TEST(PixelText, MaskBlendsRoundedAndClipped) {
    const std::vector<std::uint8_t> coverage{0, 128, 255, 1, 0, 64, 99, 99, 255, 255, 255, 255, 255, 255, 99, 99};
    const CoverageMask mask{0, 0, 0, 6, 2, 8, coverage}; // 99 lies behind the rows
    Canvas canvas(8, 4);
    BlendMask(canvas.buffer, {1, 0, 7, 2}, mask, 1, 1, kBlackPixel);
    EXPECT_EQ(canvas.Row(1), "..?#?.?.");
    EXPECT_EQ(canvas.Row(2), "........") << "below the clip";
    BlendMask(canvas.buffer, {0, 0, 8, 4}, mask, -3, 2, kBlackPixel);
    EXPECT_EQ(canvas.Row(3), "###.....") << "cut at the left";
}

/// `weight` parts of `whole` of one colour over another, rounded, a channel at a time.
Color Mixed(Color under, Color color, int weight, int whole) {
    Color mixed = kBlackPixel;
    for (int shift = 0; shift < 24; shift += 8) {
        const auto channel = [shift](Color c) { return static_cast<int>(c >> shift & 0xFFU); };
        const int sum = channel(under) * (whole - weight) + channel(color) * weight;
        mixed |= static_cast<Color>((2 * sum + whole) / (2 * whole)) << shift;
    }
    return mixed;
}

constexpr Color kInk = 0xFF0180FEU;

TEST(PixelText, BlendsSomeAtOnceLikeEachAlone) {
    std::vector<std::uint8_t> coverage(256); // each once, so blank and whole ones stand among others
    for (std::size_t i = 0; i < coverage.size(); ++i)
        coverage[i] = static_cast<std::uint8_t>(i * 37);
    for (int width = 1; width < 22; ++width) {
        const int height = 256 / width;
        const Canvas before = Speckled(width, height);
        Canvas after = Speckled(width, height);
        BlendMask(after.buffer, {0, 0, width, height}, {0, 0, 0, width, height, width, coverage}, 0, 0, kInk);
        before.EachPixel([&](int x, int y) {
            const int part = coverage[static_cast<std::size_t>(y * width + x)];
            EXPECT_EQ(after.At(x, y), Mixed(before.At(x, y), kInk, part, 255)) << part << " in " << width;
        });
    }
}

constexpr Weight kFalling{0xF00000, -0x111111}; // 240 of 256 and less

TEST(PixelLines, MixPixelsTogetherLikeEachAlone) {
    constexpr int kLength = 13;
    for (int i = 0; i < 2 * kLength; ++i) {
        const int count = i / 2;
        const Canvas before = Speckled(kLength, kLength);
        Canvas pairs = Speckled(kLength, kLength);
        Canvas fours = Speckled(kLength, kLength);
        Canvas span = Speckled(kLength, kLength);
        const std::ptrdiff_t stride = pairs.buffer.stride;
        const std::array two{RestOf(kFalling), kFalling};
        const std::array four{kFalling, Weight{0, 0}, Weight{kWholeWeight, 0}, RestOf(kFalling)};
        const auto mix = [&](auto lanes) {
            const LaneMixer<lanes> mixer(kInk);
            mixer.MixSteps(pairs.memory.data(), stride, count, two);
            mixer.MixSteps(fours.memory.data(), stride, count, four);
            mixer.MixSpan(span.memory.data(), count, kFalling);
        };
        i % 2 == 0 ? RunInFours(mix) : RunInLanes(mix);
        before.EachPixel([&](int x, int y) {
            const auto mixed = [&](int step, int all, int sign) {
                const int weight = (kFalling.start + step * kFalling.step) >> 16;
                return step < count ? Mixed(before.At(x, y), kInk, all + sign * weight, 256) : before.At(x, y);
            };
            const Color own = before.At(x, y);
            const Color ofFour[] = {mixed(y, 0, 1), own, y < count ? kInk : own, mixed(y, 256, -1)};
            EXPECT_EQ(pairs.At(x, y), x == 0 ? mixed(y, 256, -1) : x == 1 ? mixed(y, 0, 1) : own) << count;
            EXPECT_EQ(fours.At(x, y), x < 4 ? ofFour[x] : own) << count << " in row " << y;
            EXPECT_EQ(span.At(x, y), y == 0 ? mixed(x, 0, 1) : own) << count << " at " << x;
        });
    }
}

} // namespace
} // namespace melkar
