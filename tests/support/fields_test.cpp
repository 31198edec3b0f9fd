#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <MelkarCommon/platform/files.h>
#include <MelkarCommon/platform/files/paths.h>
#include <MelkarCommon/support/fields.h>
#include <MelkarCommon/support/numbers.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <sys/stat.h>
#include <tuple>
#include <vector>

namespace {

using melkar::CsvRow;
using melkar::LineReader;
using namespace std::string_literals;

TEST(Fields, BothReadersGiveTheSame) {
    const std::string longest(1279, 'x');
    const std::string cut = longest + "y,\"" + longest + "y\",z";
    const std::tuple<const char*, const char*, int, std::string> cases[] = {
        {"last, without its line feed", "4,20081231,12.5\n", 2, "12.5"},
        {"behind the last", "4,20081231,12.5\n", 3, ""},
        {"no line", nullptr, 0, ""},
        {"begins inside of quotes", "\"a,b\",c", 1, "b\""},
        {"a quote inside stays", "\"a\"b\",c", 0, "a\"b"},
        {"two quotes at the end: the first stays", "\"a\"\"", 0, "a\""},
        {"quotes that never close", "\"a,b", 0, "a,b"},
        {"a quote that isn't the first character", "a\"b\",c", 0, "a\"b\""},
        {"a line feed inside of quotes", "\"a\nb\",c", 0, "a\nb"},
        {"longer than a field can be", cut.c_str(), 0, longest},
    };
    CsvRow row;
    for (const auto& [why, line, index, field] : cases) {
        row.Split(line);
        EXPECT_EQ(getCSV(line, index), field.c_str()) << why;
        EXPECT_EQ(row.Field(index), field.c_str()) << why;
    }
}

// Commas are looked for in eight bytes at a time, beside bytes that differ from them by a bit, or by one.
TEST(Fields, WhereverACommaStands) {
    for (const std::string filling : {"", "-", "\xAC", "-\xAD"})
        for (int before = 0; before < 9; ++before) {
            const std::string line =
                std::string(static_cast<std::size_t>(before), '+') + "," + filling + ",," + filling + ",a";
            const CsvRow row(line.c_str());
            for (int index = 0; index < 6; ++index)
                EXPECT_EQ(row.Field(index), getCSV(line.c_str(), index)) << line << " " << index;
        }
}

// Plain decimals are read in place, anything else as text.
TEST(Fields, NumbersAreThoseOfTheText) {
    for (const char* field : {"0.1", "12.50", ".5", "5.", ".", "0", "8.30", "999999999999999", "0.00000000000001",
                              "1234567890123456789", "-1", "+2", "1e2", " 7", "\"2.5\"", "0x1p3", "1.2.3", "x", ""}) {
        const std::string line = std::string("3,") + field + ",4\n";
        const CsvRow row(line.c_str());
        const double value = std::atof(getCSV(line.c_str(), 1));
        EXPECT_EQ(row.DoubleField(1), value) << field;
        EXPECT_TRUE(std::isnan(row.PlainField(1)) || row.PlainField(1) == value) << field;
    }
    EXPECT_EQ(CsvRow("1,2.5").DoubleField(2), 0);
}

TEST(Fields, OfAFile) {
    const TempWorkdir work;
    work.Write("conf/data.csv", std::string(9999, 'x') + "y,1\r\n2,3");
    EXPECT_EQ(getCSVEx("..\\conf\\data.csv", 0, 0), std::string(1279, 'x').c_str());
    EXPECT_EQ(getCSVEx("../conf/data.csv", 1, 0), "y"); // the rest of a line that is too long
    EXPECT_EQ(getCSVEx("../conf/data.csv", 2, 1), "3");
    EXPECT_EQ(getCSVEx("../conf/none.csv", 0, 0), "");
    EXPECT_EQ(getCSVEx(nullptr, 0, 0), "");
}

std::vector<std::string> Lines(const std::string& path, std::size_t limit) {
    std::vector<std::string> lines;
    LineReader reader(path.c_str());
    while (const char* line = reader.Next(limit))
        lines.emplace_back(line);
    return lines;
}

TEST(Lines, OfAFile) {
    const std::string block(65535, 'b'); // one byte short of a block
    const std::tuple<const char*, std::string, std::size_t, std::vector<std::string>> cases[] = {
        {"mark, CR LF, no last line feed", "\xEF\xBB\xBF\x61\r\nb", 9, {"a\n", "b"}},
        {"longer than the limit", "abcdefg\nh\n", 3, {"abc", "def", "g\n", "h\n"}},
        {"CR LF parted by the limit", "abcd\r\ne\n", 5, {"abcd\n", "e\n"}},
        {"CR LF parted by the blocks", block + "\r\nc", 99999, {block + "\n", "c"}},
        {"CR at the end of a block, no LF", block + "\rc", 99999, {block + "\rc"}},
        {"a NUL hides the rest of its line only", "a\0b\nc\n"s, 9, {"a", "c\n"}},
    };
    const TempWorkdir work;
    for (const auto& [why, bytes, limit, lines] : cases)
        EXPECT_EQ(Lines(work.Write("conf/lines", bytes), limit), lines) << why;
}

TEST(Lines, OnlyRegularFilesOpen) {
    const TempWorkdir work;
    mkfifo("pipe", 0600); // opening it for reading would wait
    for (const char* path : {"pipe", "..", "/dev/zero", "none", "", static_cast<const char*>(nullptr)}) {
        bool found = true;
        EXPECT_FALSE(LineReader(path).IsOpen());
        EXPECT_EQ(melkar::ReadWholeFile(melkar::ResolvePath(path), &found), "");
        EXPECT_FALSE(found);
    }
}

TEST(Lines, BackslashesOfANameOrOfAPath) {
    const TempWorkdir work;
    for (const char* name : {R"(bin/a\b)", R"(bin/..\b)"})
        work.Write(name, "");
    const std::pair<const char*, const char*> cases[] = {
        {R"(a\b)", R"(a\b)"}, // there is such a file
        {R"(a\c)", "a/c"},
        {R"(..\b)", "../b"}, // leads out of the directory, whatever there is
    };
    for (const auto& [path, resolved] : cases)
        EXPECT_EQ(melkar::ResolvePath(path), resolved);
}

} // namespace
