#include <MelkarCommon/platform/files/new_file.h>
#include <MelkarCommon/platform/images/deflate.h>
#include <MelkarCommon/platform/images/encoders.h>
#include <MelkarCommon/platform/seam/color.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>
#include <libdeflate.h>
#include <new>
#include <string_view>

/// @file
/// A PNG file is a signature and chunks: length, name, bytes and their checksum, numbers with the highest byte first.
/// Each row says how it was filtered; all of ours are differences from the row above, since rows of a chart are much
/// alike, and compress to less than the best of five filters for each row does, in half the time.

namespace melkar {

namespace {

constexpr std::string_view kSignature{"\x89PNG\r\n\x1A\n", 8};
constexpr std::uint8_t kDifferenceFromAbove = 2;

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

/// Writes the row as differences from the one above it. @return behind it
template <int kChannels>
std::uint8_t* WriteRow(const std::uint32_t* row, const std::uint32_t* above, int width, std::uint8_t* to) {
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
    return to;
}

/// All rows as they are compressed; without memory if there is none.
template <int kChannels> Bytes Filtered(const PixelBuffer& pixels) {
    const auto width = static_cast<std::size_t>(pixels.width);
    const std::size_t count = (1 + width * kChannels) * static_cast<std::size_t>(pixels.height);
    Bytes filtered{Allocate<std::uint8_t>(count), count};
    const Memory<std::uint32_t> lines = Allocate<std::uint32_t>(2 * width); // above the first; the last two of others
    if (filtered.memory == nullptr || lines == nullptr)
        return {};
    std::uint8_t* to = filtered.memory.get();
    std::memset(lines.get(), 0, 2 * width * sizeof lines[0]);
    const std::uint32_t* above = lines.get();
    for (int y = 0; y < pixels.height; ++y) {
        const std::uint32_t* row = PixelAt(pixels, 0, y);
        if constexpr (kChannels == 4) {
            std::uint32_t* const whole = lines.get() + (above == lines.get() ? width : 0);
            std::transform(row, row + width, whole, WithoutAlpha);
            row = whole;
        }
        to = WriteRow<kChannels>(row, above, pixels.width, to);
        above = row;
    }
    return filtered;
}

/// Gives the parts of a chunk to `write(bytes, count)`, as long as that returns true.
template <class Write> bool WriteChunk(const char* name, const void* bytes, std::size_t count, const Write& write) {
    constexpr std::size_t kName = 4;
    const std::uint32_t length = HighFirst(static_cast<std::uint32_t>(count));
    const std::uint32_t sum = HighFirst(libdeflate_crc32(libdeflate_crc32(0, name, kName), bytes, count));
    return write(&length, sizeof length) && write(name, kName) && write(bytes, count) && write(&sum, sizeof sum);
}

/// The whole file. @return 0, or the number of an error; what `write` says isn't one
template <class Write> int WriteFile(const PixelBuffer& pixels, bool hasAlpha, const Write& write) {
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
    const Bytes rows = Deflated((hasAlpha ? Filtered<4>(pixels) : Filtered<3>(pixels)).View());
    if (rows.count == 0)
        return ENOMEM;
    if (rows.count > INT32_MAX)
        return EFBIG;
    write(kSignature.data(), kSignature.size()) && WriteChunk("IHDR", &head, kHead, write) &&
        WriteChunk("IDAT", rows.memory.get(), rows.count, write) && WriteChunk("IEND", "", 0, write);
    return 0;
}

} // namespace

int WriteAsPng(const PixelBuffer& pixels, NewFile& file) {
    return WriteFile(pixels, false, [&](const void* bytes, std::size_t count) { return file.Write(bytes, count); });
}

std::string EncodePng(const PixelBuffer& pixels, bool hasAlpha) {
    std::string png;
    const int error = WriteFile(pixels, hasAlpha, [&](const void* bytes, std::size_t count) {
        png.append(static_cast<const char*>(bytes), count);
        return true;
    });
    if (error != 0)
        throw std::bad_alloc();
    return png;
}

} // namespace melkar
