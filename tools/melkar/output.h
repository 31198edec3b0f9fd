#pragma once

#include <string>

/// @file
/// What comes out of the command, and where it goes.

namespace melkar::tool {

enum class Output { None, Png, Svg, SvgOutlines, Pdf, Record };

/// By the word ("png", "svg", "pdf", in any case); None for any other.
Output FormatOf(std::string word);

/// By the suffix of a file name.
Output FormatOfName(const std::string& path);

/// Tells that something can't be written, and the reason that the system gave for the last call, if it gave one.
/// @return 1, the exit code
int FailToWrite(const std::string& what);

/// To be called last. @return 0, or 1 after a message if something printed was lost
int FlushStandardOutput();

/// A file with no lasting name, for pictures that go to the standard output: the library writes whole files only.
class TemporaryFile {
public:
    TemporaryFile(); ///< throws std::runtime_error if there can be none
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& Path() const { return m_path; }
    void CopyToStandardOutput() const; ///< whether that took it is for who flushes it to find out

private:
    std::string m_path;
};

} // namespace melkar::tool
