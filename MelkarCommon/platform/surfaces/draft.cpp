#include <MelkarCommon/platform/surfaces/draft.h>

namespace melkar {

bool Draft::IsTooLarge(const RECT& source) {
    constexpr std::int64_t kMostPixels = 64 * 64;
    return (std::int64_t{source.right} - source.left) * (std::int64_t{source.bottom} - source.top) > kMostPixels;
}

/// The texts of another thread lose their masks, which that one may be using.
void Draft::Adopt() {
    if (m_thread == std::this_thread::get_id())
        return;
    DropMasks(m_ops);
    m_thread = std::this_thread::get_id();
}

Backend& Draft::Drawing() {
    Adopt();
    if (m_backend == nullptr)
        m_backend = MakeRecordingBackend(m_ops, m_size.width, m_size.height, Masks::Keep);
    return *m_backend;
}

void Draft::Play(Backend& to, int x, int y, const RECT& bounds) {
    Adopt();
    ReplayOnPixels(m_ops, to, Whole(), x, y, bounds);
    ++m_plays;
}

void Draft::Recover(std::size_t count) {
    m_backend.reset();
    if (count < m_ops.size())
        m_ops.erase(m_ops.begin() + static_cast<std::ptrdiff_t>(count), m_ops.end());
}

} // namespace melkar
