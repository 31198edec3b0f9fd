#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/bars/step_graph.h>
#include <MelkarCommon/platform/tests/surface.h>
#include <MelkarCommon/platform/tracing.h>
#include <MelkarCommon/registry/catalogue.h>
#include <MelkarCommon/registry/data_check.h>
#include <MelkarCommon/registry/data_reference.h>
#include <MelkarCommon/registry/key_reference.h>
#include <MelkarCommon/support/numbers.h>
#include <frame/host_fixture.h>

#include <algorithm>
#include <regex>
#include <set>

namespace {

TEST(Catalogue, BasesAndKindsAreNamedOnce) {
    std::set<std::string> names{""};
    std::set<std::string> kinds{""};
    for (const melkar::KindRow& row : melkar::Catalogue()) {
        EXPECT_TRUE(names.contains(row.base)) << row.className << " stands before its base";
        EXPECT_TRUE(*row.className == '\0' || names.insert(row.className).second) << row.className;
        EXPECT_TRUE(*row.kind == '\0' || kinds.insert(row.kind).second) << row.kind;
    }
    EXPECT_EQ(melkar::FindKind(""), nullptr) << "a base is no kind";
}

TEST(Catalogue, KeysComeFromTheRootDown) {
    std::string tables;
    for (const melkar::ClassKeys& keys : melkar::KeysReadBy(*melkar::FindKind("activity")))
        tables += std::string(keys.className) + " ";
    EXPECT_EQ(tables, "CGraph CBarGraph CLineGraph CExpenditureGraph ");
}

TEST(Catalogue, StarterProfilesAreReadToTheLastLine) {
    for (const melkar::KindRow& row : melkar::Catalogue()) {
        const std::string starter = row.starter;
        if (starter.empty())
            continue;
        const std::string profile = melkar::StarterProfile(row.kind, "A");
        const auto lines = std::count(profile.begin(), profile.end(), '\n'); // two name a section
        EXPECT_EQ(lines, std::count(starter.begin(), starter.end(), '\n') + 3) << "a class doesn't read all of it:\n"
                                                                               << profile;
    }
    const std::string page = melkar::KeyReferenceOf("activity");
    EXPECT_NE(page.find("| `600` (needed) | top"), std::string::npos) << "a base's key with the value of this kind";
    EXPECT_EQ(melkar::KeyReferenceOf("CBarGraph"), "") << "a class is no kind";
}

TEST(Catalogue, StarterProfilesShareOneCommon) {
    std::vector<melkar::StarterSection> sections;
    for (const melkar::KindRow& row : melkar::Catalogue())
        if (!melkar::StarterProfile(row.kind, "A").empty())
            sections.push_back({row.kind, row.kind});
    const std::vector<std::string> lines = LinesOf(melkar::StarterProfile(sections));
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "[COMMON]"), 1);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "VALUESIZE=10"), 1);
    for (const auto& [kind, section] : sections)
        for (const std::string& line : LinesOf(melkar::StarterProfile(kind, section)))
            EXPECT_THAT(lines, Contains(line)) << "two kinds need different values: " << kind;
    EXPECT_EQ(melkar::StarterProfile({{"bar", "A"}, {"bra", "B"}}), "");
}

/// Each kind with its example.
class Examples : public HostTest {
protected:
    /// Writes the profile and the kind's example. @return the path of its data file
    std::string Prepare(const melkar::KindRow& row, const std::string& profile) const {
        m_files.Write("conf/graph.cnf", profile);
        const melkar::DataTables files = melkar::FilesReadBy(row);
        if (files.size() > 1)
            m_files.Write("bin/data.csv.sim", melkar::ExampleFile(files[1]));
        return DataFile(files.empty() ? "" : melkar::ExampleFile(files.front()));
    }
    std::string RecordOf(const melkar::KindRow& row, const std::string& profile, int mode) {
        std::string data = Prepare(row, profile);
        DeleteDC(m_record);
        m_record = CreateRecordingSurface(900, 500);
        SetBkMode(m_record, mode);
        const auto graph = row.make(nullptr, m_record, "OWN", nullptr, nullptr, nullptr);
        graph->SetDirectOutput(1);
        graph->m_Title.m_nBkMode = mode;
        EXPECT_EQ(graph->Draw({0, 0, 900, 500}, data.data()), 0) << row.kind;
        return GetRecording(m_record);
    }
};

