#include <MelkarCommon/platform/images/deflate.h>

#include <libdeflate.h>

namespace melkar {

Bytes Deflated(std::span<const std::uint8_t> bytes) {
    constexpr int kEffort = 6; // of 12: beyond it time grows faster than size falls
    const auto release = [](libdeflate_compressor* compressor) { libdeflate_free_compressor(compressor); };
    const std::unique_ptr<libdeflate_compressor, decltype(release)> compressor(libdeflate_alloc_compressor(kEffort));
    if (bytes.empty() || compressor == nullptr)
        return {};
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor.get(), bytes.size());
    Bytes deflated{Allocate<std::uint8_t>(bound), 0};
    if (deflated.memory != nullptr)
        deflated.count =
            libdeflate_zlib_compress(compressor.get(), bytes.data(), bytes.size(), deflated.memory.get(), bound);
    return deflated;
}

} // namespace melkar
