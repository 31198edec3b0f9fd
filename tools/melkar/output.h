#pragma once

#include <MelkarCommon/platform/surface.h>

#include <string>
#include <variant>
#include <vector>

/// @file
/// What comes out of the command, and where it goes.

namespace melkar::tool {

struct NoOutput {}; ///< only what is asked about the drawing
struct RecordOutput {};
struct PixelOutput {
    std::string format; ///< as `WritePicture` takes it
};
using Output = std::variant<NoOutput, RecordOutput, PixelOutput, PageFormat>;

/// A format of picture files.
struct Format {
    std::string suffix; ///< "png", of file names and for `--format`
    std::string says;
    Output output;
};

/// Those of pixels, as the library lists them, then those of pages.
const std::vector<Format>& Formats();

/// By the suffix, in any case; null if there is no such format.
const Format* FindFormat(std::string word);
const Format* FindFormatOfName(const std::string& path);

/// "png, svg or pdf", with something before each.
std::string FormatNames(const char* before = "", const char* between = ", ", const char* last = " or ");
/// For the end of a help.
std::string FormatList();

/// Tells that something can't be written, and the reason that the system gave for the last call, if it gave one.
/// @return 1, the exit code
int FailToWrite(const std::string& what);

/// To be called last. @return 0, or 1 after a message if something printed was lost
int FlushStandardOutput();

} // namespace melkar::tool
