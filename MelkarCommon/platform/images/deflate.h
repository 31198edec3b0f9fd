#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <span>

/// @file
/// Internal. Bytes made smaller, as picture files and pages have them.

namespace melkar {

template <class T> using Memory = std::unique_ptr<T[]>; // made by nothrow: a picture may ask for too much
template <class T> Memory<T> Allocate(std::size_t count) { return Memory<T>(new (std::nothrow) T[count]); }

struct Bytes {
    Memory<std::uint8_t> memory;
    std::size_t count = 0;

    std::span<const std::uint8_t> View() const { return {memory.get(), count}; }
};

/// In the form of zlib; nothing of nothing, and without memory for it.
Bytes Deflated(std::span<const std::uint8_t> bytes);

} // namespace melkar
