#include <MelkarCommon/platform/cairo/handles.h>
#include <MelkarCommon/platform/cairo/shapes.h>
#include <MelkarCommon/platform/pixels/pixel_blend.h>
#include <MelkarCommon/platform/pixels/pixel_discs.h>
#include <MelkarCommon/platform/pixels/pixel_spans.h>
#include <MelkarCommon/platform/values/lru_cache.h>

#include <cmath>
#include <functional>

namespace melkar {

namespace {

constexpr double kLargest = 512;          ///< pixels across
constexpr std::size_t kMostDiscs = 64;    ///< of 1 kB each at 24 pixels, of 30 kB at 512
constexpr double kFarthestDisc = 1 << 30; ///< its pixels can be counted in an int

/// What the coverage of a disc depends on: its size and where its centre lies within a pixel.
struct DiscSize {
    PointD radius;
    PointD part;
    double strokeWidth;

    bool operator==(const DiscSize& other) const {
        return radius.x == other.radius.x && radius.y == other.radius.y && part.x == other.part.x &&
               part.y == other.part.y && strokeWidth == other.strokeWidth;
    }
};

struct DiscHash {
    std::size_t operator()(const DiscSize& size) const {
        std::size_t hash = 0;
        for (const double value : {size.radius.x, size.radius.y, size.part.x, size.part.y, size.strokeWidth})
            hash = hash * 31 + std::hash<double>()(value);
        return hash;
    }
};

struct KeptDisc {
    DiscSize size;
    std::shared_ptr<const DiscMask> mask;

    const DiscSize& Key() const { return size; }
};

thread_local LruCache<DiscSize, KeptDisc, DiscHash> t_discs;

bool IsSmall(const EllipseShape& ellipse, double strokeWidth) {
    const auto& [center, radius] = ellipse;
    const bool near =
        std::abs(center.x) < kFarthestDisc && std::abs(center.y) < kFarthestDisc; // not so for what is no number
    return near && radius.x > 0 && radius.y > 0 && 2 * std::max(radius.x, radius.y) + strokeWidth <= kLargest;
}

/// A context that keeps coverage alone.
CairoContext MakeCanvas(int width, int height) {
    const CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height));
    CairoContext canvas(cairo_create(surface.get()));
    cairo_set_line_join(canvas.get(), CAIRO_LINE_JOIN_ROUND);
    return canvas;
}

void AddWhole(DiscMask& mask, std::int16_t x, std::int16_t y) {
    const DiscSpan* last = mask.spans.empty() ? nullptr : &mask.spans.back();
    if (last == nullptr || last->y != y || last->x + last->count != x)
        mask.spans.push_back({x, y, 0});
    mask.spans.back().count = static_cast<std::int16_t>(mask.spans.back().count + 4);
}

void AddFour(DiscMask& mask, int x, int y, const std::uint8_t* coverage) {
    const std::uint32_t four = ReadCoverages<4>(coverage);
    const auto left = static_cast<std::int16_t>(x);
    const auto top = static_cast<std::int16_t>(y);
    if (four == kAllWhole<4>)
        AddWhole(mask, left, top);
    else if (four != 0)
        mask.rims.push_back({left, top, {coverage[0], coverage[1], coverage[2], coverage[3]}});
}

/// The box of a disc. Its width is a whole number of fours.
DiscMask BoxOf(const DiscSize& size) {
    const double reach[] = {size.radius.x + size.strokeWidth / 2, size.radius.y + size.strokeWidth / 2};
    DiscMask mask;
    mask.left = static_cast<int>(std::floor(size.part.x - reach[0]));
    mask.top = static_cast<int>(std::floor(size.part.y - reach[1]));
    mask.width = (static_cast<int>(std::ceil(size.part.x + reach[0])) - mask.left + 3) / 4 * 4;
    mask.height = static_cast<int>(std::ceil(size.part.y + reach[1])) - mask.top;
    return mask;
}

void DrawOn(cairo_t* canvas, const DiscMask& box, const DiscSize& size) {
    const EllipseShape ellipse{{size.part.x - box.left, size.part.y - box.top}, size.radius};
    const RECT whole{0, 0, box.width, box.height};
    Stroke stroke;
    stroke.width = size.strokeWidth;
    if (size.strokeWidth > 0)
        StrokeShapeOn(canvas, whole, ellipse, stroke);
    else
        FillShapeOn(canvas, whole, ellipse, stroke.color);
}

