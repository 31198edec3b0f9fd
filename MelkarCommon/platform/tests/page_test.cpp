#include "brushes.h"
#include <MelkarCommon/platform/tests/inflated.h>
#include <MelkarCommon/platform/tests/temp_workdir.h>
#include <MelkarCommon/platform/tests/told.h>

#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/pages/page_file.h>
#include <MelkarCommon/platform/text/text_engine.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <tuple>

namespace melkar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr Color kBlue = 0xFF0000FFU;

/// What stands between the first `head` and the next `tail`; empty if there is none.
std::string Between(const std::string& text, const std::string& head, const std::string& tail) {
    const std::size_t start = text.find(head);
    if (start == std::string::npos)
        return "";
    const std::size_t from = start + head.size();
    return text.substr(from, text.find(tail, from) - from);
}

/// One page of 400 x 300 units, in a directory of its own.
struct Page : testing::Test {
    std::unique_ptr<PageFile> Make(const std::string& name, PageFormat format, int dpi = 96) const {
        auto page = MakePageFile(work.Path(name).c_str(), format, 400, 300, dpi);
        if (page)
            page->BeginPage();
        return page;
    }
    std::string DrawFile(PageFormat format, int dpi, const Draw& draw) const {
        const auto page = Make("page", format, dpi);
        draw(*page);
        EXPECT_TRUE(page->Finish());
        return work.Read("page");
    }

