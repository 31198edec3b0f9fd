// Data files, read by every graph that knows the file and by the check of files; a field of a row that is split once is
// the one that the call for a single field finds.

#include "../input.h"
#include "../profiles.h"
#include "../room.h"

#include <MelkarCommon/checker/doubts.h>
#include <MelkarCommon/circadian/weekly_circadian.h>
#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/platform/files.h>
#include <MelkarCommon/registry/data_check.h>
#include <MelkarCommon/registry/data_reference.h>
#include <MelkarCommon/reports/report_header.h>
#include <MelkarCommon/support/activity_figures.h>
#include <MelkarCommon/support/fields.h>
#include <MelkarCommon/support/numbers.h>

#include <cmath>

namespace melkar::fuzz {

using namespace std::string_literals;

namespace {

constexpr std::size_t kLimit = 1279; // characters of a row

void CompareFields(const char* line) {
    const CsvRow row(line);
    for (const int index : {-1, 0, 1, 2, 3, 8, 209, 210, 785, 786}) {
        const CString field = row.Field(index);
        Require(field == getCSV(line, index), "a field is the same, split once or not");
        Require(field.GetLength() <= static_cast<int>(kLimit), "a field has a limit");
        row.IntField(index);
        const double value = ToDouble(field);
        Require(row.DoubleField(index) == value || std::isnan(value), "a figure is that of the field");
        Require(row.PlainField(index) == value || std::isnan(row.PlainField(index)), "so is a plain one");
    }
}

/// Lines are the bytes of the file but for its marks of order and the carriage returns before line feeds.
void CompareLines(const char* path, std::string_view bytes) {
    LineReader lines(path);
    std::size_t read = 0;
    while (const char* line = lines.Next(kLimit)) {
        const std::size_t length = std::char_traits<char>::length(line);
        Require(length <= kLimit, "a line has a limit");
        read += length;
        CompareFields(line);
    }
    Require(read <= bytes.size() + 1, "a reader makes no bytes up");
}

void ReadFiles(std::string_view input) {
    const std::vector<std::string_view> parts = PartsOf(input, 2);
    Visit visit;
    std::string path = visit.Give("bin/data.csv", parts[0]);
    CompareLines(path.c_str(), parts[0]);
    for (const KindRow& row : Catalogue()) {
        for (const Doubt& doubt : DataDoubts(path, {row.kind, "", "OWN", 1, 1}))
            Require(FindDoubtRule(doubt.rule) != nullptr, "a doubt has a rule");
        for (const DataTable& table : FilesReadBy(row)) {
            if (*table.suffix != '\0')
                visit.Give("bin/data.csv" + std::string(table.suffix), parts[1]);
            constexpr std::size_t kMost = 5;
            const DataFindings findings = CheckData(table, path, 1, kMost);
            Require(findings.first.size() == std::min(findings.count, kMost), "the first findings are kept");
        }
        if (row.make == nullptr)
            continue;
        const auto graph = row.make(nullptr, nullptr, "OWN", nullptr, nullptr, nullptr);
        for (int again = 0; again < 2; ++again)
            Require(std::string_view("unknown result") != ResultText(graph->ReadDataFile(path.data())), "a result");
        graph->ClearArrays();
    }
    CWeeklyCircadian week(nullptr, nullptr, "OWN", nullptr, nullptr, nullptr);
    week.ReadDataFile(path.data());
    for (const int page : {-1, 0, 1, 1000})
        week.ReadWeekDataFile(path.data(), page);
    CReportHeader("OWN").GetData(path.c_str());
    ExistData(path.c_str(), 0);
    getCSVEx(path.c_str(), 2, 1, ",", "");
}

void SeedReaders(Seeds& seeds) {
    seeds.words = {",", "\"", "\r\n", "\n", "\n\n", "0,20260302,", "20260302", "20260228"};
    seeds.words.insert(kHurtful.begin(), kHurtful.end());
    for (const KindRow& row : Catalogue()) {
        int file = 0;
        for (const DataTable& table : FilesReadBy(row)) {
            const std::string name = std::string(row.className) + row.kind + std::to_string(file++);
            const std::string example = ExampleFile(table);
            seeds.add(name, example + std::string(kBetweenParts) + example);
            seeds.add(name + "-wide",
                      "\xEF\xBB\xBF" + DataOf(table, "\"1,2\"\"3\"") + DataOf(table, std::string(9, '9')));
            for (std::size_t i = 0; i < kHurtful.size(); ++i)
                seeds.add(name + "-" + std::to_string(i), DataOf(table, kHurtful[i]));
        }
    }
    seeds.add("line-ends", "\r\r\n\n\r,\r\n\r\n" + std::string(2 * kLimit, ',') + "\r");
    seeds.add("quotes", "\"\"\",\"\n,\"a\"b\",\"a\"\",\"\r\n" + std::string(2 * kLimit, '"'));
    seeds.add("nul", "0,\0,1\n\0\n"s);
}

} // namespace

extern const Target kReaders;
const Target kReaders{"readers", "a data file of any kind, and a second one", ReadFiles, SeedReaders};

} // namespace melkar::fuzz
