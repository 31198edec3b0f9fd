#include <MelkarCommon/quadrant/quadrant_layout.h>

#include <numeric>

namespace melkar {

std::array<CString, 4> ShareTexts(const QuadrantCounts& counts) {
    std::array<CString, 4> texts;
    const double total = std::accumulate(counts.begin(), counts.end(), 0.0);
    if (!(total > 0))
        return texts;
    const auto largest = static_cast<std::size_t>(std::max_element(counts.begin(), counts.end()) - counts.begin());
    double rest = 100;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const CString share = FormatFixed(counts[i] * 100.0 / total, 1);
        texts[i] = share + "% ";
        if (i != largest)
            rest -= ToDouble(share);
    }
    texts[largest] = FormatFixed(rest, 1) + "% ";
    return texts;
}

} // namespace melkar
