#include <MelkarCommon/platform/pages/pdf_objects.h>

#include <algorithm>
#include <charconv>
#include <string>

namespace melkar {

namespace {

constexpr std::string_view kPlaceOfTable = "startxref\n";

/// Drops what a text begins with. @return false, if it doesn't
bool Take(std::string_view& text, std::string_view head) {
    const bool isHead = text.starts_with(head);
    text.remove_prefix(isHead ? head.size() : 0);
    return isHead;
}

/// Drops the number that a text begins with; nothing, if it doesn't.
std::optional<std::size_t> TakeNumber(std::string_view& text) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc())
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

/// The table with what follows, from `end`; empty if it isn't there.
std::string_view FindTable(std::string_view end, std::size_t at) {
    const std::size_t last = end.rfind(kPlaceOfTable);
    if (last == std::string_view::npos)
        return {};
    std::string_view rest = end.substr(last + kPlaceOfTable.size());
    const auto place = TakeNumber(rest);
    const bool isThere = place && *place - at < last && rest == "\n%%EOF\n"; // before the end: wraps, and is too much
    return isThere ? end.substr(*place - at, last - (*place - at)) : std::string_view();
}

/// Places and trailer, no objects yet.
std::optional<PdfEnd> ReadTable(std::string_view table) {
    PdfEnd read;
    if (!Take(table, "xref\n0 "))
        return std::nullopt;
    const auto count = TakeNumber(table);
    if (!count || !Take(table, "\n"))
        return std::nullopt;
    while (read.places.size() < *count) {
        const auto place = TakeNumber(table);
        if (!place || !(Take(table, " 00000 n \n") || Take(table, " 65535 f \n")))
            return std::nullopt;
        read.places.push_back(*place);
    }
    if (!Take(table, "trailer\n<< /Size " + std::to_string(*count) + "\n") || !table.ends_with(">>\n"))
        return std::nullopt;
    read.trailer = table.substr(0, table.rfind(">>\n"));
    return read;
}

/// From its first line to its last one.
std::optional<PdfObject> ReadObject(std::size_t number, std::string_view text) {
    constexpr std::string_view kLast = "endobj\n";
    if (!Take(text, std::to_string(number) + " 0 obj\n") || !text.ends_with(kLast))
        return std::nullopt;
    return PdfObject{number, text.substr(0, text.size() - kLast.size())};
}

/// Numbers of the objects that stand from there on, the last one first.
std::vector<std::size_t> NumbersFrom(std::size_t at, const std::vector<std::size_t>& places) {
    std::vector<std::size_t> numbers;
    for (std::size_t number = 0; number < places.size(); ++number)
        if (places[number] >= at)
            numbers.push_back(number);
    std::sort(numbers.begin(), numbers.end(), [&](std::size_t a, std::size_t b) { return places[a] > places[b]; });
    return numbers;
}

} // namespace

std::optional<PdfEnd> ReadPdfEnd(std::string_view end, std::size_t at) {
    const std::string_view table = FindTable(end, at);
    std::optional<PdfEnd> read = ReadTable(table);
    if (!read)
        return std::nullopt;
    std::string_view rest = end.substr(0, static_cast<std::size_t>(table.data() - end.data()));
    for (const std::size_t number : NumbersFrom(at, read->places)) {
        const std::size_t begin = read->places[number] - at;
        const auto object = begin < rest.size() ? ReadObject(number, rest.substr(begin)) : std::nullopt;
        if (!object)
            return std::nullopt;
        read->objects.push_back(*object);
        rest = rest.substr(0, begin);
    }
    std::reverse(read->objects.begin(), read->objects.end());
    return rest.empty() ? read : std::nullopt;
}

} // namespace melkar
