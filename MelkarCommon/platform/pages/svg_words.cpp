#include <MelkarCommon/platform/pages/svg_words.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace melkar {

SvgWords& SvgWords::Number(double value) {
    constexpr int kDecimals = 3;
    constexpr double kLargest = 1e9;
    std::array<char, 32> buffer{};
    const double bounded = std::isnan(value) ? 0 : std::clamp(value, -kLargest, kLargest);
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), bounded, std::chars_format::fixed, kDecimals);
    std::string_view number(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    number = number.substr(0, number.find_last_not_of('0') + 1);
    if (number.ends_with('.'))
        number.remove_suffix(1);
    return Raw(number == "-0" ? "0" : number);
}

SvgWords& SvgWords::Escaped(std::string_view utf8) {
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const char c = utf8[i];
        const bool noCharacter = utf8.substr(i, 3) == "\xEF\xBF\xBE" || utf8.substr(i, 3) == "\xEF\xBF\xBF";
        if (c == '&')
            Raw("&amp;");
        else if (c == '<')
            Raw("&lt;");
        else if (c == '>')
            Raw("&gt;");
        else if (c == '"')
            Raw("&quot;");
        else
            m_text += static_cast<unsigned char>(c) < 0x20 || noCharacter ? ' ' : c;
        i += noCharacter ? 2 : 0;
    }
    return *this;
}

SvgWords& SvgWords::Base64(std::string_view bytes) {
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k)
            group = group << 8U | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            m_text += i + k <= bytes.size() ? kDigits[group >> (18 - 6 * k) & 0x3FU] : '=';
    }
    return *this;
}

SvgWords& SvgWords::Value(std::string_view name, double value) {
    return Raw(" ").Raw(name).Raw("=\"").Number(value).Raw("\"");
}

SvgWords& SvgWords::Value(std::string_view name, std::string_view value) {
    return Raw(" ").Raw(name).Raw("=\"").Escaped(value).Raw("\"");
}

SvgWords& SvgWords::Paint(std::string_view name, Color color) {
    Raw(" ").Raw(name).Raw("=\"#");
    for (int shift = 20; shift >= 0; shift -= 4)
        m_text += "0123456789abcdef"[color >> static_cast<unsigned>(shift) & 0xFU];
    return Raw("\"");
}

SvgWords& SvgWords::Points(std::span<const PointD> points) {
    for (std::size_t i = 0; i < points.size(); ++i)
        Raw(i == 0 ? "" : " ").Point(points[i]);
    return *this;
}

} // namespace melkar
