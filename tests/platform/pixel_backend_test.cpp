#include <MelkarCommon/support/platform/backend.h>
#include <MelkarCommon/support/platform/image_file.h>
#include <MelkarCommon/support/platform/pixel_blit.h>

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <random>

namespace {

using namespace melkar;

constexpr Color kWhite = 0xFFFFFFFFU;
constexpr Color kBlack = 0xFF000000U;
constexpr Color kRed = 0xFFFF0000U;
constexpr Color kBlue = 0xFF0000FFU;
constexpr double kNan = NAN;

/// A white picture with a margin of two guard pixels behind each row.
struct Canvas {
    Canvas(int width, int height, Color color = kWhite)
        : memory(static_cast<std::size_t>((width + 2) * height), color), buffer{memory.data(), width, height,
                                                                                width + 2},
          backend(MakePixelBackend(buffer)) {}

    Color At(int x, int y) const { return memory[static_cast<std::size_t>(y * buffer.stride + x)]; }
    /// '.' white, '#' black, 'r' red, 'b' blue, '?' anything else.
    std::string Row(int y) const {
        std::string text;
        for (int x = 0; x < buffer.width; ++x)
            text += At(x, y) == kWhite   ? '.'
                    : At(x, y) == kBlack ? '#'
                    : At(x, y) == kRed   ? 'r'
                    : At(x, y) == kBlue  ? 'b'
                                         : '?';
        return text;
    }
    std::string Column(int x) const {
        std::string text;
        for (int y = 0; y < buffer.height; ++y)
            text += Row(y)[static_cast<std::size_t>(x)];
        return text;
    }
    int Inked() const {
        int count = 0;
        for (int y = 0; y < buffer.height; ++y)
            for (int x = 0; x < buffer.width; ++x)
                count += At(x, y) != kWhite ? 1 : 0;
        return count;
    }
    bool GuardIsClean() const {
        for (int y = 0; y < buffer.height; ++y)
            if (At(buffer.width, y) != kWhite || At(buffer.width + 1, y) != kWhite)
                return false;
        return true;
    }

