#include "brushes.h"
#include "support/temp_workdir.h"

#include <MelkarCommon/support/platform/pages/page_file.h>
#include <MelkarCommon/support/platform/text/text_engine.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace melkar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

using Draw = std::function<void(Backend&)>;

constexpr Color kBlue = 0xFF0000FFU;

Draw Line(POINT from, POINT to, const Stroke& stroke) {
    return [=](Backend& b) { StrokeLine(b, from, to, stroke); };
}

/// What stands between the first `head` and the next `tail`; empty if there is none.
std::string Between(const std::string& text, const std::string& head, const std::string& tail) {
    const std::size_t start = text.find(head);
    if (start == std::string::npos)
        return "";
    const std::size_t from = start + head.size();
    return text.substr(from, text.find(tail, from) - from);
}

/// From each place where `word` stands to the next "/>".
std::vector<std::string> Elements(const std::string& svg, const std::string& word) {
    std::vector<std::string> elements;
    for (std::size_t at = svg.find(word); at != std::string::npos; at = svg.find(word, at + 1))
        elements.push_back(svg.substr(at, svg.find("/>", at) - at));
    return elements;
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

    /// The filled and stroked paths of an SVG page at 96 dpi: corners or ends alone, and the pattern.
    std::vector<std::string> Paths(const Draw& draw) const {
        std::vector<std::string> paths;
        for (const std::string& element : Elements(DrawFile(PageFormat::Svg, 96, draw), "<path ")) {
            const std::string line = Between(element, " d=\"", "\"");
            const std::string dash = Between(element, "dasharray:", ";");
            const std::string phase = Between(element, "dashoffset:", ";");
            paths.push_back(line.substr(0, std::min(line.find(" Z"), line.find_last_not_of(' ') + 1)) +
                            (dash.empty() ? "" : " dash " + dash) + (phase.empty() ? "" : " from " + phase));
        }
        return paths;
    }

    std::vector<std::string> Files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(work.Path("")))
            if (entry.is_regular_file() && entry.path().filename() != "graph.log")
                names.push_back(entry.path().filename());
        return names;
    }

    TempWorkdir work;
};

TEST_F(Page, LinesCoverTheAreaOfTheirPixels) {
    const struct Case {
        const char* why;
        POINT from, to;
        double width;
        const char* path;
    } cases[] = {
        {"even width", {10, 20}, {30, 20}, 2, "M 10 19 L 30 19 L 30 21 L 10 21"},
        {"thin: half a point, 2/3 in 256ths", {9, 0}, {9, 5}, 0, "M 9.167969 0 L 9.835938 0 L 9.835938 5 L 9.167969 5"},
        {"far beyond the page", {INT_MIN, 20}, {INT_MAX, 20}, 1, "M 0 20 L 400 20 L 400 21 L 0 21"},
        {"sloped", {10, 20}, {30, 25}, 2, "M 10.5 20.5 L 30.5 25.5"},
    };
    for (const Case& c : cases)
        EXPECT_THAT(Paths(Line(c.from, c.to, Width(c.width))), ElementsAre(c.path)) << c.why;
    for (const auto& hidden : {Line({5, 5}, {5, 5}, {}), Line({0, 300}, {9, 300}, {}), Line({-9, 5}, {0, 5}, {})})
        EXPECT_THAT(Paths(hidden), ElementsAre());
}

TEST_F(Page, OutlinesAreOnePathWithWholeCorners) {
    const struct Case {
        const char* why;
        std::vector<POINT> points;
        double width;
        const char* path;
    } cases[] = {
        {"odd width", {{10, 20}, {30, 20}, {30, 40}}, 3, "M 10 20.5 L 30.5 20.5 L 30.5 40"},
        {"even width, leftwards and up", {{30, 40}, {10, 40}, {10, 20}}, 2, "M 31 40 L 10 40 L 10 21"},
        {"closed", {{10, 10}, {30, 10}, {30, 30}, {10, 30}, {10, 10}}, 2, "M 10 10 L 30 10 L 30 30 L 10 30"},
        {"sloped, a point twice", {{10, 20}, {20, 25}, {20, 25}, {30, 20}}, 2, "M 10.5 20.5 L 20.5 25.5 L 30.5 20.5"},
    };
    for (const Case& c : cases)
        EXPECT_THAT(Paths([&](Backend& b) { b.StrokePolyline(c.points, Width(c.width)); }), ElementsAre(c.path))
            << c.why;
}

