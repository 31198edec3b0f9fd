#include <MelkarCommon/platform/files/new_file.h>
#include <MelkarCommon/platform/images/deflate.h>
#include <MelkarCommon/platform/images/encoders.h>
#include <MelkarCommon/platform/seam/color.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

/// @file
/// A PNG file is a signature and chunks: length, name, bytes and their checksum, numbers with the highest byte first.
/// Each row says how it was filtered; all of ours are differences from the row above, since rows of a chart are much
/// alike, and compress to less than the best of five filters for each row does, in half the time.

namespace melkar {

namespace {

constexpr std::string_view kSignature{"\x89PNG\r\n\x1A\n", 8};
constexpr std::uint8_t kDifferenceFromAbove = 2;
constexpr std::size_t kFullChunk = 65536; ///< of rows

/// The bytes of a number, the highest first.
constexpr std::uint32_t HighFirst(std::uint32_t number) {
    return std::endian::native == std::endian::little ? __builtin_bswap32(number) : number;
}

/// The difference of each byte by itself.
constexpr std::uint32_t ByteDifference(std::uint32_t a, std::uint32_t b) {
    constexpr std::uint32_t kHighBits = 0x80808080U;
    return ((a | kHighBits) - (b & ~kHighBits)) ^ ((a ^ ~b) & kHighBits);
}

/// A colour as it was before it was multiplied by its alpha.
std::uint32_t WithoutAlpha(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24U;
    if (alpha == 0)
        return 0;
    const auto whole = [&](Color part) { return (part * 0xFFU + alpha / 2) / alpha; };
    return alpha << 24U | whole(RedOf(pixel)) << 16U | whole(GreenOf(pixel)) << 8U | whole(BlueOf(pixel));
}

/// The bytes of a colour in the order of a file: R, G, B, A.
template <int kChannels> void WriteChannels(std::uint32_t color, std::uint8_t* to) {
    constexpr int kShifts[] = {16, 8, 0, 24};
    for (int i = 0; i < kChannels; ++i)
        to[i] = static_cast<std::uint8_t>(color >> kShifts[i]);
}

/// Writes the row as differences from the one above it.
template <int kChannels>
void WriteRow(const std::uint32_t* row, const std::uint32_t* above, int width, std::uint8_t* to) {
    constexpr int kStretch = 16; // pixels: in most of a chart's stretches nothing changes from row to row
    *to++ = kDifferenceFromAbove;
    int x = 0;
    const auto writeUntil = [&](int end) {
        for (; x < end; ++x, to += kChannels)
            WriteChannels<kChannels>(ByteDifference(row[x], above[x]), to);
    };
    while (width - x >= kStretch) {
        if (std::memcmp(row + x, above + x, kStretch * sizeof *row) != 0) {
            writeUntil(x + kStretch);
        } else {
            to = std::fill_n(to, kStretch * kChannels, std::uint8_t{0});
            x += kStretch;
        }
    }
    writeUntil(width);
}

/// Goes on from that of the bytes before; 0 for none.
std::uint32_t Checksum(std::uint32_t sum, std::string_view bytes) {
    static constexpr auto kSums = [] {
        std::array<std::uint32_t, 256> sums{};
        for (std::uint32_t byte = 0; byte < sums.size(); ++byte) {
            sums[byte] = byte;
            for (int bit = 0; bit < 8; ++bit)
                sums[byte] = sums[byte] >> 1U ^ (sums[byte] & 1U) * 0xEDB88320U;
        }
        return sums;
    }();
    sum = ~sum;
    for (const char byte : bytes)
        sum = sum >> 8U ^ kSums[(sum ^ static_cast<std::uint8_t>(byte)) & 0xFFU];
    return ~sum;
}

/// Gives the parts of a chunk to `write(bytes)`, as long as that returns true.
template <class Write> bool WriteChunk(std::string_view name, std::string_view bytes, const Write& write) {
    const auto number = [&](std::size_t value) {
        const std::uint32_t parts = HighFirst(static_cast<std::uint32_t>(value));
        return write({reinterpret_cast<const char*>(&parts), sizeof parts});
    };
    return number(bytes.size()) && write(name) && write(bytes) && number(Checksum(Checksum(0, name), bytes));
}

template <int kChannels, class Write> bool WriteRows(const PixelBuffer& pixels, const Write& write) {
    const auto width = static_cast<std::size_t>(pixels.width);
    Deflate rows;
    std::vector<std::uint8_t> filtered(1 + width * kChannels);
    std::vector<std::uint32_t> lines(2 * width); // above the first; the last two of others
    const std::uint32_t* above = lines.data();
    for (int y = 0; y < pixels.height; ++y) {
        const std::uint32_t* row = PixelAt(pixels, 0, y);
        if constexpr (kChannels == 4) {
            std::uint32_t* const whole = lines.data() + (above == lines.data() ? width : 0);
            std::transform(row, row + width, whole, WithoutAlpha);
            row = whole;
        }
        WriteRow<kChannels>(row, above, pixels.width, filtered.data());
        above = row;
        rows.Add(filtered);
        if (rows.Ready().size() >= kFullChunk && !WriteChunk("IDAT", std::exchange(rows.Ready(), {}), write))
            return false;
    }
    rows.Finish();
    return WriteChunk("IDAT", rows.Ready(), write);
}

/// The whole file, as long as `write` returns true.
template <class Write> void WriteFile(const PixelBuffer& pixels, bool hasAlpha, const Write& write) {
    struct {
        std::uint32_t width;
        std::uint32_t height;
        std::uint8_t bitsOfAChannel = 8;
        std::uint8_t colors;
        std::uint8_t compression = 0; // these three: the only ones there are
        std::uint8_t filters = 0;
        std::uint8_t order = 0;
    } const head{HighFirst(static_cast<std::uint32_t>(pixels.width)),
                 HighFirst(static_cast<std::uint32_t>(pixels.height)),
                 8,
                 static_cast<std::uint8_t>(hasAlpha ? 6 : 2),
                 0,
                 0,
                 0};
    constexpr std::size_t kHead = 13;
    write(kSignature) && WriteChunk("IHDR", {reinterpret_cast<const char*>(&head), kHead}, write) &&
        (hasAlpha ? WriteRows<4>(pixels, write) : WriteRows<3>(pixels, write)) && WriteChunk("IEND", "", write);
}

} // namespace

int WriteAsPng(const PixelBuffer& pixels, NewFile& file) try {
    WriteFile(pixels, false, [&](std::string_view bytes) { return file.Write(bytes.data(), bytes.size()); });
    return 0;
} catch (const std::bad_alloc&) {
    return ENOMEM;
}

std::string EncodePng(const PixelBuffer& pixels, bool hasAlpha) {
    std::string png;
    WriteFile(pixels, hasAlpha, [&](std::string_view bytes) {
        png += bytes;
        return true;
    });
    return png;
}

} // namespace melkar
