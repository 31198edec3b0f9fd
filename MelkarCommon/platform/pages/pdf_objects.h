#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

/// @file
/// Internal. What stands at the end of a PDF file, in the form that cairo 1.16 gives it.

namespace melkar {

struct PdfObject {
    std::size_t number;
    std::string_view text; ///< between its first line and its last one, with the line feed
};

struct PdfEnd {
    std::vector<std::size_t> places; ///< of all objects of the file by their numbers: bytes before them; 0: none
    std::vector<PdfObject> objects;  ///< those that stand in the end, in their order
    std::string_view trailer;        ///< what it says of the document, lines
};

/// @param end the last bytes of a file, from the start of an object
/// @param at how many stand before them
/// @return nothing if the form isn't this one
std::optional<PdfEnd> ReadPdfEnd(std::string_view end, std::size_t at);

} // namespace melkar
