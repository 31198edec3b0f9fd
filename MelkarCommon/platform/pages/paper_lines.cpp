#include <MelkarCommon/platform/pages/paper_lines.h>
#include <MelkarCommon/platform/seam/corners.h>

#include <iterator>

namespace melkar {

namespace {

bool IsAxisParallel(POINT from, POINT to) { return !IsSloped(from, to); }

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
};

/// The middle of a line through pixel 0: a whole width takes whole rows from 0 - width / 2.
double MiddleOf(double width) {
    const bool whole = width == std::floor(width);
    return whole ? width / 2 - std::floor(width / 2) : 0.5;
}

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

/// Adds what of a single segment is within the clip.
void AddSegment(std::vector<PaperLine>& lines, POINT from, POINT to, const RECT& clip, const Stroke& stroke) {
    if (IsAxisParallel(from, to)) {
        const Band whole = BandOf(from, to, stroke.width);
        const Band band = CutBand(whole, clip);
        if (band.Length() > 0)
            lines.push_back(
                {{band.At(band.start), band.At(band.end)}, stroke.phase + std::abs(band.start - whole.start)});
        return;
    }
    const PointD start{from.x + 0.5, from.y + 0.5};
    const PointD way{double{1} * to.x - from.x, double{1} * to.y - from.y};
    const LinePart part = PartWithin(start, way, clip, stroke.width);
    if (part.first >= part.last)
        return;
    const auto at = [&](double fraction) { return PointD{start.x + way.x * fraction, start.y + way.y * fraction}; };
    PaperLine line{{at(part.first), at(part.last)}, stroke.phase + std::hypot(way.x, way.y) * part.first};
    line.hasRoundEnds = true;
    lines.push_back(std::move(line));
}

bool AreNear(std::span<const POINT> points) {
    return std::all_of(points.begin(), points.end(), [](POINT p) { return IsNear(p); });
}

/// The end at `end` of a segment whose other end is `other`, `middle` of the line's pixel; an axis-parallel one ends at
/// the edge of its pixel.
PointD EndOf(POINT end, POINT other, double middle, bool isFirst) {
    PointD point{end.x + middle, end.y + middle};
    if (!IsAxisParallel(end, other))
        return point;
    const Band band = isFirst ? BandOf(end, other, 1) : BandOf(other, end, 1);
    (band.level ? point.x : point.y) = isFirst ? band.start : band.end;
    return point;
}

/// A path through the middles of its pixels.
PaperLine PathOf(const std::vector<POINT>& points, const Stroke& stroke) {
    const std::size_t last = points.size() - 1;
    std::size_t parallel = 0;
    for (std::size_t i = 1; i <= last; ++i)
        parallel += IsAxisParallel(points[i - 1], points[i]) ? 1 : 0;
    const double middle = parallel > 0 ? MiddleOf(stroke.width) : 0.5;
    PaperLine line;
    line.phase = stroke.phase;
    line.isClosed = points.size() > 3 && IsSamePoint(points[0], points[last]);
    line.hasRoundCorners = parallel < last;
    line.hasRoundEnds =
        !line.isClosed && !IsAxisParallel(points[0], points[1]) && !IsAxisParallel(points[last - 1], points[last]);
    for (const POINT& point : points)
        line.points.push_back({point.x + middle, point.y + middle});
    if (line.isClosed) {
        line.points.pop_back();
    } else {
        line.points[0] = EndOf(points[0], points[1], middle, true);
        line.points[last] = EndOf(points[last], points[last - 1], middle, false);
    }
    return line;
}

/// Whether the lines run side by side, a unit apart, all the way.
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

} // namespace

std::vector<PaperLine> LinesOnPaper(std::span<const POINT> points, const RECT& clip, const Stroke& stroke) {
    const std::vector<POINT> different = WithoutRepeats(points);
    std::vector<PaperLine> lines;
    if (different.size() > 2 && AreNear(different)) {
        lines.push_back(PathOf(different, stroke));
        return lines;
    }
    Stroke whole = stroke;
    whole.drawn = 0;
    ForEachSegment(different, whole,
                   [&](POINT from, POINT to, const Stroke& own) { AddSegment(lines, from, to, clip, own); });
    return lines;
}

std::optional<PaperLine> SeamBetween(std::span<const POINT> one, std::span<const POINT> other) {
    if (!AreNear(one) || !LieSideBySide(one, other))
        return std::nullopt;
    PaperLine seam;
    seam.hasRoundCorners = true;
    for (std::size_t i = 0; i < one.size(); ++i)
        seam.points.push_back({(one[i].x + other[i].x + 1) / 2.0, (one[i].y + other[i].y + 1) / 2.0});
    return seam;
}

} // namespace melkar
