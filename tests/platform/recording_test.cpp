#include <MelkarCommon/support/platform/backend.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>
#include <numbers>

namespace melkar {
namespace {

constexpr Color kBlue = 0xFF4A90D9U;
constexpr RECT kAll{INT_MIN, INT_MIN, INT_MAX, INT_MAX};

/// A text without glyphs: 40 x 15, or whatever it is made to be.
std::shared_ptr<const TextLayout> Text(std::string utf8, int width = 40) {
    TextLine line;
    line.utf8 = std::move(utf8);
    line.width = width;
    TextLayout layout;
    layout.font = "Sans 12 bold";
    layout.lineHeight = 15;
    layout.lines = {line};
    return std::make_shared<TextLayout>(layout);
}

Shape Round(Shape::Kind kind) {
    Shape shape;
    shape.kind = kind;
    shape.center = {50, 40.5};
    shape.radius = {20, 10.25};
    shape.from = std::numbers::pi / 2;
    shape.sweep = std::numbers::pi;
    return shape;
}

Shape Triangle(bool winding) {
    Shape shape;
    shape.points = {{1, 2}, {30, 4}, {-5, 60}};
    shape.winding = winding;
    return shape;
}

Stroke Width(double width) {
    Stroke stroke;
    stroke.width = width;
    return stroke;
}

Stroke Dashes(double on, double off, double phase, bool gaps) {
    Stroke stroke;
    stroke.on = on;
    stroke.off = off;
    stroke.phase = phase;
    stroke.gaps = gaps;
    return stroke;
}

/// A picture of 4 x 3 whose pixels count up.
struct Picture {
    std::vector<std::uint32_t> pixels{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
    PixelBuffer Buffer() { return {pixels.data(), 4, 3, 4}; }
};

using Draw = std::function<void(Backend&)>;

/// Records on a surface of 100 x 80.
std::vector<RecordedOp> Record(const Draw& draw) {
    std::vector<RecordedOp> ops;
    draw(*MakeRecordingBackend(ops, 100, 80));
    return ops;
}

TEST(Recording, Lines) {
    struct Case {
        Draw draw;
        const char* line;
    };
    Picture picture;
    const Case cases[] = {
        {[](Backend& b) {
             b.FillRect({81, 56, 101, 399}, kBlue);
         },
         "fill 81,56 20x343 #4A90D9\n"},
        {[](Backend& b) {
             b.FillRect({5, 5, 5, 9}, kBlue);
         },
         ""},
        {[](Backend& b) { b.FillRect(kAll, kBlue); }, "fill -2147483648,-2147483648 4294967295x4294967295 #4A90D9\n"},
        {[](Backend& b) {
             b.StrokeLine({60, 39}, {8, 39}, Width(1));
         },
         "line 60,39 8,39 #000000 w1\n"},
        {[](Backend& b) {
             b.StrokeLine({0, 0}, {9, 9}, Width(1.0626));
         },
         "line 0,0 9,9 #000000 w1.063\n"},
        {[](Backend& b) {
             b.StrokeLine({0, 0}, {9, 9}, Width(NAN));
         },
         "line 0,0 9,9 #000000 wnan\n"},
        {[](Backend& b) {
             b.StrokeLine({0, 0}, {9, 9}, Dashes(18, 6, 0, true));
         },
         "line 0,0 9,9 #000000 w1 dash 18,6 gaps #FFFFFF\n"},
        {[](Backend& b) {
             b.StrokeLine({0, 0}, {9, 9}, Dashes(3, 3, std::sqrt(2), false));
         },
         "line 0,0 9,9 #000000 w1 dot 3,3 phase 1.414\n"},
        {[](Backend& b) { b.FillShape(Round(Shape::Kind::Ellipse), kBlue); },
         "ellipse 50,40.5 20x10.25 fill #4A90D9\n"},
        {[](Backend& b) { b.StrokeShape(Round(Shape::Kind::Slice), Width(3)); },
         "slice 50,40.5 20x10.25 from 90 sweep 180 stroke #000000 w3\n"},
        {[](Backend& b) { b.FillShape(Triangle(false), kBlue); }, "polygon 1,2 30,4 -5,60 fill #4A90D9\n"},
        {[](Backend& b) { b.FillShape(Triangle(true), kBlue); }, "polygon 1,2 30,4 -5,60 winding fill #4A90D9\n"},
        {[&](Backend& b) {
             b.Blit({0, 0, 8, 3}, picture.Buffer(), {1, 0, 4, 3}, SRCCOPY);
         },
         "image 0,0 8x3 from 3x3\n"},
        {[&](Backend& b) {
             b.Blit({0, 0, 4, 3}, picture.Buffer(), {0, 0, 4, 3}, SRCAND);
         },
         "image 0,0 4x3 from 4x3 and\n"},
        {[&](Backend& b) {
             b.Blit({0, 0, 4, 3}, picture.Buffer(), {0, 0, 4, 3}, SRCPAINT);
         },
         "image 0,0 4x3 from 4x3 or\n"},
        {[&](Backend& b) {
             b.Blit({0, 0, 4, 3}, picture.Buffer(), {1, 0, 5, 3}, SRCCOPY);
         },
         ""}, // beyond the picture
    };
    for (const Case& c : cases)
        EXPECT_EQ(FormatRecording(Record(c.draw)), c.line);
}

TEST(Recording, Texts) {
    struct Case {
        const char* why;
        const char* text;
        int escapement;
        RECT clip;
        const char* line;
    };
    const Case cases[] = {
        {"plain", "Steps", 0, kAll, R"(text "Steps" 12,20 40x15 "Sans 12 bold" #4A90D9)"},
        {"clip that just holds it", "a", 0, {12, 20, 52, 35}, R"(text "a" 12,20 40x15 "Sans 12 bold" #4A90D9)"},
        {"clip that cuts its last column",
         "a",
         0,
         {12, 20, 51, 35},
         R"(text "a" 12,20 40x15 "Sans 12 bold" #4A90D9 clip 12,20 51,35)"},
        {"upwards: from -20 to 20",
         "a",
         900,
         {12, -20, 27, 20},
         R"(text "a" 12,20 40x15 "Sans 12 bold" #4A90D9 angle 900)"},
        {"upwards, cut",
         "a",
         900,
         {12, -19, 27, 20},
         R"(text "a" 12,20 40x15 "Sans 12 bold" #4A90D9 angle 900 clip 12,-19 27,20)"},
        {"escapes", "\"\\\n\r\t\x01\x7F\xC3\xA4", 0, kAll,
         R"(text "\"\\\n\r\t\x01\x7Fä" 12,20 40x15 "Sans 12 bold" #4A90D9)"},
    };
    for (const Case& c : cases) {
        const auto ops = Record([&](Backend& b) {
            b.PaintText(Text(c.text), 0, {12, 20}, c.escapement, kBlue, c.clip);
        });
        EXPECT_EQ(FormatRecording(ops), std::string(c.line) + "\n") << c.why;
    }
    EXPECT_TRUE(Record([](Backend& b) { b.PaintText(Text("a"), 0, {0, 0}, 0, kBlue, {5, 5, 5, 9}); }).empty());
    EXPECT_TRUE(Record([](Backend& b) { b.PaintText(Text("a"), 1, {0, 0}, 0, kBlue, kAll); }).empty());
}

TEST(Recording, Replay) {
    Picture picture;
    const auto ops = Record([&](Backend& b) {
        b.FillRect({0, 0, 100, 80}, kBlue);
        b.StrokeLine({20, 25}, {30, 25}, Width(1));
        b.FillShape(Round(Shape::Kind::Ellipse), kBlue);
        b.PaintText(Text("a"), 0, {20, 30}, 0, kBlue, {20, 30, 25, 99});
        b.Blit({58, 20, 62, 23}, picture.Buffer(), {0, 0, 4, 3}, SRCCOPY);
    });
    std::vector<RecordedOp> played;
    const auto to = MakeRecordingBackend(played, 200, 100);
    Replay(ops, *to, {20, 20, 60, 40}, 105, 3, {0, 0, 200, 100});
    to->FillRect({0, 0, 200, 100}, 0); // the clip is the whole again
    EXPECT_EQ(FormatRecording(played), "fill 105,3 40x20 #4A90D9\n"
                                       "line 105,8 115,8 #000000 w1\n"
                                       "ellipse 135,23.5 20x10.25 fill #4A90D9 clip 105,3 145,23\n"
                                       "text \"a\" 105,13 40x15 \"Sans 12 bold\" #4A90D9 clip 105,13 110,23\n"
                                       "image 143,3 2x3 from 2x3\n"
                                       "fill 0,0 200x100 #000000\n");

    // What was cut stays cut when it is played from the copy, and marks are no drawing.
    RecordedOp mark;
    mark.verb = RecordedOp::Verb::Copy;
    played = {mark, played[2]};
    std::vector<RecordedOp> again;
    Replay(played, *MakeRecordingBackend(again, 200, 100), {100, 0, 200, 100}, 0, 0, {0, 0, 200, 100});
    EXPECT_EQ(FormatRecording(again), "ellipse 35,23.5 20x10.25 fill #4A90D9 clip 5,3 45,23\n");
    EXPECT_EQ(FormatRecording({mark}), "copy 0,0 0x0 from 0,0\n");
}

} // namespace
} // namespace melkar
