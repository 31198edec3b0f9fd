#include <MelkarCommon/platform/tests/record_of.h>

#include <MelkarCommon/support/box_layout.h>
#include <MelkarCommon/support/text_box.h>
#include <MelkarCommon/support/text_measure.h>

#include <climits>
#include <gmock/gmock.h>
#include <tuple>

namespace {

using testing::HasSubstr;

TEST(TextBox, WhereTextStands) {
    const std::tuple<const char*, CRect, int, CRect, CRect> cases[] = {
        {"each half is cut by itself: 25 + 71 is 96, 48 - 7", {5, 25, 90, 71}, 15, {5, 41, 90, 56}, {5, 56, 90, 71}},
        {"left of the origin halves are cut towards it", {0, -10, 9, -3}, 4, {0, -8, 9, -4}, {0, -7, 9, -3}},
        {"exactly as high as the box", {5, 20, 90, 35}, 15, {5, 20, 90, 35}, {5, 20, 90, 35}},
        {"higher than the box: all of it", {5, 20, 90, 35}, 16, {5, 20, 90, 35}, {5, 20, 90, 35}},
        {"a box upside down", {0, 50, 9, 20}, 15, {0, 50, 9, 20}, {0, 50, 9, 20}},
        {"the whole range of an int", {0, INT_MIN, 9, INT_MAX}, 15, {0, -7, 9, 8}, {0, INT_MAX - 15, 9, INT_MAX}},
    };
    for (const auto& [why, box, height, middle, bottom] : cases) {
        EXPECT_EQ(melkar::TextAtMiddle(box, height), middle) << why;
        EXPECT_EQ(melkar::TextAtBottom(box, height), bottom) << why;
    }
}

/// On a surface that is opaque and white: the ground is said, not found.
TEST(Texts, StandOnTheGroundThatTheirPainterSays) {
    const CRect box(10, 20, 90, 81);
    const std::string text = "text \"ab\" 10,20 16x15 \"sans 12\" #000000\n";
    const auto onWhite = [](auto paint) {
        return RecordOf([&](HDC surface) {
            SetBkMode(surface, OPAQUE);
            paint(surface);
            EXPECT_EQ(SetBkMode(surface, OPAQUE), OPAQUE);
            EXPECT_EQ(SetBkColor(surface, 0), RGB(255, 255, 255));
        });
    };
    EXPECT_EQ(onWhite([&](HDC on) { melkar::PaintText(on, "ab", box, 0); }), text);
    EXPECT_EQ(onWhite([&](HDC on) { melkar::PaintTextOn(on, RGB(1, 2, 3), "ab", box, 0); }),
              "fill 10,20 16x15 #010203\n" + text);
    EXPECT_EQ(onWhite([&](HDC on) { melkar::PaintTextAsSet(on, "ab", box, 0); }), "fill 10,20 16x15 #FFFFFF\n" + text);
    EXPECT_EQ(onWhite([&](HDC on) { melkar::PaintTurned(on, {10, 20}, "ab"); }), text);
}

/// Four characters of 8 x 15 fit across, and the word that doesn't makes no room for the others: three lines, 45 high.
TEST(TextBox, WrapsAndPlacesInTheSurfacesFont) {
    const CRect box(10, 20, 42, 120);
    const auto record = [](auto draw) { return RecordOf([&](HDC dc) { EXPECT_EQ(draw(dc, "aa bb cccccc"), 45); }); };
    const auto at = [](int top) {
        const auto y = [&](int line) { return " 10," + std::to_string(top + 15 * line); };
        return AllOf(HasSubstr("\"aa\"" + y(0)), HasSubstr("\"bb\"" + y(1)), HasSubstr("\"cccccc\"" + y(2)));
    };
    EXPECT_THAT(record([&](HDC dc, const char* text) { return DrawTextVCenter(dc, box, text, 0); }), at(48));
    EXPECT_THAT(record([&](HDC dc, const char* text) { return DrawTextBottom(dc, box, text, 0, 0, "Face"); }), at(75));
    EXPECT_THAT(record([&](HDC dc, const char* text) { return DrawTextTop(dc, box, text, 0, -5, "Face"); }), at(20));
}

/// A cell of 20 is an em of 16: a character is 10 wide, a line 20 high.
TEST(TextBox, SizedFormsTakeACellHeightAndPutTheFontBack) {
    const CRect box(10, 20, 90, 81);
    const std::string record = RecordOf([&](HDC dc) {
        DrawTextVCenterEx(dc, box, "a", DT_RIGHT, 20, "Face");
        DrawTextBottom(dc, box, "b", 0, 20, "Face");
        DrawTextTop(dc, box, "c", 0, 20, "Face");
        DrawTextVCenterEx(dc, box, "default height", DT_SINGLELINE, 0, nullptr);
        TextOutA(dc, 0, 0, "d", 1);
    });
    EXPECT_THAT(record, HasSubstr("text \"a\" 80,40 10x20 \"Face 16\""));
    EXPECT_THAT(record, HasSubstr("text \"b\" 10,61 10x20 \"Face 16\""));
    EXPECT_THAT(record, HasSubstr("text \"c\" 10,20 10x20 \"Face 16\""));
    EXPECT_THAT(record, HasSubstr("text \"d\" 0,0 8x15 \"sans 12\""));
}

TEST(TextBox, ShowsNoMoreThanTenThousandBytes) {
    const std::string most(10000, 'x');
    EXPECT_THAT(RecordOf([&](HDC dc) { DrawTextTop(dc, CRect(0, 0, 90, 90), (most + "y").c_str(), 0, 0, ""); }),
                HasSubstr("text \"" + most + "\" 0,0 80000x15"));
}

} // namespace
