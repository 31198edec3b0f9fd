#include <MelkarCommon/platform/page_words.h>
#include <MelkarCommon/platform/pages/pdf_text.h>
#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/printing/printer.h>
#include <MelkarCommon/platform/tests/framed.h>
#include <MelkarCommon/platform/tests/hostile_server.h>
#include <MelkarCommon/platform/tests/inflated.h>
#include <MelkarCommon/platform/tests/surface.h>
#include <MelkarCommon/platform/tests/temp_workdir.h>
#include <MelkarCommon/platform/tests/told.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstring>

using namespace melkar;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr DOCINFOA kJob{20, "Ovra", nullptr, nullptr, 1};
constexpr COLORREF kRed = RGB(255, 0, 0);

TEST(Paper, RoomForInkTurnsWithThePage) {
    const SheetLayout turned = LayOutSheet(*FindPaper(DMPAPER_A4), {254, 508, 1016, 127}, true);
    EXPECT_NEAR(turned.width, 841.89, 0.01) << "the sheet is exact, the room whole units";
    EXPECT_NEAR(turned.left, 3.6, 0.01) << "a twentieth of an inch: the sheet's bottom";
    EXPECT_NEAR(turned.top, 7.2, 0.01) << "the sheet's left";
    EXPECT_EQ(turned.roomWidth, 1098) << "1122.5 - 4.8 - 19.2";
    EXPECT_EQ(turned.roomHeight, 745) << "793.7 - 9.6 - 38.4";
    EXPECT_EQ(LayOutSheet(*FindPaper(DMPAPER_JAPANESE_POSTCARD), {9000, 9000, 9000, 9000}, false).roomWidth, 1);
}

DEVMODEA Settings(short paper, short orientation, short color) {
    DEVMODEA settings{};
    settings.dmFields = DM_PAPERSIZE | DM_ORIENTATION | DM_COLOR;
    settings.dmPaperSize = paper;
    settings.dmOrientation = orientation;
    settings.dmColor = color;
    return settings;
}

/// Prints pages with a red square at the top left.
int PrintPages(HDC surface, int pages, const DOCINFOA& job = kJob) {
    EXPECT_GT(StartDocA(surface, &job), 0);
    for (int page = 0; page < pages; ++page) {
        EXPECT_GT(StartPage(surface), 0);
        DrawFramed(surface, {0, 0, 96, 96}, kRed, kRed, 1);
        EXPECT_GT(EndPage(surface), 0);
    }
    return EndDoc(surface);
}

class Printing : public testing::Test {
protected:
    ~Printing() override { EXPECT_EQ(LiveObjectCount(), m_liveBefore); }
    std::string Log() const { return m_told.Lines(); }
    bool IsThere(const char* name) const { return std::filesystem::exists(m_files.Path(name)); }
    static Surface Open(const std::string& printer, const DEVMODEA* settings = nullptr) {
        return Surface(CreateDCA("WINSPOOL", printer.c_str(), nullptr, settings));
    }

    Told m_told;
    TempWorkdir m_files;
    std::size_t m_liveBefore = LiveObjectCount();
};

TEST_F(Printing, FilesHaveTitlePaperAndColors) {
    const DEVMODEA settings = Settings(DMPAPER_A5, DMORIENT_LANDSCAPE, DMCOLOR_MONOCHROME);
    // The document, and a server's job, would refuse such a title, and the pages with it.
    const std::string title = "R\xE9sum\xE9\n" + std::string(40000, 'x');
    const Surface surface = Open(m_files.Path("out.pdf"), &settings);
    EXPECT_EQ(GetDeviceCaps(surface, HORZRES), 793) << "210 mm at 96 an inch";
    EXPECT_EQ(GetDeviceCaps(surface, LOGPIXELSY), 96);
    EXPECT_GT(PrintPages(surface, 2, {20, title.c_str(), nullptr, nullptr, 1}), 0) << Log();
    ASSERT_EQ(std::system("pdfinfo ../out.pdf > ../info && pdftoppm -r 96 ../out.pdf ../page"), 0);
    EXPECT_THAT(m_files.Read("info"), HasSubstr("Title:           Résumé " + std::string(246, 'x') + "\n"));
    EXPECT_THAT(m_files.Read("info"), HasSubstr("Pages:           2"));
    EXPECT_THAT(m_files.Read("info"), HasSubstr("595.276 x 419.528"));
    const std::string page = m_files.Read("page-2.ppm");
    EXPECT_EQ(page.substr(page.find("255\n") + 4, 3), "\x4C\x4C\x4C") << "red is as light as 76 of 255";
}

