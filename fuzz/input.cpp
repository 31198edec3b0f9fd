#include "input.h"

#include <algorithm>
#include <climits>

namespace melkar::fuzz {

const std::vector<int> kEdges = {INT_MIN, INT_MIN + 1,   INT_MAX - 1, INT_MAX,  -(1 << 24) - 1,
                                 1 << 24, (1 << 24) + 1, SHRT_MIN,    SHRT_MAX, SHRT_MAX + 1,
                                 1 << 27, 785,           786,         1000};

const std::vector<std::string> kHurtful = {
    "",
    "0",
    "1",
    "-1",
    "5",
    "true",
    "2147483647",
    "2147483648",
    "-2147483648",
    "16777215",
    "16777216",
    "16777217",
    "nan",
    "-inf",
    "1e308",
    "-1e308",
    "1e-308",
    "2147483647,-2147483648",
    "-2147483648,2147483647",
    "255,255,255",
    "%n%s%*d",
    "%30.30f",
    " __n__ a__YN____d__",
    "\xEF\xBB\xBF\r",
    "\"",
    "20260229",
    "2400",
    "#FF8000",
    std::string(300, 'W'),
    "\x82\xA0\xFF",
    "\xE3\x81\x82\xE3\x83\xBC",
    "\xD7\xA9\xD7\x9C 12 \xD7\x9D",
};

std::vector<std::string_view> PartsOf(std::string_view input, std::size_t count) {
    std::vector<std::string_view> parts;
    while (parts.size() + 1 < count) {
        const std::size_t end = input.find(kBetweenParts);
        parts.push_back(input.substr(0, end));
        input.remove_prefix(end == std::string_view::npos ? input.size() : end + kBetweenParts.size());
    }
    parts.push_back(input);
    return parts;
}

std::string_view TakeLine(std::string_view& input) {
    const std::string_view line = input.substr(0, input.find('\n'));
    input.remove_prefix(std::min(input.size(), line.size() + 1));
    return line;
}

std::uint8_t Bytes::Next() {
    if (m_left.empty())
        return 0;
    const auto byte = static_cast<std::uint8_t>(m_left.front());
    m_left.remove_prefix(1);
    return byte;
}

int Bytes::Number() {
    constexpr int kSmall = 220; // behind it come the edges
    constexpr int kBelowZero = 20;
    const int byte = Next();
    if (m_limit > 0)
        return byte % m_limit;
    return byte < kSmall ? byte - kBelowZero : kEdges[static_cast<std::size_t>(byte - kSmall) % kEdges.size()];
}

RECT Bytes::Box() {
    RECT box{};
    for (int* edge : {&box.left, &box.top, &box.right, &box.bottom})
        *edge = Number();
    return box;
}

} // namespace melkar::fuzz
