#include <MelkarCommon/platform/calls/failing.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/seam/area.h>
#include <MelkarCommon/platform/seam/box.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>
#include <MelkarCommon/platform/text/text_decode.h>
#include <MelkarCommon/platform/wrapped_height.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

using namespace melkar;

namespace {

/// The bytes that a text and a length stand for. Whether a character is cut shows only in the whole text: its first
/// bytes alone would be read in another code page.
std::string_view Bytes(const HDC__& surface, const char* text, int length) {
    if (!text)
        return {};
    const std::string_view whole(text);
    return length < 0 ? whole : CutBytes(whole, static_cast<std::size_t>(length), surface.font->description.lfCharSet);
}

/// The box behind a line of text, turned about its top-left corner.
Shape Background(POINT at, int width, int height, int escapement) {
    PolygonShape box;
    for (const PointD& corner : TurnedBox(at, width, height, escapement))
        box.points.push_back({NearestInt(std::llround(corner.x)), NearestInt(std::llround(corner.y))});
    return box;
}

/// The ground behind a line of text, within `clip`.
void PaintGround(HDC surface, Backend& backend, const RECT& clip, POINT at, int width, int height) {
    const Color color = ToColor(surface->bkColor);
    const int escapement = surface->font->description.lfEscapement;
    if (escapement == 0) {
        const Box ground{at.x, at.y, std::int64_t{at.x} + width, std::int64_t{at.y} + height};
        return backend.FillRect(ClipBox(ground, clip), color);
    }
    backend.SetClip(ClipBox(ToBox(clip), surface->Bounds()));
    backend.FillShape(Background(at, width, height, escapement), color);
    backend.SetClip(surface->Bounds());
}

/// One line with its top-left corner at `at`, on its background if the mode is opaque.
void PaintLine(HDC surface, Backend& backend, const std::shared_ptr<const TextLayout>& layout, std::size_t index,
               POINT at, const RECT& clip) {
    const TextLine& line = layout->lines[index];
    if (surface->bkMode == OPAQUE && line.width > 0)
        PaintGround(surface, backend, clip, at, line.width, layout->lineHeight);
    backend.PaintText(layout, index, at, surface->font->description.lfEscapement, ToColor(surface->textColor), clip);
}

/// Left end of a line in the rectangle.
int LineLeft(const RECT& rect, int width, UINT format) {
    const std::int64_t room = std::int64_t{rect.right} - rect.left - width;
    if (format & DT_CENTER)
        return NearestInt(rect.left + room / 2);
    return format & DT_RIGHT ? NearestInt(rect.left + room) : rect.left;
}

/// Top of the first line in the rectangle: vertical placement is for single lines only.
std::int64_t TextTop(const RECT& rect, int height, UINT format) {
    if (!(format & DT_SINGLELINE))
        return rect.top;
    const std::int64_t room = std::int64_t{rect.bottom} - rect.top - height;
    if (format & DT_VCENTER)
        return rect.top + room / 2;
    return format & DT_BOTTOM ? rect.top + room : rect.top;
}

void PaintLayout(HDC surface, Backend& backend, const std::shared_ptr<const TextLayout>& layout, const RECT& rect,
                 UINT format) {
    std::int64_t y = TextTop(rect, layout->Height(), format);
    const RECT visible = ClipBox(ToBox(rect), surface->Bounds());
    for (std::size_t i = 0; i < layout->lines.size(); ++i, y += layout->lineHeight) {
        if (y >= visible.bottom)
            break;
        if (y + layout->lineHeight <= visible.top)
            continue;
        const POINT at{LineLeft(rect, layout->lines[i].width, format), static_cast<int>(y)};
        PaintLine(surface, backend, layout, i, at, rect);
    }
}

/// How a text stands in a rectangle that keeps its width.
std::shared_ptr<const TextLayout> LayOutIn(HDC surface, std::string_view bytes, const RECT& rect, UINT format) {
    const bool singleLine = (format & DT_SINGLELINE) != 0;
    if (singleLine || !(format & DT_WORDBREAK))
        return LayOutText(surface->Face(), bytes, singleLine, kNoWrap);
    const std::int64_t room = std::int64_t{rect.right} - rect.left;
    return LayOutText(surface->Face(), bytes, false, static_cast<int>(std::clamp<std::int64_t>(room, 0, INT32_MAX)));
}

/// A single line is there without text, too.
int HeightOf(const TextLayout& layout, UINT format) {
    return format & DT_SINGLELINE ? layout.lineHeight : layout.Height();
}

/// A word that is wider than the rectangle makes it wider, and room for others.
int Measure(HDC surface, std::string_view bytes, RECT& rect, UINT format) {
    auto layout = LayOutIn(surface, bytes, rect, format);
    if ((format & DT_WORDBREAK) && layout->width > std::int64_t{rect.right} - rect.left)
        layout = LayOutIn(surface, bytes, {0, 0, layout->width, 0}, format);
    const int height = HeightOf(*layout, format);
    rect.right = AddEdge(rect.left, layout->width);
    rect.bottom = AddEdge(rect.top, height);
    return height;
}

} // namespace

BOOL TextOutA(HDC surface, int x, int y, const char* text, int length) {
    if (!IsSurface(surface) || !text)
        return FALSE;
    return DrawOrFail(surface, [&](Backend* backend) {
        const auto layout = LayOutText(surface->Face(), Bytes(*surface, text, length), true, kNoWrap);
        for (std::size_t i = 0; backend && i < layout->lines.size(); ++i)
            PaintLine(surface, *backend, layout, i, {x, y}, surface->Bounds());
        return TRUE;
    });
}

int DrawTextExA(HDC surface, char* text, int length, RECT* rect, UINT format, void*) {
    if (!IsSurface(surface) || !text || !rect)
        return 0;
    if (format & DT_CALCRECT)
        return OrFailure([&] { return Measure(surface, Bytes(*surface, text, length), *rect, format); });
    return DrawOrFail(surface, [&](Backend* backend) {
        const auto layout = LayOutIn(surface, Bytes(*surface, text, length), *rect, format);
        if (backend)
            PaintLayout(surface, *backend, layout, *rect, format);
        return HeightOf(*layout, format);
    });
}

int melkar::WrappedHeight(HDC surface, const char* text, int length, const RECT& box) {
    if (!IsSurface(surface) || !text)
        return 0;
    return OrFailure([&] { return LayOutIn(surface, Bytes(*surface, text, length), box, DT_WORDBREAK)->Height(); });
}