/// Writes a word in a part of its own.
void WritePart(HDC surface, PageRole role, const RECT& area, const char* word, const char* bookmark = nullptr) {
    EXPECT_TRUE(BeginPagePart(surface, role, area, bookmark));
    EXPECT_FALSE(BeginPagePart(surface, PageRole::Figure, area)) << "a part within another is none";
    TextOutA(surface, area.left, area.top, word, static_cast<int>(std::strlen(word)));
    EXPECT_TRUE(EndPagePart(surface));
    EXPECT_FALSE(EndPagePart(surface));
}

TEST_F(Printing, PagesCanBeReadAloud) {
    const std::string name = m_files.Path("out.pdf");
    const Surface surface = Open(name);
    EXPECT_FALSE(SetDocumentTitle(surface, "none")) << "no document";
    StartDocA(surface, &kJob);
    EXPECT_FALSE(BeginPagePart(surface, PageRole::Title, {0, 0, 9, 9})) << "no page";
    EXPECT_TRUE(SetDocumentTitle(surface, "M\xC3\xA4rz"));
    StartPage(surface);
    EXPECT_FALSE(SetPageWords(surface, {"no figure", "", "", {}}));
    WritePart(surface, PageRole::Title, {0, 0, 400, 40}, "one", "Report");
    WritePart(surface, PageRole::Paragraph, {0, 40, 400, 80}, "two");
    TextOutA(surface, 0, 80, "unread", 6);
    EXPECT_TRUE(BeginPagePart(surface, PageRole::Figure, {96, 96, 192, 384}));
    TextOutA(surface, 96, 96, "three", 5);
    StartPage(surface); // ends the part, too
    WritePart(surface, PageRole::Figure, {0, 0, 96, 96}, "four");
    EXPECT_TRUE(SetPageWords(surface, {"former", "", "", {}}));
    EXPECT_TRUE(SetPageWords(surface, {"(1)", "\xC4\x8D\xF0\x9F\x98\x80", "cs", {}})) << "of the last figure";
    EXPECT_GT(EndDoc(surface), 0) << Log();

    ASSERT_EQ(std::system("pdfinfo -struct-text ../out.pdf > ../tree 2>&1 && pdfinfo ../out.pdf > ../info 2>&1 && "
                          "pdftohtml -q -i -xml ../out.pdf ../marks"),
              0);
    EXPECT_EQ(m_files.Read("tree"), "Document\n"
                                    "  H1 (block)\n    \"one\"\n"
                                    "  P (block)\n    \"two\"\n"
                                    "  Figure:\n     /BBox [72 554 144 770]\n    \"three\"\n" // of 842 points
                                    "  Figure:\n     /BBox [0 770 72 842]\n    \"four\"\n");
    EXPECT_THAT(m_files.Read("info"), HasSubstr("Title:           März\n"));
    EXPECT_THAT(m_files.Read("info"), HasSubstr("Tagged:          yes\n"));
    EXPECT_THAT(m_files.Read("marks.xml"), HasSubstr("<outline>\n<item page=\"1\">Report</item>\n"
                                                     "<outline>\n<item page=\"2\">(1)</item>\n</outline>\n</outline>"));
    const std::string objects = Inflated(m_files.Read("out.pdf"), "/ObjStm");
    EXPECT_THAT(objects, HasSubstr("/Alt " + PdfText("(1)\n\xC4\x8D\xF0\x9F\x98\x80")));
    EXPECT_THAT(objects, HasSubstr("/Lang (cs)"));
}

