#include "command.h"
#include "options.h"

#include <MelkarCommon/registry/data_reference.h>
#include <MelkarCommon/registry/key_reference.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace melkar::tool {
namespace {

namespace fs = std::filesystem;

struct NewOptions {
    std::string directory;
    std::vector<std::string> kinds;
};

void AddOptions(CLI::App& app, NewOptions& options) {
    app.add_option("DIR", options.directory, "Of the application; there must be no files in it")
        ->required()
        ->type_name("");
    app.add_option("KIND", options.kinds, "What it draws; the list stands below")
        ->required()
        ->expected(1, -1)
        ->take_all()
        ->type_name("");
    app.footer(AllKinds() + "\n" + Examples({"melkar new steps-app steps", "melkar new health bar circle bmi"}));
}

/// A size that suits the kind, in pixels.
struct SizeOfKind {
    std::string_view kind;
    int width;
    int height;
};
constexpr SizeOfKind kSizes[] = {
    {"week", 900, 3200}, {"circle", 420, 380}, {"circle-separate", 640, 260},
    {"bmi", 900, 80},    {"himand", 900, 160}, {"quadrant", 900, 600},
};
constexpr SizeOfKind kUsualSize = {"", 900, 500};

const SizeOfKind& SizeFor(std::string_view kind) {
    const auto* found = std::find_if(std::begin(kSizes), std::end(kSizes),
                                     [kind](const SizeOfKind& size) { return size.kind == kind; });
    return found != std::end(kSizes) ? *found : kUsualSize;
}

/// One chart of the application.
struct NewChart {
    const KindRow* kind;
    std::string section;
    DataTables files;

    bool IsWeek() const { return std::string_view(kind->kind) == "week"; } ///< of sheets, which are no graph
    std::string DataName() const { return files.empty() ? "" : "data/" + std::string(kind->kind) + ".csv"; }
};

/// Throws for a kind without a profile and data of its own, or one that a program doesn't draw in a line.
NewChart ChartOf(const std::string& name) {
    const KindRow* kind = FindKind(name);
    if (!kind)
        throw UsageError{"unknown kind: " + name + " (melkar new --help lists them)"};
    NewChart chart{kind, StarterSectionOf(name), FilesReadBy(*kind)};
    const bool isOfText = chart.files.empty() || !chart.files.front().columns.empty();
    if (StarterProfile(name, "").empty() || !isOfText || (!kind->make && !chart.IsWeek()) || IsOfSamples(*kind))
        throw UsageError{"no application is made of this kind; samples/hosts shows how to draw it: " + name};
    return chart;
}

std::vector<NewChart> ChartsOf(const std::vector<std::string>& kinds) {
    std::vector<NewChart> charts;
    std::set<std::string> known;
    for (const std::string& kind : kinds)
        if (known.insert(kind).second)
            charts.push_back(ChartOf(kind));
    return charts;
}

constexpr const char* kDateFormat = "GRAPH_DATE_FORMAT_TYPE=DATE_SHORT\n"; ///< which config.cnf has

std::string ProfileOf(const std::vector<NewChart>& charts) {
    std::vector<StarterSection> sections;
    for (const NewChart& chart : charts)
        sections.push_back({chart.kind->kind, chart.section});
    std::string profile = StarterProfile(sections);
    profile.insert(profile.find('\n') + 1, kDateFormat);
    return "; What the charts look like. melkar keys KIND tells all keys; melkar check looks for mistakes.\n" + profile;
}

constexpr const char* kConfig = R"(; Formats of dates (strftime), named by GRAPH_DATE_FORMAT_TYPE of graph.cnf.
[SYSTEM]
DATE_SHORT=%b %-d
)";

std::string ProgramOf(const std::vector<NewChart>& charts) {
    std::string rows;
    for (const NewChart& chart : charts) {
        const SizeOfKind& size = SizeFor(chart.kind->kind);
        rows += "    {\"" + std::string(chart.kind->kind) + "\", \"" + chart.section + "\", \"" + chart.DataName() +
                "\", " + std::to_string(size.width) + ", " + std::to_string(size.height) + "},\n";
    }
    const bool hasWeek =
        std::any_of(charts.begin(), charts.end(), [](const NewChart& chart) { return chart.IsWeek(); });
    const std::string week = R"(    if (std::string(chart.kind) == "week")
        return CWeeklyCircadian(nullptr, view, chart.section, view, nullptr, nullptr).Draw(area, data.data());
)";
    return R"(// Draws each chart of the application into a picture beside its data, from wherever it is started.
#include <MelkarCommon/MelkarCommon.h>

