#include <MelkarCommon/support/platform/cairo/handles.h>
#include <MelkarCommon/support/platform/cairo/shapes.h>
#include <MelkarCommon/support/platform/files.h>
#include <MelkarCommon/support/platform/files/new_file.h>
#include <MelkarCommon/support/platform/files/report.h>
#include <MelkarCommon/support/platform/pages/page_file.h>
#include <MelkarCommon/support/platform/pages/page_lines.h>
#include <MelkarCommon/support/platform/seam/box.h>
#include <MelkarCommon/support/platform/text/text_on_cairo.h>

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <vector>

/// @file
/// Pages: everything stays a vector, and covers the area that it would cover on pixels.

namespace melkar {

namespace {

constexpr double kPointsPerInch = 72;
constexpr double kSvgUnitsPerInch = 96;

const char* NameOf(PageFormat format) { return format == PageFormat::Pdf ? "PDF" : "SVG"; }

void LogNotWritten(PageFormat format, const std::string& path, const char* reason) {
    LogText((std::string(NameOf(format)) + " file [" + path + "] not written: " + reason).c_str());
}

cairo_status_t WriteBytes(void* file, const unsigned char* bytes, unsigned int count) {
    return static_cast<NewFile*>(file)->Write(bytes, count) ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
}

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

CairoSurface MakeSurface(NewFile* file, PageFormat format, const Sheet& sheet, const DocumentInfo& info) {
    if (format == PageFormat::Pdf) {
        CairoSurface pdf(cairo_pdf_surface_create_for_stream(WriteBytes, file, sheet.width, sheet.height));
        SetInfo(pdf.get(), info);
        return pdf;
    }
    constexpr double kScale = kSvgUnitsPerInch / kPointsPerInch;
    CairoSurface svg(
        cairo_svg_surface_create_for_stream(WriteBytes, file, sheet.width * kScale, sheet.height * kScale));
    cairo_svg_surface_set_document_unit(svg.get(), CAIRO_SVG_UNIT_PX);
    return svg;
}

/// A pixel that acts on paper like the operation on pixels, its channels multiplied by its alpha. Paper has no bits
/// to combine: "and" is exact on white and for grey sources, "or" on black, where masked pictures go.
Color ToPaper(Color pixel, DWORD operation) {
    const Color red = (pixel >> 16U) & 0xFFU;
    const Color green = (pixel >> 8U) & 0xFFU;
    const Color blue = pixel & 0xFFU;
    if (operation == SRCPAINT)
        return (pixel & 0xFFFFFFU) | std::max({red, green, blue}) << 24U;
    const Color least = std::min({red, green, blue});
    return (0xFF000000U | (pixel & 0xFFFFFFU)) - least * 0x01010101U;
}

/// A copy of the source: what is painted is looked at only when the page ends. Blend modes of cairo won't do: for a
/// single one the whole SVG file becomes one image.
CairoSurface MakeImage(const PixelBuffer& pixels, const RECT& source, DWORD operation) {
    const int width = source.right - source.left;
    CairoSurface image(cairo_image_surface_create(operation == SRCCOPY ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32,
                                                  width, source.bottom - source.top));
    unsigned char* row = cairo_image_surface_get_data(image.get());
    const int stride = cairo_image_surface_get_stride(image.get());
    for (int y = source.top; row != nullptr && y < source.bottom; ++y, row += stride) {
        const std::uint32_t* from = PixelAt(pixels, source.left, y);
        auto* to = reinterpret_cast<std::uint32_t*>(row);
        if (operation == SRCCOPY)
            std::copy_n(from, width, to);
        else
            std::transform(from, from + width, to, [=](Color pixel) { return ToPaper(pixel, operation); });
    }
    cairo_surface_mark_dirty(image.get());
    return image;
}

class PageBackend final : public PageFile {
public:
    PageBackend(std::unique_ptr<NewFile> file, PageFormat format, int width, int height, int dpi,
                const DocumentInfo& info)
        : m_file(std::move(file)), m_format(format), m_room{0, 0, width, height}, m_isWholeSheet(!info.sheet),
          m_thinnest(dpi / (2 * kPointsPerInch)),
          m_scale((format == PageFormat::Pdf ? kPointsPerInch : kSvgUnitsPerInch) / dpi) {
        const double inch = dpi;
        const Sheet sheet =
            info.sheet.value_or(Sheet{width / inch * kPointsPerInch, height / inch * kPointsPerInch, 0, 0});
        m_surface = MakeSurface(m_file.get(), format, sheet, info);
        m_cr.reset(cairo_create(m_surface.get()));
        cairo_scale(Cr(), m_scale, m_scale);
        cairo_translate(Cr(), sheet.left / kPointsPerInch * inch, sheet.top / kPointsPerInch * inch);
        cairo_set_line_join(Cr(), CAIRO_LINE_JOIN_ROUND);
    }
    ~PageBackend() override { m_file->Abandon(); }

