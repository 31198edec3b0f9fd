#include <MelkarCommon/platform/pages/paper_lines.h>
#include <MelkarCommon/platform/seam/corners.h>

#include <iterator>
#include <utility>

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

/// A polyline and `copies` more of it, each `shift` from the one before.
struct Row {
    std::span<const POINT> points;
    POINT shift{0, 0};
    int copies = 0;
};

/// How far the second line is from the first if that is a unit all the way.
std::optional<POINT> UnitBetween(std::span<const POINT> one, std::span<const POINT> other) {
    if (one.size() != other.size() || one.size() < 2 || !AreNear(one) || !AreNear(other))
        return std::nullopt;
    const POINT shift{other[0].x - one[0].x, other[0].y - one[0].y};
    const auto isShifted = [&](POINT a, POINT b) { return b.x - a.x == shift.x && b.y - a.y == shift.y; };
    const bool isUnit = std::abs(shift.x) + std::abs(shift.y) == 1;
    return isUnit && std::equal(one.begin(), one.end(), other.begin(), isShifted) ? std::optional(shift) : std::nullopt;
}

/// Takes the first row off the lines.
Row TakeRow(std::span<const std::vector<POINT>>& lines) {
    Row row{lines[0]};
    std::size_t taken = 1;
    for (; taken < lines.size(); ++taken) {
        const std::optional<POINT> shift = UnitBetween(lines[taken - 1], lines[taken]);
        if (!shift || (row.copies > 0 && !IsSamePoint(*shift, row.shift)))
            break;
        row.shift = *shift;
        ++row.copies;
    }
    lines = lines.subspan(taken);
    return row;
}

/// The row of each segment, if the row has copies and slopes; else the row itself.
std::vector<Row> StraightParts(const Row& row) {
    const bool isSloped = std::adjacent_find(row.points.begin(), row.points.end(), IsSloped) != row.points.end();
    if (row.copies == 0 || !isSloped)
        return {row};
    std::vector<Row> parts;
    for (std::size_t i = 1; i < row.points.size(); ++i)
        parts.push_back({row.points.subspan(i - 1, 2), row.shift, row.copies});
    return parts;
}

/// Rows of straight lines each of which begins where another ends. They go one way across their shift, so that nothing
/// of the outline is enclosed twice.
class RowChain {
    static bool AreAlike(const Row& a, const Row& b) { return a.copies == b.copies && IsSamePoint(a.shift, b.shift); }

public:
    /// @return false if the row doesn't go on here
    bool Add(const Row& row) {
        if (row.points.size() != 2 || row.copies == 0)
            return false;
        const bool isUpright = row.shift.x == 0;
        const auto across = [&](POINT p) { return isUpright ? p.x : p.y; };
        const bool isBackward = across(row.points[1]) < across(row.points[0]);
        const POINT from = row.points[isBackward ? 1 : 0];
        const POINT to = row.points[isBackward ? 0 : 1];
        if (across(from) == across(to) || (!m_rows.empty() && !AreAlike(row, m_rows[0])))
            return false;
        if (m_rows.empty())
            m_edge = {from, to};
        else if (IsSamePoint(m_edge.back(), from))
            m_edge.push_back(to);
        else if (IsSamePoint(m_edge.front(), to))
            m_edge.insert(m_edge.begin(), from);
        else
            return false;
        m_rows.push_back(row);
        return true;
    }

    std::vector<PaperLine> OnPaper(const RECT& clip, const Stroke& stroke) const {
        const auto isSloped = [](const Row& row) { return IsSloped(row.points[0], row.points[1]); };
        if (std::any_of(m_rows.begin(), m_rows.end(), isSloped))
            return {Outline(stroke)};
        std::vector<PaperLine> lines; // whole pixels, whose edges meet
        for (const Row& row : m_rows)
            AddEach(lines, row, clip, stroke);
        return lines;
    }

