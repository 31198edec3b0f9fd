#pragma once

#include <string>

/// @file
/// Internal. Libraries that most processes never need.

namespace melkar {

/// A library that is loaded when something first needs it, and stays: nobody else waits for it, or needs it at all. A
/// class of its functions derives from it, keeps one object for the process and states each of them once:
/// @code{.cpp}
/// struct Codec : LateLibrary {
///     Codec() : LateLibrary("libcodec.so.7") {}
///     MELKAR_LATE(CodecOpen);
/// };
/// @endcode
/// Where it isn't whole no function may be called.
class LateLibrary {
public:
    /// @param file as the loader looks for it, with the number of the interface that the headers are of
    explicit LateLibrary(const char* file);

    bool IsWhole() const { return m_fault.empty(); }
    const std::string& Fault() const { return m_fault; } ///< why it isn't whole: the loader's words

protected:
    /// What the loader found under a name: becomes a function of the type that the header gives it.
    struct Found {
        template <class Function> operator Function*() const { return reinterpret_cast<Function*>(address); }
        void* address;
    };

    /// A missing one is a fault of the library.
    Found Find(const char* name);

private:
    void* m_library;
    std::string m_fault;
};

} // namespace melkar

/// A function of the library under its own name and of its own type.
// NOLINTNEXTLINE(bugprone-macro-parentheses): a name that is declared takes none
#define MELKAR_LATE(function) decltype(&::function) function = Find(#function)
