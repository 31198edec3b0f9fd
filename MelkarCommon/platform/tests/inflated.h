#pragma once

#include <cstddef>
#include <libdeflate.h>
#include <stdexcept>
#include <string>

/// The bytes of the first stream of a PDF file behind `entry`, a name of what it is.
inline std::string Inflated(const std::string& pdf, const std::string& entry) {
    constexpr std::size_t kMostBytes = 1 << 16;
    const std::size_t object = pdf.find(entry);
    const std::size_t stream = pdf.find(">>\nstream\n", object) + 10;
    const std::size_t end = pdf.find("\nendstream\n", object);
    if (object == std::string::npos || end == std::string::npos)
        throw std::runtime_error("no stream " + entry);
    std::string bytes(kMostBytes, '\0');
    libdeflate_decompressor* const reader = libdeflate_alloc_decompressor();
    std::size_t count = 0;
    libdeflate_zlib_decompress(reader, pdf.data() + stream, end - stream, bytes.data(), bytes.size(), &count);
    libdeflate_free_decompressor(reader);
    bytes.resize(count);
    return bytes;
}
