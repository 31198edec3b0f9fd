#include <MelkarCommon/support/platform/cairo/shapes.h>
#include <MelkarCommon/support/platform/pages/page_lines.h>
#include <MelkarCommon/support/platform/seam/shape.h>

#include <iterator>
#include <vector>

namespace melkar {

namespace {

constexpr int kFar = 1 << 16; ///< twice the largest page; cairo's coordinates wrap at 2^23 points

/// Where an axis-parallel line lies: along it from `start` to `end`, which may be less; across it `width` about
/// `middle`. All are edges and not pixels.
struct Band {
    double start;
    double end;
    double middle;
    double width;
    bool level;

    double Length() const { return std::abs(end - start); }
    PointD At(double along) const { return level ? PointD{along, middle} : PointD{middle, along}; }
    void Rectangle(cairo_t* cr) const {
        const double low = std::min(start, end);
        const double side = middle - width / 2;
        if (level)
            cairo_rectangle(cr, low, side, Length(), width);
        else
            cairo_rectangle(cr, side, low, width, Length());
    }
};

/// The middle of a line through pixel 0: a whole width takes whole rows from 0 - width / 2.
double MiddleOf(double width) {
    const bool whole = width == std::floor(width);
    return whole ? width / 2 - std::floor(width / 2) : 0.5;
}

bool IsAxisParallel(POINT from, POINT to) { return from.x == to.x || from.y == to.y; }
bool AreSame(POINT one, POINT other) { return one.x == other.x && one.y == other.y; }

/// The last pixel is left out, the first one is not, whichever way the line goes.
Band BandOf(POINT from, POINT to, double width) {
    const bool level = from.y == to.y;
    const double start = level ? from.x : from.y;
    const double end = level ? to.x : to.y;
    const double edge = end > start ? 0 : 1;
    return {start + edge, end + edge, (level ? from.y : from.x) + MiddleOf(width), width, level};
}

/// The part of a band in the clip, of no length if there is none.
Band CutBand(const Band& band, const RECT& clip) {
    const double low = band.level ? clip.left : clip.top;
    const double high = band.level ? clip.right : clip.bottom;
    const double near = band.level ? clip.top : clip.left;
    const double far = band.level ? clip.bottom : clip.right;
    Band cut = band;
    cut.start = std::clamp(band.start, low, high);
    cut.end = std::clamp(band.end, low, high);
    if (band.middle + band.width / 2 <= near || band.middle - band.width / 2 >= far)
        cut.end = cut.start;
    return cut;
}

void SetDashes(cairo_t* cr, const Stroke& stroke, double phase) {
    const double lengths[] = {stroke.on, stroke.off};
    cairo_set_dash(cr, lengths, static_cast<int>(std::size(lengths)), PhaseInPeriod(stroke, phase));
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT); // others would close short gaps
}

/// Strokes the context's path, with pattern and gaps.
void StrokePath(cairo_t* cr, const Stroke& stroke, double phase) {
    cairo_set_line_width(cr, stroke.width);
    cairo_set_dash(cr, nullptr, 0, 0);
    if (HasPattern(stroke)) {
        if (stroke.gaps) {
            SetSourceColor(cr, stroke.gapColor);
            cairo_stroke_preserve(cr);
        }
        SetDashes(cr, stroke, phase);
    }
    SetSourceColor(cr, stroke.color);
    cairo_stroke(cr);
}

void StrokeBand(cairo_t* cr, const Band& band, const Stroke& stroke, double phase) {
    cairo_new_path(cr);
    if (!HasPattern(stroke)) {
        SetSourceColor(cr, stroke.color);
        band.Rectangle(cr);
        cairo_fill(cr);
        return;
    }
    if (stroke.gaps) {
        SetSourceColor(cr, stroke.gapColor);
        band.Rectangle(cr);
        cairo_fill(cr);
    }
    const PointD start = band.At(band.start);
    const PointD end = band.At(band.end);
    cairo_move_to(cr, start.x, start.y);
    cairo_line_to(cr, end.x, end.y);
    Stroke dashes = stroke;
    dashes.gaps = false;
    StrokePath(cr, dashes, phase);
}

void StrokeSegment(cairo_t* cr, const RECT& clip, POINT from, POINT to, const Stroke& stroke) {
    if (!IsAxisParallel(from, to))
        return StrokeWideLineOn(cr, clip, from, to, stroke);
    const Band whole = BandOf(from, to, stroke.width);
    const Band band = CutBand(whole, clip);
    if (band.Length() > 0)
        StrokeBand(cr, band, stroke, stroke.phase + std::abs(band.start - whole.start));
}

std::vector<POINT> WithoutRepetitions(std::span<const POINT> points) {
    std::vector<POINT> different;
    std::unique_copy(points.begin(), points.end(), std::back_inserter(different), AreSame);
    return different;
}

bool IsNear(std::span<const POINT> points) {
    return std::all_of(points.begin(), points.end(),
                       [](POINT p) { return p.x > -kFar && p.x < kFar && p.y > -kFar && p.y < kFar; });
}

/// Through the middles of its pixels; an axis-parallel line at an end begins and ends at the edge of its pixel.
class LinePath {
public:
    LinePath(std::vector<POINT> points, double width) : m_points(std::move(points)) {
        std::size_t parallel = 0;
        for (std::size_t i = 1; i < m_points.size(); ++i)
            parallel += IsAxisParallel(m_points[i - 1], m_points[i]) ? 1 : 0;
        m_middle = parallel > 0 ? MiddleOf(width) : 0.5;
        m_isRectilinear = parallel + 1 == m_points.size();
        m_isClosed = m_points.size() > 3 && AreSame(m_points.front(), m_points.back());
    }

