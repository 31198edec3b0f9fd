#pragma once

#include <MelkarCommon/platform/seam/pixel_buffer.h>

#include <cstdint>
#include <utility>

/// @file
/// Internal. Memory of pictures.

namespace melkar {

/// Memory for width x height pixels, content undefined; null without it. A few freed buffers are kept by each
/// thread, so that a redraw finds warm memory.
std::uint32_t* TakePixels(int width, int height);
void GivePixelsBack(std::uint32_t* pixels, int width, int height);
/// Frees what this thread keeps of them.
void TrimPixels();

/// Such memory, given back with the object.
class OwnPixels {
public:
    OwnPixels() = default;
    /// @param taken null, or from `TakePixels`
    explicit OwnPixels(const PixelBuffer& taken) : m_buffer(taken) {}
    explicit OwnPixels(int width, int height, double scale = 1)
        : OwnPixels({TakePixels(width, height), width, height, width, scale}) {}
    OwnPixels(OwnPixels&& other) noexcept : m_buffer(std::exchange(other.m_buffer, {})) {}
    OwnPixels& operator=(OwnPixels&& other) noexcept {
        std::swap(m_buffer, other.m_buffer);
        return *this;
    }
    ~OwnPixels() { GivePixelsBack(m_buffer.pixels, m_buffer.width, m_buffer.height); }

    const PixelBuffer& Buffer() const { return m_buffer; }
    bool AreThere() const { return m_buffer.pixels != nullptr; }

private:
    PixelBuffer m_buffer;
};

} // namespace melkar
