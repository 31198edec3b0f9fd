#include <MelkarCommon/checker/doubter.h>

#include <algorithm>
#include <tuple>
#include <utility>

namespace melkar {

void Doubter::Tell(const char* rule, int line, int column, std::string text) {
    constexpr std::size_t kMost = 1000; // nobody reads more
    if (m_doubts.size() < kMost && !m_file.Allows(rule, line))
        m_doubts.push_back({m_file.Path(), line, column, FindDoubtRule(rule)->level, std::move(text), rule});
}

std::vector<Doubt> Doubter::Take() {
    const auto key = [](const Doubt& doubt) {
        return std::tuple(doubt.line, doubt.column, std::string_view(doubt.rule), std::string_view(doubt.text));
    };
    std::sort(m_doubts.begin(), m_doubts.end(), [&](const Doubt& a, const Doubt& b) { return key(a) < key(b); });
    m_doubts.erase(
        std::unique(m_doubts.begin(), m_doubts.end(), [&](const Doubt& a, const Doubt& b) { return key(a) == key(b); }),
        m_doubts.end());
    return std::move(m_doubts);
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t kShown = 40;
    std::string quoted = "\"";
    quoted.append(text.substr(0, kShown)).append(text.size() > kShown ? "...\"" : "\"");
    return quoted;
}

std::string InBrackets(std::string_view name) {
    constexpr std::size_t kShown = 60;
    std::string text = "[";
    text.append(name.substr(0, kShown)).append("]");
    return text;
}

} // namespace melkar
