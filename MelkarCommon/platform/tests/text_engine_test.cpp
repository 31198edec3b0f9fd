#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/text/figure_text.h>
#include <MelkarCommon/platform/text/text_face.h>
#include <MelkarCommon/platform/text/text_parts.h>

#include <MelkarCommon/platform/tests/told.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <fstream>
#include <numeric>
#include <random>
#include <sstream>
#include <sys/resource.h>
#include <tuple>

namespace melkar {
namespace {

LOGFONTA Describe(std::string_view face, int height, int weight = FW_NORMAL) {
    LOGFONTA font{};
    font.lfHeight = height;
    font.lfWeight = weight;
    font.lfCharSet = DEFAULT_CHARSET;
    face.copy(font.lfFaceName, LF_FACESIZE - 1);
    return font;
}

std::shared_ptr<TextFace> Face(TextMedium medium, int height = -12, int dpi = 96) {
    return FindFace(Describe("DejaVu Sans", height), medium, dpi);
}

TEST(TextFace, HeightIsEmOrCell) {
    for (const auto& [why, height, em, lineHeight, ascent] : {std::tuple{"cell that is no whole em", 14, 11.2, 14, 11},
                                                              {"zero: the default", 0, 12, 15, 12},
                                                              {"too large em", INT_MIN, 8000, 10000, 8000},
                                                              {"smallest cell", 1, 1, 1, 1}}) {
        const FaceSize size = SizeFace(height, 1.0, 0.25);
        EXPECT_DOUBLE_EQ(size.em, em) << why;
        EXPECT_EQ(std::pair(size.lineHeight, size.ascent), std::pair(lineHeight, ascent)) << why;
    }
}

int WidthOf(const std::shared_ptr<TextFace>& face, std::string_view text) {
    return LayOutText(face, text, true, kNoWrap)->width;
}

TEST(TextLayout, StandInsAreOfTheirKindAndJapaneseOnesForJapaneseTexts) {
    const auto isLike = [](const LOGFONTA& description, const char* text, const char* family) {
        const auto layout = LayOutText(FindFace(description, TextMedium::Pixels), text, true, kNoWrap);
        EXPECT_EQ(layout->lineHeight, 20) << text;
        return layout->width == WidthOf(FindFace(Describe(family, 20), TextMedium::Pixels), text);
    };
    LOGFONTA gothic = Describe("MS Gothic", 20);
    EXPECT_TRUE(isLike(gothic, "Шаги 12%", "DejaVu Sans")) << "in a Japanese face each letter is as wide as a Han one";
    EXPECT_TRUE(isLike(gothic, "歩数 12%", "IPAGothic"));
    EXPECT_TRUE(isLike(Describe("ＭＳ Ｐゴシック", 20), "歩数 12%", "IPAPGothic"));
    EXPECT_TRUE(isLike(Describe("Courier New", 20), "Шаги 12%", "DejaVu Sans Mono"));
    EXPECT_TRUE(isLike(gothic, "ｶﾅ 12%", "IPAGothic")) << "half-width katakana";
    EXPECT_TRUE(isLike(Describe("IPAGothic", 20), "Шаги 12%", "IPAGothic")) << "itself asked for";
    gothic.lfCharSet = 128;
    EXPECT_TRUE(isLike(gothic, "Шаги 12%", "IPAGothic")) << "a Japanese character set asks for all of it";
}

// A width is given as that of another text.
/// @return 0 if one line tells of the font, however many texts are missing, and the count does
int DrawWithoutDescriptors() {
    Face(TextMedium::Pixels); // fontconfig has read what it needs
    const rlimit none{0, 0};
    setrlimit(RLIMIT_NOFILE, &none);
    const Told told;
    std::vector<TextLine> lines;
    for (const char* text : {"first", "second"})
        ShapeParagraph(*FindFace(Describe("DejaVu Serif", -31, FW_BOLD), TextMedium::Pixels), text, kNoWrap, lines);
    const bool isTold = told.Lines() == "Text: a font for [DejaVu Serif] can't be read, texts are missing\n";
    return isTold && CountOfMissingFonts() == 1 ? 0 : 1;
}

TEST(TextFace, TellsOfAFontThatCantBeRead) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer looks at an object's type through a pipe";
#endif
    EXPECT_EXIT(std::exit(DrawWithoutDescriptors()), testing::ExitedWithCode(0), "");
}

/// @return 0 if a new face is refused as any call without memory, the one at hand goes on, and one line tells
int FindFaceWithoutMemory() {
    const auto known = Face(TextMedium::Pixels);
    const int width = WidthOf(known, "known");
    const rlimit none{0, 0};
    setrlimit(RLIMIT_AS, &none); // there is still room in what the process has
    const Told told;
    int refused = 0;
    for (int size : {20, 21})
        try {
            FindFace(Describe("DejaVu Serif", size), TextMedium::Pixels);
        } catch (const std::bad_alloc&) {
            ++refused;
        }
    const bool goesOn = WidthOf(known, "know") < width;
    return refused == 2 && goesOn && told.Lines() == "Text: no memory for fonts, texts are missing\n" ? 0 : 1;
}

// fontconfig and the threads of Pango would end the process.
TEST(TextFace, IsNotAskedForWithoutMemory) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer takes memory of its own";
#endif
    EXPECT_EXIT(std::exit(FindFaceWithoutMemory()), testing::ExitedWithCode(0), "");
}

