#include <MelkarCommon/bars/bar_layout.h>

#include <cmath>

namespace melkar {

int BarAt(const CObArray& bars, int x, int y, int bottom) {
    if (y >= bottom)
        return -1;
    for (int i = 0; i < bars.GetSize(); ++i) {
        const RECT& bar = *bars[i];
        if (bar.left > x)
            return -1; // bars run from left to right: the point lies in the gap before this one
        if (x <= bar.right && y >= bar.top)
            return i;
    }
    return -1;
}

TurnedExtent ExtentOf(int width, int height, int escapement) {
    const double angle = escapement * 3.141592 / 1800;
    return {width * std::cos(angle) + height * std::sin(angle), height * std::cos(angle) + width * std::sin(angle)};
}

} // namespace melkar
