#pragma once

#include <string>
#include <string_view>

/// @file
/// Internal. Texts as a PDF file has them outside its pages.

namespace melkar {

/// An object of the file that reads as this text. @param utf8 valid
std::string PdfText(std::string_view utf8);

} // namespace melkar
