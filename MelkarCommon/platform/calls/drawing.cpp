#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/pixels/pixel_backend.h>
#include <MelkarCommon/platform/pixels/pixel_memory.h>
#include <MelkarCommon/platform/seam/box.h>
#include <MelkarCommon/platform/surfaces/strokes.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <utility>

using namespace melkar;

namespace {

constexpr std::size_t kMostOps = 1 << 20; ///< of a record; one of a graph has some hundreds

RECT Ordered(int left, int top, int right, int bottom) {
    return {std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom)};
}

/// Grows (or, below 0, shrinks) by `by` on every side.
RECT Grown(const RECT& r, int by) {
    const Box box = ToBox(r);
    return ToRect(Box{box.left - by, box.top - by, box.right + by, box.bottom + by});
}

void Fill(HDC surface, const RECT& rect, COLORREF color) {
    if (IsEmptyRect(rect))
        return;
    if (Backend* backend = surface->Drawing())
        backend->FillRect(rect, ToColor(color));
}

/// The frame between two rectangles, the inner one within the outer one.
void FillFrame(HDC surface, const RECT& outer, const RECT& inner, COLORREF color) {
    if (IsEmptyRect(inner))
        return Fill(surface, outer, color);
    Fill(surface, {outer.left, outer.top, outer.right, inner.top}, color);
    Fill(surface, {outer.left, inner.bottom, outer.right, outer.bottom}, color);
    Fill(surface, {outer.left, inner.top, inner.left, inner.bottom}, color);
    Fill(surface, {inner.right, inner.top, outer.right, inner.bottom}, color);
}

/// The four edges of a rectangle in a dash or dot pattern, each pixel once.
void StrokeFrame(HDC surface, const RECT& r) {
    const POINT corners[] = {
        {r.left, r.top}, {r.right - 1, r.top}, {r.right - 1, r.bottom - 1}, {r.left, r.bottom - 1}, {r.left, r.top}};
    if (Backend* backend = surface->Drawing())
        backend->StrokePolyline(corners, StrokeOf(*surface, *surface->pen));
}

/// The angle, in the ellipse's own units, at which the ray from `apex`, which lies within it, through (x, y) leaves it.
double RadialAngle(const EllipseShape& ellipse, PointD apex, int x, int y) {
    const auto& [center, radius] = ellipse;
    const PointD start{(apex.x - center.x) / radius.x, (center.y - apex.y) / radius.y};
    const PointD way{(x - apex.x) / radius.x, (apex.y - y) / radius.y};
    const double length = std::hypot(way.x, way.y);
    if (!(length > 0))
        return 0;
    const PointD unit{way.x / length, way.y / length};
    const double along = start.x * unit.x + start.y * unit.y;
    const double distance = std::sqrt(std::max(0.0, 1 - start.x * start.x - start.y * start.y + along * along)) - along;
    return std::atan2(start.y + distance * unit.y, start.x + distance * unit.x);
}

EllipseShape EllipseIn(const RECT& box) {
    return {{(double{1} * box.left + box.right) / 2, (double{1} * box.top + box.bottom) / 2},
            {(double{1} * box.right - box.left) / 2, (double{1} * box.bottom - box.top) / 2}};
}

EllipseShape Shrunk(const EllipseShape& ellipse, double by) {
    return {ellipse.center, {std::max(0.0, ellipse.radius.x - by), std::max(0.0, ellipse.radius.y - by)}};
}
SliceShape Shrunk(const SliceShape& slice, double by) {
    return {Shrunk(slice.whole, by), slice.from, slice.sweep, slice.apex};
}

/// Fills with the brush and outlines with the pen, whose line stays inside the shape.
template <class Round> BOOL DrawRound(HDC surface, const Round& shape) {
    Backend* backend = surface->Drawing();
    if (!backend)
        return FALSE;
    const bool filled = !surface->brush->hollow;
    const bool outlined = surface->pen->style != PS_NULL;
    if (filled)
        backend->FillShape(shape, ToColor(surface->brush->color));
    if (!outlined || (filled && surface->pen->color == surface->brush->color))
        return TRUE;
    Stroke stroke = StrokeOf(*surface, *surface->pen);
    stroke.on = stroke.off = 0;
    backend->StrokeShape(Shrunk(shape, stroke.width / 2), stroke);
    return TRUE;
}

/// The part of a copy that lies within the source picture; the target shrinks in proportion.
struct Copy {
    RECT target;
    RECT source;
};

/// One axis of a copy: the span `from`..`to` of the source, cut to 0..limit, and the target span with it. A span beside
/// the picture becomes empty as it is: at the edge of an int it has no width to scale by.
void CutSpan(int& from, int& to, int& targetFrom, int& targetTo, int limit) {
    const int cutFrom = std::max(from, 0);
    const int cutTo = std::min(to, limit);
    if (cutFrom >= cutTo) {
        to = from;
        return;
    }
    const double scale = (double{1} * targetTo - targetFrom) / (double{1} * to - from);
    targetTo = NearestInt(targetFrom + std::llround((double{1} * cutTo - from) * scale));
    targetFrom = NearestInt(targetFrom + std::llround((double{1} * cutFrom - from) * scale));
    from = cutFrom;
    to = cutTo;
}

