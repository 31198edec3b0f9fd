#include <MelkarCommon/platform/tests/hostile_server.h>
#include <MelkarCommon/reports/report.h>
#include <MelkarCommon/reports/report_layout.h>
#include <frame/host_fixture.h>
#include <optional>
#include <thread>

namespace {

char g_section[] = "REPORT_1"; // not constant only because reports take such pointers

/// Looks inside.
class TestReport : public CReport {
public:
    TestReport(std::string printer, int paper = DMPAPER_A4, int orientation = 0)
        : CReport(printer.data(), paper, orientation, g_section, nullptr, nullptr, nullptr, "data", "head", "foot") {}

    int DrawHeader() override { return Note("header "); }
    int DrawGraphs() override { return Note("graphs "); }
    int DrawFooter() override { return Note("footer"); }

    std::string order;

private:
    int Note(const char* what) {
        order += what;
        return -1;
    }
};

class Report : public HostTest {
protected:
    Report() { m_files.Write("conf/graph.cnf", "[REPORT_1]\nVERSION=1.02\n"); }

    std::string m_out = m_files.Path("out.pdf");
};

TEST(ReportLayout, BandsAreSharesOfThePage) {
    const auto bands = melkar::LayOutBands(1000, 1000);
    EXPECT_EQ(bands.header, CRect(100, 100, 900, 280));
    EXPECT_EQ(bands.graphs, CRect(100, 300, 900, 730));
    EXPECT_EQ(bands.footer, CRect(100, 750, 900, 900));
    EXPECT_EQ(melkar::LayOutBands(793, 1122).graphs, CRect(79, 336, 713, 819)) << "79.3, 336.6, 713.7, 819.06";
    EXPECT_EQ(melkar::LayOutBands(0, 0).footer, CRect());
}

TEST_F(Report, PrinterGetsPaperOrientationAndColor) {
    const std::tuple<const char*, const char*, int, int, CRect, short> cases[] = {
        {"no key", "", DMPAPER_A4, 0, {0, 0, 793, 1122}, 1},
        {"the one value that means colour", "MONOCHROME=1", DMPAPER_A4, 90, {0, 0, 1122, 793}, 2},
        {"another value", "MONOCHROME=2", DMPAPER_LETTER, 180, {0, 0, 816, 1056}, 1},
        {"the low 16 bits alone", "MONOCHROME=01", 0x10000 + DMPAPER_A4, 270, {0, 0, 793, 1122}, 1},
    };
    for (const auto& [why, monochrome, paper, orientation, page, color] : cases) {
        m_files.Write("conf/config.cnf", std::string("[OTHER]\n") + monochrome + "\n");
        TestReport report(m_out, paper, orientation);
        EXPECT_EQ(report.m_rcPage, page) << why;
        EXPECT_EQ(report.m_nColorMode, color) << why;
        EXPECT_EQ(report.m_nPaperSize, paper) << why;
        EXPECT_STREQ(report.m_strVersion, "1.02");
    }
}

TEST_F(Report, LastCopyEndsTheDocumentAndFreesTheSurface) {
    const std::size_t before = LiveObjectCount();
    std::optional<TestReport> report(m_out);
    EXPECT_EQ(report->CalcRects(), 0);
    EXPECT_EQ(report->m_rcHeader.left, 79);
    CReport copy(*report);
    TestReport other(m_files.Path("other.pdf"));
    EXPECT_EQ(LiveObjectCount(), before + 2);
    static_cast<CReport&>(other) = copy;
    EXPECT_EQ(LiveObjectCount(), before + 1);
    EXPECT_GT(report->DocStart(), 0);
    EXPECT_EQ(report->PageStart(), 0);
    EXPECT_EQ(report->Draw(), 0);
    EXPECT_EQ(report->order, "header graphs footer");
    report.reset();
    EXPECT_EQ(copy.PageEnd(), 0);
    copy.PageStart();
    EXPECT_GT(copy.DocEnd(), 0) << "a page that doesn't end does so with the document";
    EXPECT_EQ(std::system("pdfinfo ../out.pdf > ../info"), 0);
    EXPECT_THAT(m_files.Read("info"), HasSubstr("Pages:           2"));
    EXPECT_THAT(m_files.Read("info"), HasSubstr("Title:           Ovra"));
}

TEST_F(Report, WithoutAPrinterAllDrawsNothing) {
    const HostileServer opened([](HostileTalk& talk, int client) {
        talk.Take("\r\n\r\n");
        if (client == 1)
            talk.Answer(IppAnswerOf(0));
    });
    const std::pair<std::string, const char*> cases[] = {
        {"", "CReport::CReport() PrinterName is Null!"},
        {"no/folder/out.pdf", "CReport::CReport() pDevOutput is NULL!"},
        {"ipp://127.0.0.1:1/printers/none", "CReport::CReport() pDevOutput is NULL!"},
        {"two words", "printer [two words]: not the name of a printer"},
        {opened.Address(), "CReport::CReport() m_hPrnDC is NULL!"},
    };
    for (const auto& [printer, line] : cases) {
        TestReport report(printer);
        EXPECT_EQ(report.GetHDC(), nullptr);
        EXPECT_THAT(m_files.Read("log/graph.log"), HasSubstr(line));
        EXPECT_STREQ(report.GetHeaderFile(), "head");
        EXPECT_LE(report.DocStart(), 0);
        EXPECT_EQ(report.PageStart(), 0);
        EXPECT_EQ(report.Draw(), 0);
        EXPECT_LE(report.DocEnd(), 0);
    }
    { TestReport(m_out).DocStart(); }
    EXPECT_FALSE(std::filesystem::exists(m_out)) << "a document without an end";
}

TEST_F(Report, ThreadsPrintBesideEachOther) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([this, i] {
            TestReport report(m_files.Path(std::to_string(i) + ".pdf"), i % 2 == 0 ? DMPAPER_A4 : DMPAPER_A5);
            EXPECT_EQ(report.m_rcPage.Height(), i % 2 == 0 ? 1122 : 793);
            EXPECT_GT(report.DocStart(), 0);
            report.PageStart();
            EXPECT_GT(report.DocEnd(), 0);
        });
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace
