#pragma once

#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/platform/surface.h>

#include <cstdint>

/// A surface that goes with its scope.
class Surface {
public:
    explicit Surface(HDC dc) : m_dc(dc) {}
    ~Surface() { DeleteDC(m_dc); }
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;
    operator HDC() const { return m_dc; } // NOLINT: it stands for its handle

    std::uint32_t At(int x, int y) const {
        const PixelView view = GetPixels(m_dc);
        return view.pixels[y * view.stride + x];
    }

private:
    HDC m_dc;
};

/// A memory surface with a bitmap selected that is compatible with another surface.
class WorkingSurface : public Surface {
public:
    WorkingSurface(HDC like, int width, int height)
        : Surface(CreateCompatibleDC(nullptr)), m_bitmap(*this, CreateCompatibleBitmap(like, width, height)) {}

private:
    melkar::ScopedObject m_bitmap;
};
