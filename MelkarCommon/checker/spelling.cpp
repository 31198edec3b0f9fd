#include <MelkarCommon/checker/spelling.h>

#include <MelkarCommon/platform/values/ascii.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace melkar {

namespace {

constexpr std::size_t kLongest = 64; // of a name that is looked at: longer ones are none of ours

} // namespace

int StepsBetween(std::string_view a, std::string_view b) {
    std::vector<int> before;
    std::vector<int> last(b.size() + 1);
    std::vector<int> now(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        now[j] = static_cast<int>(j);
    const auto same = [&](std::size_t i, std::size_t j) { return LowerAscii(a[i]) == LowerAscii(b[j]); };
    for (std::size_t i = 0; i < a.size(); ++i) {
        before = std::exchange(last, now);
        now[0] = static_cast<int>(i) + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            now[j + 1] = std::min({last[j + 1] + 1, now[j] + 1, last[j] + (same(i, j) ? 0 : 1)});
            if (i > 0 && j > 0 && same(i, j - 1) && same(i - 1, j))
                now[j + 1] = std::min(now[j + 1], before[j - 1] + 1);
        }
    }
    return now[b.size()];
}

std::string ClosestName(std::string_view word, const std::vector<std::string>& names) {
    const int most = word.size() > kLongest ? 0 : static_cast<int>(std::max<std::size_t>(word.size() / 4, 1));
    std::string closest;
    int fewest = most + 1;
    for (const std::string& name : names) {
        if (name.size() > word.size() + most || word.size() > name.size() + most)
            continue;
        if (const int steps = StepsBetween(word, name); steps < fewest) {
            fewest = steps;
            closest = name;
        }
    }
    return closest;
}

} // namespace melkar
