#pragma once

#include <cstdint>
#include <span>
#include <string>

/// @file
/// Internal. Blocks of a compressed stream: pieces, in codes of bits that suit them.

namespace melkar {

/// A byte, or a match: the next bytes are those that stand so far before.
struct Piece {
    std::uint16_t lengthOrByte;
    std::uint16_t distance; ///< 0: a byte

    static constexpr int kShortest = 3; ///< match
    static constexpr int kLongest = 258;
    static constexpr int kFarthest = 32768;
};

/// Whole bytes of bits, the first one lowest.
class BitWriter {
public:
    /// @param count up to 32
    void Write(std::uint32_t bits, int count);
    void FillByte() { Write(0, 7); }
    std::string& Bytes() { return m_bytes; }

private:
    std::string m_bytes;
    std::uint64_t m_bits = 0; ///< those that don't fill a byte
    int m_count = 0;
};

/// @param pieces one at least
void WriteBlock(std::span<const Piece> pieces, bool isLast, BitWriter& to);

} // namespace melkar
