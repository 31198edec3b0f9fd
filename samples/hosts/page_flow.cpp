#include "page_flow.h"

#include <algorithm>
#include <cstddef>

namespace {

// The boxes of a page are those from `first` up to the one before `last`.
struct Span {
    std::size_t first;
    std::size_t last;
};

Span BoxesOfPage(const std::vector<FlowBox>& boxes, std::size_t first, int pageHeight, int gap) {
    std::size_t last = first + 1;
    for (int used = boxes[first].least; last < boxes.size(); ++last) {
        used += gap + boxes[last].least;
        if (used > pageHeight)
            break;
    }
    return {first, last};
}

// By how much each box that grows becomes higher, as a share of its own height.
double GrowthOf(const std::vector<FlowBox>& boxes, Span page, int pageHeight, int gap) {
    int left = pageHeight - static_cast<int>(page.last - page.first - 1) * gap;
    int growing = 0;
    for (std::size_t i = page.first; i < page.last; ++i) {
        left -= boxes[i].least;
        growing += boxes[i].grows ? boxes[i].least : 0;
    }
    return growing > 0 ? static_cast<double>(std::max(left, 0)) / growing : 0;
}

} // namespace

std::vector<FlowPlace> FlowOverPages(const std::vector<FlowBox>& boxes, int pageHeight, int gap) {
    const int room = std::max(pageHeight, 1);
    std::vector<FlowPlace> places;
    double growth = 0;
    for (int page = 0; places.size() < boxes.size(); ++page) {
        const Span span = BoxesOfPage(boxes, places.size(), room, gap);
        const bool mayBeHalfEmpty = page > 0 && span.last == boxes.size();
        const double own = GrowthOf(boxes, span, room, gap);
        growth = mayBeHalfEmpty ? std::min(own, growth) : own;
        int top = 0;
        for (std::size_t i = span.first; i < span.last; ++i) {
            const int more = boxes[i].grows ? static_cast<int>(boxes[i].least * growth) : 0;
            const int bottom = std::min(top + boxes[i].least + more, std::max(room, top + 1));
            places.push_back({page, top, bottom});
            top = bottom + gap;
        }
    }
    return places;
}