/// Null without memory.
std::shared_ptr<const DiscMask> DrawDisc(const DiscSize& size) {
    auto mask = std::make_shared<DiscMask>(BoxOf(size));
    const CairoContext canvas = MakeCanvas(mask->width, mask->height);
    DrawOn(canvas.get(), *mask, size);
    cairo_surface_t* const surface = cairo_get_target(canvas.get());
    cairo_surface_flush(surface);
    if (cairo_status(canvas.get()) != CAIRO_STATUS_SUCCESS || cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    const std::uint8_t* row = cairo_image_surface_get_data(surface);
    for (int y = 0; y < mask->height; ++y, row += cairo_image_surface_get_stride(surface)) {
        mask->rows.push_back({mask->spans.size(), mask->rims.size()});
        for (int x = 0; x < mask->width; x += 4)
            AddFour(*mask, x, y, row + x);
    }
    mask->rows.push_back({mask->spans.size(), mask->rims.size()});
    return mask;
}

std::shared_ptr<const DiscMask> MaskOf(const DiscSize& size) {
    if (const KeptDisc* kept = t_discs.Find(size))
        return kept->mask;
    auto mask = DrawDisc(size);
    if (mask == nullptr)
        return nullptr;
    if (t_discs.Size() >= kMostDiscs)
        t_discs.DropOldest();
    return t_discs.Add({size, std::move(mask)}).mask;
}

/// All of a disc within its picture; `corner` is the pixel under the mask's top-left one.
void PaintWhole(std::uint32_t* corner, std::ptrdiff_t stride, const DiscMask& mask, Color color) {
    for (const DiscSpan& span : mask.spans)
        std::fill_n(corner + span.y * stride + span.x, span.count, color);
    for (const DiscRim& rim : mask.rims)
        BlendLanes<4>(corner + rim.y * stride + rim.x, ReadCoverages<4>(rim.coverage.data()), color);
}

/// What lies within the clip.
void PaintCut(const PixelBuffer& buffer, const RECT& clip, const DiscMask& mask, std::int64_t x, std::int64_t y,
              Color color) {
    const auto visible = [&](const auto& part, int count) {
        return ClipBox({x + part.x, y + part.y, x + part.x + count, y + part.y + 1}, clip);
    };
    for (const DiscSpan& span : mask.spans)
        FillRows(buffer, visible(span, span.count), color);
    for (const DiscRim& rim : mask.rims) {
        const RECT box = visible(rim, 4);
        for (int i = box.left; i < box.right; ++i)
            BlendPixel(*PixelAt(buffer, i, box.top), color, rim.coverage[static_cast<std::size_t>(i - x - rim.x)]);
    }
}

} // namespace

PlacedDisc FindDisc(const EllipseShape& ellipse, double strokeWidth) {
    if (!IsSmall(ellipse, strokeWidth))
        return {};
    const PointD pixel{std::floor(ellipse.center.x), std::floor(ellipse.center.y)};
    auto mask = MaskOf({ellipse.radius, {ellipse.center.x - pixel.x, ellipse.center.y - pixel.y}, strokeWidth});
    if (mask == nullptr)
        return {};
    const std::int64_t x = static_cast<std::int64_t>(pixel.x) + mask->left;
    const std::int64_t y = static_cast<std::int64_t>(pixel.y) + mask->top;
    return {std::move(mask), x, y};
}

void TrimDiscs() { t_discs = {}; }

void PaintDisc(const PixelBuffer& buffer, const RECT& clip, const DiscMask& mask, std::int64_t x, std::int64_t y,
               Color color) {
    const bool isInside =
        x >= clip.left && y >= clip.top && x + mask.width <= clip.right && y + mask.height <= clip.bottom;
    if (isInside)
        PaintWhole(PixelAt(buffer, static_cast<int>(x), static_cast<int>(y)), buffer.stride, mask, color);
    else
        PaintCut(buffer, clip, mask, x, y, color);
}

} // namespace melkar