    /// The elements of an SVG page at 96 dpi, one a line.
    std::vector<std::string> Elements(const Draw& draw) const {
        std::istringstream svg(DrawFile(PageFormat::Svg, 96, draw));
        std::vector<std::string> elements;
        for (std::string line; std::getline(svg, line);)
            elements.push_back(line);
        EXPECT_EQ(elements.back(), "</svg>");
        EXPECT_EQ(elements[2], R"(<rect x="0" y="0" width="400" height="300" fill="#ffffff"/>)") << "starts white";
        return {elements.begin() + 3, elements.end() - 1};
    }

    Told told;
    TempWorkdir work;
};

TEST_F(Page, LinesCoverTheAreaOfTheirPixels) {
    const std::tuple<const char*, std::vector<POINT>, Stroke, const char*> cases[] = {
        {"even width", {{10, 20}, {30, 20}}, Width(2), R"(<path d="M10,20H30" stroke="#000000" stroke-width="2"/>)"},
        {"thin: half a point",
         {{9, 0}, {9, 5}},
         Width(0),
         R"(<path d="M9.5,0V5" stroke="#000000" stroke-width="0.667"/>)"},
        {"leftwards: the last pixel is left out", {{9, 3}, {2, 3}}, {}, R"(<path d="M10,3.5H3" stroke="#000000"/>)"},
        {"far beyond the page", {{INT_MIN, 20}, {INT_MAX, 20}}, {}, R"(<path d="M0,20.5H400" stroke="#000000"/>)"},
        {"a pattern that began 50 before the page",
         {{-30, 20}, {90, 20}},
         Dashes(18, 6, 20),
         R"(<path d="M0,20.5H90" stroke="#000000" stroke-dasharray="18 6" stroke-dashoffset="2"/>)"},
        {"sloped",
         {{10, 20}, {30, 25}},
         Width(2),
         R"(<path d="M10.5,20.5L30.5,25.5" stroke="#000000" stroke-width="2" stroke-linecap="round"/>)"},
        {"odd width",
         {{10, 20}, {30, 20}, {30, 40}},
         Width(3),
         R"(<polyline points="10,20.5 30.5,20.5 30.5,40" fill="none" stroke="#000000" stroke-width="3"/>)"},
        {"leftwards and up",
         {{30, 40}, {10, 40}, {10, 20}},
         Width(2),
         R"(<polyline points="31,40 10,40 10,21" fill="none" stroke="#000000" stroke-width="2"/>)"},
        {"closed",
         {{10, 10}, {30, 10}, {30, 30}, {10, 30}, {10, 10}},
         Width(2),
         R"(<polygon points="10,10 30,10 30,30 10,30" fill="none" stroke="#000000" stroke-width="2"/>)"},
        {"sloped, a point twice",
         {{10, 20}, {20, 25}, {20, 25}, {30, 20}},
         {},
         R"(<polyline points="10.5,20.5 20.5,25.5 30.5,20.5" fill="none" stroke-linejoin="round" stroke="#000000" stroke-linecap="round"/>)"},
    };
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr); // which has commas in numbers
    for (const auto& row : cases)
        EXPECT_THAT(Elements([&](Backend& b) { b.StrokePolyline(std::get<1>(row), std::get<2>(row)); }),
                    ElementsAre(std::get<3>(row)))
            << std::get<0>(row);
    std::setlocale(LC_ALL, "C");
    for (const auto& hidden : {Line({5, 5}, {5, 5}, {}), Line({0, 300}, {9, 300}, {}), Line({-9, 5}, {0, 5}, {})})
        EXPECT_THAT(Elements(hidden), ElementsAre());
}

TEST_F(Page, SlopedLinesSideBySideAreOneOutline) {
    const auto row = [](Backend& b, POINT from, POINT to, int lines) {
        for (int i = 0; i < lines; ++i)
            StrokeLine(b, {from.x, from.y + i}, {to.x, to.y + i}, {});
    };
    const auto outline = [](const std::string& points) {
        return "<polygon points=\"" + points + "\" stroke-linejoin=\"round\" fill=\"#000000\" stroke=\"#000000\"/>";
    };
    const auto draw = [&](Backend& b) {
        row(b, {30, 25}, {10, 20}, 3);
        row(b, {50, 15}, {30, 25}, 3); // goes on where the row before began
        row(b, {60, 15}, {50, 15}, 3); // level
        row(b, {60, 15}, {40, 30}, 3); // goes back: of its own
        row(b, {10, 60}, {30, 65}, 1); // one line
        row(b, {10, 62}, {30, 67}, 1); // a row lies between
        row(b, {10, 80}, {30, 80}, 2); // level: edges meet
    };
    EXPECT_THAT(Elements(draw),
                ElementsAre(outline("10.5,20.5 30.5,25.5 50.5,15.5 60.5,15.5 60.5,17.5 50.5,17.5 30.5,27.5 10.5,22.5"),
                            outline("40.5,30.5 60.5,15.5 60.5,17.5 40.5,32.5"), HasSubstr("M10.5,60.5L"),
                            HasSubstr("M10.5,62.5L"), HasSubstr("M10,80.5H30"), HasSubstr("M10,81.5H30")));
}

TEST_F(Page, ARowIsDrawnBeforeWhatFollows) {
    const auto draw = [](Backend& b) {
        StrokeLine(b, {10, 20}, {30, 25}, {});
        b.SetClip({0, 0, 20, 300});
        StrokeLine(b, {10, 21}, {30, 26}, {});
        b.FillRect({1, 2, 3, 4}, kBlue);
    };
    EXPECT_THAT(Elements(draw), ElementsAre(HasSubstr("M10.5,20.5L"), HasSubstr("<svg x=\"0\""),
                                            HasSubstr("M10.5,21.5L"), "</svg>", HasSubstr("<rect x=\"1\"")));
}

TEST_F(Page, APolygonAndItsOutlineAreOneElement) {
    using Points = std::vector<POINT>;
    const Points hill{{10, 50}, {10, 20}, {40, 30}, {40, 50}};
    const Points plain{{10, 50}, {20, 50}, {30, 20}, {40, 50}, {60, 50}};
    const auto draw = [](const Points& polygon, const Points& line, int lines) {
        return [=](Backend& b) {
            b.FillShape(PolygonShape{polygon}, kBlue);
            for (int i = 0; i < lines; ++i) {
                Points moved = line;
                for (POINT& point : moved)
                    point.y += i;
                b.StrokePolyline(moved, {});
            }
        };
    };
    const auto one = [](const std::string& points) {
        return "<polyline points=\"" + points +
               R"(" stroke-linejoin="round" fill="#0000ff" fill-rule="evenodd" stroke="#000000"/>)";
    };
    EXPECT_THAT(Elements(draw(hill, hill, 1)), ElementsAre(one("10.5,50 10.5,50.5 10.5,20.5 40.5,30.5 40.5,50")))
        << "below it stays at 50; the line's first pixel is covered, its last isn't";
    EXPECT_THAT(Elements(draw(plain, plain, 1)),
                ElementsAre(one("10.5,50 10.5,50.5 20.5,50.5 30.5,20.5 40.5,50.5 59.5,50.5 59.5,50")));
    const std::tuple<const char*, Points, int> apart[] = {
        {"goes elsewhere", {{10, 50}, {10, 20}, {40, 30}, {41, 50}}, 1},
        {"a thick one is an outline by itself", hill, 2},
    };
    for (const auto& [why, line, lines] : apart)
        EXPECT_THAT(Elements(draw(hill, line, lines)).front(), HasSubstr("points=\"10,50 10,20 40,30 40,50\" fill"))
            << why;
    const Points slope{{10, 50}, {10, 20}, {40, 30}};
    EXPECT_EQ(Elements(draw(slope, slope, 1)).size(), 2U) << "half a unit would show at its open edge";
}

TEST_F(Page, FillsStayInTheClip) {
    const auto fill = [](Backend& b) {
        b.SetClip({50, 60, 1000, 1000});
        b.FillRect({10, 10, 100, 100}, kBlue);
        b.FillRect({10, 10, 50, 100}, kBlue);
        b.FillShape(Ellipse(60, 60, 20, 20), kBlue);
        b.SetClip({0, 0, 400, 300});
        b.FillRect({INT_MIN, INT_MIN, INT_MAX, 7}, kBlue);
    };
    EXPECT_THAT(Elements(fill), ElementsAre(R"(<rect x="50" y="60" width="50" height="40" fill="#0000ff"/>)",
                                            R"(<svg x="50" y="60" width="350" height="240" viewBox="50 60 350 240">)",
                                            R"(<circle cx="60" cy="60" r="20" fill="#0000ff"/>)", "</svg>",
                                            R"(<rect x="0" y="0" width="400" height="7" fill="#0000ff"/>)"));
}

TEST_F(Page, FramesAreOneElement) {
    const auto draw = [](Backend& b) {
        b.FillFramed({10, 10, 30, 20}, 1, 0xFF000000U, kBlue);
        b.FillFramed({10, 10, 30, 20}, 2, kBlue, std::nullopt);
        b.FillFramed({390, 10, 410, 20}, 3, kBlue, std::nullopt); // its right side is cut off
    };
    EXPECT_THAT(
        Elements(draw),
        ElementsAre(R"(<rect x="10.5" y="10.5" width="19" height="9" fill="#0000ff" stroke="#000000"/>)",
                    R"(<rect x="11" y="11" width="18" height="8" fill="none" stroke="#0000ff" stroke-width="2"/>)",
                    R"(<rect x="390" y="10" width="10" height="3" fill="#0000ff"/>)",
                    R"(<rect x="390" y="17" width="10" height="3" fill="#0000ff"/>)",
                    R"(<rect x="390" y="13" width="3" height="4" fill="#0000ff"/>)"));
}

// A slice reaches a unit beyond the radial at which it ends: along the rim a twentieth of a radian, 60 - 10 cos(1 /
// 20).
TEST_F(Page, SlicesReachBelowTheirNeighbours) {
    const double quarter = std::acos(0);
    const auto draw = [&](Backend& b) {
        b.FillShape(SliceShape{{{50, 60}, {20, 10}}, 0, quarter, {50, 60}}, kBlue);
        b.StrokeShape(SliceShape{{{50, 60}, {20, 10}}, -quarter, 3 * quarter, {49, 60}}, Width(2));
    };
    EXPECT_THAT(
        Elements(draw),
        ElementsAre(
            R"(<path d="M50,60L70,60A20,10 0 0 0 50,50zM50,60 50,50 49,50.012 49,59z" fill="#0000ff"/>)",
            R"(<path d="M49,60L50,70A20,10 0 1 0 30,60z" fill="none" stroke="#000000" stroke-width="2" stroke-linejoin="round"/>)"));
}

/// A text of DejaVu Sans at 9 points.
std::shared_ptr<const TextLayout> PageText(std::string_view text, int dpi) {
    LOGFONTA font{};
    font.lfHeight = -MulDiv(9, dpi, 72);
    std::strcpy(font.lfFaceName, "DejaVu Sans");
    return LayOutText(FindFace(font, TextMedium::Page, dpi), text, true, kNoWrap);
}

/// Twelve ones take 96 pixels on a screen, where a digit of 7.63 advances by 8.
TEST_F(Page, TextIsFoundWhereItStands) {
    for (const int dpi : {96, 192}) {
        const auto layout = PageText("111111111111", dpi);
        DrawFile(PageFormat::Pdf, dpi, [&](Backend& b) { b.PaintText(layout, 0, {80, 120}, 0, 0, {0, 0, 400, 300}); });
        ASSERT_EQ(std::system("pdftotext -bbox ../page ../text"), 0);
        const std::string found = work.Read("text");
        const std::size_t end = found.find("\">111111111111<");
        ASSERT_NE(end, std::string::npos) << found;
        const std::string word = found.substr(found.rfind("<word", end), end);
        const auto edge = [&](const char* name) { return std::stod(Between(word, name, "\"")); };
        const double points = 72.0 / dpi;
        EXPECT_NEAR(edge("xMin=\""), 80 * points, 0.5);
        EXPECT_NEAR(edge("xMax=\""), 80 * points + 96 * 0.75, 0.5);
        EXPECT_NEAR(edge("yMin=\""), 120 * points, layout->lineHeight * points / 4);
        EXPECT_NEAR(edge("yMax=\""), (120 + layout->lineHeight) * points, layout->lineHeight * points / 4);
    }
}

// 96 units long, 80,120 to 176,135 or up from there to 80,24: in each case the other one would lie within.
TEST_F(Page, TextsOfAPdfStayInTheirClip) {
    for (const auto& [escapement, clip] : {std::pair{0, RECT{60, 0, 100, 140}}, {900, RECT{80, 60, 200, 200}}}) {
        DrawFile(PageFormat::Pdf, 96, [&, turn = escapement, &room = clip](Backend& b) {
            b.PaintText(PageText("111111111111", 96), 0, {80, 120}, turn, 0, room);
        });
        ASSERT_EQ(std::system("pdftoppm -r 96 -gray -singlefile ../page ../sheet"), 0);
        const std::string sheet = work.Read("sheet.pgm");
        const std::string pixels = sheet.substr(sheet.size() - 400 * 300);
        RECT ink{400, 300, 0, 0};
        for (int i = 0; i < 400 * 300; ++i)
            if (pixels[static_cast<std::size_t>(i)] != '\xFF')
                ink = {std::min(ink.left, i % 400), std::min(ink.top, i / 400), std::max(ink.right, i % 400 + 1),
                       std::max(ink.bottom, i / 400 + 1)};
        EXPECT_TRUE(ink.left >= clip.left && ink.top >= clip.top && ink.right <= clip.right) << escapement;
        EXPECT_GT(std::max(ink.right - ink.left, ink.bottom - ink.top), 15) << "and show up to it";
    }
}

/// 10 high, so that a character of the built-in metrics is 6 wide and its line 13 high.
std::shared_ptr<const TextLayout> TextOf(std::string_view text, int charset = DEFAULT_CHARSET, bool underline = false) {
    LOGFONTA font{};
    font.lfHeight = -10;
    font.lfCharSet = static_cast<BYTE>(charset);
    font.lfUnderline = underline ? 1 : 0;
    std::strcpy(font.lfFaceName, "O'Neill <a>");
    return LayOutText(FindFace(font, TextMedium::Fixed), text, true, kNoWrap);
}

TEST_F(Page, TextsKeepTheirCharacters) {
    const RECT all{0, 0, 400, 300};
    const std::string length = R"(" lengthAdjust="spacingAndGlyphs")";
    const std::string font = R"(<g font-family="'ONeill &lt;a&gt;',sans-serif" font-size="10")";
    const auto draw = [&](Backend& b) {
        b.PaintText(TextOf("a<&\"\x01\xEF\xBF\xBF"), 0, {20, 30}, 0, 0xFF000000U, all);
        b.PaintText(TextOf("\x95\xE0", 128, true), 0, {20, 30}, 900, kBlue, all); // one character of CP932
        b.PaintText(TextOf(" b"), 0, {20, 30}, 0, kBlue, {20, 30, 29, 50});       // 12 x 13: its right side is cut off
        b.PaintText(TextOf("ab"), 0, {20, 30}, 0, kBlue, {32, 30, 50, 50});
    };
    EXPECT_THAT(
        Elements(draw),
        ElementsAre(font + ">", R"(<text x="20" y="40" textLength="36)" + length + ">a&lt;&amp;&quot; \uFFFD</text>",
                    "</g>", font + " xml:lang=\"ja\">",
                    R"(<text x="20" y="40" textLength="10)" + length +
                        R"x( text-decoration="underline" transform="rotate(-90 20 30)" fill="#0000ff">歩</text>)x",
                    "</g>", font + ">", R"(<svg x="20" y="30" width="9" height="20" viewBox="20 30 9 20">)",
                    R"(<text xml:space="preserve" x="20" y="40" textLength="12)" + length +
                        R"( fill="#0000ff"> b</text>)",
                    "</svg>", "</g>"));
}

/// 96 pixels are 0.365 a digit more than twelve of 7.635.
TEST_F(Page, LettersThatStandApartFillTheRoom) {
    const auto textOf = [&](const char* text) {
        const auto layout = PageText(text, 96);
        return Elements([&](Backend& b) { b.PaintText(layout, 0, {20, 30}, 0, 0, {0, 0, 400, 300}); })[1];
    };
    EXPECT_THAT(textOf("111111111111"), HasSubstr(R"(" letter-spacing="0.365")"));
    EXPECT_THAT(textOf("1 خطوات"), Not(HasSubstr("letter-spacing"))) << "letters that join";
}

TEST_F(Page, OutlinesHaveTheirTextOnTop) {
    const std::string text(200, 'l'); // far longer than the ten ems about a surface that cairo sees to
    const auto layout = LayOutText(FindFace(LOGFONTA{}, TextMedium::Page), text, true, kNoWrap);
    const std::string svg = DrawFile(PageFormat::SvgOutlines, 96, [&](Backend& b) {
        b.PaintText(layout, 0, {10, 20}, 0, kBlue, {0, 0, 400, 300});
    });
    const std::string outline = Between(svg, "<path d=\"", "\"");
    EXPECT_EQ(std::count(outline.begin(), outline.end(), 'M'), 200) << outline;
    EXPECT_EQ(std::count(outline.begin(), outline.end(), 'z'), 200) << outline;
    EXPECT_THAT(svg.substr(svg.find("<text")), HasSubstr(" fill-opacity=\"0\">" + text + "</text>"));
}

/// An SVG page of blue columns that is told words before the first one and behind the last.
struct ToldPage : Page {
    std::string DrawTold(int columns, const std::vector<PageWords>& told) const {
        const auto page = Make("page", PageFormat::Svg);
        for (const PageWords& words : told) {
            EXPECT_TRUE(page->SetWords(words));
            for (int i = 0; i < columns; ++i)
                page->FillRect({i % 400, 10, i % 400 + 1, 20}, kBlue);
            columns = 0;
        }
        EXPECT_TRUE(page->Finish());
        return work.Read("page");
    }
};

/// Of a file that is in memory or on the disk when its words are known.
TEST_F(ToldPage, WordsComeFirst) {
    const std::string words =
        " xml:lang=\"en\" role=\"img\">\n<title>A &amp; &lt;b&gt;</title>\n<desc>All of it.</desc";
    for (const int columns : {1, 20000}) {
        std::string told = DrawTold(columns, {{"former", "", "", {}}, {"A & <b>", "All of it.", "en", {}}});
        const std::string drawn = DrawFile(PageFormat::Svg, 96, [&](Backend& page) {
            for (int i = 0; i < columns; ++i)
                page.FillRect({i % 400, 10, i % 400 + 1, 20}, kBlue);
        });
        const std::size_t at = told.find(words);
        ASSERT_NE(at, std::string::npos) << columns;
        EXPECT_EQ(at, drawn.find(">\n<rect")) << "behind the last attribute of the first element";
        EXPECT_EQ(told.erase(at, words.size()), drawn) << "and nothing else is changed";
    }
}

TEST_F(ToldPage, PartsLieOnTop) {
    const std::string svg = DrawTold(1, {{"T", "", "", {{{10, 20, 30, 60}, "Mar 4: \"5\""}}}});
    EXPECT_THAT(svg,
                HasSubstr("role=\"graphics-document document\">\n<title>T</title>\n<g aria-hidden=\"true\">\n<rect"));
    EXPECT_EQ(Between(svg, "fill=\"#0000ff\"/>\n", "<style>"), "</g>\n") << "what is drawn isn't read";
    EXPECT_THAT(svg, HasSubstr("tabindex=\"0\"><title>Mar 4: &quot;5&quot;</title><rect x=\"10\" y=\"20\" width=\"20\" "
                               "height=\"40\" fill=\"none\""));
}

/// What fills the sheet would be its beginning to cairo, and the figure's lost.
TEST_F(Page, AFigureIsKeptBelowItsGround) {
    const auto page = Make("page", PageFormat::Pdf);
    EXPECT_FALSE(page->SetWords({"T", "", "", {}})) << "no figure";
    page->BeginPart(PageRole::Figure, {0, 0, 400, 300}, "");
    page->FillRect({0, 0, 400, 300}, kBlue);
    page->PaintText(PageText("5", 96), 0, {20, 30}, 0, 0, {0, 0, 400, 300});
    EXPECT_TRUE(page->SetWords({"", "Only \\ of it.", "", {}}));
    EXPECT_TRUE(page->Finish());
    ASSERT_EQ(std::system("pdfinfo -struct-text ../page > ../tree 2>&1"), 0);
    EXPECT_EQ(work.Read("tree"), "Document\n  Figure:\n     /BBox [0 0 300 225]\n    \"5\"\n");
    EXPECT_THAT(Inflated(work.Read("page"), "/ObjStm"), HasSubstr("/Alt (Only \\\\ of it.)"));
}

TEST_F(Page, AFigureIsKeptOnABlankPage) {
    const auto pages = Make("page", PageFormat::Pdf);
    pages->BeginPart(PageRole::Figure, {0, 0, 400, 300}, "");
    pages->SetClip({0, 0, 0, 0});
    pages->BeginPage();
    pages->BeginPart(PageRole::Figure, {0, 0, 200, 100}, "");
    pages->PaintText(PageText("5", 96), 0, {20, 30}, 0, 0, {0, 0, 400, 300});
    EXPECT_TRUE(pages->Finish());
    ASSERT_EQ(std::system("pdfinfo -struct-text ../page > ../tree 2>&1"), 0);
    EXPECT_EQ(work.Read("tree"), "Document\n  Figure:\n     /BBox [0 0 300 225]\n    \"\"\n" // shapes, no texts
                                 "  Figure:\n     /BBox [0 150 150 225]\n    \"5\"\n");
}

TEST_F(Page, MaskedCopiesStayOnePicture) {
    std::vector<std::uint32_t> pixels{0xFFFFFFFFU, 0xFF000000U, 0xFFFF0000U, 0xFF804020U};
    const auto elements = Elements([&](Backend& b) {
        const PixelBuffer picture{pixels.data(), 2, 2, 2};
        for (const DWORD operation : {SRCCOPY, SRCAND, SRCPAINT})
            b.Blit({10, 10, 30, 30}, picture, {0, 0, 2, 2}, operation);
        b.Blit({10, 10, 30, 30}, picture, {0, 0, 2, 3}, SRCCOPY); // reaches beyond the picture
    });
    ASSERT_EQ(elements.size(), 3U);
    EXPECT_THAT(
        elements[0],
        HasSubstr(
            R"(<image x="10" y="10" width="20" height="20" preserveAspectRatio="none" href="data:image/png;base64,iVBORw0KGgo)"));
    EXPECT_THAT(elements[1], HasSubstr("pixelated"));
}

TEST_F(Page, FileAppearsWhole) {
    work.Write("page", "former");
    auto page = Make("page", PageFormat::Pdf);
    page->FillRect({0, 0, 9, 9}, 0);
    EXPECT_EQ(work.Read("page"), "former");
    page.reset();
    EXPECT_EQ(work.Read("page"), "former");

    page = Make("conf\\page", PageFormat::Svg);
    EXPECT_TRUE(page->Finish());
    EXPECT_THAT(work.Read("conf/page"), HasSubstr("</svg>"));
    EXPECT_THAT(told.Lines(), Not(HasSubstr("not written")));
}

TEST_F(Page, DocumentsHavePagesAndADate) {
    const auto print = [&](const std::string& name) {
        const auto pages = MakePageFile(work.Path(name).c_str(), PageFormat::Pdf, 400, 300, 96, {"Schritte", 86400});
        pages->FillRect({0, 0, 400, 300}, kBlue); // before the first page: lost
        pages->BeginPage();
        pages->SetClip({0, 0, 9, 9});
        pages->EndPage();
        EXPECT_TRUE(pages->BeginPage());
        pages->FillRect({300, 200, 400, 300}, 0xFF000000U); // the clip is the whole again
        EXPECT_TRUE(pages->BeginPage()) << "ends the open one";
        EXPECT_TRUE(pages->Finish());
        EXPECT_FALSE(pages->BeginPage() || pages->Finish());
        return work.Read(name);
    };
    EXPECT_EQ(print("one"), print("other"));
    ASSERT_EQ(std::system("TZ=UTC pdfinfo ../one > ../info && pdftoppm -r 96 -gray ../one ../sheet"), 0);
    EXPECT_THAT(work.Read("info"), HasSubstr("Pages:           3"));
    EXPECT_THAT(work.Read("info"), HasSubstr("Schritte"));
    EXPECT_THAT(work.Read("info"), HasSubstr("Jan  2 00:00:00 1970"));
    EXPECT_EQ(work.Read("sheet-1.pgm").back(), '\xFF') << "nothing reaches the first page";
    EXPECT_EQ(work.Read("sheet-2.pgm").back(), '\0');
}

TEST_F(Page, UnfinishedDocumentsLeaveNoFile) {
    auto abandoned = Make("abandoned", PageFormat::Pdf);
    abandoned->Abandon();
    abandoned->FillRect({0, 0, 9, 9}, kBlue);
    EXPECT_FALSE(abandoned->BeginPage() || abandoned->Finish());
    abandoned.reset();
    Make("dropped", PageFormat::Pdf).reset();
    EXPECT_FALSE(MakePageFile(work.Path("empty").c_str(), PageFormat::Pdf, 400, 300, 96)->Finish()) << "no page";
    EXPECT_FALSE(Make("single", PageFormat::Svg)->BeginPage()) << "a picture has one page";
    EXPECT_EQ(Make("no/page", PageFormat::Pdf), nullptr);
    EXPECT_EQ(Make("page", PageFormat::Pdf, 0), nullptr);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(work.Path("")), {}), 3) << "conf, log and bin";
    for (const char* words : {"empty] not written: no page", "no/page] not written: "})
        EXPECT_THAT(told.Lines(), HasSubstr(words));
}

// Days by the million: neither kept in memory one by one, nor lost.
TEST_F(Page, WhatIsTooMuchForAPdfPageIsAPictureOnIt) {
    DrawFile(PageFormat::Pdf, 96, [](Backend& b) {
        b.SetClip({0, 0, 200, 300});
        for (int i = 0; i < 1 << 17; ++i)
            b.FillRect({10, 10, 20, 20}, 0xFF000000U);
        b.FillRect({15, 10, 300, 20}, kBlue);
    });
    ASSERT_EQ(std::system("pdftoppm -r 96 ../page ../sheet && pdfimages -list ../page > ../list"), 0);
    const std::string sheet = work.Read("sheet-1.ppm");
    const std::string pixels = sheet.substr(sheet.size() - 3 * 400 * 300);
    const auto red = [&](int x) { return pixels[3 * (400 * 15 + x)] & 0xFF; };
    const auto blue = [&](int x) { return pixels[3 * (400 * 15 + x) + 2] & 0xFF; };
    constexpr int kResampled = 4; // a picture's colours, by a reader
    EXPECT_LT(blue(12), kResampled) << "what was before shows through";
    EXPECT_GT(blue(17), 255 - kResampled) << "and what came later lies above";
    EXPECT_LT(red(197), kResampled);
    EXPECT_EQ(red(202), 255) << "clipped";
    EXPECT_THAT(work.Read("list"), HasSubstr("1200   900")) << "3 pixels a unit, 288 an inch";
    EXPECT_THAT(told.Lines(), HasSubstr("131072"));
}

} // namespace
} // namespace melkar
