#include "manifest.h"

#include "commands/command.h"

#include <charconv>
#include <cstring>

namespace melkar::tool {
namespace {

constexpr int kMostShards = 1'000'000;

bool IsBlank(char letter) { return std::strchr(" \t\r", letter) != nullptr; }

/// Walks a line; what has been read of the word under way is in `m_word`.
class WordSplitter {
public:
    explicit WordSplitter(const std::string& line) : m_line(line) {}

    std::optional<std::vector<std::string>> Split() {
        while (m_at < m_line.size()) {
            const char letter = m_line[m_at++];
            if (IsBlank(letter))
                EndWord();
            else if (letter == '#' && !m_word)
                break;
            else if (!Take(letter))
                return std::nullopt;
        }
        EndWord();
        return std::move(m_words);
    }

private:
    /// @return false if the line ends within a quote
    bool Take(char letter) {
        if (!m_word)
            m_word.emplace();
        if (letter == '\'' || letter == '"')
            return TakeQuoted(letter);
        if (letter == '\\' && m_at < m_line.size())
            letter = m_line[m_at++];
        *m_word += letter;
        return true;
    }

    bool TakeQuoted(char quote) {
        while (m_at < m_line.size()) {
            char letter = m_line[m_at++];
            if (letter == quote)
                return true;
            if (quote == '"' && letter == '\\' && m_at < m_line.size() && std::strchr("\"\\", m_line[m_at]) != nullptr)
                letter = m_line[m_at++];
            *m_word += letter;
        }
        return false;
    }

    void EndWord() {
        if (m_word)
            m_words.push_back(*std::move(m_word));
        m_word.reset();
    }

    const std::string& m_line;
    std::size_t m_at = 0;
    std::optional<std::string> m_word; ///< "" is a word, too
    std::vector<std::string> m_words;
};

} // namespace

std::optional<std::vector<std::string>> SplitWords(const std::string& line) { return WordSplitter(line).Split(); }

std::vector<ManifestRow> ReadManifest(std::istream& text, const std::string& name) {
    std::vector<ManifestRow> rows;
    int number = 0;
    for (std::string line; std::getline(text, line);) {
        ++number;
        auto words = SplitWords(line);
        if (!words)
            throw UsageError{name + ":" + std::to_string(number) + ": a quote isn't closed"};
        if (!words->empty())
            rows.push_back({number, *std::move(words)});
    }
    return rows;
}

std::optional<Shard> ParseShard(const std::string& text) {
    Shard shard;
    const char* end = text.data() + text.size();
    const auto [slash, noIndex] = std::from_chars(text.data(), end, shard.index);
    if (noIndex != std::errc() || slash == end || *slash != '/')
        return std::nullopt;
    const auto [stop, noCount] = std::from_chars(slash + 1, end, shard.count);
    const bool isWhole = noCount == std::errc() && stop == end;
    return isWhole && shard.index >= 1 && shard.index <= shard.count && shard.count <= kMostShards
               ? std::optional(shard)
               : std::nullopt;
}

} // namespace melkar::tool
