#include <MelkarCommon/platform/surfaces/draft.h>

namespace melkar {

bool Draft::IsTooLarge(const RECT& source) {
    constexpr std::int64_t kMostPixels = std::int64_t{64} * 64;
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

void Draft::Play(Backend& to, POINT at, const RECT& bounds) {
    Adopt();
    ReplayOnPixels(m_ops, to, Whole(), at, bounds);
    ++m_plays;
}

/// Nothing was drawn on the picture since, and nothing covered what was played of the draft: its mark would be gone.
bool Draft::StandsStill(const PictureState& picture, POINT at) const {
    const auto& [former, formerAt, count] = m_played;
    return picture.picture == former.picture && picture.calls == former.calls + 1 && at.x == formerAt.x &&
           at.y == formerAt.y && count <= m_ops.size() && std::holds_alternative<CopyMark>(m_ops[count - 1].verb);
}

void Draft::PlayOn(const PictureState& picture, Backend& to, POINT at, const RECT& bounds) {
    const bool goesOn = StandsStill(picture, at);
    if (m_played.count != m_ops.size())
        m_ops.emplace_back(CopyMark{Whole(), Whole()});
    if (goesOn) {
        Adopt();
        Replay(std::span(m_ops).subspan(m_played.count), to, Whole(), at, bounds);
    } else {
        Play(to, at, bounds);
    }
    m_played = {picture, at, m_ops.size()};
}

void Draft::Recover(std::size_t count) {
    m_backend.reset();
    if (count < m_ops.size())
        m_ops.erase(m_ops.begin() + static_cast<std::ptrdiff_t>(count), m_ops.end());
}

} // namespace melkar
