#include <MelkarCommon/platform/pages/pdf_text.h>
#include <MelkarCommon/platform/text/text_decode.h>

#include <algorithm>
#include <cstdint>

namespace melkar {

namespace {

/// The character at the start of valid UTF-8 of that length.
std::uint32_t CodePoint(std::string_view character) {
    const auto lead = static_cast<unsigned char>(character.front());
    std::uint32_t code = character.size() == 1 ? lead : lead & (0x7FU >> character.size());
    for (const char byte : character.substr(1))
        code = code << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
    return code;
}

std::string Utf16(std::string_view utf8) {
    std::string units = "\xFE\xFF"; // which says what they are
    const auto add = [&](std::uint32_t unit) {
        units.append({static_cast<char>(unit >> 8U), static_cast<char>(unit)});
    };
    for (std::size_t at = 0; at < utf8.size();) {
        const std::size_t length = LengthAt(utf8, at);
        const std::uint32_t code = CodePoint(utf8.substr(at, length));
        if (code < 0x10000) {
            add(code);
        } else {
            add(0xD800 + ((code - 0x10000) >> 10U));
            add(0xDC00 + ((code - 0x10000) & 0x3FFU));
        }
        at += length;
    }
    return units;
}

} // namespace

std::string PdfText(std::string_view utf8) {
    const bool isPlain =
        std::all_of(utf8.begin(), utf8.end(), [](char byte) { return byte == '\n' || (byte >= ' ' && byte <= '~'); });
    std::string object = "(";
    for (const char byte : isPlain ? std::string(utf8) : Utf16(utf8)) {
        if (byte == '(' || byte == ')' || byte == '\\')
            object += '\\';
        object += byte == '\r' ? "\\r" : std::string(1, byte); // a bare one would be read as a line feed
    }
    return object + ")";
}

} // namespace melkar
