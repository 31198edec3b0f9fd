#include <MelkarCommon/reports/circadian_graph_header.h>
#include <MelkarCommon/reports/graph_header.h>
#include <MelkarCommon/reports/report_header_layout.h>
#include <frame/host_fixture.h>

#include <cstring>
#include <regex>

using namespace melkar;

namespace {

// Rows are 20 + 1 high, the samples of row 3 all 25 but the first column's.
constexpr HeaderSamples kSamples{{60, 20}, {90, 18}, {50, 25}, {80, 25}, {40, 25}, {70, 25}, {100, 25}};
constexpr CRect kBlock(100, 50, 700, 400);

TEST(ReportHeaderLayout, ColumnsAreAsWideAsTheirSamples) {
    HeaderCells c{};
    LayOutGraphHeader(c, kBlock, kSamples);
    // B0 begins one unit right of column A; row 3 is as high as B3's sample, without the unit of column A.
    const std::pair<HeaderCell, CRect> cells[] = {
        {A0, {100, 50, 160, 71}},   {A3, {100, 113, 160, 134}}, {A6, {100, 176, 160, 197}}, {B0, {161, 50, 700, 71}},
        {B2, {161, 92, 700, 113}},  {B3, {161, 113, 251, 131}}, {C3, {251, 113, 301, 131}}, {D3, {301, 113, 381, 131}},
        {E3, {381, 113, 421, 131}}, {F3, {421, 113, 700, 131}}, {F5, {421, 155, 700, 173}}, {B6, {161, 176, 700, 194}},
        {E4, {381, 134, 421, 152}}, {E5, {381, 155, 421, 173}}, {H0, {600, 50, 700, 71}},   {H5, {600, 155, 700, 176}},
        {G0, {530, 50, 600, 71}},   {G5, {530, 155, 600, 176}},
    };
    for (const auto& [cell, place] : cells)
        EXPECT_EQ(c[cell], place) << cell;
}

TEST(ReportHeaderLayout, CircadianBlockEndsWithRow4) {
    HeaderCells all{};
    HeaderCells c{};
    LayOutGraphHeader(all, kBlock, kSamples);
    LayOutCircadianHeader(c, kBlock, kSamples);
    for (const HeaderCell cell : {A0, A3, B0, B3, B4, C3, C4, D3, D4, E3, F3, G0, H0})
        EXPECT_EQ(c[cell], all[cell]) << cell;
    for (const HeaderCell cell : {A4, B5, B6, C5, D5, E4, F4, G5, H5})
        EXPECT_EQ(c[cell], CRect()) << cell;
}

TEST(ReportHeaderLayout, BlockThatMakesNoSenseHasNoCells) {
    for (const auto layOut : {LayOutGraphHeader, LayOutCircadianHeader}) {
        HeaderCells c;
        c.fill(kBlock);
        layOut(c, {0, 0, INT_MAX, 9}, kSamples);
        EXPECT_EQ(c[A0], CRect());
        EXPECT_EQ(c[H5], CRect());
        EXPECT_EQ(c[H5 + 1], kBlock) << "a host's own stays";
    }
}

TEST(TextSlot, HoldsWholeCharacters) {
    const std::tuple<const char*, std::string, int, std::size_t> cases[] = {
        {"255 bytes and a NUL", std::string(300, 'x'), 0, 255},
        {"the last character would need byte 256", std::string(254, 'x') + "\xC3\xA9", 0, 254},
        {"one of the character set", std::string(254, 'x') + "\x82\xA0", 128, 254},
        {"no format", "100%n %s", 0, 8},
    };
    for (const auto& [why, text, charset, length] : cases) {
        TextSlot slots[2] = {"former", "next"};
        PutText(slots[0], text.c_str(), charset);
        EXPECT_EQ(slots[0], text.substr(0, length)) << why;
        EXPECT_STREQ(slots[1], "next") << why;
    }
}

class ReportHeader : public HostTest {
protected:
    ReportHeader() {
        m_files.Write("conf/graph.cnf",
                      "[COMMON]\nFONT=Fixed\nGRAPH_DATE_FORMAT_TYPE=SHORT\n[HEAD]\n1ST_LABEL=Height\n"
                      "1ST_TEXT=\" 100 y \"\n2ND_LABEL=Height\n2ND_TEXT=\" 180 \"\n3RD_LABEL=Weight\n"
                      "4TH_LABEL=Date\n4TH_TEXT=\" 2025-03-31 \"\nNAME_LABEL=Name\nAGE_LABEL=Age\n"
                      "SEX_LABEL=Sex\nDATE_LABEL=Date\nHEADER_SIZE=15\nPERSON_UNIT=-san\nAGE_UNIT=y\n");
        m_files.Write("conf/config.cnf", "[SYSTEM]\nSHORT=%Y|%m|%d\n");
    }

