#include "geometry.h"

#include <charconv>
#include <utility>

namespace melkar::tool {
namespace {

constexpr int kMaxExtent = 32767;

std::optional<int> ParseWhole(std::string_view text, int lowest, int highest) {
    int value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || value < lowest || value > highest)
        return std::nullopt;
    return value;
}

std::optional<std::pair<int, int>> ParsePair(std::string_view text, char separator, int lowest, int highest) {
    const auto at = text.find(separator);
    if (at == std::string_view::npos)
        return std::nullopt;
    const auto first = ParseWhole(text.substr(0, at), lowest, highest);
    const auto second = ParseWhole(text.substr(at + 1), lowest, highest);
    if (!first || !second)
        return std::nullopt;
    return std::pair{*first, *second};
}

} // namespace

std::optional<Size> ParseSize(std::string_view text) {
    const auto pair = ParsePair(text, 'x', 1, kMaxExtent);
    if (!pair)
        return std::nullopt;
    return Size{pair->first, pair->second};
}

std::optional<CPoint> ParsePoint(std::string_view text) {
    const auto pair = ParsePair(text, ',', -kMaxExtent - 1, kMaxExtent);
    if (!pair)
        return std::nullopt;
    return CPoint(pair->first, pair->second);
}

} // namespace melkar::tool
