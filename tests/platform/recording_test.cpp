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

TEST(Recording, OneLineForEachThingDrawn) {
    Picture picture;
    const auto ops = Record([&](Backend& b) {
        b.FillRect({81, 56, 101, 399}, kBlue);
        b.FillRect({5, 5, 5, 9}, kBlue); // empty
        b.FillRect(kAll, kBlue);
        b.StrokeLine({60, 39}, {8, 39}, Width(1.0626));
        b.StrokeLine({0, 0}, {9, 9}, Width(NAN));
        b.StrokeLine({0, 0}, {9, 9}, Dashes(18, 6, 0, true));
        b.StrokeLine({0, 0}, {9, 9}, Dashes(3, 3, std::sqrt(2), false));
        b.StrokeShape(Round(Shape::Kind::Slice), Width(3));
        b.FillShape(Triangle(true), kBlue);
        b.Blit({0, 0, 8, 3}, picture.Buffer(), {1, 0, 4, 3}, SRCCOPY);
        b.Blit({0, 0, 4, 3}, picture.Buffer(), {0, 0, 4, 3}, SRCAND);
        b.Blit({0, 0, 4, 3}, picture.Buffer(), {1, 0, 5, 3}, SRCCOPY);                    // beyond the picture
        b.PaintText(Text("\"\\\n\x01\xC3\xA4"), 0, {12, 20}, 0, kBlue, {12, 20, 52, 35}); // the clip just holds it
        b.PaintText(Text("a"), 0, {12, 20}, 900, kBlue, {12, -19, 27, 20}); // upwards, cut: from -20 to 20
        b.PaintText(Text("a"), 1, {0, 0}, 0, kBlue, kAll);                  // no such line
    });
    EXPECT_EQ(FormatRecording(ops), R"(fill 81,56 20x343 #4A90D9
fill -2147483648,-2147483648 4294967295x4294967295 #4A90D9
line 60,39 8,39 #000000 w1.063
line 0,0 9,9 #000000 wnan
line 0,0 9,9 #000000 w1 dash 18,6 gaps #FFFFFF
line 0,0 9,9 #000000 w1 dot 3,3 phase 1.414
slice 50,40.5 20x10.25 from 90 sweep 180 stroke #000000 w3
polygon 1,2 30,4 -5,60 winding fill #4A90D9
image 0,0 8x3 from 3x3
image 0,0 4x3 from 4x3 and
text "\"\\\n\x01ä" 12,20 40x15 "Sans 12 bold" #4A90D9
text "a" 12,20 40x15 "Sans 12 bold" #4A90D9 angle 900 clip 12,-19 27,20
)");
}

} // namespace
} // namespace melkar
