#include "notes.h"

#include <algorithm>

namespace melkar::importer {
namespace {

constexpr long kMostNotes = 50; ///< of a sort, unless all are asked for

} // namespace

void Notes::Tell(const char* word, long line, const std::string& text) {
    if (++m_counts[word] > kMostNotes && !m_isAll)
        return;
    std::string note = m_file;
    if (line > 0)
        note.append(":").append(std::to_string(line));
    m_print(note.append(": ").append(word).append(": ").append(text));
}

void Notes::Finish(const std::string& summary) {
    for (const auto& [word, count] : m_counts)
        if (count > kMostNotes && !m_isAll)
            m_print(m_file + ": " + word + ": and " + std::to_string(count - kMostNotes) + " more (--all lists them)");
    m_print(m_file + ": " + summary);
}

std::string Quoted(std::string_view value) {
    constexpr std::size_t kMost = 40;
    std::string text(value.substr(0, kMost));
    std::replace_if(
        text.begin(), text.end(), [](unsigned char byte) { return byte < 0x20 || byte == 0x7F; }, '?');
    return '"' + text + '"';
}

} // namespace melkar::importer
