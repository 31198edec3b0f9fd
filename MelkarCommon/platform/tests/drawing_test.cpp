// The drawing calls: objects and their owners, modes, what a rectangle covers, text in boxes.

#include <MelkarCommon/platform/tests/surface.h>
#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/pixels/pixel_discs.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/platform/tests/framed.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <tuple>
#include <unistd.h>

namespace {

using melkar::ScopedFont;
using melkar::ScopedPen;

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr std::uint32_t kRedPixel = 0xFFFF0000U;

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
        EXPECT_EQ(SelectObject(surface, pen), GetStockObject(BLACK_PEN));
        EXPECT_FALSE(DeleteObject(pen)) << "selected";
        EXPECT_EQ(LiveObjectCount(), before + 2);
        SelectObject(surface, GetStockObject(BLACK_PEN));
        EXPECT_TRUE(DeleteObject(pen));
        EXPECT_FALSE(DeleteObject(GetStockObject(WHITE_BRUSH)));
        HBITMAP bitmap = CreateCompatibleBitmap(surface, 4, 4);
        const Surface one(CreateCompatibleDC(surface));
        const Surface other(CreateCompatibleDC(surface));
        const HGDIOBJ former = SelectObject(one, bitmap);
        EXPECT_EQ(SelectObject(other, bitmap), nullptr) << "selected elsewhere";
        SelectObject(one, former);
        EXPECT_TRUE(DeleteObject(bitmap));
    }
    EXPECT_EQ(LiveObjectCount(), before);
}

TEST(DrawingObjects, NothingComesOfNothing) {
    std::uint32_t pixel = 0;
    EXPECT_EQ(CreateCompatibleBitmap(nullptr, 12000, 12000), nullptr) << "more than 2^27 pixels";
    for (HDC refused : {CreateMemorySurface(0, 10), CreateMemorySurface(32767, 32767), WrapPixels(&pixel, 1, 1, 3)})
        EXPECT_EQ(refused, nullptr);
    EXPECT_EQ(CreatePolygonRgn(nullptr, 3, ALTERNATE), nullptr);
    EXPECT_EQ(GetPixels(Surface(CreateCompatibleDC(nullptr))).pixels, nullptr);
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
        const ScopedPen pen(surface, style, width, kRed);
        Rectangle(surface, given.left, given.top, given.right, given.bottom);
        EXPECT_EQ(GetRecording(surface), record);
    }
}

TEST(DrawingLines, PatternsRunOnAndFollowTheDpi) {
    for (const auto& [style, width, record] :
         {std::tuple{PS_DOT, 1,
                     "line 0,5 60,5 #FF0000 w2 dot 6,6 gaps #FFFFFF\n"
                     "line 60,5 60,9 #FF0000 w2 dot 6,6 phase 60 gaps #FFFFFF\n"},
          {PS_SOLID, 0, "line 0,5 60,5 #FF0000 w1\nline 60,5 60,9 #FF0000 w1\n"}}) {
        const Surface surface(CreateRecordingSurface(60, 10, 192));
        const ScopedPen pen(surface, style, width, kRed);
        LineTo(surface, 7, 7); // what went before the move counts no longer
        MoveToEx(surface, 0, 5, nullptr);
        LineTo(surface, 60, 5);
        LineTo(surface, 60, 9);
        const std::string lines = GetRecording(surface);
        EXPECT_EQ(lines.substr(lines.find('\n') + 1), record);
    }
}

// Nine tenths of the machines that show charts have 96 dpi: a length that forgets the dpi is seen on the others only.
TEST(DrawingText, FontOfANewSurfaceFollowsTheDpi) {
    // of "00": twice 3/5 and once 5/4 of the em (12 pixels, 24, 37.5, never nothing), each rounded up
    for (const auto& [dpi, width, height] : {std::tuple{96, 16, 15}, {192, 30, 30}, {300, 46, 48}, {1, 2, 2}}) {
        const Surface surface(CreateRecordingSurface(50, 40, dpi));
        const Surface compatible(CreateCompatibleDC(surface));
        const Surface fresh(CreateCompatibleDC(surface));
        const ScopedFont noHeight(compatible, FontOf(0));
        for (HDC measuring : {HDC{surface}, HDC{compatible}, HDC{fresh}}) {
            EXPECT_EQ(Measured(measuring, "00", DT_SINGLELINE), CRect(0, 0, width, height)) << dpi;
            EXPECT_EQ(GetDeviceCaps(measuring, HORZRES) * 100 + GetDeviceCaps(measuring, VERTRES), 5040);
        }
    }
}

TEST(DrawingLines, EndlessOnesDrawEachSegmentOnce) {
    const Surface surface(CreateRecordingSurface(30, 30));
    const ScopedPen pen(surface, PS_DOT, 1, kRed);
    SetBkMode(surface, TRANSPARENT);
    for (int i = 1; i <= 10000; ++i)
        LineTo(surface, i, 0);
    std::string expected;
    for (int i = 0; i < 10000; ++i)
        expected += "line " + std::to_string(i) + ",0 " + std::to_string(i + 1) + ",0 #FF0000 w1 dot 3,3" +
                    (i == 0 ? "" : " phase " + std::to_string(i)) + "\n";
    EXPECT_EQ(GetRecording(surface), expected);
}