    std::vector<std::uint32_t> memory;
    PixelBuffer buffer;
    std::unique_ptr<Backend> backend;
};

Stroke Pen(double width = 1) {
    Stroke stroke;
    stroke.width = width;
    return stroke;
}

Stroke Dashed(double on, double off, double phase, bool gaps = false) {
    Stroke stroke;
    stroke.on = on;
    stroke.off = off;
    stroke.phase = phase;
    stroke.gaps = gaps;
    stroke.gapColor = kRed;
    return stroke;
}

Shape Ellipse(double x, double y, double rx, double ry) {
    Shape shape;
    shape.kind = Shape::Kind::Ellipse;
    shape.center = {x, y};
    shape.radius = {rx, ry};
    return shape;
}

Shape Slice(double x, double y, double r, double from, double sweep) {
    Shape shape = Ellipse(x, y, r, r);
    shape.kind = Shape::Kind::Slice;
    shape.from = from;
    shape.sweep = sweep;
    return shape;
}

Shape Polygon(std::vector<POINT> points, bool winding = false) {
    Shape shape;
    shape.points = std::move(points);
    shape.winding = winding;
    return shape;
}

TEST(PixelLines, LevelLinesFromEndToEnd) {
    struct Case {
        const char* why;
        int from, to;
        Stroke stroke;
        const char* row;
    };
    const Case cases[] = {
        {"rightwards, end left out", 2, 6, Pen(), "..####......"},
        {"leftwards, end left out", 6, 2, Pen(), "...####....."},
        {"no length", 4, 4, Pen(), "............"},
        {"one pixel", 4, 5, Pen(), "....#......."},
        {"beyond both edges", -5, 99, Pen(), "############"},
        {"pattern", 0, 12, Dashed(3, 2, 0), "###..###..##"},
        {"pattern goes from the start, leftwards", 11, -1, Dashed(3, 2, 0), "##..###..###"},
        {"phase within the gap", 0, 12, Dashed(3, 2, 4), ".###..###..#"},
        {"phase of several periods", 0, 12, Dashed(3, 2, 1004), ".###..###..#"},
        {"pattern counts from a hidden start", -4, 12, Dashed(3, 2, 0), ".###..###..#"},
        {"pattern counts from a hidden start, leftwards", 15, -1, Dashed(3, 2, 0), "#..###..###."},
        {"painted gaps", 1, 9, Dashed(2, 3, 0, true), ".##rrr##r..."},
        {"fractions: pixels at 0, 3, 5, 8, 10 begin a dash", 0, 12, Dashed(1, 1.5, 0), "#..#.#..#.#."},
        {"a pattern too fine to be seen is solid", 1, 4, Dashed(1e-9, 1e-9, 0), ".###........"},
        {"no number", 1, 4, Dashed(kNan, 3, 0), ".###........"},
        {"no number as phase", 0, 12, Dashed(3, 2, kNan), "###..###..##"},
        {"endless dash", 1, 4, Dashed(HUGE_VAL, 3, 0), ".###........"},
        {"negative phase", 0, 12, Dashed(3, 2, -1), ".###..###..#"},
    };
    for (const Case& c : cases) {
        Canvas level(12, 3);
        level.backend->StrokeLine({c.from, 1}, {c.to, 1}, c.stroke);
        EXPECT_EQ(level.Row(1), c.row) << c.why;
        EXPECT_EQ(level.Row(0) + level.Row(2), std::string(24, '.')) << c.why;
        Canvas upright(3, 12);
        upright.backend->StrokeLine({1, c.from}, {1, c.to}, c.stroke);
        EXPECT_EQ(upright.Column(1), c.row) << c.why << ", upright";
        EXPECT_TRUE(level.GuardIsClean() && upright.GuardIsClean()) << c.why;
    }
}

TEST(PixelLines, WidthCoversWholeRows) {
    struct Case {
        double width;
        const char* column;
    };
    const Case cases[] = {
        {0, "....#...."}, {1, "....#...."},   {2, "...##...."},     {3, "...###..."},
        {4, "..####..."}, {2.6, "...###..."}, {1e300, "#########"}, {kNan, "....#...."},
    };
    for (const Case& c : cases) {
        Canvas canvas(3, 9);
        canvas.backend->StrokeLine({0, 4}, {3, 4}, Pen(c.width));
        EXPECT_EQ(canvas.Column(1), c.column) << c.width;
    }
}

TEST(PixelLines, FourRowsMakeOneThickPattern) {
    Canvas canvas(12, 4);
    for (int y = 0; y < 4; ++y)
        canvas.backend->StrokeLine({1, y}, {11, y}, Dashed(3, 2, 0));
    for (int y = 0; y < 4; ++y)
        EXPECT_EQ(canvas.Row(y), ".###..###...");
}

TEST(PixelLines, PatternRunsOnAroundACorner) {
    Canvas canvas(8, 8);
    canvas.backend->StrokeLine({0, 0}, {7, 0}, Dashed(4, 4, 0));
    canvas.backend->StrokeLine({7, 0}, {7, 7}, Dashed(4, 4, 7));
    EXPECT_EQ(canvas.Row(0), "####....");
    EXPECT_EQ(canvas.Column(7), ".####...");
}

/// Darkness of each column (row) of a black line on white, 255 for one whole pixel.
std::vector<int> Darkness(const Canvas& canvas, bool steep) {
    const int steps = steep ? canvas.buffer.height : canvas.buffer.width;
    const int across = steep ? canvas.buffer.width : canvas.buffer.height;
    std::vector<int> sums;
    for (int i = 0; i < steps; ++i) {
        int sum = 0;
        for (int k = 0; k < across; ++k)
            sum += 255 - static_cast<int>(canvas.At(steep ? k : i, steep ? i : k) & 0xFFU);
        sums.push_back(sum);
    }
    return sums;
}

TEST(PixelLines, SlopedStepsWeighOnePixelEach) {
    struct Case {
        const char* why;
        POINT from, to;
    };
    const Case cases[] = {
        {"right, down", {5, 5}, {34, 12}}, {"right, up", {5, 30}, {34, 19}},  {"left, up", {34, 30}, {5, 7}},
        {"left, down", {34, 5}, {5, 17}},  {"steep, down", {5, 5}, {16, 34}}, {"steep, up", {20, 34}, {7, 5}},
        {"steep, left", {30, 5}, {3, 34}}, {"diagonal", {5, 5}, {34, 34}},    {"nearly level", {5, 5}, {34, 6}},
    };
    for (const Case& c : cases) {
        Canvas canvas(40, 40);
        canvas.backend->StrokeLine(c.from, c.to, Pen());
        const bool steep = std::abs(c.to.y - c.from.y) > std::abs(c.to.x - c.from.x);
        const int start = steep ? c.from.y : c.from.x;
        const int end = steep ? c.to.y : c.to.x;
        const std::vector<int> sums = Darkness(canvas, steep);
        for (int i = 0; i < 40; ++i) {
            const bool on = start < end ? i >= start && i < end : i <= start && i > end;
            EXPECT_NEAR(sums[static_cast<std::size_t>(i)], on ? 255 : 0, 1) << c.why << " at " << i;
        }
        EXPECT_EQ(canvas.At(c.from.x, c.from.y), kBlack) << c.why;
        EXPECT_EQ(canvas.At(c.to.x, c.to.y), kWhite) << c.why;
    }
}

TEST(PixelLines, SlopedLinesSideBySideHaveNoSeam) {
    // Three lines one pixel apart, in either order, shallow and steep: whatever isn't an edge is the whole colour.
    for (const bool isSteep : {false, true})
        for (const int direction : {1, -1}) {
            Canvas canvas(60, 60);
            for (int i = 0; i < 3; ++i) {
                const int shift = 20 + (direction > 0 ? i : 2 - i);
                const POINT from{isSteep ? shift : 5, isSteep ? 5 : shift};
                const POINT to{isSteep ? shift + 17 : 55, isSteep ? 55 : shift + 17};
                canvas.backend->StrokeLine(from, to, Stroke{kBlack});
            }
            for (int step = 6; step < 54; ++step) {
                const std::string line = isSteep ? canvas.Row(step) : canvas.Column(step);
                EXPECT_NE(line.find("##"), std::string::npos) << "step " << step;
                EXPECT_EQ(line.find("#?#"), std::string::npos) << "step " << step;
            }
        }
}

TEST(PixelLines, SlopedPositionIsExact) {
    Canvas canvas(30, 12);
    canvas.backend->StrokeLine({0, 0}, {30, 10}, Pen()); // a third of a pixel a step
    for (int x = 0; x < 30; x += 3)
        EXPECT_EQ(canvas.At(x, x / 3), kBlack) << x;
    EXPECT_NEAR(static_cast<int>(canvas.At(1, 0) & 0xFFU), 85, 1); // a third lies in the next row
    EXPECT_NEAR(static_cast<int>(canvas.At(1, 1) & 0xFFU), 170, 1);

    Canvas cut(30, 12);
    cut.backend->SetClip({10, 3, 25, 7});
    cut.backend->StrokeLine({0, 0}, {30, 10}, Pen());
    for (int y = 0; y < 12; ++y)
        for (int x = 0; x < 30; ++x)
            EXPECT_EQ(cut.At(x, y), x >= 10 && x < 25 && y >= 3 && y < 7 ? canvas.At(x, y) : kWhite) << x << "," << y;
}

TEST(PixelLines, SlopedPatternCountsTheDistance) {
    Canvas canvas(20, 20);
    canvas.backend->StrokeLine({0, 0}, {20, 20}, Dashed(4, 4, 0, true)); // 4 pixels are 2.83 diagonal steps
    std::string diagonal;
    for (int i = 0; i < 20; ++i)
        diagonal += canvas.Row(i)[static_cast<std::size_t>(i)];
    EXPECT_EQ(diagonal, "###rrr###rrr###rr###"); // steps 0, 5.7, 11.3, 17 begin a dash
}

TEST(PixelFill, RectanglesAreClipped) {
    struct Case {
        const char* why;
        RECT clip, rect, filled;
    };
    const RECT whole{0, 0, 10, 8};
    const Case cases[] = {
        {"inside", whole, {2, 3, 5, 6}, {2, 3, 5, 6}},
        {"full width", whole, {0, 2, 10, 4}, {0, 2, 10, 4}},
        {"hostile", whole, {INT_MIN, INT_MIN, INT_MAX, INT_MAX}, whole},
        {"empty", whole, {5, 3, 5, 6}, {}},
        {"edges reversed", whole, {5, 6, 2, 3}, {}},
        {"clip cuts", {4, 1, 7, 5}, {0, 0, 10, 8}, {4, 1, 7, 5}},
        {"clip beyond the surface", {-9, -9, 99, 4}, {0, 0, 99, 99}, {0, 0, 10, 4}},
        {"empty clip", {4, 4, 4, 4}, {0, 0, 10, 8}, {}},
        {"clip outside", {20, 20, 30, 30}, {0, 0, 99, 99}, {}},
    };
    for (const Case& c : cases) {
        Canvas canvas(10, 8);
        canvas.backend->SetClip(c.clip);
        canvas.backend->FillRect(c.rect, kBlue);
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 10; ++x) {
                const bool in = x >= c.filled.left && x < c.filled.right && y >= c.filled.top && y < c.filled.bottom;
                EXPECT_EQ(canvas.At(x, y), in ? kBlue : kWhite) << c.why << " " << x << "," << y;
            }
        EXPECT_TRUE(canvas.GuardIsClean()) << c.why;
    }
}