TEST_F(Page, SlopedLinesSideBySideHaveNoSeam) {
    const auto draw = [](Backend& b) {
        StrokeLine(b, {10, 20}, {30, 25}, {});
        StrokeLine(b, {10, 21}, {30, 26}, {});
        StrokeLine(b, {10, 23}, {30, 28}, {}); // a row lies between
        StrokeLine(b, {10, 30}, {30, 30}, {});
        StrokeLine(b, {10, 31}, {30, 31}, {}); // level: edges meet
    };
    EXPECT_THAT(Paths(draw), ElementsAre("M 10.5 20.5 L 30.5 25.5", "M 10.5 21.5 L 30.5 26.5", "M 10.5 21 L 30.5 26",
                                         "M 10.5 23.5 L 30.5 28.5", testing::_, testing::_));
}

TEST_F(Page, Patterns) {
    const Stroke dashes = Dashes(18, 6, 20);
    EXPECT_THAT(Paths(Line({10, 20}, {90, 20}, dashes)), ElementsAre("M 10 20.5 L 90 20.5 dash 18,6 from 20"));
    EXPECT_THAT(Paths(Line({-30, 20}, {90, 20}, dashes)), ElementsAre("M 0 20.5 L 90 20.5 dash 18,6 from 2"))
        << "50 gone at the page's edge";
    EXPECT_THAT(Paths(Line({90, 20}, {10, 20}, Dashes(18, 6, 20, true))),
                ElementsAre("M 11 20 L 91 20 L 91 21 L 11 21", "M 91 20.5 L 11 20.5 dash 18,6 from 20"));
    EXPECT_THAT(Paths(Line({10, 20}, {90, 20}, Dashes(18, NAN))), ElementsAre("M 10 20 L 90 20 L 90 21 L 10 21"));
}

TEST_F(Page, FillsStayInTheClip) {
    const auto fill = [](Backend& b) {
        b.SetClip({50, 60, 1000, 1000});
        b.FillRect({10, 10, 100, 100}, kBlue);
        b.FillRect({10, 10, 50, 100}, kBlue);
        b.SetClip({0, 0, 400, 300});
        b.FillRect({INT_MIN, INT_MIN, INT_MAX, 7}, kBlue);
    };
    EXPECT_THAT(Paths(fill), ElementsAre("M 50 60 L 100 60 L 100 100 L 50 100", "M 0 0 L 400 0 L 400 7 L 0 7"));
}

TEST_F(Page, TextIsFoundWhereItStands) {
    LOGFONTA font{};
    font.lfHeight = -32;
    font.lfCharSet = DEFAULT_CHARSET;
    const auto layout = LayOutText(FindFace(font, TextMedium::Page), "Schritte", true, kNoWrap);
    for (const int dpi : {96, 192}) {
        DrawFile(PageFormat::Pdf, dpi, [&](Backend& b) { b.PaintText(layout, 0, {80, 120}, 0, 0, {0, 0, 400, 300}); });
        ASSERT_EQ(std::system("pdftotext -bbox ../page ../text"), 0);
        const std::string found = work.Read("text");
        const std::size_t end = found.find("\">Schritte<");
        ASSERT_NE(end, std::string::npos) << found;
        const std::string word = found.substr(found.rfind("<word", end), end);
        const auto edge = [&](const char* name) { return std::stod(Between(word, name, "\"")); };
        const double points = 72.0 / dpi;
        EXPECT_NEAR(edge("xMin=\""), 80 * points, 0.5);
        EXPECT_NEAR(edge("xMax=\""), (80 + layout->width) * points, 1);
        EXPECT_NEAR(edge("yMin=\""), 120 * points, layout->lineHeight * points / 4);
        EXPECT_NEAR(edge("yMax=\""), (120 + layout->lineHeight) * points, layout->lineHeight * points / 4);
    }
}

TEST_F(Page, TextIsClipped) {
    const auto layout = LayOutText(FindFace(LOGFONTA{}, TextMedium::Page), "a", true, kNoWrap);
    const std::string svg = DrawFile(PageFormat::Svg, 96, [&](Backend& b) {
        b.SetClip({0, 0, 50, 300});
        b.PaintText(layout, 0, {10, 10}, 0, 0xFF000000U, {12, 0, 90, 15}); // cuts the letter
        b.PaintText(layout, 0, {10, 10}, 0, 0xFF000000U, {50, 0, 90, 15}); // nothing of it shows
    });
    EXPECT_THAT(Between(svg, "<clipPath", "</clipPath>"), HasSubstr("M 12 ")); // its right side may be tighter
    EXPECT_EQ(Elements(svg, "<use ").size(), 1U);
}

