#include "other_values.h"

#include <MelkarCommon/support/numbers.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace melkar::tool {
namespace {

std::string NumberText(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.15g", value);
    return text;
}

/// A quarter of it, at least that much.
double ShiftOf(double value, double least) { return std::max(least, std::abs(value) / 4); }

std::vector<std::string> OtherWholes(double value, double least) {
    const double shift = std::floor(ShiftOf(value, least));
    return {NumberText(value + shift), NumberText(value - shift)};
}

/// Each channel on the other side of the middle.
int OtherChannel(int channel) { return channel < 128 ? channel + 96 : channel - 96; }

std::string OtherColor(const std::string& value) {
    int red = 0;
    int green = 0;
    int blue = 0;
    if (std::sscanf(value.c_str(), "%d,%d,%d", &red, &green, &blue) != 3)
        return "200,40,90";
    return std::to_string(OtherChannel(red)) + "," + std::to_string(OtherChannel(green)) + "," +
           std::to_string(OtherChannel(blue));
}

std::string OtherPoint(const std::string& value) {
    double x = 0;
    double y = 0;
    std::sscanf(value.c_str(), "%lf,%lf", &x, &y);
    return NumberText(std::floor(x) + 7) + "," + NumberText(std::floor(y) + 5);
}

std::vector<std::string> OtherTexts(const EffectiveKey& key) {
    switch (key.role) {
    case KeyRole::Figure:
        return OtherWholes(ToDouble(key.value.c_str()), 1);
    case KeyRole::Format:
        return {key.value == "%.1f" ? "%.2f" : "%.1f"};
    case KeyRole::Face:
        return {key.value == "monospace" ? "serif" : "monospace"};
    default:
        return {key.value + "x"};
    }
}

/// The first one of the column's example.
std::string ExampleOf(const ColumnInfo& column) {
    const std::string values = column.example;
    return values.substr(0, values.find('|'));
}

/// Down first: figures above a scale may bring in another one, on which everything hangs.
std::vector<std::string> OtherFigures(const ColumnInfo& column, const std::string& text) {
    const double value = ToDouble(text.c_str());
    if (value == 0 && !ExampleOf(column).empty() && ToDouble(ExampleOf(column).c_str()) != 0)
        return {ExampleOf(column)};
    const bool isWhole = column.kind == ColumnKind::Whole || value == std::floor(value);
    const double shift = isWhole ? std::floor(ShiftOf(value, 1)) : ShiftOf(value, 0.1);
    std::vector<std::string> others;
    for (const double other : {value - shift, value + shift})
        if (other >= column.least && other <= column.most)
            others.push_back(NumberText(other));
    return others;
}

/// The day before or behind, as far as one digit takes it.
std::string OtherDate(std::string date) {
    if (date.empty())
        return "20260302";
    date.back() = date.back() > '1' ? static_cast<char>(date.back() - 1) : '2';
    return date;
}

/// An hour later or earlier.
std::string OtherTime(const std::string& time) {
    constexpr int kHour = 100;
    const int value = time.empty() ? 11 * kHour : ToInt(time.c_str());
    return std::to_string(value < 12 * kHour ? value + kHour : value - kHour);
}

} // namespace

std::vector<std::string> OtherValues(const EffectiveKey& key) {
    switch (key.type) {
    case KeyType::Number:
        return OtherWholes(ToDouble(key.value.c_str()), 2);
    case KeyType::Switch:
        return {key.value == "0" ? "1" : "0"};
    case KeyType::TrueWord:
        return {key.value == "true" ? "false" : "true"};
    case KeyType::Real:
        return OtherFigures({ColumnKind::Figure, 0, ""}, key.value);
    case KeyType::Color:
        return {OtherColor(key.value)};
    case KeyType::Point:
        return {OtherPoint(key.value)};
    default:
        return OtherTexts(key);
    }
}

std::vector<std::string> OtherValues(const ColumnInfo& column, const std::string& value) {
    switch (column.kind) {
    case ColumnKind::Figure:
    case ColumnKind::Whole:
        return OtherFigures(column, value);
    case ColumnKind::DayStatus:
        return value == "0" ? std::vector<std::string>{"1", "4"} : std::vector<std::string>{"0"};
    case ColumnKind::Date:
        return {OtherDate(value)};
    case ColumnKind::Time:
        return {OtherTime(value)};
    case ColumnKind::Color:
        return {value == "#3060C0" ? "#C06030" : "#3060C0"};
    default:
        return {value + "x"};
    }
}

} // namespace melkar::tool
