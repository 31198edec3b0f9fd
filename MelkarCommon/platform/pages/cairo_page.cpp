#include <MelkarCommon/platform/files/log_sink.h>
#include <MelkarCommon/platform/pages/cairo_page.h>
#include <MelkarCommon/platform/seam/corners.h>
#include <MelkarCommon/platform/text/text_on_cairo.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <vector>

namespace melkar {

namespace {

/// As drawing expects a context, which can come back to what it was, and to here.
void Prepare(cairo_t* cr) {
    cairo_save(cr);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
    cairo_save(cr);
}

/// The clip is what it was at first: that may be a host's.
void ResetClip(cairo_t* cr) {
    cairo_restore(cr);
    cairo_save(cr);
}

/// Of what a context draws on, in one of its units, where it is stretched most.
double ScaleOf(cairo_t* cr) {
    cairo_matrix_t matrix;
    double across = 1;
    double down = 1;
    cairo_get_matrix(cr, &matrix);
    cairo_surface_get_device_scale(cairo_get_group_target(cr), &across, &down);
    return std::max(std::hypot(matrix.xx, matrix.yx), std::hypot(matrix.xy, matrix.yy)) * std::max(across, down);
}

/// A copy of the source: what is painted is looked at only when the page ends.
CairoSurface MakeImage(const PixelBuffer& pixels, const RECT& source, DWORD operation) {
    const int width = source.right - source.left;
    CairoSurface image(cairo_image_surface_create(operation == SRCCOPY ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32,
                                                  width, source.bottom - source.top));
    const std::vector<Color> paper = OnPaper(pixels, source, operation);
    unsigned char* row = cairo_image_surface_get_data(image.get());
    const int stride = cairo_image_surface_get_stride(image.get());
    for (auto from = paper.begin(); row != nullptr && from != paper.end(); from += width, row += stride)
        std::copy_n(from, width, reinterpret_cast<std::uint32_t*>(row));
    cairo_surface_mark_dirty(image.get());
    return image;
}

void Trace(cairo_t* cr, const PaperLine& line) {
    cairo_new_path(cr);
    for (const PointD& point : line.points)
        cairo_line_to(cr, point.x, point.y);
    if (line.isClosed)
        cairo_close_path(cr);
    cairo_set_line_join(cr, line.hasRoundCorners ? CAIRO_LINE_JOIN_ROUND : CAIRO_LINE_JOIN_MITER);
    cairo_set_line_cap(cr, line.hasRoundEnds ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
}

/// While it lives, a context counts in points. For strokes in any other unit cairo writes a matrix, and the colours
/// anew behind it. A context that is turned, or stretched one way, goes on in its own units: points know no way.
class Points {
public:
    explicit Points(cairo_t* cr) : m_cr(cr) {
        cairo_get_matrix(cr, &m_outer);
        if (m_outer.xy != 0 || m_outer.yx != 0 || m_outer.xx != m_outer.yy || m_outer.xx <= 0)
            return;
        m_scale = m_outer.xx;
        cairo_identity_matrix(cr);
    }
    Points(const Points&) = delete;
    Points& operator=(const Points&) = delete;
    ~Points() { cairo_set_matrix(m_cr, &m_outer); }

    double Of(double units) const { return units * m_scale; }

private:
    double m_scale = 1;
    cairo_t* m_cr;
    cairo_matrix_t m_outer;
};

/// Strokes the context's path, with pattern and gaps.
void StrokePath(cairo_t* cr, const Stroke& stroke, double phase) {
    const Points points(cr);
    cairo_set_line_width(cr, points.Of(stroke.width));
    cairo_set_dash(cr, nullptr, 0, 0);
    if (HasPattern(stroke)) {
        if (stroke.gaps) {
            SetSourceColor(cr, stroke.gapColor);
            cairo_stroke_preserve(cr);
        }
        const double lengths[] = {points.Of(stroke.on), points.Of(stroke.off)};
        cairo_set_dash(cr, lengths, static_cast<int>(std::size(lengths)), points.Of(PhaseInPeriod(stroke, phase)));
        cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT); // others would close short gaps
    }
    SetSourceColor(cr, stroke.color);
    cairo_stroke(cr);
}

/// What a straight line along an axis covers; empty for any other.
Area BarOf(const PaperLine& line, const Stroke& stroke) {
    Area bar;
    if (line.points.size() != 2 || HasPattern(stroke))
        return bar;
    bar.Add(line.points[0]);
    bar.Add(line.points[1]);
    if (bar.top == bar.bottom)
        return {bar.left, bar.top - stroke.width / 2, bar.right, bar.bottom + stroke.width / 2};
    if (bar.left == bar.right)
        return {bar.left - stroke.width / 2, bar.top, bar.right + stroke.width / 2, bar.bottom};
    return {};
}

constexpr int kMostOnPage = 1 << 17;    ///< shapes and texts: 100 MB
constexpr double kPictureDpi = 300;     ///< of what is too much
constexpr double kMostPixels = 1 << 24; ///< 64 MB

/// Pixels in a device unit of a picture of the room: a whole number where it can be, so that edges stay sharp.
double PictureScale(const RECT& room, int dpi) {
    const double scale = std::min(kPictureDpi / dpi, std::sqrt(kMostPixels / (double{1} * room.right * room.bottom)));
    return scale > 1 ? std::floor(scale) : scale;
}

/// What was drawn before shows through it. Readers enlarge and reduce colours and opacity apart, so it starts as the
/// palest white: black behind edges would be a fringe.
CairoContext MakePicture(const RECT& room, double scale) {
    const CairoSurface image(cairo_image_surface_create(CAIRO_FORMAT_ARGB32,
                                                        static_cast<int>(std::ceil(room.right * scale)),
                                                        static_cast<int>(std::ceil(room.bottom * scale))));
    CairoContext cr(cairo_create(image.get()));
    cairo_set_source_rgba(cr.get(), 1, 1, 1, 1.0 / 255);
    cairo_paint(cr.get());
    cairo_scale(cr.get(), scale, scale);
    Prepare(cr.get());
    return cr;
}

} // namespace

CairoPage::CairoPage(CairoContext cr, const RECT& room, int dpi)
    : m_cr(std::move(cr)), m_room(room), m_dpi(dpi), m_scale(ScaleOf(m_cr.get())) {
    Prepare(m_cr.get());
}

void CairoPage::OpenRoom() {
    m_page = m_room;
    SetClip(m_page);
}

void CairoPage::CloseRoom() {
    FinishLines();
    EndPicture();
    LeaveRoom();
}

void CairoPage::LeaveRoom() {
    m_pen = {};
    m_page = {0, 0, 0, 0};
    SetClip(m_page);
}

void CairoPage::FinishLines() { m_pen.Lift(m_clip, Ink()); }

void CairoPage::Count() {
    if (++m_count == kMostOnPage)
        BeginPicture();
}

void CairoPage::BeginPicture() {
    Report(("page: what comes behind " + std::to_string(kMostOnPage) + " shapes and texts is a picture").c_str());
    m_picture = MakePicture(m_room, PictureScale(m_room, m_dpi));
    ClipTo(m_clip);
}

/// Lays the picture on the page.
void CairoPage::EndPicture() {
    const CairoContext picture = std::move(m_picture);
    m_count = 0;
    if (picture == nullptr)
        return;
    const double scale = PictureScale(m_room, m_dpi);
    ResetClip(Cr());
    cairo_save(Cr());
    cairo_scale(Cr(), 1 / scale, 1 / scale);
    cairo_set_source_surface(Cr(), cairo_get_target(picture.get()), 0, 0);
    cairo_paint(Cr());
    cairo_restore(Cr());
}

void CairoPage::SetClip(const RECT& clip) {
    FinishLines();
    m_clip = ClipBox(ToBox(clip), m_page);
    ResetClip(Cr());
    ClipTo(m_clip);
}

/// Also to all of a sheet: without a clip cairo would take what fills that for its beginning, and forget the parts of a
/// document that began before.
void CairoPage::ClipTo(const RECT& clip) {
    Rectangle(clip);
    cairo_clip(Cr());
}

void CairoPage::Rectangle(const RECT& r) {
    Rectangle(Area{double{1} * r.left, double{1} * r.top, double{1} * r.right, double{1} * r.bottom});
}

void CairoPage::Rectangle(const Area& area) {
    cairo_new_path(Cr());
    cairo_rectangle(Cr(), area.left, area.top, area.right - area.left, area.bottom - area.top);
}

void CairoPage::FillRect(const RECT& rect, Color color) {
    const RECT visible = ClipBox(ToBox(rect), m_clip);
    if (!Shows() || IsEmptyRect(visible))
        return;
    SetSourceColor(Cr(), color);
    Rectangle(visible);
    cairo_fill(Cr());
}

void CairoPage::FillFramed(const RECT& outer, int width, Color frame, std::optional<Color> ground) {
    const std::optional<Area> middle = FrameOnPaper(outer, width, m_clip);
    if (!middle)
        return Backend::FillFramed(outer, width, frame, ground);
    if (!Shows())
        return;
    Rectangle(*middle);
    if (ground) {
        SetSourceColor(Cr(), *ground);
        cairo_fill_preserve(Cr());
    }
    Stroke stroke;
    stroke.color = frame;
    stroke.width = width;
    cairo_set_line_join(Cr(), CAIRO_LINE_JOIN_MITER);
    StrokePath(Cr(), stroke, 0);
    cairo_set_line_join(Cr(), CAIRO_LINE_JOIN_ROUND);
}

void CairoPage::FillShape(const Shape& shape, Color color) {
    if (!Shows())
        return;
    if (const auto* polygon = std::get_if<PolygonShape>(&shape))
        m_pen.Fill(*polygon, color);
    else
        FillShapeOn(Cr(), m_clip, shape, color, ReachOnPaper(m_dpi));
}

void CairoPage::StrokeShape(const Shape& shape, const Stroke& stroke) {
    if (Shows())
        StrokeShapeOn(Cr(), m_clip, shape, OnPaper(stroke, m_dpi));
}

void CairoPage::StrokePolyline(std::span<const POINT> points, const Stroke& stroke) {
    if (IsEmptyRect(m_clip))
        return;
    m_pen.Stroke(points, m_clip, OnPaper(stroke, m_dpi), Ink());
}

void CairoPage::StrokeLine(const PaperLine& line, const Stroke& stroke) {
    Count();
    if (const Area bar = BarOf(line, stroke); !bar.IsEmpty()) {
        SetSourceColor(Cr(), stroke.color);
        Rectangle(bar);
        cairo_fill(Cr());
        return;
    }
    Trace(Cr(), line);
    if (line.filling) {
        SetSourceColor(Cr(), line.filling->color);
        cairo_set_fill_rule(Cr(), line.filling->winding ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD);
        cairo_fill_preserve(Cr());
    }
    StrokePath(Cr(), stroke, line.phase);
    cairo_set_line_join(Cr(), CAIRO_LINE_JOIN_ROUND);
}

void CairoPage::PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at, int escapement,
                          Color color, const RECT& clip) {
    const RECT visible = ClipBox(ToBox(clip), m_clip);
    if (!Shows() || layout == nullptr || IsEmptyRect(visible) || !IsNear(at))
        return;
    // Larger than FreeType can scale, at a dpi of 1 or 2: such a font fails, the whole page with it, and later pages.
    constexpr double kLargestOnPaper = 1 << 15;
    if (layout->lineHeight * m_scale > kLargestOnPaper)
        return;
    cairo_save(Cr());
    if (!Covers(visible, PixelsAround(LineInk(*layout, line, at.x, at.y, escapement), 0)))
        ClipTo(visible);
    cairo_new_path(Cr());
    SetSourceColor(Cr(), color);
    ShowLine(Cr(), *layout, line, at.x, at.y, escapement);
    cairo_restore(Cr());
}

void CairoPage::Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) {
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

} // namespace melkar