TEST(PixelShapes, CoverWhatTheirEdgesEnclose) {
    Canvas canvas(40, 40);
    canvas.backend->FillShape(Polygon({{10, 10}, {30, 10}, {30, 20}, {10, 20}}), kBlack);
    EXPECT_EQ(canvas.Row(10), std::string(10, '.') + std::string(20, '#') + std::string(10, '.'));
    EXPECT_EQ(canvas.Inked(), 200);

    const auto quarter = [](double from, int x, int y) { // the pixel lies in the quarter turn that begins at `from`
        Canvas pie(40, 40);
        pie.backend->FillShape(Slice(20, 20, 15, from, std::acos(-1.0) / 2), kBlack);
        return pie.At(x, y) == kBlack && pie.At(39 - x, 39 - y) == kWhite && pie.At(39 - x, y) == kWhite &&
               pie.At(x, 39 - y) == kWhite;
    };
    EXPECT_TRUE(quarter(0, 25, 14)) << "counter-clockwise: right to top";
    EXPECT_TRUE(quarter(std::acos(-1.0) / 2, 14, 14)) << "top to left";
    EXPECT_TRUE(quarter(1e3 * std::acos(-1.0), 25, 14)) << "many turns on";

    Canvas disc(40, 40);
    disc.backend->FillShape(Ellipse(20, 20, 10, 5), kBlack);
    double ink = 0;
    for (const int sum : Darkness(disc, false))
        ink += sum / 255.0;
    EXPECT_NEAR(ink, std::acos(-1.0) * 10 * 5, 1);
}