/// Whatever mode the surface is in, the host's or that of a title: each step says what its texts and lines stand on.
TEST_F(Examples, HaveGroundsOfTheirOwn) {
    const std::regex title("TITLELABEL=.*\n"); // it stands in the mode that it has
    for (const melkar::KindRow& row : melkar::Catalogue()) {
        if (!row.make)
            continue;
        const std::string profile =
            std::regex_replace(melkar::StarterProfile(row.kind, "OWN"), title, "IS_PRINTTARGET=1\nIS_PRINTAVERAGE=1\n");
        const std::string record = RecordOf(row, profile, TRANSPARENT);
        EXPECT_THAT(record, HasSubstr("text")) << row.kind;
        EXPECT_EQ(record, RecordOf(row, profile, OPAQUE)) << row.kind;
    }
}

/// Each black text takes the colour, and nothing else does: neither what a key has coloured, black though it be, nor a
/// line.
TEST_F(Examples, TakeTheColourOfTexts) {
    const std::regex title("TITLELABEL=.*\n");
    const std::regex black(R"((^|\n)(text .*)#000000)");
    for (const melkar::KindRow& row : melkar::Catalogue()) {
        if (!row.make)
            continue;
        const std::string plain = std::regex_replace(melkar::StarterProfile(row.kind, "OWN"), title, "");
        const auto with = [&](const std::string& section, const std::string& color) {
            return std::regex_replace(plain, std::regex("\\[" + section + "\\]\n"), "$&TEXTCOLOR_RGB=" + color + "\n");
        };
        const std::string before = RecordOf(row, plain, TRANSPARENT);
        const bool hasKeyOfItsOwn = row.className == std::string("CFixedText");
        const std::string after = hasKeyOfItsOwn ? before : std::regex_replace(before, black, "$1$2#010203");
        EXPECT_EQ(RecordOf(row, with("COMMON", "1,2,3"), TRANSPARENT), after) << row.kind;
        if (std::string(row.kind) == "bar") {
            EXPECT_EQ(RecordOf(row, with("OWN", "1,2,3"), TRANSPARENT), after) << "of one graph alone";
        }
    }
}

/// Each operation of each kind is of a step, and the last one that draws on a pixel gave it the colour that it has in
/// the picture, which is drawn on a working surface and copied.
TEST_F(Examples, AreTracedToTheirSteps) {
    constexpr int kWidth = 900;
    constexpr int kHeight = 500;
    for (const melkar::KindRow& row : melkar::Catalogue()) {
        if (!row.make)
            continue;
        std::string data = Prepare(row, melkar::StarterProfile(row.kind, "OWN"));
        const Surface trace(CreateTracingSurface(kWidth, kHeight));
        const Surface pixels(CreateMemorySurface(kWidth, kHeight));
        for (const HDC surface : {HDC(trace), HDC(pixels)}) {
            const auto graph = row.make(nullptr, surface, "OWN", surface, nullptr, nullptr);
            graph->SetDirectOutput(surface == trace ? 1 : 0);
            EXPECT_EQ(graph->Draw({0, 0, kWidth, kHeight}, data.data()), 0) << row.kind;
        }
        EXPECT_FALSE(melkar::TraceOf(trace).empty()) << row.kind;
        for (const auto& [text, step] : melkar::TraceOf(trace))
            EXPECT_TRUE(step.owner.starts_with("C") && step.operation.size() > 3) << row.kind << ": " << text;
        for (int y = 3; y < kHeight; y += 61)
            for (int x = 3; x < kWidth; x += 89) {
                const auto layers = melkar::LayersAt(trace, {x, y});
                const COLORREF color = layers.empty() ? melkar::kWhite : layers.back().color;
                const std::uint32_t pixel = pixels.At(x, y);
                EXPECT_EQ(color, RGB(pixel >> 16U & 0xFFU, pixel >> 8U & 0xFFU, pixel & 0xFFU))
                    << row.kind << " " << x << "," << y;
            }
    }
}

