// The drawing calls: objects and their owners, modes, what a rectangle covers, text in boxes, copies between surfaces.

#include "support/temp_workdir.h"

#include <MelkarCommon/support/platform/drawing.h>
#include <MelkarCommon/support/platform/surface.h>
#include <MelkarCommon/support/scoped.h>
#include <MelkarCommon/support/support.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <fstream>
#include <string>
#include <tuple>
#include <unistd.h>

namespace {

using melkar::ScopedFont;
using melkar::ScopedPen;

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr std::uint32_t kRedPixel = 0xFFFF0000U;

struct Surface {
    explicit Surface(HDC dc) : handle(dc) {}
    ~Surface() { DeleteDC(handle); }
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;
    std::uint32_t At(int x, int y) const {
        const PixelView view = GetPixels(handle);
        return view.pixels[y * view.stride + x];
    }
    HDC handle;
};

HFONT FontOf(int height, int escapement = 0) {
    return CreateFontA(height, 0, escapement, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 2, 0x31, "DejaVu Sans");
}

CRect Measured(HDC surface, std::string text, UINT format, CRect box = CRect()) {
    DrawTextExA(surface, text.data(), -1, &box, format | DT_CALCRECT, nullptr);
    return box;
}

TEST(DrawingObjects, ComeBackAndAreCounted) {
    const std::size_t before = LiveObjectCount();
    {
        const Surface surface(CreateMemorySurface(10, 10));
        HPEN pen = CreatePen(PS_SOLID, 1, kRed);
        EXPECT_EQ(SelectObject(surface.handle, pen), GetStockObject(BLACK_PEN));
        EXPECT_FALSE(DeleteObject(pen)) << "selected";
        EXPECT_EQ(LiveObjectCount(), before + 2);
        SelectObject(surface.handle, GetStockObject(BLACK_PEN));
        EXPECT_TRUE(DeleteObject(pen));
        EXPECT_FALSE(DeleteObject(GetStockObject(WHITE_BRUSH)));
        HBITMAP bitmap = CreateCompatibleBitmap(surface.handle, 4, 4);
        const Surface one(CreateCompatibleDC(surface.handle));
        const Surface other(CreateCompatibleDC(surface.handle));
        const HGDIOBJ former = SelectObject(one.handle, bitmap);
        EXPECT_EQ(SelectObject(other.handle, bitmap), nullptr) << "selected elsewhere";
        SelectObject(one.handle, former);
        EXPECT_TRUE(DeleteObject(bitmap));
    }
    EXPECT_EQ(LiveObjectCount(), before);
}

TEST(DrawingObjects, NothingComesOfNothing) {
    EXPECT_EQ(CreateMemorySurface(0, 10), nullptr);
    EXPECT_EQ(CreateCompatibleBitmap(nullptr, 12000, 12000), nullptr) << "more than 2^27 pixels";
    EXPECT_EQ(CreateMemorySurface(32767, 32767), nullptr) << "four gigabytes";
    std::uint32_t pixel = 0;
    EXPECT_EQ(WrapPixels(&pixel, 1, 1, 3), nullptr);
    EXPECT_EQ(CreatePolygonRgn(nullptr, 3, ALTERNATE), nullptr);
    EXPECT_FALSE(DeleteDC(nullptr));
    EXPECT_FALSE(LineTo(nullptr, 1, 1));
    EXPECT_EQ(DrawTextExA(nullptr, nullptr, -1, nullptr, 0, nullptr), 0);
    EXPECT_FALSE(BitBlt(nullptr, 0, 0, 1, 1, nullptr, 0, 0, SRCCOPY));
    const Surface empty(CreateCompatibleDC(nullptr));
    EXPECT_FALSE(Rectangle(empty.handle, 0, 0, 0, 5));
    EXPECT_FALSE(BitBlt(empty.handle, 0, 0, 1, 1, nullptr, 0, 0, SRCCOPY));
    EXPECT_EQ(GetPixels(empty.handle).pixels, nullptr);
    EXPECT_EQ(GetDeviceCaps(nullptr, LOGPIXELSY), 96);
}

TEST(DrawingObjects, TellTheSizeOfTheDevice) {
    std::uint32_t pixels[600];
    for (HDC made :
         {CreateMemorySurface(30, 20, 192), WrapPixels(pixels, 30, 20, 120), CreateRecordingSurface(30, 20)}) {
        const Surface surface(made);
        const Surface compatible(CreateCompatibleDC(made));
        for (HDC asked : {made, compatible.handle})
            EXPECT_EQ(GetDeviceCaps(asked, HORZRES) * 100 + GetDeviceCaps(asked, VERTRES), 3020);
    }
    EXPECT_EQ(GetDeviceCaps(nullptr, HORZRES), 0);
}

TEST(DrawingRectangles, CoverLeftToRightLessOne) {
    // A frame that stays inside, its edges given the wrong way round; one that reaches out; one without an inside.
    for (const auto& [style, width, given, record] :
         {std::tuple{PS_INSIDEFRAME, 2, RECT{9, 10, 3, 4},
                     "fill 3,4 6x2 #FF0000\nfill 3,8 6x2 #FF0000\nfill 3,6 2x2 #FF0000\nfill 7,6 2x2 #FF0000\n"
                     "fill 5,6 2x2 #FFFFFF\n"},
          std::tuple{PS_SOLID, 2, RECT{3, 4, 9, 10},
                     "fill 2,3 8x2 #FF0000\nfill 2,9 8x2 #FF0000\nfill 2,5 2x4 #FF0000\nfill 8,5 2x4 #FF0000\n"
                     "fill 4,5 4x4 #FFFFFF\n"},
          std::tuple{PS_INSIDEFRAME, 3, RECT{3, 4, 7, 8}, "fill 3,4 4x4 #FF0000\n"}}) {
        const Surface surface(CreateRecordingSurface(14, 14));
        const ScopedPen pen(surface.handle, style, width, kRed);
        Rectangle(surface.handle, given.left, given.top, given.right, given.bottom);
        EXPECT_EQ(GetRecording(surface.handle), record);
    }
}

TEST(DrawingRectangles, RefusedOnesMakeNoPen) {
    const Surface surface(CreateRecordingSurface(20, 20));
    for (const RECT refused : {RECT{5, 5, 5, 9}, RECT{5, 5, 9, 5}, RECT{-9, 0, -1, 5}, RECT{0, -1, 5, 5}})
        EXPECT_EQ(DrawRectangle(surface.handle, refused, 0, 0, 1), -1);
    EXPECT_EQ(GetRecording(surface.handle), "");
}

TEST(DrawingLines, PatternsRunOnAndFollowTheDpi) {
    for (const auto& [style, width, record] :
         {std::tuple{PS_DOT, 1,
                     "line 0,5 60,5 #FF0000 w2 dot 6,6 gaps #FFFFFF\n"
                     "line 60,5 60,9 #FF0000 w2 dot 6,6 phase 60 gaps #FFFFFF\n"},
          {PS_SOLID, 0, "line 0,5 60,5 #FF0000 w1\nline 60,5 60,9 #FF0000 w1\n"}}) {
        const Surface surface(CreateRecordingSurface(60, 10, 192));
        const ScopedPen pen(surface.handle, style, width, kRed);
        LineTo(surface.handle, 7, 7); // what went before the move counts no longer
        MoveToEx(surface.handle, 0, 5, nullptr);
        LineTo(surface.handle, 60, 5);
        LineTo(surface.handle, 60, 9);
        const std::string lines = GetRecording(surface.handle);
        EXPECT_EQ(lines.substr(lines.find('\n') + 1), record);
    }
}

// Nine tenths of the machines that show charts have 96 dpi: a length that forgets the dpi is seen on the others only.
TEST(DrawingText, FontOfANewSurfaceFollowsTheDpi) {
    const struct {
        const char* why;
        int dpi, width, height; // of "00": twice 3/5 and once 5/4 of the em, each rounded up
    } cases[] = {
        {"12 pixels", 96, 16, 15},
        {"24", 192, 30, 30},
        {"37.5, rounded", 300, 46, 48},
        {"never nothing", 1, 2, 2},
    };
    for (const auto& c : cases) {
        const Surface surface(CreateRecordingSurface(50, 50, c.dpi));
        const Surface compatible(CreateCompatibleDC(surface.handle));
        for (HDC handle : {surface.handle, compatible.handle})
            EXPECT_EQ(Measured(handle, "00", DT_SINGLELINE), CRect(0, 0, c.width, c.height)) << c.why;
        const ScopedFont noHeight(surface.handle, FontOf(0));
        EXPECT_EQ(Measured(surface.handle, "00", DT_SINGLELINE), CRect(0, 0, c.width, c.height)) << c.why;
    }
}

TEST(DrawingLines, WaitingOnesShowWhereverTheyAreLookedAt) {
    const auto draw = [](HDC surface) {
        const ScopedPen pen(surface, PS_SOLID, 1, kRed);
        MoveToEx(surface, 2, 2, nullptr);
        LineTo(surface, 8, 2);
        LineTo(surface, 8, 9);
    };
    const Surface screen(CreateMemorySurface(12, 12));
    const Surface work(CreateCompatibleDC(screen.handle));
    HBITMAP bitmap = CreateCompatibleBitmap(screen.handle, 12, 12);
    const HGDIOBJ former = SelectObject(work.handle, bitmap);
    draw(work.handle);
    SelectObject(work.handle, former); // the lines stay with the picture
    SelectObject(work.handle, bitmap);
    EXPECT_EQ(work.At(8, 8), kRedPixel) << "selected away";
    DrawRectangle(work.handle, RECT{0, 0, 12, 12}, 0, 0, 0);
    draw(work.handle);
    BitBlt(screen.handle, 0, 0, 12, 12, work.handle, 0, 0, SRCCOPY);
    EXPECT_EQ(screen.At(8, 8), kRedPixel) << "copied from";
    draw(screen.handle);
    BitBlt(screen.handle, 0, 0, 12, 5, work.handle, 0, 6, SRCCOPY);
    EXPECT_EQ(screen.At(3, 2), 0xFF000000U) << "copied over";
    const PixelView view = GetPixels(screen.handle);
    draw(screen.handle);
    EXPECT_EQ(view.pixels[8 * view.stride + 8], kRedPixel) << "looked at through a view from before";
    std::vector<std::uint32_t> memory(144, 0xFFFFFFFFU);
    const Surface wrapped(WrapPixels(memory.data(), 12, 12, 48));
    draw(wrapped.handle);
    EXPECT_EQ(memory[8 * 12 + 8], kRedPixel) << "memory of the host";

    SelectObject(work.handle, former);
    DeleteObject(bitmap);
}

TEST(DrawingLines, KeepTheirOrder) {
    const Surface surface(CreateRecordingSurface(30, 30));
    const ScopedPen pen(surface.handle, PS_SOLID, 1, kRed);
    LineTo(surface.handle, 9, 0);
    LineTo(surface.handle, 9, 9);
    SelectObject(surface.handle, GetStockObject(BLACK_PEN)); // a look of its own ends the path
    LineTo(surface.handle, 0, 9);
    Rectangle(surface.handle, 0, 0, 5, 5);
    LineTo(surface.handle, 0, 0);
    EXPECT_EQ(GetRecording(surface.handle), "line 0,0 9,0 #FF0000 w1\nline 9,0 9,9 #FF0000 w1\n"
                                            "line 9,9 0,9 #000000 w1\n"
                                            "fill 0,0 5x1 #000000\nfill 0,4 5x1 #000000\nfill 0,1 1x3 #000000\n"
                                            "fill 4,1 1x3 #000000\nfill 1,1 3x3 #FFFFFF\nline 0,9 0,0 #000000 w1\n");
}

TEST(DrawingLines, EndlessOnesDrawEachSegmentOnce) {
    const Surface surface(CreateRecordingSurface(30, 30));
    const ScopedPen pen(surface.handle, PS_DOT, 1, kRed);
    SetBkMode(surface.handle, TRANSPARENT);
    for (int i = 1; i <= 10000; ++i)
        LineTo(surface.handle, i, 0);
    std::string expected;
    for (int i = 0; i < 10000; ++i)
        expected += "line " + std::to_string(i) + ",0 " + std::to_string(i + 1) + ",0 #FF0000 w1 dot 3,3" +
                    (i == 0 ? "" : " phase " + std::to_string(i)) + "\n";
    EXPECT_EQ(GetRecording(surface.handle), expected);
}

TEST(DrawingText, IsMeasuredFromLeftAndTop) {
    // Fixed metrics of a recording: a character of a 10 pixel font is 6 wide, a line 13 high.
    const struct Case {
        const char *why, *text;
        UINT format;
        RECT box;
        int right, bottom;
    } cases[] = {
        {"CR LF and LF break", "ab\r\nabcd\na", 0, {0, 0, 0, 0}, 24, 39},
        {"a last line feed adds no line", "ab\n", 0, {0, 0, 0, 0}, 12, 13},
        {"single line", "a\nb", DT_SINGLELINE, {0, 0, 0, 0}, 18, 13},
        {"wraps at the width", "ab cd ef", DT_WORDBREAK, {10, 0, 42, 0}, 40, 26},
        {"a wider word stays whole", "ab abcdefgh", DT_WORDBREAK, {0, 0, 20, 0}, 48, 26},
        {"which makes room for the others", "ab cd abcdefgh", DT_WORDBREAK, {0, 0, 20, 0}, 48, 26},
        {"Han characters are an em wide", "歩数a", DT_SINGLELINE, {0, 0, 0, 0}, 26, 13},
        {"no text", "", 0, {5, 6, 50, 60}, 5, 6},
        {"no text in a line", "", DT_SINGLELINE, {5, 6, 50, 60}, 5, 19},
    };
    const Surface surface(CreateRecordingSurface(100, 100));
    const ScopedFont font(surface.handle, FontOf(-10, 900)); // measuring ignores the escapement
    for (const Case& c : cases)
        EXPECT_EQ(Measured(surface.handle, c.text, c.format, c.box), CRect(c.box.left, c.box.top, c.right, c.bottom))
            << c.why;
}

TEST(DrawingText, WrapsInItsMeasuredBoxAsItWasMeasured) {
    const TempWorkdir work;
    const Surface surfaces[] = {Surface(CreateMemorySurface(300, 300)), Surface(CreateRecordingSurface(300, 300)),
                                Surface(CreatePageSurface("page.pdf", PageFormat::Pdf, 300, 300, 96))};
    for (const char* text :
         {"Average intake  of the last  week (kcal)", "  Blanks   everywhere   ", "first\r\n\nthird line",
          "直近１週間の　平均摂取カロリー、(kcal)。 基準 1,800 kcal/日", "שלום   עולם 123 שלום"})
        for (const Surface& surface : surfaces)
            for (int width = 0; width < 240; ++width) {
                const CRect box = Measured(surface.handle, text, DT_WORDBREAK, {7, 5, 7 + width, 5});
                const CRect again = Measured(surface.handle, text, DT_WORDBREAK, box);
                ASSERT_EQ(again, box) << text << " in " << width;
                CRect painted = box;
                EXPECT_EQ(DrawTextExA(surface.handle, std::string(text).data(), -1, &painted, DT_WORDBREAK, nullptr),
                          box.Height())
                    << text << " in " << width;
            }
}

TEST(DrawingText, TurnedGroundStaysInItsBox) {
    const Surface surface(CreateMemorySurface(100, 100));
    const ScopedFont font(surface.handle, FontOf(-12, 300));
    SetBkColor(surface.handle, kRed);
    CRect box(20, 40, 60, 80);
    DrawTextExA(surface.handle, std::string("  Schritte").data(), -1, &box, 0, nullptr);
    EXPECT_EQ(surface.At(22, 41), kRedPixel) << "before the first letter";
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 100; ++x)
            EXPECT_TRUE(box.PtInRect({x, y}) || surface.At(x, y) == 0xFFFFFFFFU) << x << "," << y;
    DrawRectangle(surface.handle, RECT{0, 0, 9, 9}, kRed, kRed, 1);
    EXPECT_EQ(surface.At(5, 5), kRedPixel) << "the clip is gone with the text";
}

