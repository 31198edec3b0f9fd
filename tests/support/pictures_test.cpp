#include <MelkarCommon/platform/images/bitmap_head.h>
#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/surface.h>
#include <MelkarCommon/support/box_layout.h>
#include <MelkarCommon/support/pictures.h>
#include <MelkarCommon/support/support.h>

#include <climits>
#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tuple>

namespace {

using melkar::PictureBottom;
using melkar::PictureCenter;
using melkar::PictureMiddle;
using melkar::PictureRight;

using testing::HasSubstr;

std::string Bytes(std::uint64_t value, int count) {
    std::string bytes;
    for (int i = 0; i < count; ++i)
        bytes += static_cast<char>(value >> (8 * i));
    return bytes;
}

/// A BMP file of this size; `rows` come bottom row first, each padded to four bytes.
std::string Bmp(int width, int height, int bits, const std::string& palette, const std::string& rows, int packing = 0) {
    const auto start = static_cast<std::uint32_t>(14 + 40 + palette.size());
    return "BM" + Bytes(start + static_cast<std::uint32_t>(rows.size()), 4) + Bytes(0, 4) + Bytes(start, 4) +
           Bytes(40, 4) + Bytes(static_cast<std::uint32_t>(width), 4) + Bytes(static_cast<std::uint32_t>(height), 4) +
           Bytes(1, 2) + Bytes(static_cast<std::uint32_t>(bits), 2) + Bytes(static_cast<std::uint32_t>(packing), 4) +
           Bytes(static_cast<std::uint32_t>(rows.size()), 4) + Bytes(0, 8) +
           Bytes(static_cast<std::uint32_t>(palette.size() / 4), 4) + Bytes(0, 4) + palette + rows;
}

/// The same with the oldest, shortest head; rows of 24 bits.
std::string OldBmp(int width, int height, const std::string& rows) {
    return "BM" + Bytes(26 + rows.size(), 4) + Bytes(0, 4) + Bytes(26, 4) + Bytes(12, 4) +
           Bytes(static_cast<std::uint64_t>(width), 2) + Bytes(static_cast<std::uint64_t>(height), 2) + Bytes(1, 2) +
           Bytes(24, 2) + rows;
}

/// A picture of one colour; rows of 24 bits.
std::string PlainBmp(int width, int height) {
    const int padded = (width * 3 + 3) / 4 * 4;
    return Bmp(width, height, 24, "", std::string(static_cast<std::size_t>(padded) * height, '\x40'));
}

class Pictures : public testing::Test {
protected:
    Pictures() { Clear(); }
    ~Pictures() override {
        DeleteDC(m_surface);
        EXPECT_EQ(LiveObjectCount(), m_before);
    }

    static constexpr COLORREF kGround = RGB(0, 200, 0);
    void Clear() const { DrawRectangle(m_surface, CRect(0, 0, 40, 40), kGround, kGround, 1); }
    std::uint32_t PixelAt(int x, int y) const {
        const PixelView view = GetPixels(m_surface);
        return view.pixels[y * view.stride + x] & 0xFFFFFFU;
    }
    std::string Log() const { return m_files.Read("log/graph.log"); }

