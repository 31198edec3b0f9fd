#pragma once

#include <MelkarCommon/platform/seam/area.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// Internal. The end of a PDF file, in place of the one that cairo wrote: with what cairo has no call for, and small.
/// cairo takes 4 kB there for each page of a report, and they are much alike.

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

/// @param end the last bytes of the file, from the start of an object, with all objects that say what is drawn
/// @param at how many bytes stand before them
/// @return what is to stand there instead; empty if the file isn't of the form that is understood
std::string EndWith(const DocumentWords& words, std::string_view end, std::size_t at);

} // namespace melkar
