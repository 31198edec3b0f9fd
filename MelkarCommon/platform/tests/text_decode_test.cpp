#include <MelkarCommon/platform/text/text_decode.h>

#include <gtest/gtest.h>

#include <tuple>

namespace melkar {
namespace {

TEST(TextDecode, TakesUtf8ElseTheCodePage) {
    const std::tuple<const char*, std::string_view, int, std::string_view> cases[] = {
        {"UTF-8 stays, whatever the character set", "体重\xC3\xA9", 128, "体重é"},
        {"western", "caf\xE9 \x80", 0, "café €"},
        {"unknown character set: western", "\xE9", 77, "é"},
        {"Japanese, full and half width", "\x91\xCC\x8F\x64 \xB1", 128, "体重 ｱ"},
        {"Korean", "\xB0\xA1", 129, "가"},
        {"simplified Chinese", "\xCC\xE5", 134, "体"},
        {"traditional Chinese", "\xC5\xE9", 136, "體"},
        {"Greek", "\xC1", 161, "Α"},
        {"Turkish", "\xFE", 162, "ş"},
        {"Hebrew, the last letter isn't held back", "\xF9\xE5", 177, "שו"},
        {"Arabic", "\xE1", 178, "ل"},
        {"Baltic", "\xE0", 186, "ą"},
        {"Cyrillic", "\xC0", 204, "А"},
        {"Central European", "\xF8", 238, "ř"},
        {"no such byte", "a\x81z", 0, "a\uFFFDz"},
        {"half a character at the end", "a\x91", 128, "a\uFFFD"},
        {"lead byte before something else", "\x91\x20z", 128, "\uFFFD z"},
        {"overlong form isn't UTF-8", "\xC0\xAF", 0, "À¯"},
        {"surrogate isn't UTF-8", "\xED\xA0\x80", 204, "н\u00A0Ђ"},
        {"no characters: a page would refuse them", "a\uFFFE\uFDD0\U0003FFFFz", 0, "a\uFFFD\uFFFD\uFFFDz"},
        {"their neighbours", "\uFDCF\uFDF0\uFFFD\U0001FFFD\U00020000", 0, "\uFDCF\uFDF0\uFFFD\U0001FFFD\U00020000"},
        {"beyond U+10FFFF isn't UTF-8", "\xF4\x90\x80\x80", 204, "фђЂЂ"},
    };
    for (const auto& [why, bytes, charset, text] : cases)
        EXPECT_EQ(DecodeText(bytes, charset), text) << why;
}

TEST(TextDecode, LinesHoldNoControlsAndNoHalfCharacter) {
    const std::tuple<const char*, std::string_view, std::size_t, std::string_view> cases[] = {
        {"all of it", "R\xE9sum\xE9", 8, "Résumé"},
        {"an é begins at the last byte", "R\xE9sum\xE9", 7, "Résum"},
        {"controls, of a terminal, of Latin 1, of Unicode", "a\x1B[1m\r\nb\x7F\u0085\u2028z", 99, "a [1m  b   z"},
        {"a control that is longer than its blank", "abc\u2028d", 5, "abc d"},
        {"nothing fits", "体", 2, ""},
    };
    for (const auto& [why, bytes, limit, line] : cases)
        EXPECT_EQ(DecodeLine(bytes, 0, limit), line) << why;
}

TEST(TextDecode, CutsNoCharacterInTwo) {
    const std::tuple<const char*, std::string_view, std::size_t, int, std::size_t> cases[] = {
        {"shorter than the limit", "abc", 5, 0, 3},
        {"first character too long", "\xF0\x9F\x98\x80z", 3, 0, 0},
        {"double byte: the same bytes as single ones", "\x91\xCC\x8F\x64", 3, 0, 3},
        {"half-width katakana are single", "\xB1\xB2\xB3\xB4", 3, 128, 3},
        {"Korean lead bytes include those", "\xB1\xB2\xB3\xB4", 3, 129, 2},
        {"lead byte before something else is single", "\x91\x20\x91\xCC", 3, 128, 2},
        {"one bad byte makes all of it double byte", "体\x91", 2, 128, 2},
    };
    for (const auto& [why, bytes, limit, charset, length] : cases)
        EXPECT_EQ(CutBytes(bytes, limit, charset).size(), length) << why;
}

} // namespace
} // namespace melkar