TEST(PixelShapes, FollowTheClip) {
    Canvas canvas(30, 30);
    for (const RECT clip : {RECT{0, 0, 3, 3}, RECT{10, 10, 14, 12}, RECT{8, 8, 8, 8}}) {
        canvas.backend->SetClip(clip);
        canvas.backend->FillShape(Ellipse(15, 15, 40, 40), kBlack);
    }
    EXPECT_EQ(canvas.Inked(), 9 + 8);
    EXPECT_EQ(canvas.Row(11), "..........####................");
}

TEST(PixelShapes, WideDashesDontMoveWithTheClip) {
    Stroke stroke = Dashed(7, 5, 2, true);
    stroke.width = 3;
    Canvas whole(60, 60);
    whole.backend->StrokeLine({-30, -20}, {90, 70}, stroke);
    Canvas part(60, 60);
    part.backend->SetClip({20, 10, 40, 40});
    part.backend->StrokeLine({-30, -20}, {90, 70}, stroke);
    EXPECT_GT(part.Inked(), 40);
    for (int y = 10; y < 40; ++y)
        for (int x = 20; x < 40; ++x)
            EXPECT_NEAR(static_cast<int>(part.At(x, y) >> 16 & 0xFFU), static_cast<int>(whole.At(x, y) >> 16 & 0xFFU),
                        8)
                << x << "," << y; // rasterised from another corner, in steps of 1/256 pixel
}

TEST(PixelShapes, WindingFillsWhatEvenOddLeavesOpen) {
    const std::vector<POINT> twice{{5, 5},   {25, 5},  {25, 25}, {5, 25},  {5, 5},
                                   {10, 10}, {20, 10}, {20, 20}, {10, 20}, {10, 10}};
    Canvas evenOdd(30, 30);
    evenOdd.backend->FillShape(Polygon(twice), kBlack);
    EXPECT_EQ(evenOdd.At(15, 15), kWhite);
    Canvas winding(30, 30);
    winding.backend->FillShape(Polygon(twice, true), kBlack);
    EXPECT_EQ(winding.At(15, 15), kBlack);
}

