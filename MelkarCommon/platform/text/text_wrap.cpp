#include <MelkarCommon/platform/text/text_decode.h>
#include <MelkarCommon/platform/text/text_parts.h>
#include <MelkarCommon/platform/text/text_wrap.h>

#include <algorithm>

namespace melkar {
namespace {

/// The end of what stands on a line that another one follows.
std::size_t EndAtWrap(std::string_view text, std::size_t start, std::size_t next) {
    return start + WithoutTrailingBlanks(text.substr(start, next - start)).size();
}

/// The end of the last line: its blanks stay as far as there is room.
std::size_t EndOfLast(const WrapText& paragraph, std::size_t start, std::int64_t room) {
    std::size_t end = paragraph.text.size();
    while (end > start && paragraph.text[end - 1] == ' ' && paragraph.reach[end] - paragraph.reach[start] > room)
        --end;
    return end;
}

} // namespace

std::vector<LineSpan> WrapLines(const WrapText& paragraph, std::int64_t room) {
    std::vector<LineSpan> lines;
    std::size_t start = 0;
    std::size_t next = 0; // where the next line would begin
    for (const std::size_t candidate : paragraph.breaks) {
        const std::size_t end = EndAtWrap(paragraph.text, start, candidate);
        if (next > start && paragraph.reach[end] - paragraph.reach[start] > room) {
            lines.push_back({start, EndAtWrap(paragraph.text, start, next)});
            start = next;
        }
        next = candidate;
    }
    lines.push_back({start, EndOfLast(paragraph, start, room)});
    return lines;
}

std::vector<std::size_t> BreaksOf(std::string_view text, const PangoLogAttr* characters) {
    std::vector<std::size_t> breaks;
    const std::size_t firstWord = text.find_first_not_of(' ');
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (IsContinuation(text[i]))
            continue;
        if (characters->is_line_break != 0 && i > firstWord)
            breaks.push_back(i);
        ++characters;
    }
    breaks.push_back(text.size());
    return breaks;
}

} // namespace melkar
