#include <MelkarCommon/platform/pixels/pixel_scale.h>

#include <cmath>
#include <vector>

namespace melkar {

namespace {

/// How one target pixel is made of the source pixels first..first+count-1 of one axis.
struct Tap {
    int first;
    int count;
    std::size_t weights; ///< index of the first weight
};

struct Axis {
    std::vector<Tap> taps; ///< one for each visible target pixel
    std::vector<float> weights;
    int first = 0; ///< source pixels that any tap needs
    int last = 0;
};

void AddAverage(Axis& axis, double scale, double index, int sourceSize) {
    const double low = index * scale;
    const double high = low + scale;
    const int first = std::min(static_cast<int>(low), sourceSize - 1);
    const int last = std::clamp(static_cast<int>(std::ceil(high)) - 1, first, sourceSize - 1);
    axis.taps.push_back({first, last - first + 1, axis.weights.size()});
    double total = 0;
    for (int i = first; i <= last; ++i)
        total += std::min(high, i + 1.0) - std::max(low, static_cast<double>(i));
    for (int i = first; i <= last; ++i)
        axis.weights.push_back(
            static_cast<float>((std::min(high, i + 1.0) - std::max(low, static_cast<double>(i))) / total));
}

void AddInterpolation(Axis& axis, double scale, double index, int sourceSize) {
    const double center = std::clamp((index + 0.5) * scale - 0.5, 0.0, sourceSize - 1.0);
    const int first = static_cast<int>(center);
    const double part = center - first;
    const bool between = part > 0 && first + 1 < sourceSize;
    axis.taps.push_back({first, between ? 2 : 1, axis.weights.size()});
    axis.weights.push_back(between ? static_cast<float>(1 - part) : 1.0F);
    if (between)
        axis.weights.push_back(static_cast<float>(part));
}

/// Taps for the target pixels from..to-1 of `targetSize`.
Axis MakeAxis(std::int64_t from, std::int64_t to, std::int64_t targetSize, int sourceSize) {
    const double scale = static_cast<double>(sourceSize) / static_cast<double>(targetSize);
    const bool shrinks = sourceSize > targetSize;
    Axis axis;
    axis.taps.reserve(static_cast<std::size_t>(to - from));
    for (std::int64_t i = from; i < to; ++i) {
        if (shrinks)
            AddAverage(axis, scale, static_cast<double>(i), sourceSize);
        else
            AddInterpolation(axis, scale, static_cast<double>(i), sourceSize);
    }
    axis.first = axis.taps.front().first;
    axis.last = axis.taps.back().first + axis.taps.back().count - 1;
    return axis;
}

/// Colours in the making, apart by channel so that the loops over them run on whole registers.
struct Row {
    explicit Row(std::size_t size) : red(size), green(size), blue(size) {}

    std::vector<float> red;
    std::vector<float> green;
    std::vector<float> blue;

    void Clear() {
        std::fill(red.begin(), red.end(), 0.0F);
        std::fill(green.begin(), green.end(), 0.0F);
        std::fill(blue.begin(), blue.end(), 0.0F);
    }
    void Add(const std::uint32_t* pixels, float weight) {
        for (std::size_t i = 0; i < red.size(); ++i) {
            const std::uint32_t pixel = pixels[i];
            red[i] += weight * static_cast<float>(static_cast<int>(RedOf(pixel)));
            green[i] += weight * static_cast<float>(static_cast<int>(GreenOf(pixel)));
            blue[i] += weight * static_cast<float>(static_cast<int>(BlueOf(pixel)));
        }
    }
};

/// Weights are positive and make 1, so that `value` stays within 0 to 255 but for a last digit.
std::uint32_t ToChannel(float value) { return static_cast<std::uint32_t>(static_cast<int>(value + 0.5F)); }

void WriteRow(std::uint32_t* out, const Axis& columns, const Row& row) {
    for (const Tap& tap : columns.taps) {
        const auto at = static_cast<std::size_t>(tap.first - columns.first);
        float red = 0;
        float green = 0;
        float blue = 0;
        for (std::size_t i = 0; i < static_cast<std::size_t>(tap.count); ++i) {
            const float weight = columns.weights[tap.weights + i];
            red += weight * row.red[at + i];
            green += weight * row.green[at + i];
            blue += weight * row.blue[at + i];
        }
        *out++ = kOpaque | (ToChannel(red) << 16U) | (ToChannel(green) << 8U) | ToChannel(blue);
    }
}

} // namespace

void ScaleSmooth(const PixelBuffer& to, const RECT& visible, const Box& target, const PixelBuffer& from,
                 const RECT& source) {
    const Axis columns = MakeAxis(visible.left - target.left, visible.right - target.left, target.right - target.left,
                                  source.right - source.left);
    const Axis rows = MakeAxis(visible.top - target.top, visible.bottom - target.top, target.bottom - target.top,
                               source.bottom - source.top);
    Row sum(static_cast<std::size_t>(columns.last) - static_cast<std::size_t>(columns.first) + 1);
    for (int y = visible.top; y < visible.bottom; ++y) {
        const Tap& tap = rows.taps[static_cast<std::size_t>(y - visible.top)];
        sum.Clear();
        for (int i = 0; i < tap.count; ++i)
            sum.Add(PixelAt(from, source.left + columns.first, source.top + tap.first + i),
                    rows.weights[tap.weights + static_cast<std::size_t>(i)]);
        WriteRow(PixelAt(to, visible.left, y), columns, sum);
    }
}

int NearestPixel(std::int64_t index, std::int64_t targetSize, int sourceSize) {
    const double position = (static_cast<double>(index) + 0.5) * sourceSize / static_cast<double>(targetSize);
    return std::min(static_cast<int>(position), sourceSize - 1);
}

} // namespace melkar
