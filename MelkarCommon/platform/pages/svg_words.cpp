#include <MelkarCommon/platform/pages/svg_words.h>
#include <MelkarCommon/platform/values/number_text.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace melkar {

SvgWords& SvgWords::Number(double value) {
    constexpr double kLargest = 1e9;
    AppendLength(m_text, std::isnan(value) ? 0 : std::clamp(value, -kLargest, kLargest));
    return *this;
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
    AppendHex(m_text, color, 6, kSmallHex);
    return Raw("\"");
}

SvgWords& SvgWords::Points(std::span<const PointD> points) {
    for (std::size_t i = 0; i < points.size(); ++i)
        Raw(i == 0 ? "" : " ").Point(points[i]);
    return *this;
}

} // namespace melkar
