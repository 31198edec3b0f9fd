#include <MelkarCommon/platform/pages/pdf_structure.h>

#include <cairo-pdf.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace melkar {

namespace {

constexpr const char* kWhole = "Document"; // one over all pages, or readers take none of it
constexpr const char* kTags[] = {"H1", "H2", "P", "Figure"};

const char* TagOf(PageRole role) { return kTags[static_cast<std::size_t>(role)]; }

} // namespace

bool PdfStructure::Begin(cairo_t* cr, PageRole role, int page, const Area& area, const std::string& name) {
    if (m_isOpen)
        return false;
    if (m_parts.empty())
        cairo_tag_begin(cr, kWhole, nullptr);
    m_parts.push_back({role, page, area, name, ""});
    m_isOpen = true;
    cairo_tag_begin(cr, TagOf(role), nullptr);
    return true;
}

bool PdfStructure::End(cairo_t* cr) {
    if (!m_isOpen)
        return false;
    m_isOpen = false;
    cairo_tag_end(cr, TagOf(m_parts.back().role));
    return true;
}

bool PdfStructure::Describe(const PageWords& words) {
    const auto figure =
        std::find_if(m_parts.rbegin(), m_parts.rend(), [](const Part& part) { return part.role == PageRole::Figure; });
    if (figure == m_parts.rend())
        return false;
    figure->name = words.title;
    figure->text = words.title + (words.title.empty() || words.description.empty() ? "" : "\n") + words.description;
    m_language = words.language;
    return true;
}

void PdfStructure::Finish(cairo_t* cr, cairo_surface_t* pdf) {
    if (IsEmpty())
        return;
    cairo_tag_end(cr, kWhole);
    const auto named =
        std::count_if(m_parts.begin(), m_parts.end(), [](const Part& part) { return !part.name.empty(); });
    if (named > 1) // one alone leads nowhere
        AddBookmarks(pdf);
}

/// Those of a title's parts lie below it.
void PdfStructure::AddBookmarks(cairo_surface_t* pdf) const {
    int title = CAIRO_PDF_OUTLINE_ROOT;
    for (const Part& part : m_parts) {
        if (part.name.empty())
            continue;
        const bool isTitle = part.role == PageRole::Title;
        const std::string place = "page=" + std::to_string(part.page) + " pos=[" +
                                  std::to_string(std::lround(part.area.left)) + " " +
                                  std::to_string(std::lround(part.area.top)) + "]";
        const int bookmark = cairo_pdf_surface_add_outline(
            pdf, isTitle ? CAIRO_PDF_OUTLINE_ROOT : title, part.name.c_str(), place.c_str(),
            isTitle ? CAIRO_PDF_OUTLINE_FLAG_OPEN : static_cast<cairo_pdf_outline_flags_t>(0));
        title = isTitle ? bookmark : title;
    }
}

DocumentWords PdfStructure::Words(double sheetHeight) const {
    DocumentWords words{m_language, {}};
    for (const Part& part : m_parts)
        if (part.role == PageRole::Figure)
            words.figures.push_back(
                {part.text,
                 {part.area.left, sheetHeight - part.area.bottom, part.area.right, sheetHeight - part.area.top}});
    return words;
}

} // namespace melkar
