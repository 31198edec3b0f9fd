// What the pixel backend fills and strokes by itself, against values from a drawing on paper and against the general
// rasteriser.

#include "canvas.h"

#include <MelkarCommon/platform/cairo/handles.h>
#include <MelkarCommon/platform/cairo/shapes.h>
#include <MelkarCommon/platform/pixels/pixel_chains.h>
#include <MelkarCommon/platform/pixels/pixel_discs.h>
#include <MelkarCommon/platform/pixels/pixel_slices.h>
#include <MelkarCommon/platform/tests/surface.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <numbers>
#include <random>

namespace melkar {
namespace {

/// The greatest difference to what the general rasteriser makes of it. It works in fifteenths of a row, so what it has
/// to be exact in is drawn `scale` times as large and averaged.
int FarthestFromRasteriser(const Canvas& picture, int scale, const std::function<void(cairo_t*)>& draw) {
    const int side = kSide * scale;
    const CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_A8, side, side));
    const CairoContext cr(cairo_create(surface.get()));
    cairo_scale(cr.get(), scale, scale);
    draw(cr.get());
    cairo_surface_flush(surface.get());
    const unsigned char* coverage = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    std::vector<int> ink(std::size_t{kSide} * kSide);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            ink[static_cast<std::size_t>(y / scale * kSide + x / scale)] += coverage[y * stride + x];
    int farthest = 0;
    for (int i = 0; i < kSide * kSide; ++i)
        farthest = std::max(
            farthest, std::abs(picture.Ink(i % kSide, i / kSide) - ink[static_cast<std::size_t>(i)] / (scale * scale)));
    return farthest;
}

TEST(PixelChains, CoverageByHand) {
    const std::tuple<const char*, std::vector<POINT>, int, int, int> cases[] = {
        {"half a pixel on the diagonal", {{0, 0}, {4, 4}, {0, 4}}, 2, 2, 128},
        {"a spike of no width covers nothing", {{0, 9}, {0, 8}, {3, 8}, {3, 0}, {3, 8}, {6, 8}, {6, 9}}, 3, 4, 0},
        {"far corners: y at column 7 is still 7", {{0, 0}, {INT_MAX, INT_MAX}, {0, INT_MAX}}, 7, 7, 128},
    };
    for (const auto& [why, corners, x, y, ink] : cases) {
        Canvas picture;
        const auto chains = FindChains(corners, {0, 0, kSide, kSide});
        ASSERT_TRUE(chains) << why;
        FillChains(picture.buffer, {0, 0, kSide, kSide}, *chains, kBlackPixel);
        EXPECT_NEAR(picture.Ink(x, y), ink, 1) << why;
    }
}

TEST(PixelChains, LeaveWhatGoesToAndFro) {
    const RECT clip{0, 0, kSide, kSide};
    const std::vector<POINT> zigzag{{0, 0}, {20, 5}, {10, 10}, {30, 15}, {0, 20}};
    const std::vector<POINT> crossing{{0, 0}, {10, 15}, {20, 0}, {20, 10}, {5, 2}, {0, 10}};
    EXPECT_FALSE(FindChains(zigzag, clip));
    EXPECT_FALSE(FindChains(crossing, clip)) << "within a column";
}

/// Goes right along one chain and back along another below it.
std::vector<POINT> RandomChains(std::mt19937& random) {
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    std::vector<POINT> corners;
    for (int x = below(30) - 20; x < kSide + 10; x += below(3) == 0 ? below(20) : below(2))
        corners.push_back({x, below(45) - 5});
    const bool isFlat = below(2) == 0; // the baseline of a profile
    for (int x = corners.back().x; x > corners.front().x; x -= 1 + below(25))
        corners.push_back({x, isFlat ? 50 : 40 + below(45)});
    corners.push_back({corners.front().x, 50});
    return corners;
}

