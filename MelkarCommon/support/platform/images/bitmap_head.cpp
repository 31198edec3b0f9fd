#include <MelkarCommon/support/platform/images/bitmap_head.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <fstream>

namespace melkar {

namespace {

// Offsets in the file; numbers are little-endian.
constexpr std::size_t kRowsStart = 10; ///< of the first row, 4 bytes
constexpr std::size_t kHeadSize = 14;  ///< of the second head, 4 bytes
constexpr std::size_t kWidth = 18;     ///< 4 bytes, as the three that follow
constexpr std::size_t kHeight = 22;    ///< below 0: top row first
constexpr std::size_t kBits = 28;      ///< per pixel, 2 bytes
constexpr std::size_t kPacking = 30;   ///< 1 and 2: rows of runs
constexpr std::size_t kBytesOfRows = 34;
constexpr std::size_t kHeads = 54;

constexpr std::uint32_t kOldHeadSize = 12; ///< of a head whose sides have 2 bytes; too rare to be looked at closer

using Head = std::array<unsigned char, kHeads>;

std::uint32_t Number(const Head& head, std::size_t at, std::size_t bytes) {
    std::uint32_t value = 0;
    for (std::size_t i = bytes; i-- > 0;)
        value = value << 8U | head[at + i];
    return value;
}

bool IsPacked(const Head& head) {
    const std::uint32_t packing = Number(head, kPacking, 4);
    return packing == 1 || packing == 2;
}

/// Bytes of all rows, each padded to four bytes; a head can promise more than 64 bits hold.
double BytesOfRows(const Head& head) {
    if (IsPacked(head))
        return Number(head, kBytesOfRows, 4);
    const std::int64_t bits = std::int64_t{Number(head, kWidth, 4)} * Number(head, kBits, 2);
    const auto height = static_cast<std::int32_t>(Number(head, kHeight, 4));
    return static_cast<double>((bits + 31) / 32 * 4) * std::abs(double{1} * height);
}

} // namespace

bool IsCutBitmap(const char* path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const auto size = static_cast<double>(file.tellg());
    Head head{};
    file.seekg(0);
    file.read(reinterpret_cast<char*>(head.data()), kHeads);
    if (file.gcount() < 2 || head[0] != 'B' || head[1] != 'M')
        return false;
    if (!file)
        return true;
    return Number(head, kHeadSize, 4) != kOldHeadSize && size < Number(head, kRowsStart, 4) + BytesOfRows(head);
}

} // namespace melkar
