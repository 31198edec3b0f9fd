#pragma once

#include <MelkarCommon/MelkarCommon.h>
#include <MelkarCommon/platform/bench/floor.h>

#include <string>

/// A working directory of its own with the profile of the samples: made once, removed at the end.
class BenchDirectory {
public:
    static BenchDirectory& Instance();
    /// Writes a file beside the profile. @return its path.
    std::string Write(const std::string& name, const std::string& content) const;

private:
    BenchDirectory();
    ~BenchDirectory();

    std::string m_root;
};

/// The three surfaces that a host gives to a graph.
struct Host {
    HDC shared = CreateMemorySurface(kWidth, kHeight);
    HDC second = CreateMemorySurface(kWidth, kHeight);
    HDC balloon = CreateMemorySurface(kWidth, kHeight);

    Host() = default;
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
};
