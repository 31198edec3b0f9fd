#include <MelkarCommon/platform/cairo/streams.h>
#include <MelkarCommon/platform/pages/cairo_page.h>
#include <MelkarCommon/platform/pages/page_formats.h>

#include <cairo-pdf.h>

#include <cstdlib>
#include <ctime>

/// @file
/// PDF pages: how a document of them begins and ends.

namespace melkar {

namespace {

/// Builds that have to give the same bytes each time set the date in the environment.
std::optional<std::time_t> DateFromEnvironment() {
    const char* epoch = std::getenv("SOURCE_DATE_EPOCH");
    char* end = nullptr;
    const auto seconds = static_cast<std::time_t>(epoch != nullptr ? std::strtoll(epoch, &end, 10) : 0);
    return epoch != nullptr && end != epoch && *end == '\0' ? std::optional(seconds) : std::nullopt;
}

void SetInfo(cairo_surface_t* pdf, const DocumentInfo& info) {
    cairo_pdf_surface_set_metadata(pdf, CAIRO_PDF_METADATA_CREATOR, "MelkarCommon");
    if (!info.title.empty())
        cairo_pdf_surface_set_metadata(pdf, CAIRO_PDF_METADATA_TITLE, info.title.c_str());
    const std::optional<std::time_t> created = info.created ? info.created : DateFromEnvironment();
    std::tm date{};
    char text[sizeof "9999-12-31T23:59:59Z"];
    if (!created || gmtime_r(&*created, &date) == nullptr)
        return; // the present
    if (std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &date) != 0)
        cairo_pdf_surface_set_metadata(pdf, CAIRO_PDF_METADATA_CREATE_DATE, text);
}

CairoSurface MakeSurface(NewFile* file, const Sheet& sheet, const DocumentInfo& info) {
    CairoSurface pdf(cairo_pdf_surface_create_for_stream(WriteToFile, file, sheet.width, sheet.height));
    SetInfo(pdf.get(), info);
    return pdf;
}

/// Counts in device units from the corner of the room.
CairoContext MakeContext(cairo_surface_t* pdf, const Sheet& sheet, int dpi) {
    CairoContext cr(cairo_create(pdf));
    const double scale = double{kPointsPerInch} / dpi;
    cairo_scale(cr.get(), scale, scale);
    cairo_translate(cr.get(), sheet.left / kPointsPerInch * dpi, sheet.top / kPointsPerInch * dpi);
    return cr;
}

class PdfBackend final : public CairoPage {
public:
    PdfBackend(std::unique_ptr<NewFile> file, CairoSurface surface, CairoContext cr, const RECT& room, int dpi,
               bool isWholeSheet)
        : CairoPage(std::move(cr), room, dpi, isWholeSheet), m_file(std::move(file)), m_surface(std::move(surface)) {}
    ~PdfBackend() override {
        m_file->Abandon();
        cairo_surface_finish(m_surface.get()); // while there is a file to write to
    }

    bool BeginPage() override;
    void EndPage() override;
    bool Finish() override;
    void Abandon() override;

private:
    std::unique_ptr<NewFile> m_file;
    CairoSurface m_surface;
    int m_pages = 0; ///< begun
    bool m_hasEnded = false;
};

bool PdfBackend::BeginPage() {
    if (m_hasEnded)
        return false;
    EndPage();
    ++m_pages;
    OpenRoom();
    return true;
}

void PdfBackend::EndPage() {
    if (!HasRoom())
        return;
    CloseRoom();
    cairo_show_page(Context());
}

void PdfBackend::Abandon() {
    m_hasEnded = true;
    LeaveRoom();
    m_file->Abandon();
}

bool PdfBackend::Finish() {
    if (m_hasEnded)
        return false;
    m_hasEnded = true;
    EndPage();
    const cairo_status_t drawn = cairo_status(Context());
    cairo_surface_finish(m_surface.get());
    const cairo_status_t written = cairo_surface_status(m_surface.get());
    const cairo_status_t status = drawn != CAIRO_STATUS_SUCCESS ? drawn : written;
    const char* error = status != CAIRO_STATUS_SUCCESS ? cairo_status_to_string(status) : nullptr;
    return FinishPage(*m_file, PageFormat::Pdf, m_pages == 0 ? "no page" : error);
}

} // namespace

std::unique_ptr<PageFile> MakePdfPages(std::unique_ptr<NewFile> file, int width, int height, int dpi,
                                       const DocumentInfo& info) {
    const double inch = dpi;
    const Sheet sheet = info.sheet.value_or(Sheet{width / inch * kPointsPerInch, height / inch * kPointsPerInch, 0, 0});
    CairoSurface surface = MakeSurface(file.get(), sheet, info);
    CairoContext cr = MakeContext(surface.get(), sheet, dpi);
    return std::make_unique<PdfBackend>(std::move(file), std::move(surface), std::move(cr), RECT{0, 0, width, height},
                                        dpi, !info.sheet);
}

} // namespace melkar
