// Surfaces with several pixels a unit: where edges, lines and copies land, and that texts keep their room.

#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/platform/tests/framed.h>
#include <MelkarCommon/platform/tests/surface.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <string>
#include <tuple>
#include <vector>

namespace {

using melkar::ScopedFont;
using melkar::ScopedPen;

constexpr COLORREF kInk = RGB(0, 0, 0);

bool IsInk(std::uint32_t pixel) { return (pixel & 0xFFU) < 128; }

/// A row of pixels, or a column: '#' where there is ink.
std::string Pixels(const Surface& surface, int index, bool isColumn) {
    const PixelView view = GetPixels(surface);
    std::string text;
    for (int i = 0; i < (isColumn ? view.height : view.width); ++i)
        text += IsInk(isColumn ? surface.At(index, i) : surface.At(i, index)) ? '#' : '.';
    return text;
}

void Line(HDC s, std::vector<POINT> points, int width = 1, int style = PS_SOLID) {
    const ScopedPen pen(s, style, width, kInk);
    SetBkMode(s, TRANSPARENT);
    MoveToEx(s, points[0].x, points[0].y, nullptr);
    for (const POINT& point : points)
        LineTo(s, point.x, point.y);
}

using Draw = std::function<void(HDC)>;

Draw Frame(RECT rect, COLORREF fill) {
    return [=](HDC s) { DrawFramed(s, rect, fill, kInk, 1); };
}
Draw Path(std::vector<POINT> points, int width = 1, int style = PS_SOLID) {
    return [=](HDC s) { Line(s, points, width, style); };
}
/// Level lines, one after the other.
Draw Rows(std::vector<int> rows) {
    return [=](HDC s) {
        for (const int y : rows)
            Line(s, {{1, y}, {7, y}});
    };
}

TEST(FinerPixels, SizesAreRounded) {
    const Surface surface(CreateScaledSurface(10, 7, 1.5));
    EXPECT_EQ(GetPixels(surface).width * 100 + GetPixels(surface).height, 1511) << "10.5 rows are 11";
    EXPECT_EQ(GetDeviceCaps(surface, LOGPIXELSY), 96);
    EXPECT_EQ(GetDeviceCaps(surface, HORZRES) * 100 + GetDeviceCaps(surface, VERTRES), 1007);
    BITMAP bitmap{};
    const HBITMAP compatible = CreateCompatibleBitmap(surface, 3, 5);
    GetObjectA(compatible, sizeof bitmap, &bitmap);
    EXPECT_EQ(bitmap.bmWidth * 10 + bitmap.bmHeight, 35) << "in units";
    const Surface working(CreateCompatibleDC(surface));
    const melkar::ScopedObject selected(working, compatible); // deletes it
    EXPECT_EQ(GetPixels(working).width * 10 + GetPixels(working).height, 58);
    std::uint32_t memory[12 * 9];
    for (const double scale : {0.99, 8.01, std::nan("")}) {
        EXPECT_EQ(CreateScaledSurface(8, 6, scale), nullptr) << scale;
        EXPECT_EQ(WrapScaledPixels(memory, 8, 6, 12 * 4, scale), nullptr) << scale;
    }
    EXPECT_EQ(CreateScaledSurface(20000, 1, 2), nullptr) << "more pixels than a side may have";
    EXPECT_EQ(CreateCompatibleBitmap(surface, 30000, 1), nullptr);
    EXPECT_EQ(WrapScaledPixels(memory, 8, 6, 11 * 4, 1.5), nullptr) << "rows are shorter than 12 pixels";
    DeleteDC(WrapScaledPixels(memory, 8, 6, 12 * 4, 1.5));
}

TEST(FinerPixels, EdgesLandOnWholePixels) {
    const Draw filled = [](HDC s) {
        SelectObject(s, GetStockObject(BLACK_BRUSH));
        Ellipse(s, 1, 1, 7, 7);
    };
    const Draw dashed = [](HDC s) {
        const ScopedPen dots(s, PS_DASH, 1, kInk);
        Rectangle(s, 1, 1, 5, 5);
    };
    const Draw besideOthers = [](HDC s) {
        for (const int y : {1, 2, 3})
            for (const int x : {1, 5})
                Line(s, {{x, y}, {x + 2, y}});
    };
    const Draw interrupted = [](HDC s) {
        Line(s, {{1, 1}, {7, 1}});
        DrawFramed(s, {0, 2, 8, 3}, RGB(255, 255, 255), RGB(255, 255, 255), 1);
        Line(s, {{1, 2}, {7, 2}});
    };
    const Draw closed = Path({{2, 2}, {6, 2}, {6, 6}, {2, 6}, {2, 2}}, 3);
    // Of 8 units: a row of pixels, or a column.
    const std::tuple<const char*, double, Draw, int, bool, const char*> cases[] = {
        {"edges at 1.5 and 4.5 go up", 1.5, Frame({1, 1, 3, 3}, kInk), 3, false, "..###......."},
        {"a frame is as thick at 10.5 as at 1.5", 1.5, Frame({1, 1, 7, 7}, 0xFFFFFF), 6, false, "..##.....##."},
        {"an ellipse lies within the same edges", 1.5, filled, 6, false, "..#########."},
        {"its outline as well", 1.5, [](HDC s) { Ellipse(s, 1, 1, 7, 7); }, 6, true, "..##.....##."},
        {"a thin line is 1.5 pixels, so 2", 1.5, Path({{1, 1}, {4, 1}}), 3, true, "..##........"},
        {"it ends before its last unit", 1.5, Path({{1, 2}, {4, 2}}), 3, false, "..####......"},
        {"backwards it ends behind it", 1.5, Path({{4, 2}, {1, 2}}), 3, false, "...#####...."},
        {"of width 2: from a unit before its place", 1.5, Path({{1, 3}, {4, 3}}, 2), 3, true, "...###......"},
        {"a frame is whole where it closes", 1, closed, 1, false, ".#######"},
        {"and at the corners across", 1, closed, 7, false, ".#######"},
        {"a corner is whole", 2, Path({{1, 1}, {4, 1}, {4, 4}}), 9, true, "..######........"},
        {"a pattern's corner, too", 2, dashed, 9, true, "..########......"},
        {"a pattern grows", 2, Path({{0, 1}, {8, 1}}, 1, PS_DOT), 3, false, "######......####"},
        {"lines side by side leave no gap at 2", 1.25, Rows({1, 2, 3}), 5, true, ".####....."},
        {"nor from below", 1.25, Rows({3, 2, 1}), 5, true, ".####....."},
        {"other lines between them do no harm", 1.25, besideOthers, 7, true, ".####....."},
        {"what was drawn on in between stays", 1.25, interrupted, 5, true, ".#.#......"},
    };
    for (const auto& [why, scale, draw, index, isColumn, pixels] : cases) {
        const Surface surface(CreateScaledSurface(8, 8, scale));
        draw(surface);
        EXPECT_EQ(Pixels(surface, index, isColumn), pixels) << why;
    }
}

/// The middle of the ink in a column, from the top of the picture.
double MiddleOfInk(const Surface& surface, int x) {
    double ink = 0;
    double sum = 0;
    for (int y = 0; y < GetPixels(surface).height; ++y) {
        const double dark = 255 - (surface.At(x, y) & 0xFFU);
        ink += dark;
        sum += dark * (y + 0.5);
    }
    return sum / ink;
}

TEST(FinerPixels, SlopedLinesRunThroughTheMiddleOfTheirUnits) {
    for (const auto& [scale, width] : {std::pair{2.0, 1}, {3.0, 1}, {2.0, 2}, {2.0, 3}, {4.0, 2}}) {
        const Surface surface(CreateScaledSurface(20, 20, scale));
        Line(surface, {{2, 5}, {18, 9}}, width);
        const int x = static_cast<int>(10 * scale); // its middle is half a pixel further
        const double units = 5.5 + ((x + 0.5) / scale - 2.5) / 4;
        EXPECT_NEAR(MiddleOfInk(surface, x), units * scale, 0.06) << scale << " " << width;
    }
}

TEST(FinerPixels, SlopedLinesSideBySideHaveNoSeam) {
    for (const double scale : {1.25, 1.5, 2.0, 3.0}) {
        const Surface surface(CreateScaledSurface(40, 30, scale));
        for (const int y : {10, 11, 12})
            Line(surface, {{3, y}, {37, y + 6}});
        int pale = 0;
        for (int y = 0; y < GetPixels(surface).height; ++y) {
            const std::uint32_t blue = surface.At(static_cast<int>(20 * scale), y) & 0xFFU;
            pale += blue > 5 && blue < 250 ? 1 : 0;
        }
        EXPECT_LE(pale, 2) << scale << ": the edges";
    }
}

TEST(FinerPixels, CopiesOfOneScaleCopyPixels) {
    std::uint32_t stripes[12 * 12];
    std::iota(std::begin(stripes), std::end(stripes), 0xFF000000U);
    const Surface from(WrapScaledPixels(stripes, 8, 8, 12 * 4, 1.5));
    // To x and of a width in units; a pixel of the target's row, and the one that it is from.
    const std::tuple<const char*, int, int, int, std::uint32_t> cases[] = {
        {"its first pixel", 3, 4, 5, 0},
        {"its last: 10.5 is 11, 4 units have 6", 3, 4, 10, 5},
        {"none behind it", 3, 4, 11, 0xFFFFFF},
        {"3 units at 0 are 5 pixels, at 1 there is room for 4", 1, 3, 5, 3},
        {"and none for the fifth", 1, 3, 6, 0xFFFFFF},
    };
    for (const auto& [why, x, width, pixel, source] : cases) {
        const Surface to(CreateScaledSurface(8, 8, 1.5));
        EXPECT_TRUE(BitBlt(to, x, 0, width, 4, from, 0, 0, SRCCOPY));
        EXPECT_EQ(to.At(pixel, 0) & 0xFFFFFFU, source) << why;
    }
    const Surface small(CreateScaledSurface(1, 1, 1.25)); // 1 pixel; from 1 to 2 there are 2
    DrawFramed(small, {0, 0, 1, 1}, kInk, kInk, 1);
    const Surface to(CreateScaledSurface(8, 8, 1.25));
    BitBlt(to, 1, 1, 1, 1, small, 0, 0, SRCCOPY);
    EXPECT_EQ(Pixels(to, 2, false), ".##.......") << "the last pixel stands for the missing one";
}

TEST(FinerPixels, OtherCopiesAreScaled) {
    const Surface coarse(CreateMemorySurface(4, 4));
    DrawFramed(coarse, {1, 1, 2, 2}, kInk, kInk, 1);
    const Surface fine(CreateScaledSurface(4, 4, 2));
    BitBlt(fine, 0, 0, 4, 4, coarse, 0, 0, SRCAND);
    EXPECT_EQ(Pixels(fine, 2, false), "..##....");
    const Surface back(CreateMemorySurface(4, 4));
    BitBlt(back, 1, 0, 3, 4, fine, 0, 0, SRCCOPY);
    EXPECT_EQ(Pixels(back, 1, false), "..#.");
    const Surface record(CreateRecordingSurface(4, 4));
    SelectObject(record, GetStockObject(BLACK_BRUSH));
    Ellipse(record, 0, 0, 4, 4);
    const Surface played(CreateScaledSurface(4, 4, 4));
    StretchBlt(played, 0, 0, 4, 4, record, 0, 0, 4, 4, SRCAND);
    EXPECT_EQ(Pixels(played, 3, false), ".##############.") << "played at its pixels: no steps of four";
}

/// The first column with ink and that behind the last one.
std::pair<int, int> ColumnsOfInk(const Surface& surface) {
    const int width = GetPixels(surface).width;
    std::pair<int, int> columns{width, 0};
    for (int x = 0; x < width; ++x)
        if (Pixels(surface, x, true).find('#') != std::string::npos)
            columns = {std::min(columns.first, x), x + 1};
    return columns;
}

TEST(FinerPixels, TextsKeepTheirRoom) {
    const auto draw = [](HDC s, std::string text, RECT box, UINT format) {
        const ScopedFont font(s, CreateFontA(-13, 0, 0, 0, 400, 0, 0, 0, 1, 0, 0, 2, 0, "DejaVu Sans"));
        DrawTextExA(s, text.data(), -1, &box, format, nullptr);
        return box.right * 1000 + box.bottom;
    };
    const Surface coarse(CreateMemorySurface(300, 60));
    for (const double scale : {1.25, 1.5, 2.0, 3.0})
        for (const char* words : {"Illicit, still filling a hilly village", "Mmm, we wow moms", "1234.5 kcal/min"}) {
            const Surface fine(CreateScaledSurface(300, 60, scale));
            const auto room = [&, words = words](HDC s) {
                return draw(s, words, {20, 10, 120, 0}, DT_CALCRECT | DT_WORDBREAK);
            };
            EXPECT_EQ(room(fine), room(coarse)) << words;
            draw(fine, words, {0, 0, 290, 60}, DT_RIGHT | DT_SINGLELINE);
            const int width = draw(coarse, words, {}, DT_CALCRECT | DT_SINGLELINE) / 1000;
            const auto [first, last] = ColumnsOfInk(fine);
            EXPECT_NEAR(first, (290 - width) * scale, 2 * scale) << words << " " << scale << ": begins where it did";
            EXPECT_NEAR(last, 290 * scale, 2 * scale) << words << " " << scale << ": ends there";
        }
}

} // namespace
