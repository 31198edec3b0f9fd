#include <MelkarCommon/checker/doubter.h>

#include <MelkarCommon/frame/data_table.h>
#include <MelkarCommon/platform/values/ascii.h>
#include <MelkarCommon/support/figure_format.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/profile_values.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <vector>

/// @file
/// Whether values have the form that their keys ask for. What is read in their place comes from the same functions
/// that graphs read by.

namespace melkar {

namespace {

std::string_view WithoutPlus(std::string_view text) {
    return text.size() > 1 && text[0] == '+' && text[1] != '-' ? text.substr(1) : text;
}

template <class Value> bool IsAll(std::string_view text) {
    Value value{};
    text = WithoutPlus(text);
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && stop == text.data() + text.size();
}
bool IsWhole(std::string_view text) { return IsAll<int>(TrimBlanks(text)); }
bool IsReal(std::string_view text) { return IsAll<double>(TrimBlanks(text)); }

std::vector<std::string_view> PartsOf(std::string_view value) {
    std::vector<std::string_view> parts;
    for (std::size_t comma = 0; comma != std::string_view::npos;) {
        comma = value.find(',');
        parts.push_back(TrimBlanks(value.substr(0, comma)));
        value.remove_prefix(comma == std::string_view::npos ? value.size() : comma + 1);
    }
    return parts;
}

bool AreWhole(std::string_view value, std::size_t count) {
    const auto parts = PartsOf(value);
    return parts.size() == count && std::all_of(parts.begin(), parts.end(), IsWhole);
}

/// As a profile writes it.
std::string ColorText(unsigned red, unsigned green, unsigned blue) {
    return std::to_string(red) + "," + std::to_string(green) + "," + std::to_string(blue);
}

/// "#RRGGBB" and "#RGB" as a profile writes them.
std::optional<std::string> FromHex(std::string_view value) {
    unsigned color = 0;
    if (value.size() != 7 && value.size() != 4)
        return std::nullopt;
    const auto [stop, error] = std::from_chars(value.data() + 1, value.data() + value.size(), color, 16);
    if (value[0] != '#' || error != std::errc() || stop != value.data() + value.size())
        return std::nullopt;
    constexpr unsigned kTwice = 0x11; // of one digit both
    if (value.size() == 4)
        return ColorText((color >> 8) * kTwice, (color >> 4 & 0xFU) * kTwice, (color & 0xFU) * kTwice);
    return ColorText(color >> 16, color >> 8 & 0xFFU, color & 0xFFU);
}

std::optional<std::string> FromName(std::string_view value) {
    struct Named {
        std::string_view name;
        const char* color;
    };
    constexpr Named kNamed[] = {
        {"black", "0,0,0"},      {"white", "255,255,255"}, {"red", "255,0,0"},      {"green", "0,128,0"},
        {"blue", "0,0,255"},     {"yellow", "255,255,0"},  {"orange", "255,165,0"}, {"purple", "128,0,128"},
        {"grey", "128,128,128"}, {"gray", "128,128,128"},  {"brown", "165,42,42"},  {"pink", "255,192,203"},
    };
    for (const Named& one : kNamed)
        if (EqualNoCase(one.name, value))
            return one.color;
    return std::nullopt;
}

void DoubtColor(const ProfileEntry& entry, Doubter& doubter) {
    const std::string_view value = entry.value;
    if (AreWhole(value, 3)) {
        for (const std::string_view part : PartsOf(value))
            if (const int channel = ParseInt(part); channel < 0 || channel > 255)
                return doubter.TellValue("color-range", entry,
                                         std::to_string(channel) + " is beyond 0 to 255, and counts as " +
                                             std::to_string(channel & 0xFF));
        return;
    }
    const auto meant = FromHex(value).has_value() ? FromHex(value) : FromName(value);
    doubter.TellValue("color", entry,
                      "not a colour as in 220,120,120: " + Quoted(value) + (meant ? "; write " + *meant : ""));
}

/// "1,800" without its commas, if they stand between thousands.
std::string WithoutThousands(std::string_view value) {
    const auto parts = PartsOf(value);
    for (std::size_t i = 1; i < parts.size(); ++i)
        if (parts[i].size() != 3)
            return "";
    std::string digits;
    for (const std::string_view part : parts)
        digits += part;
    return parts.size() > 1 && IsWhole(digits) ? digits : "";
}

/// "12,5" with a point.
std::string WithPoint(std::string_view value) {
    std::string text(value);
    std::replace(text.begin(), text.end(), ',', '.');
    return IsReal(text) ? text : "";
}

void DoubtNumber(const KeyInfo& row, const ProfileEntry& entry, Doubter& doubter) {
    const bool isWhole = row.type == KeyType::Number || row.type == KeyType::Switch;
    const std::string meant = isWhole ? WithoutThousands(entry.value) : WithPoint(entry.value);
    const std::string read = isWhole ? std::to_string(ParseInt(entry.value))
                                     : detail::ShowNumber(ToDouble(std::string(entry.value).c_str()));
    doubter.TellValue(row.type == KeyType::Switch ? "switch" : "number", entry,
                      std::string("not a ") + (isWhole ? "whole number: " : "number: ") + Quoted(entry.value) +
                          " is read as " + read + (meant.empty() ? "" : "; write " + meant));
}

} // namespace

bool HasItsForm(const KeyInfo& row, std::string_view value) {
    switch (row.type) {
    case KeyType::Number:
    case KeyType::Switch:
        return value.empty() || IsWhole(value);
    case KeyType::Real:
        return value.empty() || IsReal(value);
    case KeyType::TrueWord:
        return value.empty() || EqualNoCase(value, "true") || EqualNoCase(value, "false");
    case KeyType::Color:
        return AreWhole(value, 3);
    case KeyType::Point:
        return AreWhole(value, 2);
    default:
        if (row.role == KeyRole::Figure)
            return value.empty() || IsReal(value);
        return row.role != KeyRole::Format || value.empty() || IsFigureFormat(std::string(value).c_str());
    }
}

void DoubtForm(const KeyInfo& row, const ProfileEntry& entry, Doubter& doubter) {
    if (row.type == KeyType::Color)
        return DoubtColor(entry, doubter);
    if (HasItsForm(row, entry.value))
        return;
    switch (row.type) {
    case KeyType::TrueWord:
        return doubter.TellValue("true-word", entry, "off, for it is not the word true: " + Quoted(entry.value));
    case KeyType::Point:
        return doubter.TellValue("point", entry, "not a point as in 10,20: " + Quoted(entry.value));
    default:
        if (row.role == KeyRole::Format)
            return doubter.TellValue("format", entry,
                                     "not the format of one figure as in %.1f: " + Quoted(entry.value));
        return DoubtNumber(row, entry, doubter);
    }
}

void DoubtValues(const SectionReading& reading, PictureSize, Doubter& doubter) {
    if (!reading.Own())
        return;
    for (const ProfileEntry& entry : reading.Own()->entries)
        if (const KeyInfo* row = reading.Keys().RowOf(KeySection::Own, entry.key); row && reading.IsOpen(*row))
            DoubtForm(*row, entry, doubter);
}

} // namespace melkar
