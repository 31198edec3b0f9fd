#pragma once

#include <MelkarCommon/platform/seam/area.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// Internal. What cairo has no call for, put behind the PDF file that it wrote: a reader takes the last version of an
/// object, which is how the format itself wants files to be changed.

namespace melkar {

/// A figure for those who can't see it.
struct FigureWords {
    std::string text; ///< UTF-8; empty: it keeps to its own texts
    Area area;        ///< points from the bottom left corner of its page
};

/// What a document says beside what is drawn.
struct DocumentWords {
    std::string language;             ///< such as "ja"; empty: not told
    std::vector<FigureWords> figures; ///< in the order in which they were begun
};

/// @param end the last bytes of the file, with all objects that say what is drawn @param at how many bytes stand before
/// them @return what is to be written behind; empty, if the file isn't of the form that is understood
std::string AdditionTo(std::string_view end, std::size_t at, const DocumentWords& words);

} // namespace melkar