TEST_F(Printing, CallsOutOfTurnDoNothing) {
    const HDC surface = CreateDCA("WINSPOOL", m_files.Path("out.pdf").c_str(), nullptr, nullptr);
    EXPECT_EQ(StartPage(surface), SP_ERROR) << "no document";
    EXPECT_EQ(EndDoc(surface), SP_ERROR);
    EXPECT_EQ(AbortDoc(surface), SP_ERROR);
    DrawFramed(surface, {0, 0, 9, 9}, kRed, kRed, 1);
    EXPECT_GT(StartDocA(surface, &kJob), 0);
    EXPECT_EQ(StartDocA(surface, &kJob), SP_ERROR) << "one is under way";
    EXPECT_EQ(EndPage(surface), SP_ERROR) << "no page";
    DrawFramed(surface, {0, 0, 9, 9}, kRed, kRed, 1);
    EXPECT_EQ(EndDoc(surface), SP_ERROR);
    EXPECT_THAT(Log(), HasSubstr("no page"));
    EXPECT_GT(PrintPages(surface, 1), 0) << "the surface goes on";
    EXPECT_TRUE(std::filesystem::remove(m_files.Path("out.pdf")));

    StartDocA(surface, &kJob);
    StartPage(surface);
    EXPECT_GT(AbortDoc(surface), 0);
    StartDocA(surface, &kJob);
    StartPage(surface);
    EXPECT_TRUE(DeleteDC(surface));
    EXPECT_FALSE(IsThere("out.pdf"));

    HDC page = CreatePageSurface(m_files.Path("out.svg").c_str(), PageFormat::Svg, 9, 9, 96);
    EXPECT_GT(AbortDoc(page), 0) << "not only a printer's";
    EXPECT_FALSE(DeleteDC(page));
    EXPECT_FALSE(IsThere("out.svg"));

    HDC screen = CreateMemorySurface(9, 9);
    for (HDC other : {screen, static_cast<HDC>(nullptr), surface}) {
        EXPECT_EQ(StartDocA(other, &kJob), SP_ERROR);
        EXPECT_EQ(StartPage(other), SP_ERROR);
        EXPECT_EQ(EndDoc(other), SP_ERROR);
    }
    EXPECT_FALSE(ClosePrinter(screen));
    EXPECT_EQ(GlobalLock(screen), nullptr);
    EXPECT_EQ(GlobalFree(screen), static_cast<HANDLE>(screen));
    EXPECT_EQ(GlobalAlloc(0, static_cast<std::size_t>(-1)), nullptr) << "the size of the settings of no printer";
    DeleteDC(screen);
}

// A bitmap in place of the page under way would leave the document without what draws it.
TEST_F(Printing, PrintersTakeNoBitmap) {
    const Surface surface = Open(m_files.Path("out.pdf"));
    HBITMAP bitmap = CreateCompatibleBitmap(surface, 9, 9);
    const Surface work(CreateCompatibleDC(nullptr));
    const auto refuses = [&] {
        const HGDIOBJ stock = SelectObject(work, bitmap); // it is free
        SelectObject(work, stock);
        return SelectObject(surface, bitmap) == nullptr && SelectObject(surface, stock) == nullptr;
    };
    EXPECT_TRUE(refuses()) << "without a document";
    EXPECT_GT(StartDocA(surface, &kJob), 0);
    EXPECT_TRUE(refuses()) << "between pages";
    EXPECT_GT(StartPage(surface), 0);
    EXPECT_TRUE(refuses()) << "on a page";
    EXPECT_GT(EndPage(surface), 0);
    EXPECT_GT(EndDoc(surface), 0);
    EXPECT_TRUE(DeleteObject(bitmap)) << "selected nowhere";
}

class PrintingToServer : public Printing {
protected:
    PrintingToServer() { setenv("TMPDIR", (m_files.Path("tmp")).c_str(), 1); }
    ~PrintingToServer() override { unsetenv("TMPDIR"); }
    bool LeftNothing() const { return std::filesystem::is_empty(m_files.Path("tmp")); }

    PrintServer m_server{m_files.Path("server")};
    bool m_hasTmp = std::filesystem::create_directory(m_files.Path("tmp"));
};