    bool BeginPage() override;
    void EndPage() override;
    bool Finish() override;
    void Abandon() override;

    void SetClip(const RECT& clip) override;
    void FillRect(const RECT& rect, Color color) override;
    void FillShape(const Shape& shape, Color color) override {
        constexpr double kScreenPixel = 1.5; // half points: pages are looked at on screens, too
        if (Shows())
            FillShapeOn(Cr(), m_clip, shape, color, std::max(1.0, kScreenPixel * m_thinnest));
    }
    void StrokeShape(const Shape& shape, const Stroke& stroke) override {
        if (Shows())
            StrokeShapeOn(Cr(), m_clip, shape, OnPaper(stroke));
    }
    void StrokePolyline(std::span<const POINT> points, const Stroke& stroke) override;
    void PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at, int escapement,
                   Color color, const RECT& clip) override;
    void Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) override;

private:
    cairo_t* Cr() { return m_cr.get(); }
    /// Whether anything is drawn at all; between two pages the clip is empty.
    bool Shows() {
        m_lastLines.clear();
        return !IsEmptyRect(m_clip);
    }
    /// What is thinner than half a point gets lost in print.
    Stroke OnPaper(const Stroke& stroke) const {
        constexpr double kWidest = 32768;
        Stroke bounded = stroke;
        bounded.width = stroke.width > m_thinnest ? std::min(stroke.width, kWidest) : m_thinnest;
        return bounded;
    }
    void ClipTo(const RECT& clip) {
        if (m_isWholeSheet && clip.left <= 0 && clip.top <= 0 && clip.right >= m_room.right &&
            clip.bottom >= m_room.bottom)
            return;
        Rectangle(clip);
        cairo_clip(Cr());
    }
    void Rectangle(const RECT& r) {
        cairo_new_path(Cr());
        cairo_rectangle(Cr(), r.left, r.top, double{1} * r.right - r.left, double{1} * r.bottom - r.top);
    }

    std::unique_ptr<NewFile> m_file;
    PageFormat m_format;
    RECT m_room;             ///< to draw on
    bool m_isWholeSheet;     ///< the room leaves no margin
    RECT m_page{0, 0, 0, 0}; ///< the room while a page is open, else empty
    RECT m_clip{0, 0, 0, 0};
    int m_pages = 0; ///< begun
    bool m_hasEnded = false;
    double m_thinnest;              ///< half a point, in device units
    double m_scale;                 ///< cairo's units for a device unit
    std::vector<POINT> m_lastLines; ///< drawn last, if nothing else was since
    Stroke m_lastStroke;
    CairoSurface m_surface;
    CairoContext m_cr;
};

bool PageBackend::BeginPage() {
    const bool isFull = m_format == PageFormat::Svg && m_pages > 0;
    if (m_hasEnded || isFull)
        return false;
    EndPage();
    ++m_pages;
    m_page = m_room;
    SetClip(m_page);
    return true;
}

void PageBackend::EndPage() {
    if (IsEmptyRect(m_page))
        return;
    cairo_show_page(Cr());
    m_page = {0, 0, 0, 0};
    SetClip(m_page);
}

void PageBackend::Abandon() {
    m_hasEnded = true;
    m_page = {0, 0, 0, 0};
    SetClip(m_page);
    m_file->Abandon();
}