/// A text that lies, as one with descenders down to the line below it may reach into that.
struct LyingText {
    std::string text;
    int left, top, right, bottom;

    bool Meets(const LyingText& other) const {
        constexpr int kBelowFigures = 3;
        return text != other.text && left < other.right && other.left < right && top < other.bottom - kBelowFigures &&
               other.top < bottom - kBelowFigures;
    }
};

std::vector<LyingText> LyingTexts(const std::string& record) {
    const std::regex form(R"re(text "(.*)" (-?\d+),(-?\d+) (\d+)x(\d+) "[^"]*" #\w+)re");
    std::vector<LyingText> texts;
    for (const std::string& line : LinesOf(record))
        if (std::smatch part; std::regex_match(line, part, form)) {
            const int left = std::stoi(part[2]), top = std::stoi(part[3]);
            texts.push_back({part[1], left, top, left + std::stoi(part[4]), top + std::stoi(part[5])});
        }
    return texts;
}

/// What somebody who begins sees first: starters whose scales are too fine for their captions, or whose grid is as
/// black as the figures on it.
TEST_F(Examples, AreReadableByTheirStarters) {
    for (const melkar::KindRow& row : melkar::Catalogue()) {
        if (!row.make || *row.starter == '\0')
            continue;
        const std::string record = RecordOf(row, melkar::StarterProfile(row.kind, "OWN"), TRANSPARENT);
        const std::vector<LyingText> texts = LyingTexts(record);
        for (auto text = texts.begin(); text != texts.end(); ++text)
            for (auto other = texts.begin(); other != text; ++other)
                EXPECT_FALSE(text->Meets(*other)) << row.kind << ": " << text->text << " on " << other->text;
        for (const std::string& line : LinesWith(LinesOf(record), "line ", " #000000 w1")) {
            int left = 0, right = 0;
            std::sscanf(line.c_str(), "line %d,%*d %d", &left, &right);
            EXPECT_LT(right - left, 450) << row.kind << ": " << line;
        }
    }
}

constexpr int kWidth = 900;
constexpr int kHeight = 500;

/// A kind's example as a host's window shows it, on a screen of so many pixels a unit.
class Window {
public:
    explicit Window(double scale) : m_scale(scale) {}
    ~Window() {
        for (HDC surface : {m_shown, m_second, m_clean})
            DeleteDC(surface);
    }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// With a balloon where there are any. @return the days under the points of a row
    std::vector<long> Draw(const melkar::KindRow& row, std::string data) const {
        const auto graph = row.make(nullptr, m_shown, "OWN", m_shown, m_second, m_clean);
        EXPECT_EQ(graph->Draw({0, 0, kWidth, kHeight}, data.data()), 0);
        BitBlt(m_clean, 0, 0, kWidth, kHeight, m_shown, 0, 0, SRCCOPY);
        std::vector<long> days;
        if (auto* chart = dynamic_cast<CBarGraph*>(graph.get())) {
            for (int x = 0; x < kWidth; ++x)
                days.push_back(chart->OnClick(CPoint(x, kHeight - 60)));
            chart->OnMouseMove(CPoint(kWidth / 2, kHeight - 60));
        }
        return days;
    }
    void Copy(const Window& from) const { BitBlt(m_shown, 0, 0, kWidth, kHeight, from.m_shown, 0, 0, SRCCOPY); }

    /// A pixel for each unit: the mean of those that it has.
    std::vector<std::uint32_t> Reduced() const {
        const Window reduced(1);
        reduced.Copy(*this);
        const std::uint32_t* pixels = GetPixels(reduced.m_shown).pixels;
        return {pixels, pixels + kWidth * kHeight};
    }

    /// At two pixels a unit: units whose pixels, side by side, differ by more than those of an enlarged picture can.
    /// Repeated ones are equal, interpolated ones a quarter of the range apart at most.

private:
    double m_scale;
    HDC m_shown = CreateScaledSurface(kWidth, kHeight, m_scale);
    HDC m_second = CreateScaledSurface(kWidth, kHeight, m_scale);
    HDC m_clean = CreateScaledSurface(kWidth, kHeight, m_scale);
};

int GreenOf(std::uint32_t pixel) { return static_cast<int>(pixel >> 8 & 0xFFU); }

/// What colours a pixel and those around it have.
struct Shades {
    int low = 255, high = 0;

    Shades(const std::vector<std::uint32_t>& pixels, int at) {
        for (const int row : {at - kWidth, at, at + kWidth})
            for (const int near : {row - 1, row, row + 1}) {
                low = std::min(low, GreenOf(pixels[near]));
                high = std::max(high, GreenOf(pixels[near]));
            }
    }
};

/// Pixels of one picture that the other one has nothing like, neither there nor a pixel beside.
int Strangers(const std::vector<std::uint32_t>& one, const std::vector<std::uint32_t>& other) {
    constexpr double kLike = 0.4; // of the contrast there: an edge that is rounded at 1.5 takes a third of a thin line
    constexpr int kShades = 4;    // and what else is rounded
    int count = 0;
    for (int at = kWidth + 1; at + kWidth + 1 < kWidth * kHeight; ++at) {
        if (one[at] == other[at])
            continue;
        const Shades own(one, at);
        const Shades shades(other, at);
        const double like = kShades + kLike * (own.high - own.low);
        count += GreenOf(one[at]) < shades.low - like || GreenOf(one[at]) > shades.high + like ? 1 : 0;
    }
    return count;
}

/// Every length in a kind's painters that is a number of pixels, and every text that is measured, has to come out as on
/// a coarse screen.
TEST_F(Examples, LookTheSameOnFineScreens) {
    for (const melkar::KindRow& row : melkar::Catalogue()) {
        if (!row.make || *row.starter == '\0')
            continue;
        const std::string data = Prepare(row, melkar::StarterProfile(row.kind, "OWN"));
        const Window coarse(1);
        const std::vector<long> days = coarse.Draw(row, data);
        for (const double scale : {1.5, 2.0, 3.0}) {
            SCOPED_TRACE(row.kind + (" at " + std::to_string(scale)));
            const Window fine(scale);
            EXPECT_EQ(fine.Draw(row, data), days);
            const int mostStrangers = scale == 1.5 ? 20 : 0; // of 450,000, where rounded edges cross
            EXPECT_LE(Strangers(coarse.Reduced(), fine.Reduced()), mostStrangers);
            EXPECT_LE(Strangers(fine.Reduced(), coarse.Reduced()), mostStrangers);
        }
    }
}

/// Holds what stands in a member to the field that it was read from: numbers by value, texts with what is around
/// them.
void ExpectLanded(const std::string& shown, const CString& field, const melkar::ColumnInfo& column) {
    if (column.kind == melkar::ColumnKind::Figure || column.kind == melkar::ColumnKind::Whole)
        EXPECT_NEAR(melkar::ToDouble(shown.c_str()), melkar::ToDouble(field) / column.perUnit, 1e-3) << column.name;
    else
        EXPECT_THAT(shown, HasSubstr(field.GetString())) << column.name;
}

/// Every field of the example, which a graph has read if it takes them up itself.
void ExpectLanded(const melkar::DataTable& table, const CGraph* graph) {
    const std::vector<std::string> lines = LinesOf(melkar::ExampleFile(table));
    for (std::size_t number = 0; number < table.columns.size(); ++number) {
        const melkar::ColumnInfo& column = table.columns[number];
        const int first = column.head == melkar::kEachRow ? table.form.heads : column.head;
        const int end = column.head == melkar::kEachRow ? static_cast<int>(lines.size()) : first + 1;
        ASSERT_LT(first, end) << "no row";
        for (int line = first; line < end; ++line)
            for (int i = 0; i < column.count; ++i) {
                const melkar::CsvRow row(lines[static_cast<std::size_t>(line)].c_str());
                ExpectLanded(table.shown[number](graph, row, line - first, i), row.Field(column.index + i), column);
            }
    }
}

TEST_F(Examples, LandInTheirMembersAndDraw) {
    for (const melkar::KindRow& kind : melkar::Catalogue()) {
        const melkar::DataTables files = melkar::FilesReadBy(kind);
        if (*kind.kind == '\0' || files.empty())
            continue;
        SCOPED_TRACE(kind.kind);
        Prepare(kind, melkar::StarterProfile(kind.kind, "OWN"));
        for (const melkar::DataTable& file : files)
            EXPECT_EQ(melkar::CheckData(file, "data.csv", 1, 0).count, 0U);
        std::unique_ptr<CGraph> graph;
        if (kind.make) {
            graph = kind.make(nullptr, m_record, "OWN", nullptr, nullptr, nullptr);
            const CRect area(0, 0, 600, 400);
            const std::string empty = Record(*graph, "", area);
            EXPECT_GT(Record(*graph, melkar::ExampleFile(files.front()), area).size(), empty.size());
        }
        for (const melkar::DataTable& file : files)
            ExpectLanded(file, graph.get());
    }
}

/// What is in memory is drawn as if it had just been read, and no file is missed.
TEST_F(Examples, DrawAgainWithoutTheirFile) {
    const CRect area(0, 0, 600, 400);
    char none[] = "";
    for (const melkar::KindRow& kind : melkar::Catalogue()) {
        const melkar::DataTables files = melkar::FilesReadBy(kind);
        if (!kind.make || files.empty())
            continue;
        Prepare(kind, melkar::StarterProfile(kind.kind, "OWN"));
        const auto graph = kind.make(nullptr, m_record, "OWN", nullptr, nullptr, nullptr);
        const std::string read = Record(*graph, melkar::ExampleFile(files.front()), area);
        std::filesystem::remove(m_files.Path("log/graph.log"));
        DeleteDC(m_record);
        m_record = CreateRecordingSurface(1200, 700);
        graph->Initialize(nullptr, m_record, nullptr, nullptr, nullptr);
        graph->Draw(area, none);
        EXPECT_EQ(GetRecording(m_record), read) << kind.kind;
        EXPECT_THAT(m_files.Read("log/graph.log"), AllOf(HasSubstr("::Read"), Not(HasSubstr("can't")))) << kind.kind;
    }
}

/// What a host derives.
class HostSteps : public CStepGraph {
public:
    using CStepGraph::CStepGraph;
};

// Behind all that walk the catalogue, in which the row stays.
TEST(HostsCatalogue, TakesRows) {
    const auto rows = melkar::Catalogue().size();
    melkar::KindRow row{"host", "HostSteps", "CStepGraph", "steps of a host",
                        "PENCOLOR_RGB=198,206,216\nTITLELABEL=Mine"};
    row.make = melkar::MakeGraph<HostSteps>;
    const char* const refused[][5] = {
        {"its base isn't there", "host", "HostSteps", "Unknown", ""},
        {"a kind that is there", "steps", "HostSteps", "CStepGraph", ""},
        {"a class that is there", "host", "CStepGraph", "CLineGraph", ""},
        {"keys of its own kind: for ever", "host", "HostSteps", "CStepGraph", "host"},
    };
    for (const auto& [why, kind, className, base, keysOf] : refused)
        EXPECT_FALSE(melkar::Register({kind, className, base, "", "", nullptr, nullptr, nullptr, keysOf})) << why;
    EXPECT_EQ(melkar::Catalogue().size(), rows);
    EXPECT_TRUE(melkar::Register(row));
    EXPECT_EQ(melkar::FindClass("HostSteps"), melkar::FindKind("host"));
    EXPECT_EQ(melkar::KeysReadBy(*melkar::FindKind("host")).size(), 3U) << "those of its bases";
    EXPECT_EQ(melkar::FilesReadBy(*melkar::FindKind("host")).at(0).columns.size(), 7U) << "as of steps";
    EXPECT_NE(melkar::KeyReference().find("| `host` | HostSteps |"), std::string::npos);
}

} // namespace
