#include <MelkarCommon/platform/pages/pdf_end.h>
#include <MelkarCommon/platform/pages/pdf_text.h>
#include <MelkarCommon/platform/tests/inflated.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tuple>

namespace melkar {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using namespace std::string_literals;

TEST(PdfText, ReadsAsItIs) {
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"what ends a text, and a line", "(\\\n)", "(\\(\\\\\n\\))"},
        {"UTF-16, its bytes escaped as well, and what would be a line feed", "\xC4\x8D(\xC4\xA9",
         "(\xFE\xFF\x01\\r\0\\(\x01\\))"s},
        {"a pair of units", "\xF0\x9F\x98\x80", "(\xFE\xFF\xD8\x3D\xDE\0)"s},
        {"a control, which has other meanings outside of UTF-16", "\x18", "(\xFE\xFF\0\x18)"s},
    };
    for (const auto& [why, text, object] : cases)
        EXPECT_EQ(PdfText(text), object) << why;
}

constexpr std::size_t kAt = 100; // bytes before the end, with object 4 behind the first 15

/// Object 5 is 60 bytes long, and 1 is 20; there is no object 7.
const std::string kEnd = "2 0 obj\n<< /Type /StructElem\n   /S /Figure\n   /K 0\n>>\nendobj\n"
                         "5 0 obj\n<< /Length 1 0 R >>\nstream\n[65432]\nendstream\nendobj\n"
                         "1 0 obj\n   7\nendobj\n"
                         "6 0 obj\n[ 2 0 R ]\nendobj\n"
                         "3 0 obj\n<< /Type /Catalog\n>>\nendobj\n"
                         "xref\n0 8\n"
                         "0000000000 65535 f \n"
                         "0000000221 00000 n \n"
                         "0000000100 00000 n \n"
                         "0000000266 00000 n \n"
                         "0000000015 00000 n \n"
                         "0000000161 00000 n \n"
                         "0000000241 00000 n \n"
                         "0000000000 00000 n \n"
                         "trailer\n<< /Size 8\n   /Root 3 0 R\n>>\n"
                         "startxref\n302\n%%EOF\n";

const DocumentWords kWords{"cs", {{"A", {1, 2.4, 3, 3.5}}}};

TEST(PdfEnd, HoldsWordsAndIsPacked) {
    const std::string end = EndWith(kWords, kEnd, kAt);
    const std::string figure = "<< /Type /StructElem\n   /S /Figure\n"
                               "   /Alt (A)\n   /A << /O /Layout /BBox [ 1 2 3 4 ] >>\n   /K 0\n>>\n";
    const std::string list = "[ 2 0 R ]\n";
    EXPECT_EQ(Inflated(end, "/ObjStm"), "2 0\n6 " + std::to_string(figure.size()) + "\n3 " +
                                            std::to_string(figure.size() + list.size()) + "\n" + figure + list +
                                            "<< /Type /Catalog\n   /Lang (cs)\n"
                                            "   /ViewerPreferences << /DisplayDocTitle true >>\n>>\n");
    EXPECT_THAT(end, StartsWith("5 0 obj\n<< /Length 1 0 R >>\nstream\n[65432]\nendstream\nendobj\n"
                                "1 0 obj\n   7\nendobj\n"
                                "8 0 obj\n<< /Type /ObjStm /N 3 /First "));
    const std::size_t table = end.find("9 0 obj\n<< /Type /XRef /Size 10 /W [ 1 5 4 ]\n   /Root 3 0 R\n");
    EXPECT_THAT(end, HasSubstr("startxref\n" + std::to_string(kAt + table) + "\n%%EOF\n"));
    const auto row = [](char kind, std::size_t place, char index) {
        return ""s + kind + "\0\0\0"s + static_cast<char>(place >> 8) + static_cast<char>(place) + "\0\0\0"s + index;
    };
    EXPECT_EQ(Inflated(end, "/XRef"), row(0, 0, 0) + row(1, kAt + 60, 0) + row(2, 8, 0) + row(2, 8, 2) + row(1, 15, 0) +
                                          row(1, kAt, 0) + row(2, 8, 1) + row(0, 0, 0) + row(1, kAt + 60 + 20, 0) +
                                          row(1, kAt + table, 0));
}

// A file that would be read otherwise than it was drawn is worse than one without words.
TEST(PdfEnd, OfAnotherFormIsLeftAlone) {
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"nothing that leads to the table", "startxref", "starterxf"},
        {"to before the end", "\n302\n", "\n99\n"},
        {"to beyond it", "\n302\n", "\n221000\n"},
        {"to beside it", "\n302\n", "\n301\n"},
        {"to what no number holds", "\n302\n", "\n99999999999999999999\n"},
        {"more behind it", "%%EOF\n", "%%EOF\n1"},
        {"a table of some objects", "xref\n0 8", "xref\n1 8"},
        {"a row that isn't there", "0 8\n", "0 9\n"},
        {"a later version", " 00000 n \n0000000100", " 00001 n \n0000000100"},
        {"another size", "/Size 8", "/Size 9"},
        {"no end of the trailer", "3 0 R\n>>\n", "3 0 R\n>> "},
        {"an object behind the table", "0000000266", "0000000999"},
        {"in the middle of another", "0000000221", "0000000222"},
        {"of another number", "\n1 0 obj", "\n9 0 obj"},
        {"without an end", "7\nendobj", "7\nendobk"},
        {"twice at one place", "0000000221", "0000000241"},
        {"no figure", "/Figure", "/Fugure"},
        {"no catalog", "/Catalog", "/Cutalog"},
    };
    for (const auto& [why, from, to] : cases) {
        std::string end = kEnd;
        ASSERT_NE(end.find(from), std::string::npos) << why;
        EXPECT_EQ(EndWith(kWords, end.replace(end.find(from), from.size(), to), kAt), "") << why;
    }
    EXPECT_EQ(EndWith({"", {}}, kEnd, kAt), "") << "a figure too many";
    EXPECT_EQ(EndWith(kWords, kEnd.substr(0, kEnd.size() - 1), kAt), "") << "torn";
    EXPECT_EQ(EndWith(kWords, "%\n" + kEnd, kAt - 2), "") << "bytes that are of no object";
    EXPECT_EQ(EndWith(kWords, "", kAt), "") << "empty";
}

} // namespace
} // namespace melkar