TEST(PixelShapes, WithoutAnAreaDrawNothing) {
    const Shape shapes[] = {Polygon({}),
                            Polygon({{1, 1}, {9, 9}}),
                            Ellipse(5, 5, 0, 3),
                            Ellipse(5, 5, 3, -1),
                            Ellipse(5, 5, kNan, 3),
                            Ellipse(kNan, 5, 3, 3),
                            Ellipse(5, 5, 1e-300, 3),
                            Ellipse(HUGE_VAL, 5, 3, 3),
                            Slice(5, 5, 3, kNan, 1),
                            Slice(5, 5, 3, 0, 0),
                            Slice(5, 5, 3, 0, kNan)};
    Canvas canvas(10, 10);
    for (const Shape& shape : shapes) {
        canvas.backend->FillShape(shape, kBlack);
        canvas.backend->StrokeShape(shape, Pen());
        EXPECT_EQ(canvas.Inked(), 0) << &shape - shapes;
    }
    canvas.backend->FillShape(Ellipse(5, 5, 3, 3), kBlack);
    EXPECT_GT(canvas.Inked(), 20) << "still draws afterwards";
}

TEST(PixelShapes, FarCornersKeepTheSlope) {
    Canvas canvas(100, 100);
    constexpr int kFar = 2000000000; // the edge is y = x / 2
    canvas.backend->FillShape(Polygon({{-kFar, -kFar / 2}, {kFar, kFar / 2}, {-kFar, kFar / 2}}), kBlack);
    EXPECT_EQ(canvas.At(80, 38), kWhite);
    EXPECT_EQ(canvas.At(80, 42), kBlack);
    EXPECT_EQ(canvas.At(10, 3), kWhite);
    EXPECT_EQ(canvas.At(10, 7), kBlack);
}

/// Pixels that name their place.
void Number(Canvas& canvas) {
    for (int y = 0; y < canvas.buffer.height; ++y)
        for (int x = 0; x < canvas.buffer.width; ++x)
            canvas.memory[static_cast<std::size_t>(y * canvas.buffer.stride + x)] =
                kBlack | static_cast<unsigned>(y * 256 + x);
}

TEST(PixelBlit, CopiesOntoItselfInAllDirections) {
    for (const DWORD operation : {SRCCOPY, SRCPAINT, SRCAND}) {
        for (int way = 0; way < 9; ++way) {
            Canvas canvas(20, 20);
            Number(canvas);
            const std::vector<std::uint32_t> before = canvas.memory;
            const int dx = way % 3 - 1;
            const int dy = way / 3 - 1;
            canvas.backend->Blit({5 + dx, 5 + dy, 15 + dx, 15 + dy}, canvas.buffer, {5, 5, 15, 15}, operation);
            const auto was = [&](int x, int y) { return before[static_cast<std::size_t>(y * 22 + x)]; };
            for (int y = 5; y < 15; ++y)
                for (int x = 5; x < 15; ++x) {
                    const Color source = was(x, y);
                    const Color under = was(x + dx, y + dy);
                    const Color expected = operation == SRCCOPY    ? source
                                           : operation == SRCPAINT ? (source | under)
                                                                   : (source & under);
                    ASSERT_EQ(canvas.At(x + dx, y + dy), expected) << operation << " by " << dx << "," << dy;
                }
        }
    }
}

TEST(PixelBlit, OperationsAndRefusals) {
    std::uint32_t source[] = {0x00F0F0F0U, 0xFF0F0F0FU, 0xFF123456U, kBlack}; // the first lacks its alpha
    const PixelBuffer picture{source, 2, 2, 2};
    struct Case {
        const char* why;
        DWORD operation;
        RECT from;
        Color first;
    };
    const Color under = 0xFF3C3C3CU;
    const Case cases[] = {
        {"or", SRCPAINT, {0, 0, 2, 2}, 0xFFFCFCFCU},
        {"and keeps alpha", SRCAND, {0, 0, 2, 2}, 0xFF303030U},
        {"copy", SRCCOPY, {0, 1, 2, 2}, 0xFF123456U},
        {"unknown operation", 0x00550009, {0, 0, 2, 2}, under},
        {"source beyond the picture", SRCCOPY, {0, 0, 3, 2}, under},
        {"source before the picture", SRCCOPY, {-1, 0, 1, 2}, under},
        {"empty source", SRCCOPY, {1, 1, 1, 1}, under},
    };
    for (const Case& c : cases) {
        Canvas canvas(4, 4, under);
        canvas.backend->Blit({1, 1, 1 + c.from.right - c.from.left, 1 + c.from.bottom - c.from.top}, picture, c.from,
                             c.operation);
        EXPECT_EQ(canvas.At(1, 1), c.first) << c.why;
        EXPECT_EQ(canvas.At(3, 3), under) << c.why;
    }
}