    TempWorkdir m_files;
    std::size_t m_before = LiveObjectCount();
    HDC m_surface = CreateMemorySurface(40, 40);
};

TEST_F(Pictures, WhereTheyStand) {
    const std::tuple<const char*, CRect, int, int, unsigned, CRect> cases[] = {
        {"twice as wide as the box: half as high", {10, 20, 20, 30}, 20, 10, 0, {10, 20, 20, 25}},
        {"in the middle: 25 - 2", {10, 20, 20, 30}, 20, 10, PictureMiddle, {10, 23, 20, 28}},
        {"at the bottom", {10, 20, 20, 30}, 20, 10, PictureBottom, {10, 25, 20, 30}},
        {"centred across: 15 - 2", {10, 20, 20, 30}, 5, 10, PictureCenter, {13, 20, 18, 30}},
        {"at the right", {10, 20, 20, 30}, 5, 10, PictureRight, {15, 20, 20, 30}},
        {"centring wins", {10, 20, 20, 30}, 5, 10, PictureCenter | PictureRight, {13, 20, 18, 30}},
        {"7 / 10 is a bit less than 0.7, the side is 7 all the same", {0, 0, 7, 99}, 10, 20, 0, {0, 0, 7, 14}},
        {"a single pixel grows", {0, 0, 30, 20}, 1, 1, 0, {0, 0, 20, 20}},
        {"so flat that nothing is left of it", {0, 0, 100, 100}, 30000, 1, 0, {0, 0, 100, 0}},
        {"no box", {5, 5, 5, 5}, 10, 10, PictureCenter, {5, 5, 5, 5}},
    };
    for (const auto& [why, box, width, height, alignment, at] : cases)
        EXPECT_EQ(melkar::PictureIn(box, width, height, melkar::FitRatio(box, width, height), alignment), at) << why;
    const CRect all(INT_MIN, INT_MIN, INT_MAX, INT_MAX);
    melkar::PictureIn(all, 1, 1, melkar::FitRatio(all, 1, 1), PictureRight | PictureMiddle);
}

/// Blue above red, in every depth that such files have.
TEST_F(Pictures, BitmapsOfEveryDepth) {
    const std::string palette = Bytes(0x000000, 4) + Bytes(0xFF0000, 4) + Bytes(0x0000FF, 4);
    const std::pair<const char*, std::string> cases[] = {
        {"1 bit", Bmp(1, 2, 1, Bytes(0xFF0000, 4) + Bytes(0x0000FF, 4), Bytes(0x00, 4) + Bytes(0x80, 4))},
        {"4 bits", Bmp(1, 2, 4, palette, Bytes(0x10, 4) + Bytes(0x20, 4))},
        {"8 bits", Bmp(1, 2, 8, palette, Bytes(1, 4) + Bytes(2, 4))},
        {"8 bits, packed by runs", Bmp(1, 2, 8, palette, Bytes(0x00000101, 4) + Bytes(0x01000201, 4), 1)},
        {"16 bits", Bmp(1, 2, 16, "", Bytes(0x7C00, 4) + Bytes(0x001F, 4))},
        {"24 bits", Bmp(1, 2, 24, "", Bytes(0xFF0000, 4) + Bytes(0x0000FF, 4))},
        {"32 bits", Bmp(1, 2, 32, "", Bytes(0xFF0000, 4) + Bytes(0x0000FF, 4))},
        {"old head, 34 bytes in all", OldBmp(1, 2, Bytes(0xFF0000, 4) + Bytes(0x0000FF, 4))},
        {"top row first", Bmp(1, -2, 24, "", Bytes(0x0000FF, 4) + Bytes(0xFF0000, 4))},
    };
    for (const auto& [why, file] : cases) {
        const std::string path = m_files.Write("bin/picture.bmp", file);
        EXPECT_EQ(DrawBMP(m_surface, CRect(2, 3, 10, 5), path.c_str(), SRCCOPY, 1, 0), 5) << why;
        for (const auto& [x, y, color] : {std::tuple{2, 3, 0x0000FFU}, {2, 4, 0xFF0000U}, {3, 3, 0x00C800U}})
            EXPECT_EQ(PixelAt(x, y), color) << why << " " << x << "," << y;
    }
}

TEST_F(Pictures, ResultAndLog) {
    const std::string path = m_files.Write("bin/p%s%n.bmp", PlainBmp(20, 10));
    EXPECT_EQ(DrawBMP(m_surface, CRect(3, 4, 13, 34), path.c_str(), SRCCOPY, 0, 0), 34) << "the box's bottom";
    EXPECT_THAT(Log(), HasSubstr("RECT(3,4)[10, 30]->BMP[10, 30]"));
    EXPECT_EQ(DrawBMP(m_surface, CRect(3, 4, 13, 34), path.c_str(), SRCCOPY, 1, 0), 14) << "the file's height";
    EXPECT_THAT(Log(), HasSubstr("RECT(3,4)[10, 30] BMP[20, 10]->[10, 5] Ratio[0.500]"));
    EXPECT_EQ(DrawBMP(m_surface, CRect(0, 0, 9, 9), "no%s%n.bmp", SRCCOPY, 0, 0), 0);
    EXPECT_THAT(Log(), HasSubstr("DrawBmp LoadImageError[no%s%n.bmp]"));
}

TEST_F(Pictures, NonsenseDrawsNothing) {
    const std::string whole = PlainBmp(20, 10);
    for (const std::string& cut :
         {std::string(), whole.substr(0, 30), whole.substr(0, whole.size() - 1), OldBmp(1, 2, Bytes(0xFF0000, 7))}) {
        const std::string path = m_files.Write("bin/cut.bmp", cut);
        EXPECT_EQ(DrawBMP(m_surface, CRect(0, 0, 9, 9), path.c_str(), SRCCOPY, 1, 0), 0) << cut.size();
    }
    std::string colors = Bmp(1, 2, 8, Bytes(0xFF0000, 4), Bytes(0, 8));
    EXPECT_FALSE(melkar::IsCutBitmap(m_files.Write("bin/colors.bmp", colors).c_str()));
    colors.replace(46, 4, Bytes(0x27000000, 4)); // the loader would ask for 2.6 GB
    EXPECT_TRUE(melkar::IsCutBitmap(m_files.Write("bin/colors.bmp", colors).c_str()));
    const std::string strip = m_files.Write("bin/strip.bmp", PlainBmp(30000, 1));
    EXPECT_EQ(DrawBMP(m_surface, CRect(0, 5, 30, 35), strip.c_str(), SRCCOPY, 1, 0), 6);
    EXPECT_EQ(PixelAt(5, 5), 0x00C800U);
}

/// The most address space that this process ever had, in kB.
long PeakOfMemory() {
    long peak = 0;
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word && word != "VmPeak:";) {
    }
    status >> peak;
    return peak;
}

