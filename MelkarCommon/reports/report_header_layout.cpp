#include <MelkarCommon/reports/report_header_layout.h>

#include <MelkarCommon/support/bounds.h>

#include <algorithm>

namespace melkar {
namespace {

CRect Below(const CRect& cell, int distance) {
    return {cell.left, cell.top + distance, cell.right, cell.bottom + distance};
}

/// Copies of the cell `first` in the rows below it, up to `last`, `height` apart.
void Continue(HeaderCells& cells, HeaderCell first, HeaderCell last, int height) {
    for (int cell = first + 1; cell <= last; ++cell)
        cells[cell] = Below(cells[cell - 1], height);
}

/// Row 3 from column B on: each cell begins where the one before ends; all are as high as B3's sample.
void LayOutRow3(HeaderCells& cells, const CRect& block, const HeaderSamples& samples) {
    cells[B3].right = cells[B3].left + samples.text1.width;
    cells[B3].bottom = cells[B3].top + samples.text1.height;
    const auto behind = [&cells](HeaderCell cell, HeaderCell before, int width) {
        cells[cell] = {cells[before].right, cells[A3].top, cells[before].right + width, cells[B3].bottom};
    };
    behind(C3, B3, samples.label2.width);
    behind(D3, C3, samples.text2.width);
    behind(E3, D3, samples.label3.width);
    behind(F3, E3, 0);
    cells[F3].right = block.right;
}

void LayOutTopRight(HeaderCells& cells, const CRect& block, const HeaderSamples& samples) {
    const int bottom = cells[A0].bottom;
    cells[H0] = {block.right - samples.text4.width, block.top, block.right, bottom};
    cells[G0] = {cells[H0].left - samples.label4.width, block.top, cells[H0].left, bottom};
}

/// No cell of a block that makes no sense; those of a host stay.
void EmptyCells(HeaderCells& cells) { std::fill_n(cells.begin(), H5 + 1, CRect()); }

/// Columns A and B down to row 3, row 3, and the pair at the top right. @return the height of a row
int LayOutUpperRows(HeaderCells& cells, const CRect& block, const HeaderSamples& samples) {
    const int height = samples.label1.height + 1;
    cells[A0] = {block.left, block.top, block.left + samples.label1.width, block.top + height};
    Continue(cells, A0, A3, height);
    cells[B0] = {cells[A0].right + 1, cells[A0].top, block.right, cells[A0].bottom};
    Continue(cells, B0, B3, height);
    LayOutRow3(cells, block, samples);
    LayOutTopRight(cells, block, samples);
    return height;
}

} // namespace

void LayOutGraphHeader(HeaderCells& cells, const CRect& block, const HeaderSamples& samples) {
    if (!MakesSense(block))
        return EmptyCells(cells);
    const int height = LayOutUpperRows(cells, block, samples);
    Continue(cells, A3, A6, height);
    Continue(cells, B3, B6, height);
    cells[B6].right = block.right;
    Continue(cells, C3, C5, height);
    Continue(cells, D3, D5, height);
    Continue(cells, E3, E5, height);
    Continue(cells, F3, F5, height);
    constexpr int kRowsDown = 5;
    cells[H5] = Below(cells[H0], kRowsDown * height);
    cells[G5] = Below(cells[G0], kRowsDown * height);
}

void LayOutCircadianHeader(HeaderCells& cells, const CRect& block, const HeaderSamples& samples) {
    if (!MakesSense(block))
        return EmptyCells(cells);
    const int height = LayOutUpperRows(cells, block, samples);
    cells[B4] = Below(cells[B3], height);
    cells[C4] = Below(cells[C3], height);
    cells[D4] = Below(cells[D3], height);
}

} // namespace melkar
