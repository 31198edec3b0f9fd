#pragma once

#include <algorithm>
#include <cmath>

// The size of letters on paper. Small paper has the layout of larger one at a smaller scale: letters shrink with the
// room, so that titles keep clear of legends and figures stay in their panels.
class Letters {
public:
    // The room between the margins, 96 units an inch.
    Letters(int width, int height)
        : m_scale(std::clamp(std::min(width / kFullWidth, height / kFullHeight), kLeast, 1.0)) {}

    // Of a size in points, or a length that goes with one, on paper that is large enough.
    int Of(int size) const { return static_cast<int>(std::lround(size * m_scale)); }

private:
    static constexpr double kFullWidth = 640;  // legends of three texts stand beside a title
    static constexpr double kFullHeight = 500; // two sheets of days stand on a page
    static constexpr double kLeast = 0.7;      // 8 points become 6, which can still be read

    double m_scale;
};
