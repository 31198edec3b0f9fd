#include <MelkarCommon/platform/images/bitmap_head.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <fstream>

namespace melkar {

namespace {

constexpr std::size_t kFirstHead = 14;

// Offsets in the file; numbers are little-endian.
constexpr std::size_t kRowsStart = 10; ///< of the first row, 4 bytes
constexpr std::size_t kHeadSize = 14;  ///< of the second head, 4 bytes
constexpr std::size_t kWidth = 18;     ///< 4 bytes, as the three that follow
constexpr std::size_t kHeight = 22;    ///< below 0: top row first
constexpr std::size_t kBits = 28;      ///< per pixel, 2 bytes
constexpr std::size_t kPacking = 30;   ///< 1 and 2: rows of runs
constexpr std::size_t kBytesOfRows = 34;
constexpr std::size_t kColors = 46; ///< that the table between heads and rows holds
constexpr std::size_t kHeads = 54;

// The oldest kind of second head, of whole pictures in as few as 30 bytes; its numbers have 2 bytes each.
constexpr std::uint32_t kOldHeadSize = 12;
constexpr std::size_t kOldWidth = 18;
constexpr std::size_t kOldHeight = 20;
constexpr std::size_t kOldBits = 24;
constexpr std::size_t kOldHeads = 26;

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

bool IsOld(const Head& head) { return Number(head, kHeadSize, 4) == kOldHeadSize; }

/// Bytes of rows that are each padded to four bytes; a head can promise more than 64 bits hold.
double BytesOfRows(std::int64_t width, std::int64_t bits, double height) {
    const std::int64_t row = (width * bits + 31) / 32 * 4;
    return static_cast<double>(row) * std::abs(height);
}

double BytesOfRows(const Head& head) {
    if (IsOld(head))
        return BytesOfRows(Number(head, kOldWidth, 2), Number(head, kOldBits, 2), Number(head, kOldHeight, 2));
    if (IsPacked(head))
        return Number(head, kBytesOfRows, 4);
    return BytesOfRows(Number(head, kWidth, 4), Number(head, kBits, 2),
                       static_cast<std::int32_t>(Number(head, kHeight, 4)));
}

/// Of a table that pixels name their colours by. The loader asks for its memory before it reads it.
double BytesOfColors(const Head& head) {
    constexpr double kColor = 4;
    return !IsOld(head) && Number(head, kBits, 2) <= 8 ? kColor * Number(head, kColors, 4) : 0;
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
    const std::size_t heads =
        IsOld(head) ? kOldHeads : std::max<std::size_t>(kHeads, kFirstHead + Number(head, kHeadSize, 4));
    return size < static_cast<double>(heads) + BytesOfColors(head) ||
           size < Number(head, kRowsStart, 4) + BytesOfRows(head);
}

} // namespace melkar
