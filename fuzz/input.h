#pragma once

#include <MelkarCommon/platform/types.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// Inputs taken apart. Where files are drawn, an input is text that a person can read: a line of what is done, then the
/// files, with lines of two hyphens between them.

namespace melkar::fuzz {

constexpr std::string_view kBetweenParts = "\n--\n";

/// The parts of an input; those that aren't there are empty. @param count of them; the last takes the rest
std::vector<std::string_view> PartsOf(std::string_view input, std::size_t count);

/// Takes the first line off. @return it, without its line feed
std::string_view TakeLine(std::string_view& input);

/// Bytes as decisions, zeros behind the end.
class Bytes {
public:
    /// @param limit above 0: all numbers are from 0 to below it
    explicit Bytes(std::string_view bytes, int limit = 0) : m_left(bytes), m_limit(limit) {}

    bool IsEmpty() const { return m_left.empty(); }
    std::uint8_t Next();
    /// Mostly a small number, now and then one that hurts.
    int Number();
    RECT Box();
    std::string Rest() const { return std::string(m_left); }

private:
    std::string_view m_left;
    int m_limit;
};

/// Numbers at the edges of what code may take them for.
extern const std::vector<int> kEdges;

/// Values that hurt, for a key or a column.
extern const std::vector<std::string> kHurtful;

} // namespace melkar::fuzz
