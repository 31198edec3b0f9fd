#include "support/temp_workdir.h"

#include <MelkarCommon/support/platform/backend.h>
#include <MelkarCommon/support/platform/image_file.h>
#include <MelkarCommon/support/platform/pixel_blit.h>

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cmath>
#include <filesystem>

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
        {"beyond both edges", -5, 99, Pen(), "############"},
        {"pattern", 0, 12, Dashed(3, 2, 0), "###..###..##"},
        {"pattern goes from the start, leftwards", 11, -1, Dashed(3, 2, 0), "##..###..###"},
        {"phase within the gap", 0, 12, Dashed(3, 2, 4), ".###..###..#"},
        {"pattern counts from a hidden start", -4, 12, Dashed(3, 2, 0), ".###..###..#"},
        {"pattern counts from a hidden start, leftwards", 15, -1, Dashed(3, 2, 0), "#..###..###."},
        {"painted gaps", 1, 9, Dashed(2, 3, 0, true), ".##rrr##r..."},
        {"fractions: pixels at 0, 3, 5, 8, 10 begin a dash", 0, 12, Dashed(1, 1.5, 0), "#..#.#..#.#."},
        {"a pattern too fine to be seen is solid", 1, 4, Dashed(1e-9, 1e-9, 0), ".###........"},
        {"no number", 1, 4, Dashed(kNan, 3, 0), ".###........"},
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

TEST(PixelLines, FourRowsMakeOneThickPattern) {
    Canvas canvas(12, 4);
    for (int y = 0; y < 4; ++y)
        canvas.backend->StrokeLine({1, y}, {11, y}, Dashed(3, 2, 0));
    for (int y = 0; y < 4; ++y)
        EXPECT_EQ(canvas.Row(y), ".###..###...");
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

TEST(ImageFile, WritesAndReadsBack) {
    const TempWorkdir work;
    Canvas canvas(7, 5);
    Number(canvas);
    const std::string path = work.Path("conf/a.png");
    ASSERT_EQ(WritePngFile(canvas.buffer, path.c_str()), 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(work.Path("conf")), {}), 1)
        << "no temporary file stays";
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

} // namespace
