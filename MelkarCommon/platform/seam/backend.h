#pragma once

#include <MelkarCommon/platform/seam/color.h>
#include <MelkarCommon/platform/seam/pixel_buffer.h>
#include <MelkarCommon/platform/seam/shape.h>
#include <MelkarCommon/platform/seam/stroke.h>
#include <MelkarCommon/platform/types.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <span>

/// @file
/// Internal. The narrow seam under the drawing calls: few verbs, a backend for each kind of surface. All rules and all
/// state lie above it, so that the same drawing code gives a picture, a page and a record.

namespace melkar {

struct TextLayout;

struct Fill {
    RECT rect;
    Color color;
};

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
    /// One after the other.
    virtual void FillRects(std::span<const Fill> fills);
    /// The frame along the inside of `outer`, which isn't empty, `width` wide, and what it leaves in `ground`, if that
    /// is given. As fills, where a frame is no more than these.
    virtual void FillFramed(const RECT& outer, int width, Color frame, std::optional<Color> ground);
    virtual void FillShape(const Shape& shape, Color color) = 0;
    /// The outline, solid, centred on the shape's edge.
    virtual void StrokeShape(const Shape& shape, const Stroke& stroke) = 0;
    /// The open path through two points or more, leaving out the last one; where it returns to the first, it closes.
    /// Corners are whole: square between axis-parallel lines, else round.
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

} // namespace melkar