TEST_F(Pictures, AskForLittleBeforeTheyAreRefused) {
    const std::string plain = PlainBmp(1, 1);
    const std::pair<const char*, std::string> cases[] = {
        {"a head of 2 GB", plain.substr(0, 14) + Bytes(0x7FFFFF00, 4) + plain.substr(18)},
        {"a format whose loader asks before it tells", "P5 32000 32000 255\n" + std::string(100, '\0')},
        {"a row too many, 8192 x 8193", Bmp(8192, 8193, 1, Bytes(0, 8), std::string(std::size_t{1024} * 8193, '\0'))},
    };
    for (const auto& [why, file] : cases) {
        const std::string path = m_files.Write("bin/great", file);
        const auto draw = [&path, this] {
            const long before = PeakOfMemory();
            const bool isRefused = DrawBMP(m_surface, CRect(0, 0, 9, 9), path.c_str(), SRCCOPY, 1, 0) == 0;
            std::exit(isRefused && PeakOfMemory() - before < 200'000 ? 0 : 1); // loaders and a thread take some 80
        };
        EXPECT_EXIT(draw(), testing::ExitedWithCode(0), "") << why;
    }
}

/// A picture of two pixels, red and white, and its mask: white where it shows. Enlarged, the border lies at a whole
/// pixel: no mixed colour stands there.
TEST_F(Pictures, ThroughAMaskTheEdgeIsSharp) {
    const std::string picture = m_files.Write("bin/picture.bmp", Bmp(2, 1, 24, "", Bytes(0xFFFFFFC80000, 8)));
    const std::string mask = m_files.Write("bin/mask.bmp", Bmp(2, 1, 24, "", Bytes(0xFFFFFF, 8)));
    for (const auto& [keep, result, bottom] : {std::tuple{0, 9, 9}, {1, 4, 6}}) { // 7 x 6; 7 x 3 in proportion
        Clear();
        EXPECT_EQ(DrawBMPTrans(m_surface, CRect(2, 3, 9, 9), picture.c_str(), mask.c_str(), keep), result);
        const CRect red(2, 3, 5, bottom); // the centre of the fourth column lies on the second pixel
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 40; ++x)
                ASSERT_EQ(PixelAt(x, y), red.PtInRect({x, y}) ? 0xC80000U : 0x00C800U) << keep << ": " << x << "," << y;
    }
}

} // namespace
