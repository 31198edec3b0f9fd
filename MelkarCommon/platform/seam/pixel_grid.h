#pragma once

#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/seam/shape.h>
#include <MelkarCommon/platform/seam/stroke.h>

#include <algorithm>
#include <cmath>

/// @file
/// Internal. From units to the pixels of a picture that has more of them: edges land on whole pixels, each at the
/// nearest, so that what meets in units meets in pixels; what is so wide is so wide everywhere.

namespace melkar {

/// What pictures can have; 1 is a pixel for each unit.
constexpr double kLeastScale = 1;
constexpr double kMostScale = 8;
/// No number isn't.
constexpr bool IsScale(double scale) { return scale >= kLeastScale && scale <= kMostScale; }

class PixelGrid {
public:
    explicit PixelGrid(double scale) : m_scale(scale) {}

    /// The edge at so many units; beyond an int at its bound.
    int Edge(double units) const {
        constexpr double kBound = 1e12; // what a long can round
        return NearestInt(std::lround(std::clamp(units * m_scale, -kBound, kBound)));
    }
    RECT Edges(const RECT& r) const { return {Edge(r.left), Edge(r.top), Edge(r.right), Edge(r.bottom)}; }
    /// Of a line: at least a pixel.
    int Width(double units) const { return std::max(1, Edge(units)); }
    double Length(double units) const { return units * m_scale; }
    double Scale() const { return m_scale; }

private:
    double m_scale;
};

} // namespace melkar
