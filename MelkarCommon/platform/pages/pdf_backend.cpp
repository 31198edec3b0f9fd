#include <MelkarCommon/platform/cairo/streams.h>
#include <MelkarCommon/platform/files/log_sink.h>
#include <MelkarCommon/platform/pages/cairo_page.h>
#include <MelkarCommon/platform/pages/page_formats.h>
#include <MelkarCommon/platform/pages/pdf_structure.h>

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

/// Where cairo writes.
struct Written {
    std::unique_ptr<NewFile> file;
    std::size_t count = 0; ///< bytes that went there
    bool isEnding = false; ///< the rest is kept
    std::string end{};
};

/// For C: nothing is thrown.
cairo_status_t WriteOrKeep(void* to, const unsigned char* bytes, unsigned int count) noexcept {
    auto& written = *static_cast<Written*>(to);
    if (!written.isEnding) {
        written.count += count;
        return WriteToFile(written.file.get(), bytes, count);
    }
    try {
        written.end.append(reinterpret_cast<const char*>(bytes), count);
        return CAIRO_STATUS_SUCCESS;
    } catch (...) {
        return CAIRO_STATUS_NO_MEMORY;
    }
}

CairoSurface MakeSurface(Written& written, const Sheet& sheet, const DocumentInfo& info) {
    CairoSurface pdf(cairo_pdf_surface_create_for_stream(WriteOrKeep, &written, sheet.width, sheet.height));
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
    PdfBackend(std::unique_ptr<Written> written, CairoSurface surface, CairoContext cr, const RECT& room, int dpi,
               double sheetHeight)
        : CairoPage(std::move(cr), room, dpi), m_written(std::move(written)), m_surface(std::move(surface)),
          m_sheetHeight(sheetHeight) {}
    ~PdfBackend() override {
        m_written->file->Abandon();
        cairo_surface_finish(m_surface.get()); // while there is a file to write to
    }

    bool BeginPage() override;
    void EndPage() override;
    bool Finish() override;
    void Abandon() override;
    bool SetWords(const PageWords& words) override { return !m_hasEnded && m_structure.Describe(words); }
    bool BeginPart(PageRole role, const RECT& area, const std::string& name) override;
    bool EndPart() override;
    bool SetTitle(const std::string& title) override;

private:
    Area PointsOf(const RECT& area);
    void WriteEnd();

    std::unique_ptr<Written> m_written;
    CairoSurface m_surface;
    PdfStructure m_structure;
    double m_sheetHeight; ///< points
    int m_pages = 0;      ///< begun
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
    FinishLines();
    if (IsBlank()) { // of such a page cairo would forget the parts, and which words belong to which of the others
        OpenRoom();
        FillRect({0, 0, 1, 1}, kWhitePixel);
    }
    CloseRoom();
    m_structure.End(Context());
    cairo_show_page(Context());
}

void PdfBackend::Abandon() {
    m_hasEnded = true;
    LeaveRoom();
    m_written->file->Abandon();
}

bool PdfBackend::Finish() {
    if (m_hasEnded)
        return false;
    m_hasEnded = true;
    EndPage();
    m_structure.Finish(Context(), m_surface.get());
    const cairo_status_t drawn = cairo_status(Context());
    m_written->isEnding = true;
    cairo_surface_finish(m_surface.get());
    const cairo_status_t written = cairo_surface_status(m_surface.get());
    const cairo_status_t status = drawn != CAIRO_STATUS_SUCCESS ? drawn : written;
    if (status == CAIRO_STATUS_SUCCESS)
        WriteEnd();
    const char* error = status != CAIRO_STATUS_SUCCESS ? cairo_status_to_string(status) : nullptr;
    return FinishPage(*m_written->file, PageFormat::Pdf, m_pages == 0 ? "no page" : error);
}

void PdfBackend::WriteEnd() {
    const std::string packed = EndWith(m_structure.Words(m_sheetHeight), m_written->end, m_written->count);
    if (packed.empty() && !m_structure.IsEmpty())
        Report("PDF file: its figures go without a description, since this cairo writes them in a form unknown here");
    const std::string& end = packed.empty() ? m_written->end : packed;
    m_written->file->Write(end.data(), end.size());
}

/// From the top left corner of the sheet.
Area PdfBackend::PointsOf(const RECT& area) {
    Area points;
    for (PointD corner : {PointD{double{1} * area.left, double{1} * area.top},
                          PointD{double{1} * area.right, double{1} * area.bottom}}) {
        cairo_user_to_device(Context(), &corner.x, &corner.y);
        points.Add(corner);
    }
    return points;
}

bool PdfBackend::BeginPart(PageRole role, const RECT& area, const std::string& name) {
    if (!HasRoom())
        return false;
    FinishLines();
    return m_structure.Begin(Context(), role, m_pages, PointsOf(area), name);
}

bool PdfBackend::EndPart() {
    FinishLines();
    return m_structure.End(Context());
}

bool PdfBackend::SetTitle(const std::string& title) {
    if (!m_hasEnded)
        cairo_pdf_surface_set_metadata(m_surface.get(), CAIRO_PDF_METADATA_TITLE, title.c_str());
    return !m_hasEnded;
}

} // namespace

std::unique_ptr<PageFile> MakePdfPages(std::unique_ptr<NewFile> file, int width, int height, int dpi,
                                       const DocumentInfo& info) {
    const double inch = dpi;
    const Sheet sheet = info.sheet.value_or(Sheet{width / inch * kPointsPerInch, height / inch * kPointsPerInch, 0, 0});
    auto written = std::make_unique<Written>(Written{std::move(file)});
    CairoSurface surface = MakeSurface(*written, sheet, info);
    CairoContext cr = MakeContext(surface.get(), sheet, dpi);
    return std::make_unique<PdfBackend>(std::move(written), std::move(surface), std::move(cr),
                                        RECT{0, 0, width, height}, dpi, sheet.height);
}

} // namespace melkar