    static void AddEach(std::vector<PaperLine>& lines, const Row& row, const RECT& clip, const Stroke& stroke) {
        std::vector<POINT> points(row.points.begin(), row.points.end());
        for (int copy = 0; copy <= row.copies; ++copy) {
            for (PaperLine& line : LinesOnPaper(points, clip, stroke))
                lines.push_back(std::move(line));
            for (POINT& point : points)
                point = {point.x + row.shift.x, point.y + row.shift.y};
        }
    }

private:
    /// There along the first lines, back along the last ones.
    PaperLine Outline(const Stroke& stroke) const {
        const auto isLevel = [](const Row& row) { return IsAxisParallel(row.points[0], row.points[1]); };
        const double middle = std::any_of(m_rows.begin(), m_rows.end(), isLevel) ? MiddleOf(stroke.width) : 0.5;
        const PointD back{middle + m_rows[0].shift.x * m_rows[0].copies, middle + m_rows[0].shift.y * m_rows[0].copies};
        PaperLine outline;
        outline.isClosed = outline.hasRoundCorners = true;
        outline.filling = PolygonFilling{stroke.color};
        for (const POINT& corner : m_edge)
            outline.points.push_back({corner.x + middle, corner.y + middle});
        std::for_each(m_edge.rbegin(), m_edge.rend(), [&](const POINT& corner) {
            outline.points.push_back({corner.x + back.x, corner.y + back.y});
        });
        return outline;
    }

    std::vector<Row> m_rows;
    std::vector<POINT> m_edge; ///< of the first lines
};

bool IsSamePath(std::span<const POINT> one, std::span<const POINT> other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), IsSamePoint);
}

/// The end at `end` of a line that goes on at `other`, from the edge through `end` on. The first pixel belongs to the
/// line, the last one doesn't.
std::vector<PointD> EndOnEdge(POINT end, POINT other, double middle, double width, bool isFirst) {
    const bool isLevel = end.y == other.y;
    const double edge = EndOf(end, other, middle, isFirst).x;
    const double x = isLevel ? edge + (other.x > end.x ? width : -width) / 2 : edge;
    const PointD onEdge{x, static_cast<double>(end.y)};
    if (!isLevel && !isFirst)
        return {onEdge};
    return {onEdge, {x, end.y + middle}};
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

std::vector<PaperLine> RowsOnPaper(std::span<const std::vector<POINT>> lines, const RECT& clip, const Stroke& stroke) {
    std::vector<PaperLine> paper;
    RowChain chain;
    const auto finish = [&] {
        for (PaperLine& line : std::exchange(chain, {}).OnPaper(clip, stroke))
            paper.push_back(std::move(line));
    };
    while (!lines.empty()) {
        const Row row = TakeRow(lines);
        for (const Row& part : StraightParts(row)) {
            if (chain.Add(part))
                continue;
            finish();
            if (!chain.Add(part))
                RowChain::AddEach(paper, part, clip, stroke);
        }
    }
    finish();
    return paper;
}

std::optional<PaperLine> FilledOutline(const PolygonShape& polygon, Color color,
                                       std::span<const std::vector<POINT>> lines, const Stroke& stroke) {
    if (lines.empty() || stroke.drawn > 0 || stroke.width < 1)
        return std::nullopt;
    const std::vector<POINT>& points = lines[0];
    if (!IsSamePath(points, WithoutRepeats(polygon.points)) || points.size() < 3 ||
        points.front().y != points.back().y || !AreNear(points))
        return std::nullopt;
    if (lines.size() > 1 && UnitBetween(lines[0], lines[1]))
        return std::nullopt;
    PaperLine line = PathOf(points, stroke);
    line.filling = PolygonFilling{color, polygon.winding};
    if (line.isClosed)
        return line;
    const double middle = line.points[1].y - points[1].y;
    std::vector<PointD> path = EndOnEdge(points[0], points[1], middle, stroke.width, true);
    const std::vector<PointD> end = EndOnEdge(points.back(), points[points.size() - 2], middle, stroke.width, false);
    path.insert(path.end(), line.points.begin() + 1, line.points.end() - 1);
    path.insert(path.end(), end.rbegin(), end.rend());
    line.points = std::move(path);
    line.hasRoundEnds = false;
    return line;
}

} // namespace melkar