TEST(PixelBlit, MasksTakeTheNearestAndPicturesBlend) {
    std::uint32_t halves[] = {kBlack, kWhite};
    const PixelBuffer picture{halves, 2, 1, 2};
    Canvas mask(9, 1);
    mask.backend->Blit({0, 0, 8, 1}, picture, {0, 0, 2, 1}, SRCAND);
    EXPECT_EQ(mask.Row(0), "####.....");
    Canvas smooth(9, 1);
    smooth.backend->Blit({0, 0, 8, 1}, picture, {0, 0, 2, 1}, SRCCOPY);
    EXPECT_EQ(smooth.Row(0), "##????...") << "ends stay, the middle passes over";
    EXPECT_EQ(smooth.At(3, 0), 0xFF606060U) << "centre at 0.375 of the way: 255 * 0.375 = 95.6";

    std::uint32_t fine[] = {kBlack, kWhite, kWhite, kWhite};
    Canvas coarse(2, 1, kBlack);
    coarse.backend->Blit({0, 0, 2, 1}, {fine, 4, 1, 4}, {0, 0, 4, 1}, SRCPAINT);
    EXPECT_EQ(coarse.Row(0), "..") << "the centres lie on the second and the fourth";
    Canvas average(1, 1, kRed);
    average.backend->Blit({0, 0, 1, 1}, {fine, 4, 1, 4}, {0, 0, 4, 1}, SRCCOPY);
    EXPECT_EQ(average.At(0, 0), 0xFFBFBFBFU) << "three quarters of 255 = 191";
}

TEST(PixelBlit, ClippedTargetsSampleTheSame) {
    Canvas source(23, 17);
    Number(source);
    for (const RECT target : {RECT{-7, -5, 60, 40}, RECT{3, 2, 14, 9}, RECT{-100000, -9000, 90000, 8000}}) {
        for (const DWORD operation : {SRCCOPY, SRCAND}) {
            Canvas whole(48, 32);
            whole.backend->Blit(target, source.buffer, {1, 1, 22, 16}, operation);
            Canvas part(48, 32);
            part.backend->SetClip({6, 5, 11, 8});
            part.backend->Blit(target, source.buffer, {1, 1, 22, 16}, operation);
            for (int y = 5; y < 8; ++y)
                for (int x = 6; x < 11; ++x)
                    ASSERT_EQ(part.At(x, y), whole.At(x, y)) << target.left << " " << x << "," << y;
        }
    }
}

TEST(PixelText, MaskBlendsRoundedAndClipped) {
    CoverageMask mask;
    mask.width = 6;
    mask.height = 2;
    mask.stride = 8;
    mask.coverage = {0, 128, 255, 1, 0, 64, 99, 99, 255, 255, 255, 255, 255, 255, 99, 99};
    Canvas canvas(8, 4);
    BlendMask(canvas.buffer, {1, 0, 7, 2}, mask, 1, 1, kBlack);
    EXPECT_EQ(canvas.Row(1), "..?#?.?.");
    EXPECT_EQ(canvas.At(2, 1), 0xFF7F7F7FU);
    EXPECT_EQ(canvas.At(4, 1), 0xFFFEFEFEU);
    EXPECT_EQ(canvas.At(6, 1), 0xFFBFBFBFU);
    EXPECT_EQ(canvas.Row(2), "........") << "below the clip";
    BlendMask(canvas.buffer, {0, 0, 8, 4}, mask, -3, 2, kBlack);
    EXPECT_EQ(canvas.Row(3), "###.....") << "cut at the left";
    BlendMask(canvas.buffer, {0, 0, 8, 4}, mask, std::int64_t{INT_MAX} + 5, INT_MIN, kBlack);
    EXPECT_TRUE(canvas.GuardIsClean());
}

