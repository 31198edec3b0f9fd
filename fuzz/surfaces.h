#pragma once

#include "room.h"

#include <MelkarCommon/platform/types.h>

#include <cstdint>
#include <map>
#include <vector>

/// @file
/// A surface of each kind, of kSide pixels a side, made when it is first wanted.

namespace melkar::fuzz {

constexpr int kSide = 240;

class Surfaces {
public:
    explicit Surfaces(Visit& visit) : m_visit(visit) {}
    ~Surfaces(); ///< a page's file and the printed document are finished
    Surfaces(const Surfaces&) = delete;
    Surfaces& operator=(const Surfaces&) = delete;

    /// The letters are those of `kKinds`; null for any other.
    HDC Of(char kind);
    static constexpr char kKinds[] =
        "mbswrvoPp"; ///< memory (b for balloons), scaled, wrapped, record, SVG, outlines, PDF, printed

private:
    HDC Make(char kind);
    HDC MakePrinted();

    Visit& m_visit;
    std::vector<std::uint32_t> m_memory; ///< of the wrapped one, with a margin that nobody may touch
    std::map<char, HDC> m_made;
};

} // namespace melkar::fuzz