TEST(TextLayout, WrapsByOneRule) {
    const std::tuple<const char*, const char*, const char*, std::vector<std::string>> cases[] = {
        {"fits exactly", "The quick fox", "The quick", {"The quick", "fox"}},
        {"blanks at a wrap don't count", "The   fox", "The", {"The", "fox"}},
        {"nor do those at the end once there is no room", "The fox   ", "The fox ", {"The fox "}},
        {"leading blanks stay with their word", "  fox jumps", "f", {"  fox", "jumps"}},
        {"no width", "a b", "", {"a", "b"}},
        {"Han and kana break anywhere", "漢字かな文", "漢字", {"漢字", "かな", "文"}},
        {"but not before a full stop", "漢字。文", "漢字", {"漢", "字。", "文"}},
        {"Latin among Han: words stay whole", "歩steps数", "歩st", {"歩", "steps", "数"}},
        {"hyphens", "step-by-step", "step-by-", {"step-by-", "step"}},
        {"right to left", "שלום עולם", "שלום", {"שלום", "עולם"}},
    };
    for (const TextMedium medium : {TextMedium::Pixels, TextMedium::Page, TextMedium::Fixed})
        for (const auto& [why, text, asWideAs, lines] : cases) {
            const auto face = Face(medium);
            const auto layout = LayOutText(face, text, false, WidthOf(face, asWideAs));
            std::vector<std::string> found;
            for (const TextLine& line : layout->lines) {
                EXPECT_EQ(line.width, WidthOf(face, line.utf8)) << why << ": " << line.utf8;
                found.push_back(line.utf8);
            }
            EXPECT_EQ(found, lines) << why;
        }
}

/// What the samples say in one language.
std::vector<std::string> SampleTexts(const std::string& language) {
    std::ifstream words(MELKAR_SAMPLES "/words/" + language + ".txt");
    std::vector<std::string> texts;
    for (std::string line; std::getline(words, line);)
        if (const std::size_t sign = line.find('='); line[0] != ';' && sign != std::string::npos)
            texts.push_back(line.substr(sign + 1));
    EXPECT_GT(texts.size(), 100U) << language;
    return texts;
}

/// The same lines, in as much room as on the screen but for a unit.
void ExpectTheRoom(const TextLayout& layout, const TextLayout& screen, double scale) {
    ASSERT_EQ(layout.lines.size(), screen.lines.size());
    EXPECT_NEAR(layout.lineHeight, screen.lineHeight * scale, 1);
    for (std::size_t i = 0; i < layout.lines.size(); ++i) {
        EXPECT_EQ(layout.lines[i].utf8, screen.lines[i].utf8);
        EXPECT_NEAR(layout.lines[i].width, screen.lines[i].width * scale, 1);
    }
}

TEST(TextLayout, LinesBreakAndTakeRoomAsOnTheScreen) {
    for (const char* language : {"en", "ru", "ja"})
        for (const std::string& text : SampleTexts(language))
            for (const int points : {8, 9, 12})
                for (const int room : {48, 100}) {
                    const auto heightAt = [&](int dpi) { return -MulDiv(points, dpi, 72); };
                    const auto screen = LayOutText(Face(TextMedium::Pixels, heightAt(96)), text, false, room);
                    for (const auto& [medium, dpi] : {std::pair{TextMedium::Page, 96},
                                                      {TextMedium::Page, 300},
                                                      {TextMedium::Page, 72},
                                                      {TextMedium::Pixels, 192}}) {
                        SCOPED_TRACE(text + " at " + std::to_string(dpi));
                        const int roomHere = MulDiv(room, dpi, 96);
                        const auto layout = LayOutText(Face(medium, heightAt(dpi), dpi), text, false, roomHere);
                        ExpectTheRoom(*layout, *screen, dpi / 96.0);
                        EXPECT_TRUE(layout->width <= roomHere || screen->width > room);
                    }
                }
}

