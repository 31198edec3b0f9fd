#include <MelkarCommon/platform/seam/backend.h>
#include <MelkarCommon/platform/seam/box.h>

namespace melkar {

namespace {

void FillUnlessEmpty(Backend& backend, const RECT& rect, Color color) {
    if (!IsEmptyRect(rect))
        backend.FillRect(rect, color);
}

} // namespace

void Backend::FillRects(std::span<const Fill> fills) {
    for (const Fill& fill : fills)
        FillRect(fill.rect, fill.color);
}

void Backend::FillFramed(const RECT& outer, int width, Color frame, std::optional<Color> ground) {
    const RECT inner = Grown(outer, -width);
    if (IsEmptyRect(inner))
        return FillRect(outer, frame);
    FillUnlessEmpty(*this, {outer.left, outer.top, outer.right, inner.top}, frame);
    FillUnlessEmpty(*this, {outer.left, inner.bottom, outer.right, outer.bottom}, frame);
    FillUnlessEmpty(*this, {outer.left, inner.top, inner.left, inner.bottom}, frame);
    FillUnlessEmpty(*this, {inner.right, inner.top, outer.right, inner.bottom}, frame);
    if (ground)
        FillRect(inner, *ground);
}

} // namespace melkar
