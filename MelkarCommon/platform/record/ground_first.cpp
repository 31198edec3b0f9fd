#include <MelkarCommon/platform/record/ground_first.h>
#include <MelkarCommon/platform/record/recording_parts.h>

#include <algorithm>

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

/// What is left after the ground.
class Rest {
public:
    void Add(const RecordedOp& op) {
        // The ink of a text may reach beyond its box, but not beyond its clip.
        const bool isText = std::holds_alternative<TextOp>(op.verb);
        m_rooms.push_back(isText ? op.clip : ToRect(BoxOf(op)));
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

GroundFirst SortGroundFirst(const std::vector<RecordedOp>& ops) {
    GroundFirst sorted;
    Rest rest;
    for (const RecordedOp& op : ops) {
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
