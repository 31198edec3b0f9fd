#pragma once

#include <stdexcept>
#include <string>
#include <zlib.h>

/// What a compressed stream holds, up to a MiB; throws if it is damaged.
inline std::string Inflated(const std::string& stream) {
    std::string bytes(1U << 20U, '\0');
    uLongf count = bytes.size();
    if (uncompress(reinterpret_cast<Bytef*>(bytes.data()), &count, reinterpret_cast<const Bytef*>(stream.data()),
                   stream.size()) != Z_OK)
        throw std::runtime_error("damaged stream");
    bytes.resize(count);
    return bytes;
}

/// The bytes of the first stream of a PDF file behind `entry`, a name of what it is.
inline std::string Inflated(const std::string& pdf, const std::string& entry) {
    const std::size_t object = pdf.find(entry);
    const std::size_t stream = pdf.find(">>\nstream\n", object) + 10;
    const std::size_t end = pdf.find("\nendstream\n", object);
    if (object == std::string::npos || end == std::string::npos)
        throw std::runtime_error("no stream " + entry);
    return Inflated(pdf.substr(stream, end - stream));
}
