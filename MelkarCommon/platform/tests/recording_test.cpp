#include "brushes.h"

#include <MelkarCommon/platform/record/record.h>
#include <MelkarCommon/platform/seam/grey_backend.h>
#include <MelkarCommon/platform/surface.h>
#include <MelkarCommon/platform/text/glyph_run.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <fstream>
#include <sstream>

namespace melkar {
namespace {

constexpr Color kBlue = 0xFF4A90D9U;
constexpr RECT kAll{INT_MIN, INT_MIN, INT_MAX, INT_MAX};

Draw Fill(const RECT& rect) {
    return [=](Backend& b) { b.FillRect(rect, kBlue); };
}
Draw Fill(const Shape& shape) {
    return [=](Backend& b) { b.FillShape(shape, kBlue); };
}
/// A text without glyphs, 15 high.
Draw Text(std::string utf8, POINT at, const RECT& clip = kAll, int escapement = 0, int width = 40) {
    TextLayout layout;
    layout.font = "Sans 12 bold";
    layout.lineHeight = 15;
    layout.lines.resize(1);
    layout.lines[0].utf8 = std::move(utf8);
    layout.lines[0].width = width;
    return [=, text = std::make_shared<TextLayout>(layout)](Backend& b) {
        b.PaintText(text, 0, at, escapement, kBlue, clip);
    };
}
/// From a picture of 4 x 3 whose pixels count up, and which is gone afterwards.
Draw Image(const RECT& target, const RECT& source, DWORD operation = SRCCOPY) {
    return [=](Backend& b) {
        std::uint32_t pixels[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
        b.Blit(target, {pixels, 4, 3, 4}, source, operation);
    };
}

const RECT kPicture{0, 0, 4, 3};
const Shape kTriangle = Polygon({{1, 2}, {30, 4}, {-5, 60}});
const Shape kEllipse = Ellipse(50, 40.5, 20, 10.25);

/// Records on a surface of 100 x 80, under a clip.
std::vector<RecordedOp> Record(const std::vector<Draw>& draws, const RECT& clip = kAll) {
    std::vector<RecordedOp> ops;
    const auto backend = MakeRecordingBackend(ops, 100, 80);
    backend->SetClip(clip);
    for (const Draw& draw : draws)
        draw(*backend);
    return ops;
}

/// Why, what is drawn, and its line without the line feed; empty: nothing is recorded.
using Cases = std::vector<std::tuple<const char*, Draw, std::string>>;

void Check(const Cases& cases, const RECT& clip) {
    for (const auto& [why, draw, line] : cases)
        EXPECT_EQ(FormatRecording(Record({draw}, clip)), line.empty() ? "" : line + "\n") << why;
}

TEST(Recording, Lines) {
    const Cases cases = {
        {"three decimals", Line({60, 39}, {8, 39}, Width(1.0626)), "line 60,39 8,39 #000000 w1.063"},
        {"dots", Line({0, 0}, {9, 9}, Dashes(3, 3, std::sqrt(2))), "line 0,0 9,9 #000000 w1 dot 3,3 phase 1.414"},
        {"beyond the picture", Image(kPicture, {1, 0, 5, 3}), ""},
        {"clip that cuts its last column", Text("a", {12, 20}, {12, 20, 51, 35}),
         R"(text "a" 12,20 40x15 "Sans 12 bold" #4A90D9 clip 12,20 51,35)"},
        {"upwards: from -20 to 20", Text("a", {12, 20}, {12, -20, 27, 20}, 900),
         R"(text "a" 12,20 40x15 "Sans 12 bold" #4A90D9 angle 900)"},
        {"upwards, cut", Text("a", {12, 20}, {12, -19, 27, 20}, 900),
         R"(text "a" 12,20 40x15 "Sans 12 bold" #4A90D9 angle 900 clip 12,-19 27,20)"},
        {"escapes", Text("\"\\\n\r\t\x01\x7F\xC3\xA4", {12, 20}),
         R"(text "\"\\\n\r\t\x01\x7Fä" 12,20 40x15 "Sans 12 bold" #4A90D9)"},
    };
    Check(cases, kAll);
}

TEST(Recording, NarrowClip) {
    const Cases cases = {
        {"fill beside", Fill({0, 0, 10, 99}), ""},
        {"line to the left, within", Line({29, 12}, {9, 12}), "line 29,12 9,12 #000000 w1"},
        {"line in the row below", Line({10, 30}, {30, 30}), ""},
        {"its upper half reaches in", Line({10, 30}, {30, 30}, Width(2)),
         "line 10,30 30,30 #000000 w2 clip 10,10 30,30"},
        {"line that ends where the clip begins", Line({0, 12}, {10, 12}), ""},
        {"shape over the edge", Fill(kTriangle), "polygon 1,2 30,4 -5,60 fill #4A90D9 clip 10,10 30,30"},
        {"shape beside", Fill(kEllipse), ""},
        {"shape whose outline reaches in", [](Backend& b) { b.StrokeShape(kEllipse, Width(2)); },
         "ellipse 50,40.5 20x10.25 stroke #000000 w2 clip 10,10 30,30"},
        {"text clip intersected", Text("a", {0, 20}, {0, 0, 20, 99}),
         R"(text "a" 0,20 40x15 "Sans 12 bold" #4A90D9 clip 10,10 20,30)"},
        {"text beside", Text("a", {0, 20}, kAll, 0, 10), ""},
        {"copy cut", Image({28, 9, 32, 12}, kPicture), "image 28,10 2x2 from 2x2"},
        {"scaled copy kept", Image({28, 9, 36, 12}, kPicture), "image 28,9 8x3 from 4x3 clip 10,10 30,30"},
    };
    Check(cases, {10, 10, 30, 30});
}

TEST(Recording, CopiesKeepTheirPixels) {
    const auto ops = Record({Image({-1, 5, 2, 8}, {1, 0, 4, 3})}, {0, 0, 99, 80});
    ASSERT_EQ(ops.size(), 1U);
    EXPECT_EQ(*std::get<BlitOp>(ops[0].verb).pixels, (std::vector<std::uint32_t>{2, 3, 6, 7, 10, 11}));
}

/// Plays on a surface of 200 x 100.
std::vector<RecordedOp> Played(const std::vector<RecordedOp>& ops, const RECT& source, int x, int y) {
    std::vector<RecordedOp> played;
    const auto to = MakeRecordingBackend(played, 200, 100);
    Replay(ops, *to, source, {x, y}, {0, 0, 200, 100});
    to->FillRect({0, 0, 200, 1}, kBlue); // the clip is the whole again
    EXPECT_EQ(FormatRecording({played.back()}), "fill 0,0 200x1 #4A90D9\n");
    played.pop_back();
    return played;
}

TEST(Recording, Replay) {
    const auto ops = Record({Fill({0, 0, 100, 80}), Line({20, 25}, {30, 25}), Fill(kEllipse),
                             Text("a", {20, 30}, {20, 30, 25, 99}), Image({58, 20, 62, 23}, kPicture)});
    const auto played = Played(ops, {20, 20, 60, 40}, 105, 3);
    EXPECT_EQ(FormatRecording(played), "fill 105,3 40x20 #4A90D9\n"
                                       "line 105,8 115,8 #000000 w1\n"
                                       "ellipse 135,23.5 20x10.25 fill #4A90D9 clip 105,3 145,23\n"
                                       "text \"a\" 105,13 40x15 \"Sans 12 bold\" #4A90D9 clip 105,13 110,23\n"
                                       "image 143,3 2x3 from 2x3\n");

    // What was cut stays cut when it is played from the copy, and marks are no drawing.
    const RecordedOp mark{CopyMark{}};
    EXPECT_EQ(FormatRecording(Played({mark, played[2]}, {100, 0, 200, 100}, 0, 0)),
              "ellipse 35,23.5 20x10.25 fill #4A90D9 clip 5,3 45,23\n");
}

// By hand: red is as light as 0.299 * 255 = 76 = 4C, green as 150 = 96, blue as 29 = 1D, #4A90D9 as 131 = 83.
TEST(Grey, OfEveryVerbIsAsLightAsItsColour) {
    std::vector<RecordedOp> ops;
    const auto record = MakeRecordingBackend(ops, 100, 80);
    const auto grey = MakeGreyBackend(*record);
    Stroke dashes = Dashes(3, 2, 0, true);
    dashes.color = 0xFF00FF00U;
    for (const Draw& draw :
         {Fill(RECT{0, 0, 9, 9}), Fill(kTriangle), Draw([&](Backend& b) { b.StrokeShape(kEllipse, dashes); }),
          Line({0, 0}, {9, 9}, dashes), Text("a", {12, 20}), Draw([](Backend& b) {
              b.FillFramed({0, 0, 9, 3}, 1, kBlue, 0xFFFF0000U);
          })})
        draw(*grey);
    grey->SetClip({0, 0, 4, 80});
    std::uint32_t pixels[] = {0, 0xFFFF0000U, 0xFF00FF00U, 0, 0, 0xFF0000FFU, 0xFFFFFFFFU, 0};
    grey->Blit({2, 0, 4, 2}, {pixels, 4, 2, 4}, {1, 0, 3, 2}, SRCAND);
    EXPECT_EQ(*std::get<BlitOp>(ops.back().verb).pixels,
              (std::vector<std::uint32_t>{0xFF4C4C4CU, 0xFF969696U, 0xFF1D1D1DU, 0xFFFFFFFFU}));
    grey->FillRect({0, 0, 9, 9}, kBlue);
    EXPECT_EQ(FormatRecording(ops), "fill 0,0 9x9 #838383\n"
                                    "polygon 1,2 30,4 -5,60 fill #838383\n"
                                    "ellipse 50,40.5 20x10.25 stroke #969696 w1\n"
                                    "line 0,0 9,9 #969696 w1 dash 3,2 gaps #4C4C4C\n"
                                    "text \"a\" 12,20 40x15 \"Sans 12 bold\" #838383\n"
                                    "fill 0,0 9x1 #838383\n"
                                    "fill 0,2 9x1 #838383\n"
                                    "fill 0,1 1x1 #838383\n"
                                    "fill 8,1 1x1 #838383\n"
                                    "fill 1,1 7x1 #4C4C4C\n"
                                    "image 2,0 2x2 from 2x2 and\n"
                                    "fill 0,0 4x9 #838383\n");
}

// Whoever keeps records looks a version up there.
TEST(Recording, DocumentNamesTheVersion) {
    std::stringstream document;
    document << std::ifstream(MELKAR_DOCS "/recording.md").rdbuf();
    const std::string said = "The words are version " + std::to_string(RecordingVersion()) + ".";
    EXPECT_NE(document.str().find(said), std::string::npos) << said;
}

} // namespace
} // namespace melkar
