// Copies between surfaces: of pictures loaded at another size, of records that can't stay records, and what a record
// lets go of.

#include <MelkarCommon/platform/tests/framed.h>
#include <MelkarCommon/platform/tests/surface.h>
#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <gtest/gtest.h>

#include <string>

namespace {

void Fill(HDC surface, RECT r, COLORREF color) { DrawFramed(surface, r, color, color, 1); }

/// A surface with a picture of black and white pixels in turn, loaded at a width from its file.
class LoadedPicture : public Surface {
public:
    LoadedPicture(int pixels, int width)
        : Surface(CreateCompatibleDC(nullptr)), m_picture(*this, Load(pixels, width)) {}

private:
    static HANDLE Load(int pixels, int width) {
        const TempWorkdir work;
        const Surface file(CreateMemorySurface(pixels, 1));
        for (int x = 0; x < pixels; x += 2)
            Fill(file, {x, 0, x + 1, 1}, RGB(0, 0, 0));
        EXPECT_EQ(WritePng(file, "a.png"), 0);
        return LoadImageA(nullptr, "a.png", IMAGE_BITMAP, width, 1, LR_LOADFROMFILE);
    }

    melkar::ScopedObject m_picture;
};

/// The first row: '.' white, '#' black, '?' anything else.
std::string Row(HDC surface) {
    const PixelView view = GetPixels(surface);
    std::string row;
    for (int x = 0; x < view.width; ++x)
        row += view.pixels[x] == 0xFFFFFFFFU ? '.' : view.pixels[x] == 0xFF000000U ? '#' : '?';
    return row;
}

TEST(Copies, MasksLoadedAtAnotherSizeKeepTheirEdge) {
    const LoadedPicture from(2, 7);
    const auto copied = [&](DWORD operation) {
        const Surface to(CreateMemorySurface(8, 1));
        EXPECT_TRUE(BitBlt(to, 0, 0, 7, 1, from, 0, 0, operation));
        return Row(to);
    };
    MoveToEx(from, 1, 1, nullptr); // draws nothing
    EXPECT_EQ(copied(SRCCOPY), "##???...") << "smooth: 3 of 7 pixels lie between the centres";
    EXPECT_EQ(copied(SRCAND), "###.....") << "the centre of the fourth lies on the second half";
    Fill(from, {0, 0, 1, 1}, RGB(255, 255, 255));
    EXPECT_EQ(copied(SRCAND).substr(0, 2), ".#") << "drawn on: it no longer is its file";
}

TEST(Copies, OfLoadedPicturesAreAsFineAsTheirFiles) {
    const LoadedPicture from(8, 4);
    for (const DWORD operation : {SRCCOPY, SRCAND}) {
        const Surface to(CreateScaledSurface(4, 1, 2));
        EXPECT_TRUE(BitBlt(to, 1, 0, 3, 1, from, 1, 0, operation));
        EXPECT_EQ(Row(to), "..#.#.#.") << operation;
    }
}

TEST(Copies, RecordsArePlayedAtPixelsWhereTheyMustBe) {
    const Surface record(CreateRecordingSurface(4, 1));
    Fill(record, {0, 0, 2, 1}, RGB(0, 0, 0));
    const Surface pixels(CreateMemorySurface(8, 1));
    EXPECT_FALSE(BitBlt(pixels, 0, 0, 2, 1, record, 0, 0, 0x1234) || BitBlt(record, 0, 0, 2, 1, pixels, 0, 0, 0x1234));
    EXPECT_TRUE(StretchBlt(pixels, 0, 0, 8, 1, record, 0, 0, 4, 1, SRCAND));
    EXPECT_EQ(Row(pixels), "####....");
    EXPECT_TRUE(StretchBlt(pixels, 4, 0, 4, 1, record, 1, 0, 1, 1, SRCCOPY)) << "a part, enlarged";
    EXPECT_EQ(Row(pixels), "########");
    const Surface other(CreateRecordingSurface(8, 4));
    EXPECT_TRUE(StretchBlt(other, 0, 0, 8, 2, record, 0, 0, 4, 1, SRCCOPY));
    EXPECT_TRUE(BitBlt(other, 1, 2, 4, 1, record, 0, 0, SRCPAINT));
    EXPECT_EQ(GetRecording(other), "image 0,0 8x2 from 4x1\nimage 1,2 4x1 from 4x1 or\n");
}

TEST(Copies, ARecordDropsWhatIsCovered) {
    const Surface record(CreateRecordingSurface(10, 10));
    Fill(record, {1, 1, 9, 9}, RGB(255, 0, 0));
    Fill(record, {0, 0, 10, 9}, RGB(0, 255, 0)); // leaves a row
    EXPECT_EQ(GetRecording(record), "fill 1,1 8x8 #FF0000\nfill 0,0 10x9 #00FF00\n");
    Fill(record, {0, 0, 10, 10}, RGB(0, 0, 255));
    EXPECT_EQ(GetRecording(record), "fill 0,0 10x10 #0000FF\n");

    const Surface shared(CreateRecordingSurface(10, 10));
    for (int redraw = 0; redraw < 3; ++redraw)
        BitBlt(shared, 0, 0, 10, 10, record, 0, 0, SRCCOPY);
    const std::string whole = "copy 0,0 10x10 from 0,0\nfill 0,0 10x10 #0000FF\n";
    EXPECT_EQ(GetRecording(shared), whole);
    BitBlt(shared, 0, 0, 10, 10, shared, 0, 0, SRCCOPY);
    EXPECT_EQ(GetRecording(shared), whole) << "onto itself in place: must not double";
    BitBlt(shared, 3, 4, 5, 5, record, 1, 0, SRCCOPY);
    EXPECT_EQ(GetRecording(shared), whole + "copy 3,4 5x5 from 1,0\nfill 3,4 5x5 #0000FF\n") << "covers a part";
}

} // namespace