/// A digit of DejaVu Sans is 0.636 em wide: 7.63 pixels of 12, on a screen 8. Twelve of them take 96 pixels.
TEST(TextLayout, GlyphsFillTheRoomOfTheirLine) {
    const auto layout = LayOutText(Face(TextMedium::Page, -24, 192), "111111111111", true, kNoWrap);
    EXPECT_EQ(layout->width, 192);
    std::vector<double> starts;
    for (const OutlineStep& step : LineOutline(*layout, 0))
        if (step.kind == OutlineStep::Move)
            starts.push_back(step.points[0].x);
    ASSERT_EQ(starts.size(), 12U);
    EXPECT_NEAR(starts[11] - starts[0], 11 * 16, 0.05);

    const auto wrapped = LayOutText(Face(TextMedium::Page, -16, 125), "11111111111 1", false, 114);
    EXPECT_EQ(wrapped->width, 114) << "88 pixels fit into 87.55, and don't reach out of 114 units";

    const auto fine = Face(TextMedium::Pixels, -24, 192);
    for (int figure = 1000; figure < 1050; ++figure) // enough to have them put together
        ASSERT_EQ(WidthOf(fine, std::to_string(figure)), 4 * 16);
    const auto pixels = LayOutText(fine, "111111111111", true, kNoWrap);
    const auto forPage = LayOutText(Face(TextMedium::Page), "111111111111", true, kNoWrap);
    for (const auto& mask : {LineMask(*pixels, 0, 0), LineMask(*forPage, 0, 0, 2)})
        EXPECT_NEAR(mask->left + mask->width, 192 - 2, 2) << "not 12 x 15, and nothing is cut off";
}

TEST(TextFace, IsMeasuredOnTheScreenWithinReason) {
    const std::tuple<const char*, int, int, double, int> cases[] = {
        // an em on the screen, a line here
        {"an em to the pixel: 12.16; lines of 14 are 43.75", -38, 300, 12, 44},
        {"a cell is as high as it was asked for", 20, 300, 6 / 1.164, 20},
        {"no height: 12 units, 9 points of 72", 0, 72, 16, 14},
        {"less than half a pixel: no measure", -12, 4800, 0, 14},
        {"larger than any font: no measure", -84, 1, 0, 98},
    };
    for (const auto& [why, height, dpi, onScreen, lineHeight] : cases) {
        const auto face = Face(TextMedium::Page, height, dpi);
        EXPECT_NEAR(face->measure ? face->measure->face->size.em : 0, onScreen, 0.01) << why;
        EXPECT_EQ(face->size.lineHeight, lineHeight) << why;
    }
    EXPECT_EQ(LayOutText(Face(TextMedium::Page, -12, 1), std::string(1000, 'x'), true, kNoWrap)->lines[0].utf8.size(),
              455U)
        << "what Pango can count of an em of 1152";
}