    cairo_line_join_t Join() const { return m_isRectilinear ? CAIRO_LINE_JOIN_MITER : CAIRO_LINE_JOIN_ROUND; }
    bool HasRoundEnds() const {
        const std::size_t last = m_points.size() - 1;
        return !m_isClosed && !IsAxisParallel(m_points[0], m_points[1]) &&
               !IsAxisParallel(m_points[last - 1], m_points[last]);
    }
    void Trace(cairo_t* cr) const {
        const std::size_t last = m_points.size() - 1;
        cairo_new_path(cr);
        Add(cr, m_isClosed ? Middle(0) : End(0, 1));
        for (std::size_t i = 1; i < last; ++i)
            Add(cr, Middle(i));
        if (m_isClosed)
            cairo_close_path(cr);
        else
            Add(cr, End(last, last - 1));
    }

private:
    static void Add(cairo_t* cr, PointD p) { cairo_line_to(cr, p.x, p.y); }
    PointD Middle(std::size_t i) const { return {m_points[i].x + m_middle, m_points[i].y + m_middle}; }
    /// The end at `i` of the line between it and its neighbour.
    PointD End(std::size_t i, std::size_t neighbour) const {
        PointD end = Middle(i);
        if (!IsAxisParallel(m_points[i], m_points[neighbour]))
            return end;
        const Band band =
            i < neighbour ? BandOf(m_points[i], m_points[neighbour], 1) : BandOf(m_points[neighbour], m_points[i], 1);
        (band.level ? end.x : end.y) = i < neighbour ? band.start : band.end;
        return end;
    }

    std::vector<POINT> m_points;
    double m_middle = 0.5;
    bool m_isClosed = false;
    bool m_isRectilinear = false;
};

} // namespace

void StrokePolylineOn(cairo_t* cr, const RECT& clip, std::span<const POINT> points, const Stroke& stroke) {
    std::vector<POINT> different = WithoutRepetitions(points);
    if (different.size() < 2)
        return;
    if (different.size() == 2 || !IsNear(different)) {
        Stroke whole = stroke;
        whole.drawn = 0;
        ForEachSegment(different, whole,
                       [&](POINT from, POINT to, const Stroke& own) { StrokeSegment(cr, clip, from, to, own); });
        return;
    }
    const LinePath path(std::move(different), stroke.width);
    path.Trace(cr);
    cairo_set_line_cap(cr, path.HasRoundEnds() ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
    cairo_set_line_join(cr, path.Join());
    StrokePath(cr, stroke, stroke.phase);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
}

bool LieSideBySide(std::span<const POINT> one, std::span<const POINT> other) {
    if (one.size() != other.size() || one.size() < 2)
        return false;
    const std::int64_t dx = std::int64_t{other[0].x} - one[0].x;
    const std::int64_t dy = std::int64_t{other[0].y} - one[0].y;
    const auto isShifted = [&](POINT a, POINT b) {
        return std::int64_t{b.x} - a.x == dx && std::int64_t{b.y} - a.y == dy;
    };
    const bool isSloped = std::adjacent_find(one.begin(), one.end(), IsAxisParallel) == one.end();
    return std::abs(dx) + std::abs(dy) == 1 && isSloped && std::equal(one.begin(), one.end(), other.begin(), isShifted);
}

void CoverSeamOn(cairo_t* cr, std::span<const POINT> one, std::span<const POINT> other, const Stroke& stroke) {
    if (!IsNear(one))
        return;
    cairo_new_path(cr);
    for (std::size_t i = 0; i < one.size(); ++i)
        cairo_line_to(cr, (one[i].x + other[i].x + 1) / 2.0, (one[i].y + other[i].y + 1) / 2.0);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
    StrokePath(cr, stroke, 0);
}

} // namespace melkar
