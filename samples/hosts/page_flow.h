#pragma once

#include <vector>

// Boxes below each other, page by page, in device units from the top of a page's room.
//
//   +--------+   +--------+
//   | box 0  |   | box 3  |   as many boxes as fit, a gap between two of them; those that grow share what is left.
//   | box 1  |   |        |   The last page, which may be half empty, grows no more than the one before.
//   | box 2  |   +--------+
//   +--------+     page 1
//     page 0

struct FlowBox {
    int least; // height
    bool grows;
};

struct FlowPlace {
    int page; // from 0
    int top;
    int bottom;
};

// A box that is higher than a page has one to itself and ends with it. Not-positive heights of a page count as 1.
std::vector<FlowPlace> FlowOverPages(const std::vector<FlowBox>& boxes, int pageHeight, int gap);