TEST(DrawingText, IsPlacedInItsBox) {
    const std::pair<UINT, const char*> cases[] = {
        {DT_CENTER, "29,20"},
        {DT_RIGHT, "48,20"},
        {DT_BOTTOM | DT_VCENTER, "10,20"}, // don't count without single line
        {DT_BOTTOM | DT_SINGLELINE, "10,37"},
        {DT_VCENTER | DT_SINGLELINE, "10,28"},
    };
    for (const auto& [format, place] : cases) {
        const Surface surface(CreateRecordingSurface(100, 100));
        const ScopedFont font(surface.handle, FontOf(-10));
        SetBkMode(surface.handle, TRANSPARENT);
        RECT box{10, 20, 60, 50};
        char text[] = "ab";
        EXPECT_EQ(DrawTextExA(surface.handle, text, -1, &box, format, nullptr), 13);
        EXPECT_EQ(GetRecording(surface.handle).find(std::string("text \"ab\" ") + place + " 12x13"), 0U) << format;
    }
}

/// Memory that the process holds, KiB.
long ResidentKib() {
    long size = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> size >> resident;
    return resident * sysconf(_SC_PAGESIZE) / 1024;
}

TEST(DrawingText, HugeGlyphsAreDrawnButNotKept) {
    const Surface surface(CreateMemorySurface(900, 500));
    const ScopedFont font(surface.handle, FontOf(-3000));
    const long before = ResidentKib();
    TextOutA(surface.handle, -2000, -1500, "abcdefghijklmnopqrstuvwxyz", 26);
    EXPECT_LT(ResidentKib() - before, 50 * 1024) << "26 glyphs of several megabytes each";
    const std::uint32_t* pixels = GetPixels(surface.handle).pixels;
    EXPECT_NE(std::count(pixels, pixels + 450'000, 0xFF000000U), 0) << "something is drawn";
}

TEST(DrawingText, LimitsCutNoCharacter) {
    for (const auto& [text, length, shown] : {std::tuple{"a\xE6\xAD\xA9z", 3, "a"}, // of three bytes two
                                              {"a\xE6\xAD\xA9z", 4, "a\xE6\xAD\xA9"},
                                              {"caf\xE9", 4, "caf\xC3\xA9"}, // one byte a character
                                              {"ab", 99, "ab"}}) {
        const Surface surface(CreateRecordingSurface(100, 100));
        SetBkMode(surface.handle, TRANSPARENT);
        TextOutA(surface.handle, 0, 0, text, length);
        EXPECT_EQ(GetRecording(surface.handle).find("text \"" + std::string(shown) + "\" "), 0U) << shown;
    }
}

TEST(DrawingCopies, WaitingFillsShowWhereverTheyAreLookedAt) {
    // A working surface writes its wide fills late; every way of looking at it sees them.
    const Surface screen(CreateMemorySurface(40, 30));
    const Surface work(CreateCompatibleDC(screen.handle));
    HBITMAP bitmap = CreateCompatibleBitmap(screen.handle, 40, 30);
    const HGDIOBJ former = SelectObject(work.handle, bitmap);
    DrawRectangle(work.handle, RECT{0, 0, 40, 30}, RGB(0, 255, 0), RGB(0, 255, 0), 0);
    DrawRectangle(work.handle, RECT{10, 8, 30, 20}, kRed, kRed, 1);
    BitBlt(screen.handle, 0, 0, 40, 30, work.handle, 0, 0, SRCCOPY);
    const auto check = [](const Surface& surface) {
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 40; ++x)
                ASSERT_EQ(surface.At(x, y), CRect(10, 8, 30, 20).PtInRect({x, y}) ? kRedPixel : 0xFF00FF00U)
                    << x << "," << y;
    };
    check(screen);
    check(work);
    const PixelView seen = GetPixels(work.handle);
    DrawRectangle(work.handle, RECT{0, 0, 40, 30}, kRed, kRed, 0);
    EXPECT_EQ(seen.pixels[29 * seen.stride + 39], kRedPixel) << "memory that was handed out is written at once";
    SelectObject(work.handle, former);
    DeleteObject(bitmap);
    HBITMAP fresh = CreateCompatibleBitmap(screen.handle, 3, 3);
    SelectObject(work.handle, fresh);
    BitBlt(screen.handle, 0, 0, 3, 3, work.handle, 0, 0, SRCCOPY);
    EXPECT_EQ(screen.At(1, 1), 0xFF000000U) << "a fresh picture is black";
    SelectObject(work.handle, former);
    DeleteObject(fresh);
}

/// Pages of memory that the process has, in MiB.
std::size_t ResidentMiB() {
    std::size_t all = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) >> 20U;
}