    CString File(std::string_view rows) const { return m_files.Write("bin/head.csv", rows).c_str(); }
};

TEST_F(ReportHeader, EachFieldHasItsSlot) {
    CReportHeader header("HEAD");
    constexpr std::string_view head = "\"Doe\",J,Q,Jo,team\nall well\n41,f,170,65,22\n3/1,3/31,28,,,,";
    constexpr std::string_view rest = "\n8000,300,30,3,6\nnone\n310,2100,7400\n640,2900,15200\ndropped\nTokyo\n";
    ASSERT_EQ(header.GetData(File(std::string(head) + "1" + std::string(rest))), 0);
    std::string texts;
    for (const char* slot : {header.m_szName, header.m_szNickname, header.m_szGroup, header.m_szComment, header.m_szAge,
                             header.m_szBmi, header.m_szDuring, header.m_szEffectiveDays, header.m_szStepTarget,
                             header.m_szCalTarget, header.m_szActTarget, header.m_szModerate, header.m_szExclude,
                             header.m_szAveTotalCal, header.m_szMaxStep, header.m_szSite})
        texts.append(slot).append("|");
    EXPECT_EQ(texts,
              " Doe J Q-san|Jo| team| all well| 41 y | 22 | 3/1 - 3/31 | 28 Days | 8000 Steps | 300 Cal | 30 min. |"
              " 3 - 6 | none | 2100 Cal | 15200 Steps | Tokyo|");

    ASSERT_EQ(header.GetData(File(std::string(head) + "01" + std::string(rest) + "10\n11\n12\n45,9000\n")), 0);
    EXPECT_STREQ(header.m_szStepTarget, " 9000 Steps ") << "any other flag: from row 13";
    EXPECT_STREQ(header.m_szActTarget, " 45 min. ");
    std::strcpy(header.m_szComment, "by a host"); // slots are buffers for it, too
    EXPECT_STREQ(CReportHeader(header).m_szComment, "by a host");
}

TEST_F(ReportHeader, ShortFilesRepeatTheirLastRowAndMissingOnesKeepAll) {
    CReportHeader header("HEAD");
    ASSERT_EQ(header.GetData(File("a,b,c\ncomment\n50,m\n")), 0);
    EXPECT_STREQ(header.m_szWeight, "  ") << "a field that isn't there";
    EXPECT_STREQ(header.m_szDuring, " 50 - m ") << "row 3 is row 2 once more";
    EXPECT_STREQ(header.m_szActTarget, " 50 min. ") << "row 13, too";
    EXPECT_EQ(header.GetData("no-such.csv"), -1);
    EXPECT_STREQ(header.m_szAge, " 50 y ");
    ASSERT_EQ(header.GetData(File("")), 0);
    EXPECT_STREQ(header.m_szAge, "  y ");
    ASSERT_EQ(header.GetData(File(std::string(2046, 'x') + "\ny\n")), 0) << "2047 with its line end";
    EXPECT_STREQ(header.m_szComment, " y");
    ASSERT_EQ(header.GetData(File(std::string(2047, 'x') + "\ny\n")), 0);
    EXPECT_STREQ(header.m_szComment, " ") << "the line end of a longer row is the next row";
}

// Samples at 10 points are 13 pixels: a character of 8 x 17, rows 18 apart. Texts at 15 points: 12 x 25.
TEST_F(ReportHeader, GraphHeaderPaintsPairsOnTheSurfaceOfItsLayout) {
    CGraphHeader header("HEAD");
    const CString file = File("Doe,J,Q,Jo,team\nwell\n41,f,170,65,22\n");
    EXPECT_EQ(header.CalcRect(m_record, kBlock, file), 50 + 6 * 18 + 17 + 5);
    static_cast<CReportHeader&>(header).CReportHeader::Draw(m_record, kBlock, file);
    EXPECT_TRUE(std::regex_match(std::string(header.m_szDate), std::regex(" \\d{4}\\|\\d\\d\\|\\d\\d ")))
        << header.m_szDate;
    EXPECT_EQ(header.Draw(nullptr, kBlock, "unused"), 180);
    const std::string record = GetRecording(m_record);
    EXPECT_THAT(record, HasSubstr("fill 100,50 48x18 #000000")) << "A0: six characters wide";
    EXPECT_THAT(record, HasSubstr("fill 572,50 32x18 #000000"))
        << "G0: left of a date of 12 characters, 96 wide, 32 more";
    EXPECT_THAT(record, HasSubstr("line 100,104 700,104"));
    EXPECT_THAT(record, HasSubstr("text \"Age\" 106,101 36x25"))
        << "centred in A3: 100 + (48 - 36) / 2, 104 + (18 - 25) / 2";
    EXPECT_THAT(record, HasSubstr("text \" 41 y \" 149,100"));
    EXPECT_THAT(record, Not(HasSubstr("\"Sex\"")));
    EXPECT_EQ(LeftBy([&] { header.Draw(nullptr, kBlock, ""); }), "transparent red green");
}

TEST_F(ReportHeader, CircadianHeaderPaintsNothingAndTellsWhereToGoOn) {
    struct Painting : CCircadianGraphHeader {
        using CCircadianGraphHeader::CCircadianGraphHeader;
        int Draw(HDC, CRect, CString) override { return -1; }
    } painting("HEAD");
    EXPECT_EQ(painting.CalcRect(m_record, kBlock, ""), 184) << "a layout doesn't paint";
    CCircadianGraphHeader header("HEAD");
    EXPECT_EQ(header.CalcRect(m_record, kBlock, "no-such.csv"), 50 + 4 * 26 + 25 + 5) << "samples at 15 points";
    EXPECT_EQ(header.Draw(m_record, kBlock, ""), 184);
    EXPECT_EQ(GetRecording(m_record), "");
}

} // namespace