TEST(PixelChains, LikeTheRasteriser) {
    std::mt19937 random(17);
    constexpr RECT kWhole{0, 0, kSide, kSide};
    for (int i = 0; i < 100; ++i) {
        const PolygonShape polygon{RandomChains(random)};
        Canvas picture;
        const auto chains = FindChains(polygon.points, kWhole);
        ASSERT_TRUE(chains) << i;
        FillChains(picture.buffer, kWhole, *chains, kBlackPixel);
        const auto draw = [&](cairo_t* cr) { FillShapeOn(cr, {0, 0, 8 * kSide, 8 * kSide}, polygon, kBlackPixel); };
        EXPECT_LE(FarthestFromRasteriser(picture, 8, draw), 5) << i;
        ExpectCutAt({i % 7, i % 35, kSide - i % 30, kSide - i % 31},
                    [&](Backend& backend) { backend.FillShape(polygon, kBlackPixel); });
    }
}

TEST(PixelDiscs, LikeTheRasteriser) {
    std::mt19937 random(4);
    const auto halves = [&](unsigned most) { return static_cast<double>(random() % most) / 2; };
    for (int i = 0; i < 100; ++i) {
        const EllipseShape ellipse{{39 + halves(4), 39 + halves(4)},
                                   {1 + halves(50), i % 3 == 0 ? 1 + halves(50) : 10}};
        const Stroke stroke = Width(i % 2 == 0 ? 0 : 1 + i % 5);
        const bool isRing = stroke.width > 0;
        const auto draw = [&](Backend& backend) {
            isRing ? backend.StrokeShape(ellipse, stroke) : backend.FillShape(ellipse, kBlackPixel);
        };
        Canvas picture;
        draw(*picture.backend);
        const RECT all{0, 0, kSide, kSide};
        const auto drawOther = [&](cairo_t* cr) {
            cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
            isRing ? StrokeShapeOn(cr, all, ellipse, stroke) : FillShapeOn(cr, all, ellipse, kBlackPixel);
        };
        EXPECT_LE(FarthestFromRasteriser(picture, 1, drawOther), 1) << ellipse.radius.x << "x" << ellipse.radius.y;
        if (FindDisc(ellipse, stroke.width).mask != nullptr) // else the rasteriser shortens curves at the clip
            ExpectCutAt({30 + i % 9, 30, 45, 38 + i % 13}, draw);
    }
}

TEST(PixelDiscs, SmallOnesAreKept) {
    const EllipseShape disc{{10.5, 20.5}, {4.5, 4.5}};
    const EllipseShape moved{{30.5, -7.5}, {4.5, 4.5}};
    EXPECT_EQ(FindDisc(disc, 0).mask, FindDisc(moved, 0).mask);
    EXPECT_NE(FindDisc(disc, 0).mask, FindDisc(disc, 1).mask) << "a ring isn't a disc";
    EXPECT_EQ(FindDisc(moved, 0).y, -12) << "from -12 to -3";
    EXPECT_EQ(FindDisc({{0, 0}, {255.5, 9}}, 2).mask, nullptr) << "513 pixels across";
}

// Two pixels of a slice may be a quarter off: where a radial meets the rim, what both leave is multiplied; and at the
// apex a reach counts twice that lies on a slice of more than half a turn.
TEST(PixelSlices, LikeTheRasteriser) {
    std::mt19937 random(5);
    const auto parts = [&](unsigned most, double part) { return static_cast<double>(random() % most) / part; };
    for (int i = 0; i < 50; ++i) {
        const PointD center{39 + parts(4, 2), 39 + parts(4, 2)};
        const double radius = 1 + parts(70, 2);
        const EllipseShape whole{center, {radius, i % 4 == 0 ? 1 + parts(70, 2) : radius}};
        const SliceShape slice{
            whole, parts(628, 100), 0.01 + parts(627, 100), {std::trunc(center.x), std::trunc(center.y)}};
        const auto draw = [&](Backend& backend) { backend.FillShape(slice, kBlackPixel); };
        Canvas picture;
        draw(*picture.backend);
        const auto drawOther = [&](cairo_t* cr) { FillShapeOn(cr, {0, 0, 8 * kSide, 8 * kSide}, slice, kBlackPixel); };
        EXPECT_LE(FarthestFromRasteriser(picture, 8, drawOther), 64)
            << radius << "x" << whole.radius.y << " from " << slice.from << " by " << slice.sweep;
        if (IsCutFromDisc(slice)) // else the rasteriser shortens curves at the clip
            ExpectCutAt({30 + i % 9, 30, 45, 38 + i % 13}, draw);
    }
}

TEST(PixelSlices, MeetWithoutASeam) {
    // Radials as callers compute them, about the whole-number centre, in circles of even and odd size; both ways round.
    for (const int size : {60, 61})
        for (const int count : {2, 3, 7})
            for (const bool backwards : {false, true}) {
                Canvas picture;
                const Surface surface(WrapPixels(picture.memory.data(), kSide, kSide, picture.buffer.stride * 4));
                SelectObject(surface, GetStockObject(NULL_PEN));
                SelectObject(surface, GetStockObject(BLACK_BRUSH));
                const int center = (10 + 10 + size) / 2;
                const auto radial = [&](int i) -> POINT {
                    const double angle = 0.3 + 2 * std::numbers::pi * (i % count) / count;
                    return {center - static_cast<int>(size * std::sin(angle)) / 2,
                            center - static_cast<int>(size * std::cos(angle)) / 2};
                };
                for (int k = 0; k < count; ++k) {
                    const int i = backwards ? count - 1 - k : k;
                    const POINT from = radial(i);
                    const POINT to = radial(i + 1);
                    Pie(surface, 10, 10, 10 + size, 10 + size, from.x, from.y, to.x, to.y);
                }
                picture.EachPixel([&](int x, int y) {
                    const double distance = std::hypot(x + 0.5 - 10 - size / 2.0, y + 0.5 - 10 - size / 2.0);
                    ASSERT_GE(picture.Ink(x, y), distance < size / 2.0 - 2 ? 251 : 0) << count << " of " << size;
                });
            }
}

double DistanceToLine(double x, double y, POINT from, POINT to) {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double length = dx * dx + dy * dy;
    const double part = length > 0 ? std::clamp(((x - from.x) * dx + (y - from.y) * dy) / length, 0.0, 1.0) : 0;
    return std::hypot(from.x + part * dx - x, from.y + part * dy - y);
}

TEST(PixelPolyline, WideOnesAreWholeAlongTheirPath) {
    std::mt19937 random(8);
    const auto inside = [&] { return 8 + static_cast<int>(random() % 64); };
    for (int i = 0; i < 100; ++i) {
        const double width = 3 + i % 4;
        std::vector<POINT> points{{inside(), inside()}};
        while (points.size() < 6) {
            const POINT next{inside(), inside()};
            const bool isSloped = next.x != points.back().x && next.y != points.back().y; // else its end is cut
            if (isSloped)
                points.insert(points.end(), points.size() == 3 ? 2 : 1, next); // one point is named twice
        }
        Canvas picture;
        picture.backend->StrokePolyline(points, Width(width));
        picture.EachPixel([&](int x, int y) {
            double distance = HUGE_VAL;
            for (std::size_t k = 1; k < points.size(); ++k)
                distance = std::min(distance, DistanceToLine(x, y, points[k - 1], points[k]));
            const int least = distance <= width / 2 - 1 ? 250 : 0;
            const int most = distance >= width / 2 * 1.42 + 1 ? 0 : 255;
            ASSERT_GE(picture.Ink(x, y), least) << i << ": a hole at " << x << "," << y;
            ASSERT_LE(picture.Ink(x, y), most) << i << ": spilt on " << x << "," << y;
        });
    }
}

} // namespace
} // namespace melkar
