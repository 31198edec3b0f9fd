#pragma once

#include <MelkarCommon/platform/record/line_points.h>
#include <MelkarCommon/platform/seam/backend.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <variant>
#include <vector>

/// @file
/// Internal. A record: the verbs of the seam as a list. They are a variant so that a new verb doesn't compile until it
/// is played, measured and written.

namespace melkar {

struct FillShapeOp {
    Shape shape;
    Color color;
};
struct StrokeShapeOp {
    Shape shape;
    Stroke stroke;
};
struct StrokePolylineOp {
    LinePoints points;
    Stroke stroke;
};
static_assert(sizeof(StrokePolylineOp) <= sizeof(StrokeShapeOp), "few points make no operation larger");
struct TextOp {
    std::shared_ptr<const TextLayout> layout;
    std::size_t line;
    POINT at;
    int escapement;
    Color color;
};
struct BlitOp {
    RECT target;
    RECT source;
    DWORD operation;
    std::shared_ptr<const std::vector<std::uint32_t>> pixels; ///< copy of the source rectangle, tightly packed
};
/// No drawing: the operations behind it were copied from another record.
struct CopyMark {
    RECT target;
    RECT source;
};

struct RecordedOp {
    template <class Verb> RecordedOp(Verb drawn, const RECT& within = {0, 0, 0, 0})
        : verb(std::move(drawn)), clip(within) {} // NOLINT

    std::variant<Fill, FillShapeOp, StrokeShapeOp, StrokePolylineOp, TextOp, BlitOp, CopyMark> verb;
    RECT clip; ///< nothing beyond it is drawn; empty: no clip
};

/// What becomes of the masks of texts: kept, they bind a record to the thread that draws it.
enum class Masks : std::uint8_t { Drop, Keep };
/// What becomes of operations of which nothing shows any longer, since a fill covers all of the surface.
enum class Covered : std::uint8_t { Drop, Keep };

/// Keeps the verbs in `ops`, which someone else owns and which outlives the backend.
std::unique_ptr<Backend> MakeRecordingBackend(std::vector<RecordedOp>& ops, int width, int height,
                                              Masks masks = Masks::Drop, Covered covered = Covered::Drop);
/// Lets the masks go: from now on any thread may play it.
void DropMasks(std::vector<RecordedOp>& ops);

/// The record as text, one operation a line, one segment a line of a polyline.
std::string FormatRecording(const std::vector<RecordedOp>& ops);
/// Those of one operation.
std::vector<std::string> LinesOf(const RecordedOp& op);
/// What the lines of an operation stand for: the segments of a polyline that show, else itself.
std::vector<RecordedOp> PartsOf(const RecordedOp& op);

/// Plays the part of a record that lies in `source` onto `to`, so that `source`'s corner lands on `at`; clipped to that
/// part. The clip of `to` is `whole` afterwards.
void Replay(std::span<const RecordedOp> ops, Backend& to, const RECT& source, POINT at, const RECT& whole);
/// The same for pixels, on which the order shows only where operations meet: rectangles and level lines that stand on
/// nothing but such come first, as one verb.
void ReplayOnPixels(std::span<const RecordedOp> ops, Backend& to, const RECT& source, POINT at, const RECT& whole);

} // namespace melkar
