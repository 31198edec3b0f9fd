#include <MelkarCommon/platform/pixels/pixel_layers.h>

#include <MelkarCommon/platform/pixels/pixel_spans.h>
#include <MelkarCommon/platform/seam/box.h>

namespace melkar {

namespace {

constexpr std::int64_t kLargePixels = 1 << 14; ///< with less, looking costs as much as writing
constexpr std::size_t kMostLarge = 16;         ///< of a picture; a bound to what each fill is held against

bool IsLarge(const RECT& rect) {
    return (std::int64_t{rect.right} - rect.left) * (std::int64_t{rect.bottom} - rect.top) >= kLargePixels;
}

bool Overlap(const RECT& a, const RECT& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

/// False if it lies whole on its own colour.
bool IsSeen(const std::vector<Fill>& fills, std::size_t index) {
    const Fill& own = fills[index];
    for (std::size_t i = index; i-- > 0;)
        if (Overlap(fills[i].rect, own.rect))
            return fills[i].color != own.color || !Covers(fills[i].rect, own.rect);
    return true;
}

/// Adds what `hole` leaves of `rect`: rows above and below, and what is left beside it.
void AddAround(std::vector<RECT>& parts, const RECT& rect, const RECT& hole) {
    const RECT common = ClipBox(ToBox(rect), hole);
    const auto add = [&](const RECT& part) {
        if (!IsEmptyRect(part))
            parts.push_back(part);
    };
    add({rect.left, rect.top, rect.right, common.top});
    add({rect.left, common.top, common.left, common.bottom});
    add({common.right, common.top, rect.right, common.bottom});
    add({rect.left, common.bottom, rect.right, rect.bottom});
}

/// What a hole leaves of parts.
std::vector<RECT> AllAround(const std::vector<RECT>& parts, const RECT& hole) {
    std::vector<RECT> left;
    for (const RECT& part : parts)
        if (Overlap(part, hole))
            AddAround(left, part, hole);
        else
            left.push_back(part);
    return left;
}

} // namespace

void FillLayers(const PixelBuffer& buffer, std::vector<Fill> fills) {
    std::vector<std::size_t> large;
    for (std::size_t i = 0; i < fills.size() && large.size() < kMostLarge; ++i) {
        if (!IsLarge(fills[i].rect))
            continue;
        if (IsSeen(fills, i))
            large.push_back(i);
        else
            fills[i].rect = {};
    }
    std::vector<RECT> parts;
    for (std::size_t i = 0; i < fills.size(); ++i) {
        const auto& [rect, color] = fills[i];
        parts.assign(1, rect);
        for (const std::size_t above : large)
            if (above > i && Overlap(rect, fills[above].rect))
                parts = AllAround(parts, fills[above].rect);
        for (const RECT& part : parts)
            FillRows(buffer, part, color);
    }
}

} // namespace melkar
