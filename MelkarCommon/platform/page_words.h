#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/types.h>

#include <string>
#include <vector>

/// @file
/// What a page says to those who can't see it.

/// A part of a page that can be pointed at.
struct PagePart {
    RECT area;        ///< device units
    std::string name; ///< UTF-8, a line
};

/// What a page says to those who can't see it. UTF-8.
struct PageWords {
    std::string title;           ///< a few words
    std::string description;     ///< a paragraph; empty: none
    std::string language;        ///< of both, such as "ja"; empty: not told
    std::vector<PagePart> parts; ///< in the order in which one walks from one to the next
};

/// Gives an SVG page a title and a description, at any time before it is deleted; the last ones count. It is a picture
/// to programs that read aloud. With parts it is one that can be walked: each has a name and can be reached by
/// keyboard, one after the other, and with the arrow keys where scripts run; what is drawn is not read then. @return
/// FALSE, with nothing changed, for what is no SVG page, and without memory
MELKAR_API BOOL SetPageWords(HDC page, const PageWords& words);
