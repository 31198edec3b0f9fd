#include "support/temp_workdir.h"

#include <MelkarCommon/support/platform/backend.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <csignal>
#include <cstdio>
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
    std::string DrawFile(PageFormat format, int dpi, const Draw& draw) const {
        const auto page = MakePageBackend(work.Path("page").c_str(), format, 400, 300, dpi);
        draw(*page);
        EXPECT_TRUE(page->Finish());
        return work.Read("page");
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

std::string OutputOf(const std::string& command) {
    std::string output;
    std::FILE* pipe = popen((command + " 2>/dev/null").c_str(), "r");
    char block[4096];
    while (std::size_t count = std::fread(block, 1, sizeof block, pipe))
        output.append(block, count);
    pclose(pipe);
    return output;
}

Stroke Width(double width) {
    Stroke stroke;
    stroke.width = width;
    return stroke;
}

TEST_F(Page, TextIsFoundWhereItStands) {
    if (OutputOf("command -v pdftotext").empty())
        GTEST_SKIP() << "no pdftotext";
    LOGFONTA font{};
    font.lfHeight = -32;
    font.lfCharSet = DEFAULT_CHARSET;
    const auto layout = LayOutText(FindFace(font, TextMedium::Page), "Schritte", true, kNoWrap);
    for (const int dpi : {96, 192}) {
        DrawFile(PageFormat::Pdf, dpi, [&](Backend& b) {
            b.PaintText(layout, 0, {80, 120}, 0, 0xFF000000U, {0, 0, 400, 300});
        });
        const std::string found = OutputOf("pdftotext -bbox '" + work.Path("page") + "' -");
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

TEST_F(Page, FileAppearsWhole) {
    work.Write("page", "former");
    auto page = MakePageBackend(work.Path("page").c_str(), PageFormat::Pdf, 400, 300, 96);
    page->FillRect({0, 0, 9, 9}, 0);
    EXPECT_EQ(work.Read("page"), "former");
    page.reset();
    EXPECT_EQ(work.Read("page"), "former");
    EXPECT_THAT(Files(), ElementsAre("page")); // the other one went with its page

    page = MakePageBackend(work.Path("conf\\page").c_str(), PageFormat::Svg, 400, 300, 96);
    EXPECT_TRUE(page->Finish());
    EXPECT_THAT(work.Read("conf/page"), HasSubstr("</svg>"));
    EXPECT_THAT(work.Read("log/graph.log"), Not(HasSubstr("not written")));
}

TEST_F(Page, FailureLeavesNoFile) {
    EXPECT_EQ(MakePageBackend(work.Path("no/page").c_str(), PageFormat::Pdf, 400, 300, 96), nullptr);
    EXPECT_EQ(MakePageBackend(nullptr, PageFormat::Pdf, 400, 300, 96), nullptr);
    EXPECT_EQ(MakePageBackend("", PageFormat::Svg, 400, 300, 96), nullptr);
    EXPECT_EQ(MakePageBackend(work.Path("page").c_str(), PageFormat::Pdf, 400, 300, 0), nullptr);
    EXPECT_FALSE(MakePageBackend(work.Path("conf").c_str(), PageFormat::Pdf, 400, 300, 96)->Finish()); // a directory
    EXPECT_THAT(Files(), ElementsAre());
    const std::string log = work.Read("log/graph.log");
    EXPECT_THAT(log, HasSubstr("PDF file [" + work.Path("no/page") + "]"));
    EXPECT_THAT(log, HasSubstr("PDF file [" + work.Path("conf") + "]"));
}

/// Draws more than one block of a file with room for one; in a process of its own, whose limit can't be lifted again.
int DrawOnFullDisk(const std::string& path, PageFormat format) {
    std::signal(SIGXFSZ, SIG_IGN);
    const auto page = MakePageBackend(path.c_str(), format, 400, 300, 96);
    const rlimit limit{4096, 4096};
    setrlimit(RLIMIT_FSIZE, &limit);
    for (int i = 0; i < 20000; ++i)
        page->StrokeLine({i % 400, 0}, {i * 7 % 400, 299}, Width(1));
    return page->Finish() ? 1 : 0;
}

TEST_F(Page, FullDisk) {
    for (const PageFormat format : {PageFormat::Pdf, PageFormat::Svg}) {
        const pid_t child = fork();
        if (child == 0) {
            chdir(work.Path("conf").c_str()) == 0 ? _exit(DrawOnFullDisk(work.Path("page"), format)) : _exit(2);
        }
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
        EXPECT_THAT(Files(), ElementsAre());
    }
}

} // namespace
} // namespace melkar
