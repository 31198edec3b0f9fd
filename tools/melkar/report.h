#pragma once

#include <string>

namespace melkar::tool {

/// One report, with all arguments checked and all paths absolute.
struct ReportRequest {
    std::string printer;
    int paper = 0; ///< `DMPAPER_...`
    bool isLandscape = false;
    std::string section;
    std::string data;   ///< directory
    std::string header; ///< file
};

/// The code of a paper by its name in any case; 0 if there is none of that name.
int FindPaperCode(std::string name);
std::string PaperNames(); ///< separated by commas

/// Prints the report of samples/hosts. The process's current directory must be the host's.
/// @return 0, or 1 after a message on the error stream
int PrintReport(ReportRequest request);

} // namespace melkar::tool
