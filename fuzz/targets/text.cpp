// Bytes of any code page become characters, cut and laid out without a half one.

#include "../input.h"
#include "../room.h"

#include <MelkarCommon/platform/text/text_decode.h>
#include <MelkarCommon/platform/text/text_engine.h>
#include <MelkarCommon/platform/wrapped_height.h>

#include <algorithm>

namespace melkar::fuzz {

using namespace std::string_literals;

namespace {

constexpr int kCharsets[] = {0, 1, 128, 129, 134, 136, 161, 162, 177, 178, 186, 204, 238, 255};

/// Long enough for what is asked of it, and decoded once more it stays as it is: so it was valid.
void CheckDecoded(const std::string& text, int charset) {
    Require(DecodeText(text, charset) == text, "decoded text is valid UTF-8");
}

void CheckCuts(std::string_view bytes, int charset, std::size_t limit) {
    const std::string_view head = CutBytes(bytes, limit, charset);
    Require(head.size() <= limit && bytes.starts_with(head), "a head is one, within its limit");
    constexpr std::size_t kLongestCharacter = 4;
    Require(head.size() == bytes.size() || head.size() + kLongestCharacter > limit, "no more is cut than a character");
    const std::string line = DecodeLine(bytes, charset, limit);
    Require(line.size() <= limit && line.find('\n') == std::string::npos, "a line is one, within its limit");
    CheckDecoded(line, charset);
}

void CheckLayout(std::string_view bytes, const LOGFONTA& font, TextMedium medium, bool isSingle, int wrapWidth) {
    const auto layout = LayOutText(FindFace(font, medium), bytes, isSingle, wrapWidth);
    int widest = 0;
    for (std::size_t line = 0; line < layout->lines.size(); ++line) {
        widest = std::max(widest, layout->lines[line].width);
        LineOutline(*layout, line);
        if (medium == TextMedium::Pixels)
            LineMask(*layout, line, font.lfEscapement);
    }
    Require(layout->width == widest && widest >= 0, "a text is as wide as its widest line");
    Require(!isSingle || wrapWidth != kNoWrap || layout->lines.size() <= 1, "a single line is one");
}

/// Four bytes: character set, limit, size of the font, and what else; then the text.
void ReadText(std::string_view input) {
    constexpr std::size_t kMostBytes = 600; // laid out thrice
    const Visit visit;
    Bytes head(input.substr(0, 4));
    const std::string_view bytes = input.substr(std::min<std::size_t>(4, input.size())).substr(0, kMostBytes);
    const int charset = kCharsets[head.Next() % std::size(kCharsets)];
    const std::size_t limit = head.Next();
    LOGFONTA font{};
    font.lfHeight = head.Number();
    const int flags = head.Next();
    font.lfEscapement = flags * 7;
    font.lfCharSet = static_cast<BYTE>(charset);
    const std::string text = DecodeText(bytes, charset);
    CheckDecoded(text, charset);
    CheckCuts(bytes, charset, limit);
    for (const TextMedium medium : {TextMedium::Pixels, TextMedium::Page, TextMedium::Fixed})
        CheckLayout(bytes, font, medium, flags % 2 != 0, flags % 4 < 2 ? kNoWrap : static_cast<int>(limit));
}

void SeedTexts(Seeds& seeds) {
    const std::string texts[] = {
        "Start slowly, and add a few minutes each week.\r\n\n1.5 kg",
        "\xE6\xAD\xA9\xE6\x95\xB0 \xEF\xBD\xB1\xE3\x82\x99 \xF0\x9F\x8F\x83",
        "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D (12%) \xD8\xB3\xD9\x84\xD8\xA7\xD9\x85",
        "\x82\xA0\x83\x41\xB1\xFD\x82",
        "\xB0\xA1\xC4\xE3\x81\x30\xFE\xFE",
        "\xED\xA0\x80\xC0\xAF\xF4\x90\x80\x80\xEF\xBF\xBE\xEF\xB7\x90",
        "\xE2\x80\xA8\xC2\x85\xE2\x80\xAE\xCC\x81\xCC\x81\xCC\x81",
        "a\0b\t\x1B"s,
    };
    for (std::size_t text = 0; text < std::size(texts); ++text)
        for (std::size_t charset = 0; charset < std::size(kCharsets); ++charset)
            seeds.add(std::to_string(text) + "-in-" + std::to_string(kCharsets[charset]),
                      std::string{static_cast<char>(charset), 19, 8, static_cast<char>(charset)} + texts[text]);
    seeds.words.insert(std::begin(texts), std::end(texts));
}

} // namespace

extern const Target kText;
const Target kText{"text", "four bytes of how, and bytes of a text", ReadText, SeedTexts};

} // namespace melkar::fuzz
