// What people have, as the importer takes it: it is refused and leaves no file, or what is made suits its kind.

#include "../input.h"
#include "../room.h"

#include "tools/melkar/import/import.h"

#include <MelkarCommon/registry/catalogue.h>
#include <MelkarCommon/registry/data_check.h>

#include <filesystem>
#include <sstream>

namespace melkar::fuzz {
namespace {

namespace in = melkar::importer;

/// The first line has the kind, options of one word each, and names of figures.
in::Request RequestOf(const std::string& line) {
    in::Request request;
    std::istringstream words(line);
    words >> request.kind;
    for (std::string word; words >> word;) {
        if (word == "sum")
            request.sum = true;
        else if (word == "comma")
            request.decimals = word;
        else if (word.starts_with("from:"))
            request.from = word.substr(5);
        else if (word.starts_with("unit:"))
            request.units.push_back(word.substr(5));
        else if (word.find("YY") != std::string::npos)
            request.dateFormat = word;
        else
            request.figures.push_back(word);
    }
    return request;
}

void CheckMade(const in::Request& request) {
    for (const DataTable& table : FilesReadBy(*FindKind(request.kind))) {
        const int series = static_cast<int>(request.figures.size());
        const DataFindings findings = CheckData(table, request.output, request.kind == "bar" ? series : 1, 1);
        Require(findings.count == 0, findings.count == 0 ? "" : "what is imported suits: " + findings.first[0].text);
    }
}

void Import(const char* form, std::string_view input) {
    Visit visit;
    in::Request request = RequestOf(std::string(TakeLine(input)));
    request.path = visit.Give("bin/source", input);
    request.output = visit.Expect("bin/made.csv");
    visit.Expect("bin/made.csv.sim");
    if (std::string_view(form) == "csv")
        request.date = "day";
    std::size_t said = 0;
    in::Notes notes("source", false, [&said](const std::string& line) { said += line.size(); });
    try {
        notes.Finish(in::FindForm(form)->run(request, notes));
        CheckMade(request);
    } catch (const std::runtime_error& refused) {
        Require(*refused.what() != '\0', "a refusal says why");
        Require(!std::filesystem::exists(request.output), "what is refused leaves no file");
    }
}

void ImportCsv(std::string_view input) { Import("csv", input); }

void SeedCsv(Seeds& seeds) {
    const std::string rows = "day,n,m\n2026-03-01,5,6\n2026-03-04 08:15Z,\"1,234.5\",\n";
    for (const char* line : {"bar n m", "line n line=m", "steps n", "expenditure part=n m", "activity n target=m",
                             "simulation n plan=m weight=n", "plot n", "pie n m sum", "bmi n", "himand m"})
        seeds.add(line, std::string(line) + "\n" + rows);
    seeds.add("marks", "bar n comma unit:lb\n\xEF\xBB\xBF"
                       "day;\"n (lb)\"\r\n\"2026-03-01\";\"1.234,5\"\r\n");
    seeds.add("quotes", "bar n\nday,n,x\n20260301,5,\"a\"\"\n,\"\n20260302,6,\"a\"b\n");
    seeds.add("format", "bar n DDD,MMM-D-YY from:20260301\nday;n\nSun,March-1-26;5\nMon,Mar-2-26;1'000\n");
    seeds.words = {"day,",    "\"\"",  "2026-03-01", "T08:15:00.5+09:00",
                   " pm",     "YYYY",  "MMM",        "1.234,5",
                   "1,234.5", "line=", "plan=",      "weight=",
                   "part=",   "sum",   "comma",      "from:",
                   "unit:kg", ";",     "\t",         "\r\n"};
}

void ImportEpochs(std::string_view input) { Import("epochs", input); }

void SeedEpochs(Seeds& seeds) {
    const std::string rows =
        "time,level,n\n2026-03-01 23:58:30,2.4,5\n2026-03-01 23:59:30,9,6\n2026-03-03T00:00:30,0,\n"
        "2026-03-03T00:00:30,1,1\n2026-03-03T00:01:31,9.1,1\n";
    for (const char* line : {"day", "week steps=n", "week-print exercise=n", "circle", "circle-separate n"})
        seeds.add(line, std::string(line) + "\n" + rows);
    seeds.words = {"time,level", "2026-03-0", "T23:59:59", "1e-3", "9.5", "steps=", "total calories=", "from:20260301"};
}

void ImportFhir(std::string_view input) { Import("fhir", input); }

std::string SeedObservation(const std::string& code, const std::string& more) {
    return R"({"resourceType":"Observation","status":"final","code":{"coding":[{"system":"http://loinc.org","code":")" +
           code + "\"}]}," + more + "}";
}

void SeedFhir(Seeds& seeds) {
    const std::string steps = SeedObservation(
        "41950-7", R"-("effectiveDateTime":"2026-03-02","valueQuantity":{"value":5,"code":"{steps}/(24.h)"})-");
    const std::string energy =
        SeedObservation("55424-6", R"("effectivePeriod":{"start":"2026-03-04T23:00:00Z","end":"2026-03-05T01:00:00Z"},)"
                                   R"("valueQuantity":{"value":4.184e2,"code":"kJ"})");
    const std::string parts = SeedObservation(
        "85353-1", R"("effectiveInstant":"2026-03-05T01:00:00.5+09:00","component":[{"code":{"coding":[{"system":)"
                   R"("http://loinc.org","code":"29463-7"}]},"valueQuantity":{"value":150,"code":"[lb_av]"}}])");
    const std::string bundle = R"({"entry":[{"resource":)" + steps + R"(},{"resource":)" + energy +
                               R"(},{"resource":)" + parts +
                               R"(}],"resourceType":"Bundle","link":[{"relation":"next"}]})";
    for (const char* line : {"steps", "activity", "bmi", "bar 55423-8 energy", "plot weight", "pie moderate vigorous",
                             "line activity line=weight", "simulation plan=weight figure=activity"})
        seeds.add(line, std::string(line) + "\n" + bundle);
    seeds.add("lines", "steps\n\xEF\xBB\xBF" + steps + "\n" + steps + "\n{\"entry\":{}}\n");
    seeds.add("odd", "steps\n{\"a\\\"\":[\"]}\",{\"b\":-1e9}],\"entry\":[],\"entry\":[{}],\"c\":null}");
    seeds.words = {"\"entry\":[",      "\"resource\":", "\"resourceType\":", "\"Observation\"",  "\"Bundle\"",
                   "\"valueInteger\"", "\"status\"",    "entered-in-error",  "dataAbsentReason", "\"component\"",
                   "comparator",       "55411-3",       "39156-5",           "kcal/(24.h)",      "min/wk"};
}

} // namespace

extern const Target kImportFhir;
const Target kImportFhir{"fhir", "kind and figures of an import, and the bundle", ImportFhir, SeedFhir};
extern const Target kImportEpochs;
const Target kImportEpochs{"epochs", "kind and columns of an import, and the rows", ImportEpochs, SeedEpochs};
extern const Target kImportCsv;
const Target kImportCsv{"csv", "kind and options of an import, and the rows", ImportCsv, SeedCsv};

} // namespace melkar::fuzz