bool PageBackend::Finish() {
    if (m_hasEnded)
        return false;
    m_hasEnded = true;
    EndPage();
    const cairo_status_t drawn = cairo_status(Cr());
    cairo_surface_finish(m_surface.get());
    const cairo_status_t written = cairo_surface_status(m_surface.get());
    const cairo_status_t status = drawn != CAIRO_STATUS_SUCCESS ? drawn : written;
    if (status != CAIRO_STATUS_SUCCESS || m_pages == 0)
        m_file->Abandon(); // a write error that came first is kept
    const int error = m_file->Commit();
    if (error != 0)
        LogNotWritten(m_format, m_file->Path(),
                      error != ECANCELED ? std::strerror(error)
                      : m_pages == 0     ? "no page"
                                         : cairo_status_to_string(status));
    return error == 0;
}

void PageBackend::SetClip(const RECT& clip) {
    m_clip = ClipBox(ToBox(clip), m_page);
    cairo_reset_clip(Cr());
    ClipTo(m_clip);
}

void PageBackend::FillRect(const RECT& rect, Color color) {
    const RECT visible = ClipBox(ToBox(rect), m_clip);
    if (!Shows() || IsEmptyRect(visible))
        return;
    SetSourceColor(Cr(), color);
    Rectangle(visible);
    cairo_fill(Cr());
}

void PageBackend::StrokePolyline(std::span<const POINT> points, const Stroke& stroke) {
    constexpr double kThin = 2; // wider ones overlap when they are a unit apart
    if (IsEmptyRect(m_clip))
        return;
    const Stroke printed = OnPaper(stroke);
    StrokePolylineOn(Cr(), m_clip, points, printed);
    if (printed == m_lastStroke && printed.width < kThin && printed.IsSolid() && LieSideBySide(m_lastLines, points))
        CoverSeamOn(Cr(), m_lastLines, points, printed);
    m_lastLines.assign(points.begin(), points.end());
    m_lastStroke = printed;
}

void PageBackend::PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at, int escapement,
                            Color color, const RECT& clip) {
    constexpr int kFar = 1 << 16; // twice the largest page; cairo's coordinates wrap at 2^23 points
    const RECT visible = ClipBox(ToBox(clip), m_clip);
    if (!Shows() || layout == nullptr || IsEmptyRect(visible) || at.x < -kFar || at.x > kFar || at.y < -kFar ||
        at.y > kFar)
        return;
    // Larger than FreeType can scale, at a dpi of 1 or 2: such a font fails, the whole page with it, and later pages.
    constexpr double kLargestOnPaper = 1 << 15;
    if (layout->lineHeight * m_scale > kLargestOnPaper)
        return;
    cairo_save(Cr());
    ClipTo(visible);
    cairo_new_path(Cr());
    SetSourceColor(Cr(), color);
    ShowLine(Cr(), *layout, line, at.x, at.y, escapement);
    cairo_restore(Cr());
}

void PageBackend::Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) {
    const RECT visible = ClipBox(ToBox(target), m_clip);
    if (!Shows() || IsEmptyRect(visible) || !CanBlit(pixels, source, operation))
        return;
    const CairoSurface image = MakeImage(pixels, source, operation);
    cairo_save(Cr());
    Rectangle(visible);
    cairo_translate(Cr(), target.left, target.top);
    cairo_scale(Cr(), (double{1} * target.right - target.left) / (source.right - source.left),
                (double{1} * target.bottom - target.top) / (source.bottom - source.top));
    cairo_set_source_surface(Cr(), image.get(), 0, 0);
    cairo_pattern_set_extend(cairo_get_source(Cr()), CAIRO_EXTEND_PAD); // no fringe where the edge is resampled
    cairo_pattern_set_filter(cairo_get_source(Cr()), operation == SRCCOPY ? CAIRO_FILTER_GOOD : CAIRO_FILTER_NEAREST);
    cairo_fill(Cr());
    cairo_restore(Cr());
}

} // namespace

std::unique_ptr<PageFile> MakePageFile(const char* path, PageFormat format, int width, int height, int dpi,
                                       const DocumentInfo& info) {
    const bool sensible = path != nullptr && *path != '\0' && width > 0 && height > 0 && dpi > 0;
    if (!sensible) {
        LogNotWritten(format, path != nullptr ? path : "", std::strerror(EINVAL));
        return nullptr;
    }
    const std::string resolved = ResolvePath(path);
    std::unique_ptr<NewFile> file = NewFile::Create(resolved);
    if (file == nullptr) {
        LogNotWritten(format, resolved, std::strerror(errno));
        return nullptr;
    }
    return std::make_unique<PageBackend>(std::move(file), format, width, height, dpi, info);
}

} // namespace melkar
