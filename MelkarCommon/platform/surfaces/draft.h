#pragma once

#include <MelkarCommon/platform/record/record.h>
#include <MelkarCommon/platform/surfaces/device.h>

#include <cstdint>
#include <thread>
#include <vector>

/// @file
/// Internal. What was drawn on a picture of pixels before anybody looked at it. A working surface is mostly drawn once,
/// copied once and gone: played straight onto what it is copied to, it needs no pixels, and no copy of them.

namespace melkar {

/// A picture of pixels between two calls that draw on it.
struct PictureState {
    std::uint64_t picture;
    std::uint64_t calls; ///< so far
};

class Draft {
public:
    Draft(DeviceSize size, Color ground) : m_size(size) {
        m_ops.reserve(kUsualOps);
        m_ops.emplace_back(Fill{Whole(), ground});
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    RECT Whole() const { return {0, 0, m_size.width, m_size.height}; }
    std::size_t Count() const { return m_ops.size(); }
    /// So much that pixels take less memory, or less time if it is played again.
    bool IsLong() const { return m_ops.size() >= kMostOps; }
    /// Whether the copy of a picture of that many pixels is better made at once than kept.
    static bool IsTooLarge(const RECT& source);
    /// Whether it may be played rather than looked at. Hosts copy what a cycle has copied already; whoever copies more
    /// often is faster with pixels.
    bool IsFresh() const { return m_plays < kMostPlays; }

    /// Of the thread that asks.
    Backend& Drawing();
    /// Plays it with its corner at `at`. The clip of `to` is `bounds` afterwards.
    void Play(Backend& to, POINT at, const RECT& bounds);
    /// The same on a picture, during the last of its calls. Hosts copy what a cycle has copied already, and cycles what
    /// they drew on meanwhile: where all of it stands still, only what is new is played.
    void PlayOn(const PictureState& picture, Backend& to, POINT at, const RECT& bounds);
    /// Drawing failed in the middle: the operations behind the first `count` go.
    void Recover(std::size_t count);

private:
    static constexpr std::size_t kUsualOps = 256; ///< a chart has some hundreds
    static constexpr std::size_t kMostOps = 1 << 13;
    static constexpr int kMostPlays = 2;

    /// A play: on what, where, and how many operations, of which the last one marks it.
    struct Played {
        PictureState picture{0, 0};
        POINT at{0, 0};
        std::size_t count = 0;
    };

    void Adopt();
    bool StandsStill(const PictureState& picture, POINT at) const;

    DeviceSize m_size;
    std::vector<RecordedOp> m_ops; ///< the first fills all of it
    std::unique_ptr<Backend> m_backend;
    std::thread::id m_thread = std::this_thread::get_id(); ///< whose masks the texts have
    int m_plays = 0;
    Played m_played;
};

} // namespace melkar
