#pragma once

#include "target.h"

#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <cstddef>

/// @file
/// Where targets work, and what must be as before when one is done.

namespace melkar::fuzz {

/// A host's directory in memory; the process works in its bin/.
const TempWorkdir& Room();

/// The files of one input. When it goes, nothing may be alive that wasn't before, and no file there that nobody knows
/// of: none under a temporary name, in particular. What the input had is gone behind it.
class Visit {
public:
    Visit();
    ~Visit();
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;

    /// @param name as of `TempWorkdir` @return its path
    std::string Give(const std::string& name, std::string_view bytes);
    /// The library may make it. @return its path
    std::string Expect(const std::string& name);

private:
    std::size_t m_alive;
    std::set<std::string> m_known;
};

} // namespace melkar::fuzz
