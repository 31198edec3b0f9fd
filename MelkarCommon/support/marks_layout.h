#pragma once

#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/support/numbers.h>

#include <array>
#include <cmath>
#include <cstdint>

/// @file
/// Corners of the marks. Device units; divisions truncate towards zero.
///
///        .            +--.--+              /         \        barb
///       / \           | / \ |            /             \      .
///      /   \          |/   \|      from +---------------+ to  shaft
///     /     \         |\   /|            \             /
///    +-------+        +--'--+              \         /        barb
///     triangle        diamond                 arrow

namespace melkar {

constexpr int MiddleOf(int a, int b) { return static_cast<int>((std::int64_t{a} + b) / 2); }

constexpr std::array<POINT, 3> TriangleIn(const RECT& box) {
    return {{{box.left, box.bottom}, {box.right, box.bottom}, {MiddleOf(box.left, box.right), box.top}}};
}

constexpr std::array<POINT, 4> DiamondIn(const RECT& box) {
    const int x = MiddleOf(box.left, box.right);
    const int y = MiddleOf(box.top, box.bottom);
    return {{{box.left, y}, {x, box.bottom}, {box.right, y}, {x, box.top}}};
}

/// The points of an arrow.
class ArrowAxis {
public:
    /// An arrow without length points nowhere: all its points are `from`.
    ArrowAxis(POINT from, POINT to) : m_from(from) {
        const double dx = double{1} * to.x - from.x;
        const double dy = double{1} * to.y - from.y;
        m_length = std::sqrt(dx * dx + dy * dy);
        if (m_length > 0) {
            m_x = dx / m_length;
            m_y = dy / m_length;
        }
    }

    POINT End() const { return FromStart(m_length * m_x, m_length * m_y); }

    /// The end of a barb at `from`; the angle's sign tells its side.
    POINT BarbAtFrom(double angle, double headLength) const {
        const double along = std::cos(angle);
        const double across = std::sin(angle);
        return FromStart(headLength * (m_x * along - m_y * across), headLength * (m_y * along + m_x * across));
    }
    /// The end of a barb at `to`. The base of a head lies whole units before the end.
    POINT BarbAtTo(double angle, double headLength) const {
        const double base = m_length - std::abs(std::trunc(headLength * std::cos(angle)));
        const double across = headLength * std::sin(angle);
        return FromStart(base * m_x - across * m_y, base * m_y + across * m_x);
    }

private:
    /// What is no number or beyond all bounds stays an int.
    POINT FromStart(double x, double y) const {
        return {Truncate(m_from.x + std::trunc(x)), Truncate(m_from.y + std::trunc(y))};
    }

    POINT m_from;
    double m_length = 0;
    double m_x = 0; ///< direction
    double m_y = 0;
};

} // namespace melkar
