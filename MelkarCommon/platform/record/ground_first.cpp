#include <MelkarCommon/platform/record/ground_first.h>
#include <MelkarCommon/platform/record/recording_parts.h>

#include <algorithm>
#include <climits>

namespace melkar {

namespace {

/// Each rectangle is held against all that was left before it. A chart leaves some dozens.
constexpr std::size_t kMostLeft = 512;

bool IsLevel(const StrokePolylineOp& lines) {
    return lines.points.size() == 2 && lines.stroke.drawn == 0 && !HasPattern(lines.stroke) &&
           !IsSloped(lines.points[0], lines.points[1]);
}

/// The fill that gives the same pixels.
std::optional<Fill> FillFor(const RecordedOp& op) {
    if (const auto* fill = std::get_if<Fill>(&op.verb))
        return *fill;
    const auto* lines = std::get_if<StrokePolylineOp>(&op.verb);
    if (lines == nullptr || !IsLevel(*lines))
        return std::nullopt;
    const RECT line = ToRect(BoxOf(op));
    return Fill{IsEmptyRect(op.clip) ? line : ClipBox(ToBox(line), op.clip), lines->stroke.color};
}

/// A room that what is drawn doesn't leave. Curves of a thousand corners are common, so that their lines are not looked
/// at one by one; the ink of a text may reach beyond its box, but not beyond its clip.
RECT RoomOf(const RecordedOp& op) {
    if (std::holds_alternative<TextOp>(op.verb))
        return op.clip;
    const auto* lines = std::get_if<StrokePolylineOp>(&op.verb);
    if (lines == nullptr || lines->points.size() == 0)
        return ToRect(BoxOf(op));
    RECT room{INT_MAX, INT_MAX, INT_MIN, INT_MIN};
    for (const POINT& point : lines->points)
        room = {std::min(room.left, point.x), std::min(room.top, point.y), std::max(room.right, point.x),
                std::max(room.bottom, point.y)};
    return Grown(room, WholeWidth(lines->stroke.width) / 2 + 2);
}

/// What is left after the ground.
class Rest {
public:
    explicit Rest(std::size_t most) { m_rooms.reserve(most); }

    void Add(const RecordedOp& op) {
        m_rooms.push_back(RoomOf(op));
        const auto* lines = std::get_if<StrokePolylineOp>(&op.verb);
        m_endsInLines = lines != nullptr && !HasPattern(lines->stroke);
    }

    /// Whether it makes no difference if the rectangle comes before all this. Lines close up with lines that follow at
    /// once: between them everything stays where it is.
    bool LetsPass(const RECT& rect) const {
        return !m_endsInLines && m_rooms.size() < kMostLeft &&
               std::none_of(m_rooms.begin(), m_rooms.end(), [&](const RECT& room) {
                   return room.left < rect.right && rect.left < room.right && room.top < rect.bottom &&
                          rect.top < room.bottom;
               });
    }

private:
    std::vector<RECT> m_rooms;
    bool m_endsInLines = false;
};

} // namespace

GroundFirst SortGroundFirst(std::span<const RecordedOp> ops) {
    GroundFirst sorted;
    sorted.ground.reserve(ops.size());
    sorted.rest.reserve(ops.size());
    Rest rest(ops.size());
    for (const RecordedOp& op : ops) {
        if (std::holds_alternative<CopyMark>(op.verb))
            continue;
        const std::optional<Fill> fill = FillFor(op);
        if (fill && rest.LetsPass(fill->rect)) {
            sorted.ground.push_back(*fill);
        } else {
            sorted.rest.push_back(&op);
            rest.Add(op);
        }
    }
    return sorted;
}

} // namespace melkar
