#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <MelkarCommon/frame/graph.h>
#include <MelkarCommon/platform/files/profile_snapshot.h>
#include <MelkarCommon/platform/profile.h>
#include <MelkarCommon/support/ini_reader.h>
#include <MelkarCommon/support/profile_values.h>
#include <MelkarCommon/support/support.h>

#include <gtest/gtest.h>

#include <sys/resource.h>

namespace {

using melkar::ProfileFile;
using melkar::ProfileSnapshot;

constexpr char kProfile[] = "\xEF\xBB\xBF"
                            "EARLY=no section\r\n"
                            "[ Steps ]  ; behind the bracket\r\n"
                            "; COMMENT=1\r\n  ;INDENTED=1\r\n"
                            "max = 42 \r\nMAX=43\r\ntwo words=\t both \t words \r\n"
                            "DOUBLE=\" kept \"\r\nSINGLE='a'\r\nNESTED=\"'a'\"\r\nUNEVEN=\"a'\r\n"
                            "EMPTY=\r\nEQUALS=a=b;c\r\nno equals sign\r\n= no key\r\nBYTES=\x93\xFA\r\n"
                            "[Other]\nOTHER_KEY=o\n"
                            "[STEPS]\nLATE=second section of the name\n"
                            "[Open\nLAST=end";

TEST(Profile, WhatStandsInASection) {
    const char* const cases[][3] = {
        {"Steps", "EARLY", "(none)"},     {"STEPS", "Max", "42"},        {" Steps ", " max ", "42"},
        {"Steps", "; COMMENT", "(none)"}, {"Steps", "DOUBLE", " kept "}, {"Steps", "SINGLE", "a"},
        {"Steps", "UNEVEN", "\"a'"},      {"Steps", "EQUALS", "a=b;c"},  {"Steps", "no equals sign", "(none)"},
        {"Steps", "", "(none)"},          {"Steps", "LATE", "(none)"},   {"open", "last", "end"},
    };
    const TempWorkdir work;
    const std::string path = work.Write("conf/p.cnf", kProfile);
    for (const auto& [section, key, value] : cases) {
        const ProfileSnapshot snapshot(ProfileFile(path.c_str()), section);
        const std::string* found = snapshot.FindOwn(key);
        EXPECT_EQ(found ? *found : "(none)", value) << key;
    }
}

TEST(Profile, IsReadAgainOnlyIfItMayHaveChanged) {
    constexpr const char* kOldFile = "/etc/passwd";
    const auto first = melkar::ReadProfile(kOldFile, "A");
    EXPECT_EQ(melkar::ReadProfile(kOldFile, "A"), first) << "the classes of one object";
    const auto other = melkar::ReadProfile(kOldFile, "B");
    EXPECT_NE(other, first) << "another section";
    { const CGraph next(nullptr, nullptr, "A", nullptr, nullptr, nullptr); }
    EXPECT_NE(melkar::ReadProfile(kOldFile, "B"), other) << "another object";
    const auto formats = melkar::ReadProfile(kOldFile, "B", melkar::ReadingFor::Dates);
    { const CGraph next(nullptr, nullptr, "A", nullptr, nullptr, nullptr); }
    EXPECT_EQ(melkar::ReadProfile(kOldFile, "B", melkar::ReadingFor::Dates), formats) << "another use";

    rlimit descriptors{};
    getrlimit(RLIMIT_NOFILE, &descriptors);
    const rlimit none{0, descriptors.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    EXPECT_FALSE(melkar::ReadProfile(kOldFile, "C")->IsRead());
    setrlimit(RLIMIT_NOFILE, &descriptors);
    EXPECT_TRUE(melkar::ReadProfile(kOldFile, "C")->IsRead()) << "a failure is none to keep";

    const TempWorkdir work;
    for (const char* value : {"1", "2", "3"}) { // of the same size, perhaps within one tick of the file system's clock
        const std::string path = work.Write("conf/p.cnf", std::string("[A]\nk=") + value);
        EXPECT_EQ(*melkar::ReadProfile(path.c_str(), "A")->FindOwn("k"), value);
    }
}

TEST(Profile, WholeNumbers) {
    const TempWorkdir work;
    const std::string path = work.Write("conf/p.cnf", "[A]\nplain=-12px\nquoted=\" +7\"\nwords=many\nempty=\n");
    for (const auto& [key, value] : {std::pair{"plain", -12}, {"quoted", 7}, {"words", 0}, {"empty", 5}, {"none", 5}})
        EXPECT_EQ(GetPrivateProfileIntA("A", key, 5, path.c_str()), value) << key;
}

TEST(Profile, ReaderChoosesTheFileAndBreaksLines) {
    const TempWorkdir work;
    work.Write("conf/own.cnf", "[A]\nk=a__YN__b\nlong=" + std::string(10001, 'x') + "\n");
    work.Write("conf/other.cnf", "[A]\nk=other\nn=3\n");
    CIniReader reader("..\\conf\\own.cnf");
    EXPECT_EQ(reader.ReadString("", "A", "k", ""), "a\nb");
    EXPECT_EQ(reader.ReadString("..\\conf\\other.cnf", "A", "k", ""), "other");
    EXPECT_EQ(reader.ReadString("", "A", "none", "x__YN__y"), "x\ny");
    EXPECT_EQ(reader.ReadString("", "A", "long", "").GetLength(), 9999);
    EXPECT_EQ(reader.ReadStringToInt("", "A", "n", 9), 9);
    EXPECT_EQ(reader.ReadStringToInt("../conf/other.cnf", "A", "n", 9), 3);
    work.Write("conf/own.cnf", "[A]\nk=new\n"); // nothing is kept from one read to the next
    EXPECT_EQ(reader.ReadString("", "A", "k", ""), "new");
}

TEST(Profile, ColoursAndPoints) {
    const TempWorkdir work;
    const std::string path = work.Write("conf/p.cnf", "[A]\nc=255, 0,128\ntwo=1,2\nless=-1,0,0\n"
                                                      "s_R=300\ns_B=2\np= 3 , -4\none=3\n");
    for (const auto& [key, color] :
         {std::pair{"c", RGB(255, 0, 128)}, {"two", RGB(9, 9, 9)}, {"none", RGB(9, 9, 9)}, {"less", RGB(255, 0, 0)}})
        EXPECT_EQ(GetRGBEx(path.c_str(), "A", key, RGB(9, 9, 9)), color) << key;
    EXPECT_EQ(GetRGB(path.c_str(), "A", "s"), RGB(44, 0, 2));
    EXPECT_EQ(CPoint(GetPOINT(path.c_str(), "A", "p")), CPoint(3, -4));
    EXPECT_EQ(CPoint(GetPOINT(path.c_str(), "A", "one")), CPoint(0, 0));
    EXPECT_EQ(melkar::ParseColor(("1,2," + std::string(1019, ' ') + "7").c_str(), 9), RGB(1, 2, 0))
        << "the 7 is byte 1024";
}

} // namespace
