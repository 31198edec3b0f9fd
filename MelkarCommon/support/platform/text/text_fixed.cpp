#include <MelkarCommon/support/platform/text/text_face.h>
#include <MelkarCommon/support/platform/text/text_parts.h>

#include <algorithm>
#include <cmath>

/// @file
/// Texts without a font: every character is as wide as every other, on every machine.

namespace melkar {
namespace {

constexpr double kAdvance = 0.6; // ems

int AdvanceOf(const TextFace& face) {
    constexpr double kRounding = 1e-9; // a product that is whole but for rounding isn't rounded up
    return static_cast<int>(std::ceil(face.size.em * kAdvance - kRounding));
}

int WidthOf(std::string_view line, int advance) {
    const auto characters =
        std::count_if(line.begin(), line.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80; });
    return static_cast<int>(characters) * advance;
}

TextLine MakeLine(std::string_view text, int advance) {
    TextLine line;
    line.utf8 = text;
    line.width = WidthOf(text, advance);
    return line;
}

/// The end of the word that follows the blanks at `i`.
std::size_t EndOfWord(std::string_view text, std::size_t i) {
    const std::size_t word = text.find_first_not_of(' ', i);
    return std::min(text.find(' ', std::min(word, text.size())), text.size());
}

} // namespace

void MeasureParagraph(const TextFace& face, const std::string& paragraph, int wrapWidth, std::vector<TextLine>& lines) {
    const int advance = AdvanceOf(face);
    std::string_view rest = paragraph;
    while (wrapWidth != kNoWrap) {
        // The first word stays on the line with the blanks before it, however wide; others while they fit.
        std::size_t end = EndOfWord(rest, 0);
        int width = WidthOf(rest.substr(0, end), advance);
        while (end < rest.size()) {
            const std::size_t next = EndOfWord(rest, end);
            width += WidthOf(rest.substr(end, next - end), advance);
            if (width > wrapWidth)
                break;
            end = next;
        }
        const std::size_t word = rest.find_first_not_of(' ', end);
        if (word == std::string_view::npos)
            break;
        lines.push_back(MakeLine(rest.substr(0, end), advance));
        rest.remove_prefix(word);
    }
    lines.push_back(MakeLine(rest, advance));
}

} // namespace melkar
