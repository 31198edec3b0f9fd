#pragma once

#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

/// @file
/// What an import tells: nothing is skipped, filled or chosen in silence.

namespace melkar::importer {

/// Why nothing is imported, in a sentence.
struct Refusal : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// An import that can't be asked for, in a sentence.
struct WrongRequest : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Prints notes as they come, "FILE:LINE: skipped: why", so that none is kept in memory.
class Notes {
public:
    using Print = std::function<void(const std::string& line)>;

    /// @param file as the notes call it @param all each note; else of a sort the first ones
    Notes(std::string file, bool all, Print print) : m_file(std::move(file)), m_isAll(all), m_print(std::move(print)) {}

    void Skipped(long line, const std::string& why) {
        Tell("skipped", line, why);
    } ///< what the file has and the chart lacks
    void Filled(long line, const std::string& what) { Tell("filled", line, what); }     ///< the other way round
    void Chosen(const std::string& what, long line = 0) { Tell("chosen", line, what); } ///< where there was a choice
    /// Tells how many notes weren't printed, then the summary.
    void Finish(const std::string& summary);

private:
    void Tell(const char* word, long line, const std::string& text);

    std::string m_file;
    bool m_isAll;
    Print m_print;
    std::map<std::string, long> m_counts; ///< of notes, by their word
};

/// A value of a file as notes show it: cut, and on one line.
std::string Quoted(std::string_view value);

} // namespace melkar::importer
