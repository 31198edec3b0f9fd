#include <MelkarCommon/platform/values/ascii.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace melkar {

int ParseInt(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);

    constexpr std::int64_t kMost = std::numeric_limits<int>::max();
    const std::int64_t bound = negative ? kMost + 1 : kMost;
    std::int64_t value = 0;
    for (const char c : text) {
        if (!IsDigit(c))
            break;
        value = std::min(value * 10 + (c - '0'), bound);
    }
    return static_cast<int>(negative ? -value : value);
}

} // namespace melkar