TEST_F(PrintingToServer, JobsTellWhatWasAsked) {
    const DEVMODEA settings = Settings(DMPAPER_A4, DMORIENT_LANDSCAPE, DMCOLOR_MONOCHROME);
    const DEVMODEA unknown = Settings(99, DMORIENT_PORTRAIT, DMCOLOR_COLOR);
    const Surface queue = Open("Test", &settings);
    const Surface address = Open(m_server.Address(), &unknown);
    EXPECT_EQ(GetDeviceCaps(queue, HORZRES), 954) << "1122.5 - 72 - 96, the margins of A4 with borders";
    EXPECT_EQ(GetDeviceCaps(address, VERTRES), 960) << "1056 - 48 - 48, those of its own paper";
    EXPECT_GT(StartDocA(queue, &kJob), 0);
    EXPECT_EQ(m_server.JobAttribute(1, "job-name"), "") << "no job before the document is whole";
    EXPECT_TRUE(LeftNothing()) << "nor a file, should the process be killed now";
    AbortDoc(queue);
    EXPECT_GT(PrintPages(queue, 1), 0);
    EXPECT_GT(PrintPages(address, 3), 0);
    EXPECT_EQ(m_server.JobAttribute(1, "job-name"), "Ovra");
    EXPECT_EQ(m_server.JobAttribute(1, "document-format"), "application/pdf");
    EXPECT_EQ(m_server.JobAttribute(1, "media"), "iso_a4_210x297mm");
    EXPECT_EQ(m_server.JobAttribute(1, "orientation-requested"), "landscape");
    EXPECT_EQ(m_server.JobAttribute(1, "print-color-mode"), "monochrome");
    EXPECT_EQ(m_server.JobAttribute(2, "media"), "na_letter_8.5x11in") << "a code that no paper has: the printer's own";
    EXPECT_EQ(m_server.JobAttribute(2, "orientation-requested"), "portrait");
    EXPECT_EQ(m_server.JobAttribute(2, "print-color-mode"), "color");
    EXPECT_THAT(Log(), HasSubstr("no paper has the code 99"));
    EXPECT_THAT(Log(), Not(HasSubstr("taken, but"))) << "the server does all that was asked";
    EXPECT_EQ(HDC{Open("NoSuchQueue")}, nullptr);
    EXPECT_THAT(Log(), HasSubstr("printer [NoSuchQueue]: "));
    EXPECT_TRUE(LeftNothing());
}

TEST_F(PrintingToServer, TheServerGetsEveryByte) {
    const std::string document = "%PDF-1.4\n" + std::string(300000, 'x') + '\0' + "\n%%EOF\n";
    auto printer = FindPrinter(m_server.Address());
    ASSERT_TRUE(printer);
    auto job = printer->Begin({"job", FindPaper(DMPAPER_A4)});
    WriteDocument(*job, document);
    EXPECT_TRUE(job->Deliver());
    std::ifstream kept(m_server.Spool() / "d00001-001", std::ios::binary);
    EXPECT_TRUE(std::string(std::istreambuf_iterator<char>(kept), {}) == document);
}

TEST_F(PrintingToServer, ServersThatGoAwayLeaveNothingBehind) {
    std::atomic<bool> leftNothing = false; // of the document, which is private, should the process be killed now
    const HostileServer printer([&](HostileTalk& talk, int client) {
        if (client == 1)
            talk.Answer(IppAnswerOf(0));
        else
            leftNothing = LeftNothing();
    });
    auto job = FindPrinter(printer.Address())->Begin({"job", FindPaper(DMPAPER_A4)});
    WriteDocument(*job, std::string(4 << 20, 'x'));
    EXPECT_FALSE(job->Deliver()) << "it hangs up while the document is on its way";
    EXPECT_TRUE(leftNothing);
    EXPECT_THAT(Log(), HasSubstr("printer [" + printer.Address() + "]: "));
    job.reset();
    const Surface surface = Open("Test");
    EXPECT_GT(StartDocA(surface, &kJob), 0);
    StartPage(surface);
    m_server.Stop();
    EXPECT_EQ(EndDoc(surface), SP_ERROR);
    EXPECT_THAT(Log(), HasSubstr("printer [Test]: no print server at 127.0.0.1"));
    EXPECT_TRUE(LeftNothing());
}

// A password is never asked for; this machine's server believes the system who prints.
TEST_F(Printing, OnlyTheServerOfThisMachineKnowsWhoPrints) {
    const PrintServer server(m_files.Path("server"),
                             "<Limit Print-Job>\nAuthType Basic\nRequire valid-user\n</Limit>\n");
    for (const std::string& name : {server.Address(), server.Address("ipps"), std::string("Test")}) {
        const bool isHere = name == "Test";
        cupsSetServer(isHere ? server.Socket().c_str() : nullptr);
        const Surface surface = Open(name);
        EXPECT_EQ(PrintPages(surface, 1), isHere ? 1 : SP_ERROR) << name;
        EXPECT_EQ(Log().find("[" + name + "]: the server wants a password") == std::string::npos, isHere) << name;
    }
    EXPECT_EQ(server.JobAttribute(1, "job-name"), "Ovra");
}

} // namespace
