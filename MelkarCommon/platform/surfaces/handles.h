#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

/// @file
/// Internal. What a handle points to begins with its kind, so that a handle of the wrong kind is noticed instead of
/// misread. The memory of an object stays that of its kind for good and says that nobody is there once the object is
/// gone, so that a deleted handle is noticed as well, until its memory is used for another object of the kind.

namespace melkar {

enum class ObjectKind : std::uint8_t { Gone, Pen, Brush, Font, Bitmap, Region, Surface, Printer, Memory };
constexpr std::size_t kObjectKinds = 9;

/// The first base of every object that has a handle. Aligned like the links of the list of free memory, which take the
/// place of objects.
struct alignas(void*) HandleHead {
    explicit HandleHead(ObjectKind objectKind) : kind(objectKind) {}
    const ObjectKind kind;
};

/// Memory for one object, from the thread's free pieces of that kind; null without any. Each kind has one size.
void* TakeHandleMemory(ObjectKind kind, std::size_t size);
/// Marks the memory as that of nobody and keeps it for the next object of the kind.
void GiveHandleMemory(ObjectKind kind, void* memory);

/// Gives a class with a handle its place in such memory.
template <ObjectKind kKind> struct InHandleMemory {
    static void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
        return TakeHandleMemory(kKind, size);
    }
    static void* operator new(std::size_t size) {
        if (void* memory = TakeHandleMemory(kKind, size))
            return memory;
        throw std::bad_alloc();
    }
    static void operator delete(void* memory) { GiveHandleMemory(kKind, memory); }
};

} // namespace melkar
