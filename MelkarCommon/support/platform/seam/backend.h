#pragma once

#include <MelkarCommon/support/platform/surface.h>
#include <MelkarCommon/support/platform/text/text_engine.h>
#include <MelkarCommon/support/platform/types.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

/// @file
/// Internal. The narrow seam under the drawing calls: few verbs, three backends (pixels, page, recording). All
/// rules and all state lie above it, so that the same drawing code gives a picture, a page and a record.

namespace melkar {

using Color = std::uint32_t; ///< opaque 0xFFRRGGBB

constexpr Color ToColor(COLORREF c) {
    return 0xFF000000U | ((c & 0xFFU) << 16U) | (c & 0xFF00U) | ((c >> 16U) & 0xFFU);
}

struct PointD {
    double x;
    double y;
};

/// A closed shape: a polygon, or an ellipse, or a slice of one.
struct Shape {
    enum class Kind : std::uint8_t { Polygon, Ellipse, Slice };
    Kind kind = Kind::Polygon;
    std::vector<POINT> points; ///< polygon
    bool winding = false;      ///< polygon: non-zero winding instead of even-odd
    PointD center{0, 0};       ///< ellipse, slice
    PointD radius{0, 0};       ///< ellipse, slice
    double from = 0;           ///< slice: start angle, radians, counter-clockwise from the right
    double sweep = 0;          ///< slice: 0 to 2 pi, counter-clockwise
};

/// Lengths in device units. An empty pattern is a solid line; else `on` and `off` alternate.
struct Stroke {
    Color color = 0xFF000000U;
    double width = 1;
    double on = 0;
    double off = 0;
    double phase = 0;  ///< distance already gone along the pattern
    bool gaps = false; ///< the gaps are painted in `gapColor`
    Color gapColor = 0xFFFFFFFFU;
    /// Of a polyline: segments at its front that stand on the surface already. They count for the corner at their end
    /// and for the pattern; drawing them again is harmless where nothing blends.
    std::size_t drawn = 0;

    bool operator==(const Stroke&) const = default;
    bool IsSolid() const { return on <= 0 || off <= 0; }
};

/// A picture in memory, 0xFFRRGGBB; `stride` in pixels.
struct PixelBuffer {
    std::uint32_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    int stride = 0;
};

/// Rows of a picture that were filled over their whole width but aren't written yet: most of them are about to be
/// covered by a second fill (a canvas on its ground), and writing each pixel once is what a redraw is measured by.
struct PendingFill {
    Color color = 0;
    int top = 0;
    int bottom = 0; ///< the same as `top` if nothing is pending

    bool Any() const { return top < bottom; }
};

/// True if the operation is known and the source is a rectangle within the picture: anything else draws nothing.
constexpr bool CanBlit(const PixelBuffer& pixels, const RECT& source, DWORD operation) {
    const bool known = operation == SRCCOPY || operation == SRCPAINT || operation == SRCAND;
    return known && pixels.pixels != nullptr && source.left >= 0 && source.top >= 0 && source.left < source.right &&
           source.top < source.bottom && source.right <= pixels.width && source.bottom <= pixels.height;
}

class Backend {
public:
    Backend() = default;
    virtual ~Backend() = default;
    Backend(const Backend&) = delete;
    Backend& operator=(const Backend&) = delete;

    /// Makes the picture's memory show everything that was drawn.
    virtual void Flush() {}
    /// Nothing outside of `clip` changes from now on; the whole surface at the start.
    virtual void SetClip(const RECT& clip) = 0;
    /// left <= right and top <= bottom, or nothing is filled.
    virtual void FillRect(const RECT& rect, Color color) = 0;
    virtual void FillShape(const Shape& shape, Color color) = 0;
    /// The outline, solid, centred on the shape's edge.
    virtual void StrokeShape(const Shape& shape, const Stroke& stroke) = 0;
    /// The open path through two points or more, leaving out the last one; where it returns to the first, it closes.
    /// Coordinates name pixels: a horizontal line of width 1 at y covers the pixels of row y; a wider one of width w
    /// covers w rows from y - w / 2. The pattern runs on round the corners.
    virtual void StrokePolyline(std::span<const POINT> points, const Stroke& stroke) = 0;
    /// One line of a layout, its top-left corner at `at`, turned by `escapement`, clipped to `clip` as well.
    virtual void PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at, int escapement,
                           Color color, const RECT& clip) = 0;
    /// `source` rectangle of `pixels` onto `target`, which may differ in size (SRCCOPY smooth, others nearest).
    /// The source rectangle lies within the picture.
    virtual void Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) = 0;
};

/// One recorded verb; which members count depends on the verb.
struct RecordedOp {
    enum class Verb : std::uint8_t { FillRect, FillShape, StrokeShape, StrokePolyline, Text, Blit, Copy };
    Verb verb = Verb::FillRect;
    RECT rect{};               ///< fill; blit and copy target
    RECT source{};             ///< blit and copy
    RECT clip{};               ///< nothing beyond it is drawn; empty: no clip
    POINT from{};              ///< text position
    std::vector<POINT> points; ///< polyline
    Shape shape{};
    Stroke stroke{};
    Color color = 0;
    int escapement = 0;
    DWORD operation = 0;
    std::shared_ptr<const TextLayout> layout;
    std::size_t line = 0;
    std::shared_ptr<std::vector<std::uint32_t>> pixels; ///< blit: copy of the source rectangle, tightly packed
};

/// Draws on a picture in memory that someone else owns and that outlives the backend. With `pending`, which lives as
/// long as the picture, wide fills may wait there; `Flush` comes before anyone looks at the memory.
std::unique_ptr<Backend> MakePixelBackend(const PixelBuffer& pixels, PendingFill* pending = nullptr);

/// Keeps the verbs in `ops`, which someone else owns and which outlives the backend.
std::unique_ptr<Backend> MakeRecordingBackend(std::vector<RecordedOp>& ops, int width, int height);

/// The record as text, one operation a line.
std::string FormatRecording(const std::vector<RecordedOp>& ops);

/// Plays the part of a record that lies in `source` onto `to`, so that `source`'s corner lands on (x, y); clipped
/// to that part. The clip of `to` is `whole` afterwards.
void Replay(const std::vector<RecordedOp>& ops, Backend& to, const RECT& source, int x, int y, const RECT& whole);

/// A page file in the making.
class PageFile : public Backend {
public:
    /// Finishes the file and gives it its name. @return false, with a log line and no file, if it couldn't be written.
    virtual bool Finish() = 0;
};

/// Null, with a log line, if the file can't be made.
std::unique_ptr<PageFile> MakePageBackend(const char* path, PageFormat format, int width, int height, int dpi);

// Pixels in memory: buffers and whole-picture copies.

/// Memory for width x height pixels, content undefined; null without it. A few freed buffers are kept by each
/// thread, so that a redraw finds warm memory.
std::uint32_t* TakePixels(int width, int height);
void GivePixelsBack(std::uint32_t* pixels, int width, int height);

/// Reads an image file; `pixels` stays null if it can't be read. Scaled to width x height unless both are 0.
/// The memory comes from `TakePixels`.
PixelBuffer LoadImageFile(const char* path, int width, int height);

} // namespace melkar
