#include <MelkarCommon/support/platform/cairo/handles.h>
#include <MelkarCommon/support/platform/cairo/shapes.h>
#include <MelkarCommon/support/platform/pixels/pixel_discs.h>
#include <MelkarCommon/support/platform/values/lru_cache.h>

#include <cmath>
#include <functional>

namespace melkar {

namespace {

constexpr double kLargest = 48;         ///< pixels across: beyond, a mask costs more than the rasteriser
constexpr std::size_t kMostDiscs = 128; ///< of up to 2.5 kB each
constexpr double kFar = 1 << 30;

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
    std::shared_ptr<const CoverageMask> mask;

    const DiscSize& Key() const { return size; }
};

thread_local LruCache<DiscSize, KeptDisc, DiscHash> t_discs;

bool IsSmall(const EllipseShape& ellipse, double strokeWidth) {
    const auto& [center, radius] = ellipse;
    const bool near = std::abs(center.x) < kFar && std::abs(center.y) < kFar; // not so for what is no number
    return near && radius.x > 0 && radius.y > 0 && 2 * std::max(radius.x, radius.y) + strokeWidth <= kLargest;
}

/// A context that keeps coverage alone.
CairoContext MakeCanvas(int width, int height) {
    const CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height));
    CairoContext canvas(cairo_create(surface.get()));
    cairo_set_line_join(canvas.get(), CAIRO_LINE_JOIN_ROUND);
    return canvas;
}

/// Null without memory.
std::shared_ptr<const CoverageMask> DrawDisc(const DiscSize& size) {
    const double reach[] = {size.radius.x + size.strokeWidth / 2, size.radius.y + size.strokeWidth / 2};
    auto mask = std::make_shared<CoverageMask>();
    mask->left = static_cast<int>(std::floor(size.part.x - reach[0]));
    mask->top = static_cast<int>(std::floor(size.part.y - reach[1]));
    mask->width = static_cast<int>(std::ceil(size.part.x + reach[0])) - mask->left;
    mask->height = static_cast<int>(std::ceil(size.part.y + reach[1])) - mask->top;
    const CairoContext canvas = MakeCanvas(mask->width, mask->height);
    const EllipseShape ellipse{{size.part.x - mask->left, size.part.y - mask->top}, size.radius};
    const RECT whole{0, 0, mask->width, mask->height};
    if (size.strokeWidth > 0) {
        Stroke stroke;
        stroke.width = size.strokeWidth;
        StrokeShapeOn(canvas.get(), whole, ellipse, stroke);
    } else {
        FillShapeOn(canvas.get(), whole, ellipse, Stroke{}.color);
    }
    cairo_surface_t* const surface = cairo_get_target(canvas.get());
    cairo_surface_flush(surface);
    if (cairo_status(canvas.get()) != CAIRO_STATUS_SUCCESS || cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    mask->stride = cairo_image_surface_get_stride(surface);
    const unsigned char* const coverage = cairo_image_surface_get_data(surface);
    mask->coverage.assign(coverage, coverage + std::ptrdiff_t{mask->stride} * mask->height);
    return mask;
}

std::shared_ptr<const CoverageMask> MaskOf(const DiscSize& size) {
    if (const KeptDisc* kept = t_discs.Find(size))
        return kept->mask;
    auto mask = DrawDisc(size);
    if (mask == nullptr)
        return nullptr;
    if (t_discs.Size() >= kMostDiscs)
        t_discs.DropOldest();
    return t_discs.Add({size, std::move(mask)}).mask;
}

} // namespace

PlacedMask FindDisc(const EllipseShape& ellipse, double strokeWidth) {
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

} // namespace melkar