TEST(PixelText, EveryBlendIsExact) {
    for (unsigned under = 0; under < 256; under += 5)
        for (unsigned coverage = 0; coverage < 256; ++coverage) {
            Canvas canvas(1, 1, kBlack | under * 0x10101U);
            CoverageMask mask;
            mask.width = mask.height = mask.stride = 1;
            mask.coverage = {static_cast<std::uint8_t>(coverage)};
            BlendMask(canvas.buffer, {0, 0, 1, 1}, mask, 0, 0, 0xFFC80A96U);
            const auto mix = [&](double ink) {
                return std::lround((ink * coverage + under * (255.0 - coverage)) / 255);
            };
            const Color expected = kBlack | static_cast<Color>(mix(200) << 16 | mix(10) << 8 | mix(150));
            ASSERT_EQ(canvas.At(0, 0), expected) << under << " under " << coverage;
        }
}

TEST(PixelBackend, AlphaStaysFull) {
    Canvas canvas(60, 60);
    std::mt19937 random(7);
    const auto any = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
    const auto point = [&] { return POINT{any(-10, 70), any(-10, 70)}; };
    const auto color = [&] { return kBlack | static_cast<Color>(any(0, 0xFFFFFF)); };
    for (int i = 0; i < 400; ++i) {
        Stroke stroke = i % 2 != 0 ? Dashed(any(1, 9), any(1, 9), any(0, 9), i % 3 == 0) : Pen();
        stroke.width = any(1, 4);
        stroke.color = color();
        canvas.backend->SetClip({any(-5, 20), any(-5, 20), any(30, 65), any(30, 65)});
        canvas.backend->StrokeLine(point(), point(), stroke);
        canvas.backend->FillShape(Polygon({point(), point(), point(), point()}), color());
        canvas.backend->StrokeShape(Ellipse(any(0, 60), any(0, 60), any(1, 20), any(1, 20)), stroke);
        canvas.backend->FillShape(Slice(any(0, 60), any(0, 60), any(1, 20), any(0, 6), any(1, 6)), color());
        canvas.backend->Blit({any(0, 9), any(0, 9), any(20, 50), any(20, 50)}, canvas.buffer, {3, 4, 27, 31}, SRCCOPY);
        for (int y = 0; y < 60; ++y)
            for (int x = 0; x < 60; ++x)
                ASSERT_EQ(canvas.At(x, y) >> 24U, 0xFFU) << "round " << i;
    }
    EXPECT_TRUE(canvas.GuardIsClean());
}

TEST(PixelBackend, HostileCoordinatesEndAtOnce) {
    const int edges[] = {INT_MIN, INT_MIN + 1, -(1 << 24), -1, 0, 5, 1 << 24, INT_MAX - 1, INT_MAX};
    const auto start = std::chrono::steady_clock::now();
    Canvas canvas(16, 16);
    const auto& backend = canvas.backend;
    for (const int a : edges)
        for (const int b : edges)
            for (const int c : edges)
                for (const int d : {INT_MIN, -1, 7, INT_MAX}) {
                    backend->StrokeLine({a, b}, {c, d}, Pen());
                    backend->StrokeLine({a, b}, {c, d}, Dashed(1, 1, 0, true));
                    Stroke wide = Dashed(2, 1, 1e300);
                    wide.width = 3;
                    backend->StrokeLine({a, b}, {c, d}, wide);
                    backend->Blit({a, b, c, d}, canvas.buffer, {0, 0, 7, 9}, SRCCOPY);
                    backend->Blit({a, b, c, d}, canvas.buffer, {0, 0, 7, 9}, SRCAND);
                    backend->FillShape(Polygon({{a, b}, {c, d}, {b, a}, {d, c}}), kRed);
                    backend->FillShape(Ellipse(a, b, std::abs(static_cast<double>(c)), 1 + std::abs(d / 2.0)), kBlue);
                }
    EXPECT_TRUE(canvas.GuardIsClean());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60)); // a walk along one takes minutes
}

