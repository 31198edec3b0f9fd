#include <MelkarCommon/checker/doubts.h>

#include <MelkarCommon/checker/doubter.h>
#include <MelkarCommon/platform/files/paths.h>
#include <MelkarCommon/platform/text/text_decode.h>
#include <MelkarCommon/platform/values/ascii.h>
#include <MelkarCommon/registry/catalogue.h>
#include <MelkarCommon/registry/data_check.h>
#include <MelkarCommon/support/profile_values.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// @file
/// Whether a file is one of rows at all, and what its rows are held against; the rows themselves are for
/// registry/data_check.h to judge.

namespace melkar {

namespace {

Doubt DoubtOf(const std::string& file, int line, int column, const char* rule, std::string text) {
    return {file, line, column, FindDoubtRule(rule)->level, std::move(text), rule};
}

/// What a file begins with that is none of rows; null if it may be one.
const char* OtherForm(std::string_view bytes) {
    struct Form {
        std::string_view start;
        const char* name;
    };
    constexpr Form kForms[] = {
        {"PK\x03\x04", "a spreadsheet, or another packed file: save it as CSV"},
        {"\xD0\xCF\x11\xE0", "a spreadsheet: save it as CSV"},
        {"%PDF", "a PDF document"},
        {"{", "JSON"},
        {"[", "JSON"},
        {"<", "XML or HTML"},
    };
    for (const Form& form : kForms)
        if (TrimBlanks(bytes).starts_with(form.start))
            return form.name;
    return nullptr;
}

/// The first line with a sign that stands in for bytes which can't be read; 0 if there is none.
/// @param charset of the profile; nothing: none is known
int UnreadableLine(std::string_view bytes, std::optional<int> charset) {
    constexpr std::string_view kStandIn = "\xEF\xBF\xBD";
    for (int line = 1; !bytes.empty(); ++line) {
        const std::string_view text = bytes.substr(0, bytes.find('\n'));
        bytes.remove_prefix(std::min(text.size() + 1, bytes.size()));
        if (std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
            continue;
        const std::string decoded = DecodeText(text, charset.value_or(0));
        const bool isOther = !charset && decoded != text; // no UTF-8, and nobody says what else
        if (isOther || (decoded != text && decoded.find(kStandIn) != std::string::npos))
            return line;
    }
    return 0;
}

/// What a profile says that figures are held against.
struct Ground {
    DataUse use;
    std::optional<int> charset;
    std::map<std::string, int> colors; ///< in lists of colours, by their key
};

/// A list ends where a colour is missing or black.
int CountColors(const SectionReading& reading, const KeyInfo& row) {
    for (int count = 0; count < kMostListItems; ++count) {
        const ProfileEntry* entry = reading.Find(row, row.firstIndex + count);
        if (!entry || ParseColor(std::string(entry->value).c_str(), 0) == 0)
            return count;
    }
    return kMostListItems;
}

Ground GroundOf(const KindRow& kind, const DataFileUse& use) {
    Ground ground;
    ground.use.series = use.series;
    ground.use.page = use.page;
    if (use.section.empty())
        return ground;
    const PlacedProfile file(use.profile.empty() ? kGraphProfile : use.profile);
    const KindKeys keys(kind, {});
    const SectionReading reading(file, file.Find(use.section), keys);
    if (!reading.Own())
        return ground;
    for (const KeyInfo& row : keys.Rows()) {
        if (const auto scale = ScaleOf(reading, row); scale && scale->to > scale->from)
            ground.use.scales.push_back({row.name, scale->from, scale->to});
        if (row.type == KeyType::Color && row.firstIndex > 0)
            ground.colors[row.name] = CountColors(reading, row);
        if (EqualNoCase(row.name, "CHARSET"))
            ground.charset = reading.Find(row) ? ParseInt(reading.Find(row)->value) : row.fallback;
    }
    return ground;
}

void LookAt(const DataTable& table, const std::string& path, const Ground& ground, std::vector<Doubt>& doubts) {
    const std::string file = path + table.suffix;
    bool isRead = false;
    const std::string bytes = ReadWholeFile(ResolvePath(file.c_str()), &isRead);
    if (!isRead)
        doubts.push_back(DoubtOf(file, 0, 0, "unreadable", "can't be read"));
    else if (const char* form = OtherForm(bytes))
        doubts.push_back(DoubtOf(file, 0, 0, "not-rows", std::string("no rows of columns: it looks like ") + form));
    else if (bytes.find('\0') != std::string::npos)
        doubts.push_back(DoubtOf(file, 0, 0, "bytes", "holds bytes of value 0: is it UTF-16, or no text at all?"));
    else {
        if (const int line = UnreadableLine(bytes, ground.charset))
            doubts.push_back(DoubtOf(file, line, 0, "encoding",
                                     ground.charset ? "neither UTF-8 nor of the CHARSET of the profile" : "not UTF-8"));
        for (DataFinding& finding : CheckData(table, path, ground.use).first)
            doubts.push_back(
                DoubtOf(finding.file, finding.line, finding.column, finding.rule, std::move(finding.text)));
    }
}

} // namespace

std::vector<Doubt> DataDoubts(const std::string& path, const DataFileUse& use) {
    std::vector<Doubt> doubts;
    const KindRow* kind = FindKind(use.kind);
    if (!kind)
        return {DoubtOf(path, 0, 0, "no-kind", "no kind of chart: " + use.kind)};
    Ground ground = GroundOf(*kind, use);
    for (const DataTable& table : FilesReadBy(*kind)) {
        if (table.columns.empty()) // a picture
            continue;
        const auto colors = ground.colors.find(table.form.colorKey);
        ground.use.colors = colors != ground.colors.end() ? colors->second : -1;
        LookAt(table, path, ground, doubts);
    }
    std::stable_sort(doubts.begin(), doubts.end(), [](const Doubt& a, const Doubt& b) {
        return std::pair(std::string_view(a.file), a.line) < std::pair(std::string_view(b.file), b.line);
    });
    return doubts;
}

} // namespace melkar