TEST_F(Page, MaskedCopiesStayOnePicture) {
    std::vector<std::uint32_t> pixels{0xFFFFFFFFU, 0xFF000000U, 0xFFFF0000U, 0xFF804020U};
    const std::string svg = DrawFile(PageFormat::Svg, 96, [&](Backend& b) {
        const PixelBuffer picture{pixels.data(), 2, 2, 2};
        b.FillRect({0, 0, 50, 50}, kBlue);
        for (const DWORD operation : {SRCCOPY, SRCAND, SRCPAINT})
            b.Blit({10, 10, 30, 30}, picture, {0, 0, 2, 2}, operation);
        b.Blit({10, 10, 30, 30}, picture, {0, 0, 2, 3}, SRCCOPY); // reaches beyond the picture
    });
    EXPECT_THAT(svg, HasSubstr("M 0 0 L 50 0 L 50 50 L 0 50")); // the page is still made of shapes
    EXPECT_EQ(Elements(svg, "<image ").size(), 3U);
    EXPECT_THAT(svg, HasSubstr("matrix(10,0,0,10,10,10)")); // each pixel 10 wide, from 10,10
}

TEST_F(Page, StrangeShapesAndTextsLoseNoPage) {
    LOGFONTA font{};
    font.lfHeight = -8000; // beyond what fonts can do
    const auto layout = LayOutText(FindFace(font, TextMedium::Page), "a", true, kNoWrap);
    const auto draw = [&](Backend& b) {
        const Shape far = Polygon({{INT_MIN, INT_MIN}, {INT_MAX, INT_MIN}, {0, INT_MAX}});
        b.FillShape(far, 0);
        b.StrokeShape(far, Width(HUGE_VAL));
        StrokeLine(b, {INT_MIN, INT_MAX}, {INT_MAX, INT_MIN}, Width(NAN));
        StrokeLine(b, {0, 0}, {0, INT_MAX}, Width(HUGE_VAL));
        b.PaintText(layout, 0, {0, 0}, 0, 0xFF000000U, {0, 0, 400, 300});
        b.PaintText(layout, 0, {INT_MIN, INT_MAX}, INT_MIN, 0, {INT_MIN, INT_MIN, INT_MAX, INT_MAX});
        std::uint32_t pixel = 0xFF00FF00U;
        b.Blit({INT_MIN, INT_MIN, INT_MAX, INT_MAX}, {&pixel, 1, 1, 1}, {0, 0, 1, 1}, SRCPAINT);
    };
    for (const PageFormat format : {PageFormat::Pdf, PageFormat::Svg}) // DrawFile expects the file
        DrawFile(format, 1, draw);
}

TEST_F(Page, FileAppearsWhole) {
    work.Write("page", "former");
    auto page = Make("page", PageFormat::Pdf);
    page->FillRect({0, 0, 9, 9}, 0);
    EXPECT_EQ(work.Read("page"), "former");
    page.reset();
    EXPECT_EQ(work.Read("page"), "former");
    EXPECT_THAT(Files(), ElementsAre("page")); // the other one went with its page

    page = Make("conf\\page", PageFormat::Svg);
    EXPECT_TRUE(page->Finish());
    EXPECT_THAT(work.Read("conf/page"), HasSubstr("</svg>"));
    EXPECT_THAT(work.Read("log/graph.log"), Not(HasSubstr("not written")));
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
    EXPECT_THAT(Files(), ElementsAre());
    EXPECT_THAT(work.Read("log/graph.log"), HasSubstr("empty] not written: no page"));
}

TEST_F(Page, FailureLeavesNoFile) {
    EXPECT_EQ(Make("no/page", PageFormat::Pdf), nullptr);
    EXPECT_EQ(Make("page", PageFormat::Pdf, 0), nullptr);
    EXPECT_EQ(Make("conf", PageFormat::Pdf), nullptr) << "a directory stands there";
    EXPECT_THAT(Files(), ElementsAre());
    for (const char* name : {"no/page", "conf"})
        EXPECT_THAT(work.Read("log/graph.log"), HasSubstr("PDF file [" + work.Path(name) + "]"));
}

/// Draws more than one block of a file with room for one; in a process of its own, whose limit can't be lifted again.
int DrawOnFullDisk(PageFile& page) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{4096, 4096};
    setrlimit(RLIMIT_FSIZE, &limit);
    for (int i = 0; i < 20000; ++i)
        StrokeLine(page, {i % 400, 0}, {i * 7 % 400, 299}, {});
    return page.Finish() ? 1 : 0;
}

TEST_F(Page, FullDisk) {
    for (const PageFormat format : {PageFormat::Pdf, PageFormat::Svg}) {
        const pid_t child = fork();
        if (child == 0)
            _exit(DrawOnFullDisk(*Make("page", format)));
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
        EXPECT_THAT(Files(), ElementsAre());
    }
}

} // namespace
} // namespace melkar