TEST(PixelPool, GivesWarmMemoryAndRefusesNonsense) {
    std::uint32_t* first = TakePixels(123, 45);
    ASSERT_NE(first, nullptr);
    GivePixelsBack(first, 123, 45);
    EXPECT_EQ(TakePixels(123, 45), first);
    std::uint32_t* second = TakePixels(123, 45);
    EXPECT_NE(second, first) << "never handed out twice";
    GivePixelsBack(first, 123, 45);
    GivePixelsBack(second, 123, 45);
    for (const auto& [width, height] : {std::pair(0, 5), std::pair(5, -1), std::pair(INT_MAX, INT_MAX)})
        EXPECT_EQ(TakePixels(width, height), nullptr) << width;
    for (int i = 1; i < 20; ++i) // more than are kept, some too large to keep
        GivePixelsBack(TakePixels(1000 * i, 1000), 1000 * i, 1000);
}

class ImageFile : public testing::Test {
protected:
    ImageFile() { std::filesystem::create_directories(m_folder); }
    ~ImageFile() override { std::filesystem::remove_all(m_folder); }
    std::string Path(const char* name) const { return (m_folder / name).string(); }
    std::size_t Files() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(m_folder), {}));
    }

    std::filesystem::path m_folder =
        std::filesystem::path(testing::TempDir()) / ("melkar_image_" + std::to_string(std::random_device{}()));
};

TEST_F(ImageFile, WritesAndReadsBack) {
    Canvas canvas(7, 5);
    Number(canvas);
    const std::string path = Path("a.png");
    ASSERT_EQ(WritePngFile(canvas.buffer, path.c_str()), 0);
    EXPECT_EQ(Files(), 1U) << "no temporary file stays";
    const PixelBuffer read = LoadImageFile(path.c_str(), 0, 0);
    ASSERT_NE(read.pixels, nullptr);
    ASSERT_EQ(read.width * 100 + read.height, 705);
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 7; ++x)
            EXPECT_EQ(read.pixels[y * read.stride + x], canvas.At(x, y));
    GivePixelsBack(read.pixels, read.width, read.height);
    const PixelBuffer scaled = LoadImageFile(path.c_str(), 14, 0);
    ASSERT_NE(scaled.pixels, nullptr);
    EXPECT_EQ(scaled.width * 100 + scaled.height, 1405) << "a side of 0 stays as it is";
    GivePixelsBack(scaled.pixels, scaled.width, scaled.height);
}

/// A bitmap file of two pixels side by side.
std::string TwoPixelBitmap(char bitsPerPixel, const std::string& pixels) {
    std::string file("BM\0\0\0\0\0\0\0\0\66\0\0\0\50\0\0\0\2\0\0\0\1\0\0\0\1\0", 28);
    file[2] = static_cast<char>(54 + pixels.size());
    file += bitsPerPixel;
    return file + std::string(25, '\0') + pixels;
}

TEST_F(ImageFile, ReadsBitmapsWithAndWithoutAFourthByte) {
    const std::string files[] = {TwoPixelBitmap(24, std::string("\x10\x20\x30\x40\x50\x60\0\0", 8)),
                                 TwoPixelBitmap(32, std::string("\x10\x20\x30\0\x40\x50\x60\0", 8))};
    for (const std::string& file : files) {
        std::ofstream(Path("a.bmp"), std::ios::binary) << file;
        const PixelBuffer read = LoadImageFile(Path("a.bmp").c_str(), 0, 0);
        ASSERT_NE(read.pixels, nullptr);
        EXPECT_EQ(read.pixels[0], 0xFF302010U) << "blue comes first; a fourth byte of 0 isn't transparent";
        EXPECT_EQ(read.pixels[1], 0xFF605040U);
        GivePixelsBack(read.pixels, read.width, read.height);
    }
}

TEST_F(ImageFile, FailuresLeaveNothing) {
    Canvas canvas(3, 3);
    EXPECT_EQ(WritePngFile(canvas.buffer, Path("missing/a.png").c_str()), -1);
    EXPECT_EQ(WritePngFile(canvas.buffer, m_folder.c_str()), -1) << "a folder stands there";
    EXPECT_EQ(WritePngFile({}, Path("a.png").c_str()), -1);
    EXPECT_EQ(WritePngFile(canvas.buffer, nullptr), -1);
    EXPECT_EQ(Files(), 0U);
    std::ofstream(Path("text.png")) << "no picture";
    for (const std::string& path : {Path("text.png"), Path("missing.png"), m_folder.string(), std::string()})
        EXPECT_EQ(LoadImageFile(path.c_str(), 0, 0).pixels, nullptr) << path;
    EXPECT_EQ(LoadImageFile(nullptr, 0, 0).pixels, nullptr);
}

} // namespace
