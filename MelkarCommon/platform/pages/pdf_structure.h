#pragma once

#include <MelkarCommon/platform/page_words.h>
#include <MelkarCommon/platform/pages/pdf_end.h>

#include <cairo.h>

#include <string>
#include <vector>

/// @file
/// Internal. What the parts of a PDF document are, for programs that read aloud, and its bookmarks.

namespace melkar {

/// Marks parts by cairo's tags, one behind the other. A document of which nothing is told has none of it.
class PdfStructure {
public:
    /// A part begins, unless one is open. @param page from 1 @param area points from the top left corner of the sheet
    /// @param name of a bookmark; empty: none
    bool Begin(cairo_t* cr, PageRole role, int page, const Area& area, const std::string& name);
    /// @return false if none is open
    bool End(cairo_t* cr);
    /// What is to be said of the figure that was begun last; its title is a bookmark. @return false if there is none.
    bool Describe(const PageWords& words);
    bool IsEmpty() const { return m_parts.empty(); }
    /// Nothing more is drawn.
    void Finish(cairo_t* cr, cairo_surface_t* pdf);
    /// @param sheetHeight points
    DocumentWords Words(double sheetHeight) const;

private:
    struct Part {
        PageRole role;
        int page;
        Area area;
        std::string name;
        std::string text; ///< of a figure
    };

    void AddBookmarks(cairo_surface_t* pdf) const;

    std::vector<Part> m_parts;
    bool m_isOpen = false; ///< the last one
    std::string m_language;
};

} // namespace melkar
