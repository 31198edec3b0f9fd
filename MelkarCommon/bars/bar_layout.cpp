#include <MelkarCommon/bars/bar_layout.h>

namespace melkar {

std::vector<LevelStretch> LevelStretches(const CRect& canvas, const std::vector<std::optional<int>>& heights) {
    std::vector<LevelStretch> stretches;
    const int days = static_cast<int>(heights.size());
    for (int day = 0; day < days; ++day) {
        if (!heights[day])
            continue;
        const int right = SlotLeft(canvas, day + 1, days);
        if (day > 0 && heights[day - 1] == heights[day])
            stretches.back().right = right;
        else
            stretches.push_back({SlotLeft(canvas, day, days), right, *heights[day]});
    }
    return stretches;
}

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

int PlacedBarAt(const CObArray& bars, CPoint point) {
    for (int i = 0; i < bars.GetSize(); ++i)
        if (CRect(*bars[i]).PtInRect(point))
            return i;
    return -1;
}

} // namespace melkar
