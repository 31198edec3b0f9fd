#pragma once

#include <fstream>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// Rows of fields as programs write them (RFC 4180): quoted fields may hold delimiters, line breaks and doubled quotes.

namespace melkar::importer {

/// A file in blocks, from which a text byte by byte is taken. Throws `Refusal` if it can't be read.
class Blocks {
public:
    explicit Blocks(const std::string& path);

    static constexpr int kEnd = -1;
    int Next() { return m_at < m_filled || Fill() ? static_cast<unsigned char>(m_block[m_at++]) : kEnd; }
    int Peek() { return m_at < m_filled || Fill() ? static_cast<unsigned char>(m_block[m_at]) : kEnd; }

private:
    bool Fill();

    std::ifstream m_file;
    std::string m_path;
    std::string m_block;
    std::size_t m_at = 0;
    std::size_t m_filled = 0;
};

void SkipByteOrderMark(Blocks& blocks); ///< at its start, if there is one

/// What a file that can't be rows in UTF-8 is, by how it begins; empty if nothing speaks against it.
std::string ForeignFormat(std::string_view start);

/// Reads row by row, and keeps one. A byte order mark is passed over.
class CsvRows {
public:
    /// Throws `Refusal` if the file can't be read.
    CsvRows(const std::string& path, char delimiter);

    /// The next row that isn't empty. Throws `Refusal` where rows can't be told: a quote that isn't closed, a NUL.
    /// @return false at the end
    bool Next();

    std::size_t Size() const { return m_ends.size(); }
    std::string_view Field(std::size_t index) const; ///< empty if there is none
    long Line() const { return m_line; }             ///< on which the row begins, from 1
    bool HasStrayQuote() const { return m_isStray; } ///< text behind a closing quote

private:
    void EndField() { m_ends.push_back(m_text.size()); }
    void TakeQuoted();
    bool TakeByte(int byte);
    void Keep(int byte);

    Blocks m_blocks;
    char m_delimiter;
    std::string m_text; ///< the fields of the row, one behind the other
    std::vector<std::size_t> m_ends;
    long m_line = 0;
    long m_nextLine = 1;
    bool m_isStray = false;
};

/// Without blanks around it.
std::string_view Trimmed(std::string_view text);

} // namespace melkar::importer
