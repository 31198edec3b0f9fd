#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/types.h>

#include <cstdint>
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

/// Gives a page a title and a description, at any time before it is deleted; the last ones count. It is a picture to
/// programs that read aloud. With parts an SVG page is one that can be walked: each has a name and can be reached by
/// keyboard, one after the other, and with the arrow keys where scripts run; what is drawn is not read then. On a
/// printer's page the figure gets them that was begun last, and the title is a bookmark. @return FALSE, with nothing
/// changed, for what is no page, between documents, for a printer's document without a figure, and without memory
MELKAR_API BOOL SetPageWords(HDC page, const PageWords& words);

/// What a part of a printed page is to programs that read aloud.
enum class PageRole : std::uint8_t {
    Title,     ///< a heading above all others
    Heading,   ///< of what follows
    Paragraph, ///< of text
    Figure,    ///< a chart or a picture, which `SetPageWords` describes
};

/// Begins a part of a printer's page, up to `EndPagePart` or the end of the page. What stands in no part isn't read, as
/// a page number. Graphs are figures by themselves. @param page the printer's @param role what stands there @param area
/// where, device units @param bookmark that leads there, UTF-8; null or empty: none @return FALSE, with nothing begun,
/// on other surfaces, between pages, within another part, and without memory
MELKAR_API BOOL BeginPagePart(HDC page, PageRole role, const RECT& area, const char* bookmark = nullptr);
/// @return FALSE if no part has begun
MELKAR_API BOOL EndPagePart(HDC page);

/// Gives a printer's document a title for its readers, UTF-8, in place of its name, which stays that of the job.
/// @return FALSE, with nothing changed, for other surfaces, between documents, and without memory
MELKAR_API BOOL SetDocumentTitle(HDC printer, const char* title);

namespace melkar {

/// A part of a printer's page for one scope; none where another has begun.
class ScopedPagePart {
public:
    /// Arguments as for `BeginPagePart`.
    ScopedPagePart(HDC page, PageRole role, const RECT& area, const char* bookmark = nullptr)
        : m_page(BeginPagePart(page, role, area, bookmark) ? page : nullptr) {}
    ~ScopedPagePart() { EndPagePart(m_page); }
    ScopedPagePart(const ScopedPagePart&) = delete;
    ScopedPagePart& operator=(const ScopedPagePart&) = delete;

private:
    HDC m_page;
};

} // namespace melkar
