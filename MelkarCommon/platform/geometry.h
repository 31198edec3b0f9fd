#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/types.h>

#include <algorithm>
#include <cstdint>

/// @file
/// Points, rectangles and the rounding product-quotient.

namespace melkar {
/// The value, or the nearest bound beyond 32 bits: edges far off the surface stay far off.
constexpr int NearestInt(std::int64_t value) {
    return static_cast<int>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
}
/// An edge moved by a distance to the right or downwards, within 32 bits.
constexpr int AddEdge(int edge, int distance) { return NearestInt(static_cast<std::int64_t>(edge) + distance); }
/// The same to the left or upwards; of two edges, their distance.
constexpr int SubtractEdge(int edge, int distance) { return NearestInt(static_cast<std::int64_t>(edge) - distance); }
} // namespace melkar

/// A point that can be made in place.
class CPoint : public POINT {
public:
    constexpr CPoint() : POINT{0, 0} {}                 ///< (0, 0)
    constexpr CPoint(int px, int py) : POINT{px, py} {} ///< (px, py)
    /// The same point.
    constexpr CPoint(const POINT& p) : POINT(p) {} // NOLINT: implicit on purpose, points mix freely

    /// Whether both are the same.
    constexpr bool operator==(const POINT& p) const { return x == p.x && y == p.y; }
    /// Likewise.
    constexpr bool operator==(const CPoint& p) const { return x == p.x && y == p.y; } // else ambiguous with its reverse
};

/// A rectangle that can be made in place; edges are public and may stand in any order.
class CRect : public RECT {
public:
    constexpr CRect() : RECT{0, 0, 0, 0} {}                           ///< without area, at (0, 0)
    constexpr CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {} ///< left, top, right, bottom
    /// The same rectangle.
    constexpr CRect(const RECT& r) : RECT(r) {} // NOLINT: implicit on purpose, rectangles mix freely

    constexpr int Width() const { return melkar::SubtractEdge(right, left); }  ///< below 0 with edges out of order
    constexpr int Height() const { return melkar::SubtractEdge(bottom, top); } ///< likewise
    /// Whether all four edges are the same.
    constexpr bool operator==(const RECT& r) const {
        return left == r.left && top == r.top && right == r.right && bottom == r.bottom;
    }
    /// Likewise.
    constexpr bool operator==(const CRect& r) const { return *this == static_cast<const RECT&>(r); }

    /// Moves each edge inwards by x and y; negative values grow the rectangle.
    constexpr void DeflateRect(int x, int y) {
        left = melkar::AddEdge(left, x);
        top = melkar::AddEdge(top, y);
        right = melkar::SubtractEdge(right, x);
        bottom = melkar::SubtractEdge(bottom, y);
    }
    /// Moves it by dx to the right and by dy downwards.
    constexpr void OffsetRect(int dx, int dy) {
        left = melkar::AddEdge(left, dx);
        top = melkar::AddEdge(top, dy);
        right = melkar::AddEdge(right, dx);
        bottom = melkar::AddEdge(bottom, dy);
    }
    /// Left and top edges count as inside, right and bottom don't.
    constexpr bool PtInRect(POINT p) const { return p.x >= left && p.x < right && p.y >= top && p.y < bottom; }
};

/// @name Rectangles by pointers
/// @{

/// These return FALSE, and do nothing, for a null rectangle.
MELKAR_API BOOL SetRect(RECT* rect, int left, int top, int right, int bottom);
MELKAR_API BOOL CopyRect(RECT* to, const RECT* from);
MELKAR_API BOOL OffsetRect(RECT* rect, int dx, int dy);
/// @}

/// number x numerator / denominator, the product in 64 bits, the quotient rounded to nearest, halves
/// away from zero. @return -1 for a denominator of 0 and for a result beyond 32 bits.
MELKAR_API int MulDiv(int number, int numerator, int denominator);