TEST(DrawingText, IsMeasuredFromLeftAndTop) {
    // Fixed metrics of a recording: a character of a 10 pixel font is 6 wide, a line 13 high.
    const std::tuple<const char*, const char*, UINT, RECT, int, int> cases[] = {
        {"CR LF and LF break", "ab\r\nabcd\na", 0, {0, 0, 0, 0}, 24, 39},
        {"a last line feed adds no line", "ab\n", 0, {0, 0, 0, 0}, 12, 13},
        {"single line", "a\nb", DT_SINGLELINE, {0, 0, 0, 0}, 18, 13},
        {"wraps at the width", "ab cd ef", DT_WORDBREAK, {10, 0, 42, 0}, 40, 26},
        {"a wider word stays whole, and makes room for the others",
         "ab cd abcdefgh",
         DT_WORDBREAK,
         {0, 0, 20, 0},
         48,
         26},
        {"Han characters are an em wide", "歩数a", DT_SINGLELINE, {0, 0, 0, 0}, 26, 13},
        {"no text", "", 0, {5, 6, 50, 60}, 5, 6},
        {"no text in a line", "", DT_SINGLELINE, {5, 6, 50, 60}, 5, 19},
    };
    const Surface surface(CreateRecordingSurface(100, 100));
    const ScopedFont font(surface, FontOf(-10, 900)); // measuring ignores the escapement
    for (const auto& [why, text, format, box, right, bottom] : cases)
        EXPECT_EQ(Measured(surface, text, format, box), CRect(box.left, box.top, right, bottom)) << why;
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
                const CRect box = Measured(surface, text, DT_WORDBREAK, {7, 5, 7 + width, 5});
                const CRect again = Measured(surface, text, DT_WORDBREAK, box);
                ASSERT_EQ(again, box) << text << " in " << width;
                CRect painted = box;
                EXPECT_EQ(DrawTextExA(surface, std::string(text).data(), -1, &painted, DT_WORDBREAK, nullptr),
                          box.Height())
                    << text << " in " << width;
            }
}

TEST(DrawingText, TurnedGroundStaysInItsBox) {
    const Surface surface(CreateMemorySurface(100, 100));
    const ScopedFont font(surface, FontOf(-12, 300));
    SetBkColor(surface, kRed);
    CRect box(20, 40, 60, 80);
    DrawTextExA(surface, std::string("  Schritte").data(), -1, &box, 0, nullptr);
    EXPECT_EQ(surface.At(22, 41), kRedPixel) << "before the first letter";
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 100; ++x)
            EXPECT_TRUE(box.PtInRect({x, y}) || surface.At(x, y) == 0xFFFFFFFFU) << x << "," << y;
    DrawFramed(surface, RECT{0, 0, 9, 9}, kRed, kRed, 1);
    EXPECT_EQ(surface.At(5, 5), kRedPixel) << "the clip is gone with the text";
}

TEST(DrawingText, IsPlacedInItsBox) {
    for (const auto& [format, place] : {std::pair{DT_CENTER, "29,20"},
                                        {DT_RIGHT, "48,20"},
                                        {DT_BOTTOM | DT_VCENTER, "10,20"}, // don't count without single line
                                        {DT_BOTTOM | DT_SINGLELINE, "10,37"},
                                        {DT_VCENTER | DT_SINGLELINE, "10,28"}}) {
        const Surface surface(CreateRecordingSurface(100, 100));
        const ScopedFont font(surface, FontOf(-10));
        SetBkMode(surface, TRANSPARENT);
        RECT box{10, 20, 60, 50};
        char text[] = "ab";
        EXPECT_EQ(DrawTextExA(surface, text, -1, &box, format, nullptr), 13);
        EXPECT_EQ(GetRecording(surface).find(std::string("text \"ab\" ") + place + " 12x13"), 0U) << format;
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
    const ScopedFont font(surface, FontOf(-3000));
    const long before = ResidentKib();
    TextOutA(surface, -2000, -1500, "abcdefghijklmnopqrstuvwxyz", 26);
    EXPECT_LT(ResidentKib() - before, 50 * 1024) << "26 glyphs of several megabytes each";
    const std::uint32_t* pixels = GetPixels(surface).pixels;
    EXPECT_NE(std::count(pixels, pixels + 450'000, 0xFF000000U), 0) << "something is drawn";
}

TEST(DrawingMemory, IsGivenBack) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizers keep freed memory";
#endif
    const auto drawTwoScreens = [] {
        const Surface screens[] = {Surface(CreateMemorySurface(2560, 1440)), Surface(CreateMemorySurface(2560, 1440))};
        for (const Surface& screen : screens) {
            TextOutA(screen, 0, 0, "text", -1);
            GetPixels(screen); // 14 MiB
        }
    };
    drawTwoScreens(); // what the font libraries read for the first text of a process stays
    TrimMemory();
    const long before = ResidentKib();
    drawTwoScreens();
    EXPECT_GT(ResidentKib(), before + 25 * 1024) << "warm for the next drawing";
    TrimMemory();
    EXPECT_LT(ResidentKib(), before + 5 * 1024);
}

TEST(DrawingMemory, OfDiscsIsGivenBack) {
    const std::weak_ptr kept = melkar::FindDisc({{20, 20}, {9, 9}}, 0).mask;
    EXPECT_FALSE(kept.expired());
    TrimMemory();
    EXPECT_TRUE(kept.expired());
}

} // namespace
