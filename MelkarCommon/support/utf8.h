#pragma once

#include <MelkarCommon/platform/cstring.h>

#include <string>

/// @file
/// Internal. Texts for whoever reads UTF-8.

namespace melkar {

/// A text as valid UTF-8, read as it is for painting. @param charset of bytes that aren't UTF-8
std::string Utf8Of(const CString& text, int charset);

} // namespace melkar
