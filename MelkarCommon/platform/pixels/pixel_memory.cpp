#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/pixels/pixel_memory.h>

#include <array>
#include <cstdlib>

/// @file
/// Pixel memory that survives from one redraw to the next: fresh memory costs a page fault every 4096 bytes, which
/// is more than filling it.

namespace melkar {

namespace {

constexpr std::size_t kKeptBuffers = 4;
constexpr std::size_t kKeptPixels = std::size_t{16} << 20; ///< 64 MiB

thread_local bool t_poolGone = false; ///< outlives the pool: surfaces may be freed while a thread ends

struct Kept {
    std::uint32_t* pixels = nullptr;
    std::size_t count = 0;
};

class Pool {
public:
    Pool() = default;
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;
    ~Pool() {
        t_poolGone = true;
        DropAll();
    }

    /// A kept buffer of exactly that size, or null.
    std::uint32_t* Take(std::size_t count) {
        for (Kept& kept : m_kept) {
            if (kept.pixels == nullptr || kept.count != count)
                continue;
            std::uint32_t* pixels = kept.pixels;
            m_total -= count;
            kept = {};
            return pixels;
        }
        return nullptr;
    }

    /// Keeps a buffer of at most `kKeptPixels` in place of the oldest ones.
    void Keep(std::uint32_t* pixels, std::size_t count) {
        Drop(m_kept[m_next]);
        for (std::size_t i = 1; i < kKeptBuffers && m_total + count > kKeptPixels; ++i)
            Drop(m_kept[(m_next + i) % kKeptBuffers]);
        m_kept[m_next] = {pixels, count};
        m_total += count;
        m_next = (m_next + 1) % kKeptBuffers;
    }

    void DropAll() {
        for (Kept& kept : m_kept)
            Drop(kept);
    }

private:
    void Drop(Kept& kept) {
        std::free(kept.pixels);
        m_total -= kept.count;
        kept = {};
    }

    std::array<Kept, kKeptBuffers> m_kept{};
    std::size_t m_next = 0; ///< the oldest entry
    std::size_t m_total = 0;
};

thread_local Pool t_pool;

/// 0 for a size that makes no sense.
std::size_t CountPixels(int width, int height) {
    return IsPictureSize(width, height) ? static_cast<std::size_t>(width) * static_cast<std::size_t>(height) : 0;
}

} // namespace

std::uint32_t* TakePixels(int width, int height) {
    const std::size_t count = CountPixels(width, height);
    if (count == 0)
        return nullptr;
    if (!t_poolGone) {
        if (std::uint32_t* kept = t_pool.Take(count))
            return kept;
    }
    return static_cast<std::uint32_t*>(std::malloc(count * sizeof(std::uint32_t)));
}

void TrimPixels() {
    if (!t_poolGone)
        t_pool.DropAll();
}

void GivePixelsBack(std::uint32_t* pixels, int width, int height) {
    if (pixels == nullptr)
        return;
    const std::size_t count = CountPixels(width, height);
    if (t_poolGone || count == 0 || count > kKeptPixels)
        std::free(pixels);
    else
        t_pool.Keep(pixels, count);
}

} // namespace melkar