#include <cstdio>
#include <filesystem>
#include <string>

struct Chart {
    const char *kind, *section, *data; // a section of conf/graph.cnf, and a file
    int width, height;
};
constexpr Chart kCharts[] = {
)" + rows + R"(};

long Paint(const Chart& chart, HDC view, std::string data) {
    const CRect area(0, 0, chart.width, chart.height);
)" + (hasWeek ? week : "") +
           R"(    const auto graph = melkar::FindKind(chart.kind)->make(nullptr, view, chart.section, view, nullptr, nullptr);
    return graph->Draw(area, data.data());
}

int main() {
    const auto bin = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const melkar::HostDirectory here(bin.c_str()); // profile and log are in bin/../conf and bin/../log
    int failures = 0;
    for (const Chart& chart : kCharts) {
        HDC view = CreateMemorySurface(chart.width, chart.height);
        const std::string picture = (bin / "../data" / chart.kind).string() + ".png";
        const long result = Paint(chart, view, (bin / ".." / chart.data).string());
        const bool isDrawn = result == melkar::kOk && WritePng(view, picture.c_str()) == 0;
        std::printf("%s: %s\n", picture.c_str(), isDrawn ? "drawn" : melkar::ResultText(result));
        failures += !isDrawn;
        DeleteDC(view);
    }
    return failures;
}
)";
}

constexpr const char* kProject = R"(cmake_minimum_required(VERSION 3.16)
project(charts LANGUAGES CXX)
find_package(MelkarCommon CONFIG REQUIRED)
add_executable(charts charts.cpp)
target_link_libraries(charts PRIVATE MelkarCommon::MelkarCommon)
set_target_properties(charts PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_SOURCE_DIR}/bin)
)";

void Write(const fs::path& path, const std::string& text) {
    std::ofstream file(path);
    if (!(file << text).flush())
        throw std::runtime_error("can't be written: " + path.string());
}

void LayOut(const fs::path& root, const std::vector<NewChart>& charts) {
    for (const char* folder : {"bin", "conf", "data", "log"})
        fs::create_directory(root / folder);
    Write(root / "conf/graph.cnf", ProfileOf(charts));
    Write(root / "conf/config.cnf", kConfig);
    Write(root / "charts.cpp", ProgramOf(charts));
    Write(root / "CMakeLists.txt", kProject);
    for (const NewChart& chart : charts)
        for (const DataTable& file : chart.files)
            Write(root / (chart.DataName() + file.suffix), ExampleFile(file));
}

/// Under another name until it is whole; a directory takes the place of an empty one only.
void MakeApplication(const fs::path& directory, const std::vector<NewChart>& charts) {
    std::string draft = directory.string() + ".XXXXXX";
    if (mkdtemp(draft.data()) == nullptr)
        throw std::runtime_error("no directory can be made there: " + directory.string());
    const mode_t mask = umask(0);
    umask(mask);
    std::error_code error;
    try {
        chmod(draft.c_str(), 0777 & ~mask); // as any other
        LayOut(draft, charts);
        fs::rename(draft, directory, error);
    } catch (...) {
        std::error_code ignored;
        fs::remove_all(draft, ignored);
        throw;
    }
    if (error) {
        fs::remove_all(draft);
        throw std::runtime_error("can't be made: " + directory.string() + ": " + error.message());
    }
}

void TellHowToGoOn(const std::string& directory, const NewChart& chart) {
    const std::string data = chart.files.empty() ? "" : " --data " + directory + "/" + chart.DataName();
    std::cout << "A picture at once:\n  melkar draw " << chart.kind->kind << " --base " << directory
              << "/bin --section " << chart.section << data << " -o " << chart.kind->kind << ".png\n"
              << "By a program of your own:\n  cmake -S " << directory << " -B " << directory
              << "/build && cmake --build " << directory << "/build && " << directory << "/bin/charts\n";
}

int RunNew(const NewOptions& options) {
    const std::vector<NewChart> charts = ChartsOf(options.kinds);
    fs::path directory = fs::absolute(options.directory).lexically_normal();
    if (!directory.has_filename()) // behind a slash
        directory = directory.parent_path();
    if (fs::exists(directory) && (!fs::is_directory(directory) || !fs::is_empty(directory)))
        throw UsageError{"there is something already: " + options.directory};
    fs::create_directories(directory.parent_path());
    MakeApplication(directory, charts);
    TellHowToGoOn(fs::relative(directory).string(), charts.front());
    return kDone;
}

} // namespace

Run AddNew(CLI::App& app) { return WithOptions(app, AddOptions, RunNew); }

} // namespace melkar::tool
