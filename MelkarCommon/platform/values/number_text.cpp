#include <MelkarCommon/platform/values/number_text.h>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace melkar {

void AppendLength(std::string& text, double value) {
    constexpr int kDecimals = 3;
    std::array<char, std::numeric_limits<double>::max_exponent10 + kDecimals + 4> buffer{}; // sign, point, first digit
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, kDecimals);
    std::string_view number(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    if (std::isfinite(value))
        number = number.substr(0, number.find_last_not_of('0') + 1);
    if (number.ends_with('.'))
        number.remove_suffix(1);
    text += number == "-0" ? "0" : number;
}

void AppendHex(std::string& text, std::uint32_t value, int digits, const char* letters) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text += letters[(value >> static_cast<unsigned>(shift)) & 0xFU];
}

} // namespace melkar