void CutToPicture(Copy& copy, const PixelBuffer& picture) {
    CutSpan(copy.source.left, copy.source.right, copy.target.left, copy.target.right, picture.width);
    CutSpan(copy.source.top, copy.source.bottom, copy.target.top, copy.target.bottom, picture.height);
}

BOOL CopyPixels(HDC to, HDC from, Copy copy, DWORD operation) {
    Backend* backend = to->Drawing(); // before the pixels are asked for: both may be the same picture
    from->ShownPixels();
    const PixelBuffer& picture = from->bitmap->PixelsFor(operation);
    CutToPicture(copy, picture);
    if (!backend || IsEmptyRect(copy.source) || IsEmptyRect(copy.target))
        return FALSE;
    backend->Blit(copy.target, picture, copy.source, operation);
    return TRUE;
}

/// Plays what was recorded on `from` again on `to`, at the copy's place. Onto itself or to and fro between two, a
/// record would double with each copy: in place it is left as it is, elsewhere the copy ends at `kMostOps`.
BOOL CopyRecord(HDC to, HDC from, Copy copy) {
    CutToPicture(copy, from->bitmap->pixels);
    Backend* backend = to->Drawing();
    if (!backend || IsEmptyRect(copy.source))
        return FALSE;
    if (to == from && copy.target.left == copy.source.left && copy.target.top == copy.source.top)
        return TRUE;
    const bool isRecord = to->bitmap && to->bitmap->IsRecord();
    if (isRecord && from->bitmap->ops.size() + to->bitmap->ops.size() > kMostOps)
        return FALSE;
    from->FlushLines();
    const std::vector<RecordedOp> ops = from->bitmap->ops; // a copy: `to` may be the same surface
    if (isRecord)
        to->bitmap->ops.push_back({CopyMark{copy.target, copy.source}});
    Replay(ops, *backend, copy.source, copy.target.left, copy.target.top, to->bounds);
    return TRUE;
}

/// Plays what was recorded on `from` at pixels and copies these: what is scaled, or combined with what is there, can't
/// stay a list of operations. Where nothing was drawn it is black, as a bitmap begins, or white, as a surface does.
BOOL CopyPlayedRecord(HDC to, HDC from, Copy copy, DWORD operation) {
    CutToPicture(copy, from->bitmap->pixels);
    if (IsEmptyRect(copy.source) || IsEmptyRect(copy.target))
        return FALSE;
    const RECT whole{0, 0, copy.source.right - copy.source.left, copy.source.bottom - copy.source.top};
    const Bitmap played({TakePixels(whole.right, whole.bottom), whole.right, whole.bottom, whole.right}, true,
                        Owner::Surface);
    Backend* backend = to->Drawing();
    if (!backend || !played.pixels.pixels)
        return FALSE;
    const auto pixels = MakePixelBackend(played.pixels);
    const bool isBitmap = from->bitmap->owner == Owner::Caller;
    pixels->FillRect(whole, ToColor(isBitmap ? RGB(0, 0, 0) : RGB(255, 255, 255)));
    from->FlushLines();
    Replay(from->bitmap->ops, *pixels, copy.source, 0, 0, whole);
    pixels->Flush();
    backend->Blit(copy.target, played.pixels, whole, operation);
    return TRUE;
}

RECT RectAt(int x, int y, int width, int height) { return {x, y, AddEdge(x, width), AddEdge(y, height)}; }

} // namespace

HGDIOBJ SelectObject(HDC surface, HGDIOBJ handle) {
    if (!IsSurface(surface) || !handle)
        return nullptr;
    if (Bitmap* bitmap = BitmapFrom(handle))
        return surface->page || surface->printing ? nullptr : HandleOf<HGDIOBJ>(surface->Take(*bitmap));

    const auto select = [](auto*& slot, auto* chosen) -> HGDIOBJ {
        auto* former = std::exchange(slot, chosen);
        if (former->owner == Owner::Caller)
            --former->selections;
        if (chosen->owner == Owner::Caller)
            ++chosen->selections;
        return HandleOf<HGDIOBJ>(former);
    };
    if (Pen* pen = PenFrom(handle))
        return select(surface->pen, pen);
    if (Brush* brush = BrushFrom(handle))
        return select(surface->brush, brush);
    if (FontObject* font = FontFrom(handle))
        return select(surface->font, font);
    return nullptr;
}

int SetBkMode(HDC surface, int mode) {
    if (!IsSurface(surface) || (mode != TRANSPARENT && mode != OPAQUE))
        return 0;
    return std::exchange(surface->bkMode, mode);
}

COLORREF SetBkColor(HDC surface, COLORREF color) {
    return IsSurface(surface) ? std::exchange(surface->bkColor, color) : 0;
}

