#pragma once

#include <MelkarCommon/platform/images/deflate_block.h>

#include <string_view>
#include <vector>

/// @file
/// Internal. Bytes compressed as they come, in 0.3 MiB of memory however many they are.

namespace melkar {

/// Makes a stream of zlib's format. It is made for the rows of charts: what they have most, zeros, takes next to no
/// time, and the rest becomes about as small as general libraries make it.
class Deflate {
public:
    Deflate();
    void Add(std::span<const std::uint8_t> bytes);
    /// The end, behind a byte at least.
    void Finish();
    /// The stream as far as it is ready, to be taken away.
    std::string& Ready() { return m_ready.Bytes(); }

private:
    struct Match {
        int length;
        int distance; ///< 0: none
    };

    void Compress(int end);
    Match FindMatch(int at, int least) const;
    Match FindAndKeep(int at, int least);
    void KeepUntil(int end);
    int EqualBytes(int at, int distance) const;
    void PutByte();
    void PutMatch(Match match);
    void Put(Piece piece, int count);
    void EndBlock(bool isLast);
    void ForgetOldest();

    std::vector<std::uint8_t> m_window;  ///< what matches reach, and what isn't compressed yet
    int m_at = 0;                        ///< there that begins
    int m_end = 0;                       ///< there it ends
    int m_kept = 0;                      ///< the first place that can't be found
    unsigned m_forgotten = 0;            ///< bytes that stood before the window; only the lowest 16 bits count
    std::vector<std::uint16_t> m_newest; ///< by a hash of three bytes: the place where such stood last
    std::vector<std::uint16_t> m_before; ///< by a place: the one before it with such bytes
    std::vector<Piece> m_pieces;         ///< of the block
    std::uint64_t m_sum = 1;             ///< of all bytes, by a modulo
    std::uint64_t m_sumOfSums = 0;
    BitWriter m_ready;
};

/// All bytes at once: one at least.
std::string Deflated(std::string_view bytes);

} // namespace melkar
