#include "csv_rows.h"

#include "notes.h"

#include <cerrno>
#include <cstring>

namespace melkar::importer {
namespace {

constexpr std::size_t kBlock = std::size_t{64} * 1024;
constexpr std::size_t kMostOfRow = std::size_t{1} << 20; ///< beyond it a quote was never closed
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string OnLine(long line) { return "line " + std::to_string(line) + ": "; }

} // namespace

Blocks::Blocks(const std::string& path) : m_file(path, std::ios::binary), m_path(path) {
    errno = 0;
    if (!m_file || m_file.peek() == std::ifstream::traits_type::eof()) {
        if (!m_file.eof())
            throw Refusal("can't be read: " + path + (errno != 0 ? std::string(": ") + std::strerror(errno) : ""));
        m_file.clear();
    }
}

bool Blocks::Fill() {
    m_block.resize(kBlock);
    m_file.read(m_block.data(), static_cast<std::streamsize>(kBlock));
    m_filled = static_cast<std::size_t>(m_file.gcount());
    m_at = 0;
    if (m_file.bad())
        throw Refusal("can't be read: " + m_path);
    return m_filled > 0;
}

std::string ForeignFormat(std::string_view start) {
    const std::pair<std::string_view, const char*> kBeginnings[] = {
        {"\xFF\xFE", "text in UTF-16; save it as UTF-8"},
        {"\xFE\xFF", "text in UTF-16; save it as UTF-8"},
        {"PK\x03\x04", "a spreadsheet or another archive; save the sheet as CSV"},
        {"\xD0\xCF\x11\xE0", "a spreadsheet; save it as CSV"},
        {"{", "JSON; melkar import fhir reads bundles of it"},
    };
    for (const auto& [beginning, what] : kBeginnings)
        if (start.starts_with(beginning))
            return what;
    return "";
}

void SkipByteOrderMark(Blocks& blocks) {
    const auto first = static_cast<unsigned char>(kByteOrderMark.front());
    if (blocks.Peek() != first) // hardly a text in UTF-8 begins with it otherwise
        return;
    for (std::size_t i = 0; i < kByteOrderMark.size(); ++i)
        blocks.Next();
}

CsvRows::CsvRows(const std::string& path, char delimiter) : m_blocks(path), m_delimiter(delimiter) {
    SkipByteOrderMark(m_blocks);
}

std::string_view CsvRows::Field(std::size_t index) const {
    if (index >= m_ends.size())
        return {};
    const std::size_t start = index == 0 ? 0 : m_ends[index - 1];
    return std::string_view(m_text).substr(start, m_ends[index] - start);
}

void CsvRows::Keep(int byte) {
    if (byte == 0)
        throw Refusal(OnLine(m_nextLine) + "a NUL: this is no text in UTF-8");
    m_text += static_cast<char>(byte);
    if (m_text.size() > kMostOfRow)
        throw Refusal(OnLine(m_line) + "a row of more than a mebibyte: is a quote not closed?");
}

/// Behind the opening quote, up to behind the closing one.
void CsvRows::TakeQuoted() {
    const long opened = m_nextLine;
    for (;;) {
        const int byte = m_blocks.Next();
        if (byte == Blocks::kEnd)
            throw Refusal(OnLine(opened) + "a quote that isn't closed");
        if (byte == '"' && m_blocks.Peek() != '"')
            return;
        if (byte == '"')
            m_blocks.Next();
        m_nextLine += byte == '\n' ? 1 : 0;
        Keep(byte);
    }
}

/// @return false at the end of a row
bool CsvRows::TakeByte(int byte) {
    if (byte == Blocks::kEnd || byte == '\n' || byte == '\r') {
        if (byte == '\r' && m_blocks.Peek() == '\n')
            m_blocks.Next();
        ++m_nextLine;
        EndField();
        return false;
    }
    const bool isAtStart = m_text.size() == (m_ends.empty() ? 0 : m_ends.back());
    if (byte == m_delimiter) {
        EndField();
    } else if (byte == '"' && isAtStart) {
        TakeQuoted();
        const int next = m_blocks.Peek();
        m_isStray |= next != m_delimiter && next != '\n' && next != '\r' && next != Blocks::kEnd;
    } else {
        Keep(byte);
    }
    return true;
}

bool CsvRows::Next() {
    while (m_blocks.Peek() != Blocks::kEnd) {
        m_text.clear();
        m_ends.clear();
        m_isStray = false;
        m_line = m_nextLine;
        while (TakeByte(m_blocks.Next())) {
        }
        if (m_ends.size() > 1 || !Trimmed(m_text).empty())
            return true;
    }
    return false;
}

std::string_view Trimmed(std::string_view text) {
    constexpr const char* kBlanks = " \t";
    const auto first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

} // namespace melkar::importer