COLORREF SetTextColor(HDC surface, COLORREF color) {
    return IsSurface(surface) ? std::exchange(surface->textColor, color) : 0;
}

int GetDeviceCaps(HDC surface, int query) {
    const bool known = IsSurface(surface);
    switch (query) {
    case LOGPIXELSX:
    case LOGPIXELSY:
        return known ? surface->dpi : kScreenDpi;
    case HORZRES:
        return known ? surface->device.width : 0;
    case VERTRES:
        return known ? surface->device.height : 0;
    default:
        return 0;
    }
}

BOOL MoveToEx(HDC surface, int x, int y, POINT* former) {
    if (!IsSurface(surface))
        return FALSE;
    if (former)
        *former = surface->position;
    surface->FlushLines();
    surface->position = {x, y};
    surface->patternPhase = 0;
    return TRUE;
}

BOOL LineTo(HDC surface, int x, int y) {
    if (!IsSurface(surface))
        return FALSE;
    const POINT from = std::exchange(surface->position, POINT{x, y});
    if (!surface->backend || surface->pen->style == PS_NULL)
        return FALSE;
    surface->AddLine(from, {x, y});
    return TRUE;
}

BOOL Rectangle(HDC surface, int left, int top, int right, int bottom) {
    if (!IsSurface(surface))
        return FALSE;
    const RECT box = Ordered(left, top, right, bottom);
    if (IsEmptyRect(box))
        return FALSE;
    const Pen& pen = *surface->pen;
    const Brush& brush = *surface->brush;
    if (pen.style == PS_NULL || IsPatterned(pen)) {
        if (!brush.hollow)
            Fill(surface, box, brush.color);
        if (IsPatterned(pen))
            StrokeFrame(surface, box);
        return TRUE;
    }
    const int width = PenWidth(*surface, pen);
    const RECT outer = pen.style == PS_INSIDEFRAME ? box : Grown(box, width / 2);
    const RECT inner = Grown(outer, -width);
    if (!brush.hollow && brush.color == pen.color) {
        Fill(surface, outer, pen.color);
        return TRUE;
    }
    FillFrame(surface, outer, inner, pen.color);
    if (!brush.hollow)
        Fill(surface, inner, brush.color);
    return TRUE;
}

BOOL Ellipse(HDC surface, int left, int top, int right, int bottom) {
    const RECT box = Ordered(left, top, right, bottom);
    return IsSurface(surface) && !IsEmptyRect(box) ? DrawRound(surface, EllipseIn(box)) : FALSE;
}

BOOL Pie(HDC surface, int left, int top, int right, int bottom, int x1, int y1, int x2, int y2) {
    const RECT box = Ordered(left, top, right, bottom);
    if (!IsSurface(surface) || IsEmptyRect(box))
        return FALSE;
    SliceShape slice{EllipseIn(box)};
    constexpr double kWhole = 2 * std::numbers::pi;
    // Callers compute radials about the halves of left + right and top + bottom, in whole numbers.
    slice.apex = {std::trunc(slice.whole.center.x), std::trunc(slice.whole.center.y)};
    slice.from = RadialAngle(slice.whole, slice.apex, x1, y1);
    slice.sweep = RadialAngle(slice.whole, slice.apex, x2, y2) - slice.from;
    if (slice.sweep < 0)
        slice.sweep += kWhole;
    const bool equalRadials = slice.sweep < 1e-9 || slice.sweep > kWhole - 1e-9;
    return equalRadials ? DrawRound(surface, slice.whole) : DrawRound(surface, slice);
}

BOOL FillRgn(HDC surface, HRGN regionHandle, HBRUSH brushHandle) {
    const Region* region = RegionFrom(regionHandle);
    const Brush* brush = BrushFrom(brushHandle);
    if (!IsSurface(surface) || !region || !brush)
        return FALSE;
    Backend* backend = surface->Drawing();
    if (!backend)
        return FALSE;
    if (!brush->hollow)
        backend->FillShape(region->shape, ToColor(brush->color));
    return TRUE;
}

BOOL BitBlt(HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY, DWORD operation) {
    return StretchBlt(to, x, y, width, height, from, fromX, fromY, width, height, operation);
}

BOOL StretchBlt(HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY, int fromWidth,
                int fromHeight, DWORD operation) {
    if (!IsSurface(to) || !IsSurface(from) || !from->bitmap || width < 1 || height < 1 || fromWidth < 1 ||
        fromHeight < 1 || !IsKnownOperation(operation))
        return FALSE;
    const Copy copy{RectAt(x, y, width, height), RectAt(fromX, fromY, fromWidth, fromHeight)};
    const bool staysVector = width == fromWidth && height == fromHeight && operation == SRCCOPY;
    if (from->bitmap->IsRecord())
        return staysVector ? CopyRecord(to, from, copy) : CopyPlayedRecord(to, from, copy, operation);
    return CopyPixels(to, from, copy, operation);
}
