#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// @file
/// What a picture depends on, as one number.

namespace melkar::tool {

/// A hash of 64 bits over texts and files: each counts with its length, so that no two can run into each other.
class Fingerprint {
public:
    Fingerprint& Add(std::string_view text);
    /// The contents; a file that can't be read is different from any that can.
    Fingerprint& AddFile(const std::string& path);

    std::string Text() const; ///< 16 digits

private:
    void Mix(std::string_view bytes);

    std::uint64_t m_hash = 14695981039346656037U; // FNV-1a
};

/// Of the command and the library that it draws with.
std::string ProgramFingerprint();

} // namespace melkar::tool