TEST(DrawingMemory, IsGivenBack) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizers keep freed memory";
#endif
    TrimMemory();
    const std::size_t before = ResidentMiB();
    for (int i = 0; i < 2; ++i) {
        const Surface screen(CreateMemorySurface(2560, 1440)); // 14 MiB
        const Surface second(CreateMemorySurface(2560, 1440));
        for (HDC handle : {screen.handle, second.handle}) {
            TextOutA(handle, 0, 0, "text", -1);
            GetPixels(handle);
        }
    }
    EXPECT_GT(ResidentMiB(), before + 25) << "warm for the next drawing";
    TrimMemory();
    EXPECT_LT(ResidentMiB(), before + 5);
    const Surface after(CreateMemorySurface(40, 40));
    EXPECT_TRUE(TextOutA(after.handle, 0, 0, "text", -1));
}

TEST(DrawingCopies, SpansAtTheEdgeOfAnIntCopyNothing) {
    const Surface surface(CreateMemorySurface(10, 10));
    EXPECT_FALSE(BitBlt(surface.handle, -9, -9, 5, 5, surface.handle, INT_MAX, INT_MIN, SRCCOPY));
}

TEST(DrawingCopies, RecordsAreDrawnAgainWhereTheyAreCopied) {
    const Surface page(CreateRecordingSurface(100, 100));
    const Surface work(CreateCompatibleDC(page.handle));
    HBITMAP bitmap = CreateCompatibleBitmap(page.handle, 50, 50);
    const HGDIOBJ former = SelectObject(work.handle, bitmap);
    DrawRectangle(work.handle, RECT{5, 6, 15, 26}, kRed, kRed, 1);
    BitBlt(page.handle, 30, 40, 50, 50, work.handle, 0, 0, SRCCOPY);
    const std::string record = "copy 30,40 50x50 from 0,0\nfill 35,46 10x20 #FF0000\n";
    EXPECT_EQ(GetRecording(page.handle), record);
    BitBlt(page.handle, 0, 0, 100, 100, page.handle, 0, 0, SRCCOPY);
    EXPECT_EQ(GetRecording(page.handle), record) << "onto itself in place: must not double";
    SelectObject(work.handle, former);
    DeleteObject(bitmap);
}

} // namespace
