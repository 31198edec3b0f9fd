#pragma once

#include <MelkarCommon/platform/types.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace melkar {

/// Internal. The points of a polyline that is kept. Most are a single line: so few take no memory of their own, which a
/// chart would ask for a hundred times.
class LinePoints {
public:
    explicit LinePoints(std::span<const POINT> points) : m_count(points.size()), m_many(m_count > kFew ? m_count : 0) {
        std::copy(points.begin(), points.end(), begin());
    }

    POINT* begin() { return m_many.empty() ? m_few.data() : m_many.data(); }
    POINT* end() { return begin() + m_count; }
    const POINT* begin() const { return m_many.empty() ? m_few.data() : m_many.data(); }
    const POINT* end() const { return begin() + m_count; }
    std::size_t size() const { return m_count; }
    const POINT& operator[](std::size_t index) const { return begin()[index]; }

private:
    static constexpr std::size_t kFew = 5; ///< the outline of a rectangle

    std::size_t m_count;
    std::array<POINT, kFew> m_few;
    std::vector<POINT> m_many;
};

} // namespace melkar