TEST(ScreenMeasure, KeepsWhatItRounds) {
    const std::tuple<const char*, int, int, int> cases[] = {
        {"the nearest: 315.6", 300, 316, 101},
        {"halves down here, where that is enough: 12.5", 120, 12, 10},
        {"far off", 300, 1'000'000, 320'000},
    };
    for (const auto& [why, dpi, here, onScreen] : cases) {
        const ScreenMeasure measure{nullptr, dpi};
        EXPECT_EQ(measure.ToScreen(here), onScreen) << why;
        EXPECT_EQ(measure.FromScreen(onScreen), here) << why;
    }
    EXPECT_EQ((ScreenMeasure{nullptr, 72}.ToScreen(INT_MAX)), INT_MAX);
    EXPECT_EQ((ScreenMeasure{nullptr, 50}.FromScreen(14)), 8) << "7.29, but 7 would be 13 on the screen";
}

TEST(TextLayout, RightToLeftLineStartsAtItsLeftEnd) {
    const auto face = Face(TextMedium::Page);
    const auto wrapped = LayOutText(face, "שלום   עולם", false, 0);
    const auto alone = LayOutText(face, "שלום", false, kNoWrap);
    ASSERT_EQ(wrapped->lines[0].runs.size(), 1U);
    const GlyphRun& run = wrapped->lines[0].runs[0];
    EXPECT_TRUE(run.backward);
    EXPECT_EQ(run.glyphs.back().x, alone->lines[0].runs[0].glyphs.back().x);
}

TEST(TextCache, FindsTheSameTextOnly) {
    const auto face = Face(TextMedium::Pixels);
    const auto layout = LayOutText(face, "some text", false, 50);
    EXPECT_EQ(LayOutText(face, "some text", false, 50), layout);
    EXPECT_NE(LayOutText(face, "some text", false, 51), layout);
    EXPECT_NE(LayOutText(Face(TextMedium::Pixels, -13), "some text", false, 50), layout);
    EXPECT_NE(LayOutText(FindFace(Describe("DejaVu Sans", -12, FW_BOLD), TextMedium::Pixels), "some text", false, 50),
              layout);
}

TEST(LineMask, QuarterTurnsKeepEveryPixel) {
    const auto layout = LayOutText(Face(TextMedium::Pixels), "Steps", true, kNoWrap);
    const auto ink = [&](int turn) {
        const auto mask = LineMask(*layout, 0, turn);
        return std::accumulate(mask->coverage.begin(), mask->coverage.end(), 0);
    };
    EXPECT_EQ(ink(900), ink(0)) << "turned, not drawn anew";
    const auto held = LineMask(*layout, 0, 0);
    EXPECT_NE(LineMask(*layout, 0, 900), held) << "not in the memory of one that is looked at";
}

TEST(LineMask, StaysWithinItsMemoryAfterTextsWereMeasuredFirst) {
    const auto face = Face(TextMedium::Pixels, -200);
    const auto layOut = [&](int i) { return LayOutText(face, "label " + std::to_string(i), true, kNoWrap); };
    for (int i = 100; i < 400; ++i)
        layOut(i);
    for (int i = 100; i < 400; ++i) // each takes some 100 KB
        ASSERT_NE(LineMask(*layOut(i), 0, 0), nullptr);
    EXPECT_LT(MaskBytes(), 10 << 20);
}

std::string RandomFigure(std::mt19937& random) {
    std::string text;
    for (std::size_t length = 1 + random() % 10; length > 0; --length)
        text += FigureSet::kCharacters[random() % FigureSet::kCharacters.size()];
    return text;
}

/// All that a layout says, to compare.
std::string Dump(const TextLayout& layout) {
    std::ostringstream out;
    out << layout.font << ' ' << layout.width << ' ' << layout.lineHeight << ' ' << layout.ascent;
    for (const TextLine& line : layout.lines) {
        out << '\n' << line.utf8 << ' ' << line.width;
        for (const GlyphRun& run : line.runs) {
            out << '\n' << run.font.get() << ' ' << run.utf8 << ' ' << run.backward;
            for (const cairo_glyph_t& glyph : run.glyphs)
                out << ' ' << glyph.index << '@' << glyph.x << ',' << glyph.y;
            for (const cairo_text_cluster_t& cluster : run.clusters)
                out << ' ' << cluster.num_bytes << ':' << cluster.num_glyphs;
        }
    }
    return out.str();
}

std::string DumpMask(const TextLayout& layout, int escapement) {
    const auto mask = LineMask(layout, 0, escapement);
    return mask ? std::to_string(mask->left) + ',' + std::to_string(mask->top) + ',' + std::to_string(mask->width) +
                      std::string(mask->coverage.begin(), mask->coverage.end())
                : "";
}

std::shared_ptr<TextFace> FaceOfFigures(const char* name, int height, int weight) {
    auto face = FindFace(Describe(name, height, weight), TextMedium::Pixels);
    while (LayOutText(face, "7", true, kNoWrap)->figures == nullptr && face->figuresAsked < 100) {
    }
    return face;
}

TEST(Figures, AreExactlyAsIfShaped) {
    std::mt19937 random(7);
    for (const auto& [name, weight] :
         {std::pair{"DejaVu Sans", 400}, {"DejaVu Sans", 700}, {"IPAGothic", 400}, {"Inter", 400}, {"Inter", 600}})
        for (int height = 9; height <= 40; height += 3)
            for (const int sign : {-1, 1}) {
                const auto face = FaceOfFigures(name, sign * height, weight);
                for (int i = 0; i < 20; ++i) {
                    const std::string text = RandomFigure(random);
                    const auto figure = LayOutText(face, text, i % 2 == 0, kNoWrap);
                    const TextLayout shaped = LayOutAnew(*face, text, i % 2 == 0, kNoWrap);
                    // Inter raises signs between digits.
                    const bool isSteady = name != std::string("Inter") || text.find_first_of("-+:") == text.npos;
                    ASSERT_EQ(figure->figures != nullptr, isSteady) << name << " " << height << " " << text;
                    EXPECT_EQ(Dump(*figure), Dump(shaped)) << name << " " << height;
                    for (const int escapement : {0, 900, 300})
                        EXPECT_EQ(DumpMask(*figure, escapement), DumpMask(shaped, escapement)) << text;
                }
            }
}

TEST(Figures, TakeThePlacesOfFormerOnes) {
    const auto face = FaceOfFigures("DejaVu Sans", -12, 400);
    for (int i = 1000; i < 2000; ++i) { // more than there are places
        const std::string text = std::to_string(i);
        EXPECT_EQ(DumpMask(*LayOutText(face, text, true, kNoWrap), 0),
                  DumpMask(LayOutAnew(*face, text, true, kNoWrap), 0))
            << text;
    }
}

} // namespace
} // namespace melkar
