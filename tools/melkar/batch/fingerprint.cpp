#include "fingerprint.h"

#include <MelkarCommon/platform/surface.h>

#include <array>
#include <cstdio>
#include <dlfcn.h>
#include <fstream>

namespace melkar::tool {

void Fingerprint::Mix(std::string_view bytes) {
    constexpr std::uint64_t kPrime = 1099511628211U;
    for (const unsigned char byte : bytes)
        m_hash = (m_hash ^ byte) * kPrime;
}

Fingerprint& Fingerprint::Add(std::string_view text) {
    Mix(std::to_string(text.size()) + ":");
    Mix(text);
    return *this;
}

Fingerprint& Fingerprint::AddFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        Mix("none:");
        return *this;
    }
    std::array<char, 65536> block;
    std::uint64_t size = 0;
    Mix("file:");
    while (file.read(block.data(), block.size()), file.gcount() > 0) {
        Mix({block.data(), static_cast<std::size_t>(file.gcount())});
        size += static_cast<std::uint64_t>(file.gcount());
    }
    return Add(std::to_string(size));
}

std::string Fingerprint::Text() const {
    std::array<char, 17> text;
    std::snprintf(text.data(), text.size(), "%016llx", static_cast<unsigned long long>(m_hash));
    return text.data();
}

std::string ProgramFingerprint() {
    Fingerprint program;
    program.AddFile("/proc/self/exe");
    Dl_info library{};
    if (dladdr(reinterpret_cast<const void*>(&GetPixels), &library) != 0 && library.dli_fname)
        program.AddFile(library.dli_fname);
    return program.Text();
}

} // namespace melkar::tool
