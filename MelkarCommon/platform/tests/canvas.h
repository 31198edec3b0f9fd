#pragma once

#include "brushes.h"

#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/pixels/pixel_backend.h>
#include <MelkarCommon/platform/pixels/pixel_spans.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace melkar {

inline constexpr Color kRed = 0xFFFF0000U;

constexpr int kSide = 80;

/// A white picture whose rows are further apart than they are wide.
struct Canvas {
    Canvas(int width = kSide, int height = kSide, Color color = kWhitePixel)
        : memory(static_cast<std::size_t>((width + 2) * height), color), buffer{memory.data(), width, height,
                                                                                width + 2},
          backend(MakePixelBackend(buffer)) {}

    Color& At(int x, int y) { return *(memory.data() + y * std::ptrdiff_t{buffer.stride} + x); }
    Color At(int x, int y) const { return *(memory.data() + y * std::ptrdiff_t{buffer.stride} + x); }
    int Blue(int x, int y) const { return static_cast<int>(At(x, y) & 0xFFU); }
    /// How dark a pixel is, 0 to 255.
    int Ink(int x, int y) const { return 255 - Blue(x, y); }
    /// '.' white, '#' black, 'r' red, '?' anything else.
    char Letter(int x, int y) const {
        const Color color = At(x, y);
        return color == kWhitePixel ? '.' : color == kBlackPixel ? '#' : color == kRed ? 'r' : '?';
    }
    /// The pixels from (x, y) to the right, or downwards.
    std::string Letters(int x, int y, bool isDown) const {
        std::string text;
        for (; x < buffer.width && y < buffer.height; isDown ? ++y : ++x)
            text += Letter(x, y);
        return text;
    }
    std::string Row(int y) const { return Letters(0, y, false); }
    std::string Column(int x) const { return Letters(x, 0, true); }
    template <class Visit> void EachPixel(const Visit& visit) const {
        for (int y = 0; y < buffer.height; ++y)
            for (int x = 0; x < buffer.width; ++x)
                visit(x, y);
    }

    std::vector<std::uint32_t> memory;
    PixelBuffer buffer;
    std::unique_ptr<Backend> backend;
};

/// What is drawn under a clip is what is drawn without one, and nothing outside of it.
inline void ExpectCutAt(const RECT& clip, const Draw& draw) {
    Canvas whole;
    draw(*whole.backend);
    Canvas cut;
    cut.backend->SetClip(clip);
    draw(*cut.backend);
    cut.EachPixel([&](int x, int y) {
        ASSERT_EQ(cut.Ink(x, y), CRect(clip).PtInRect({x, y}) ? whole.Ink(x, y) : 0) << x << "," << y;
    });
}

} // namespace melkar
