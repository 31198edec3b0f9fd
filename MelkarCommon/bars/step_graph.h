#pragma once

#include <MelkarCommon/bars/line_graph.h>

/// Steps per day. Unlike a bar graph its data file sets the scale and the average, and its legends stand in a row above
/// the canvas at the right: the average at the end, the target left of it.
///
/// Data file: row 0 skipped; row 1: header fields in columns 0 and 1, top of the scale in 7, average in 9; then per day
/// status, date caption, and the steps in column 4, which count only with status 0.
class MELKAR_API CStepGraph : public CLineGraph {
public:
    /// Arguments as for `CGraph`.
    CStepGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);

    /// @return 0; 101 with everything kept; 102 with the header taken; 103.
    long ReadDataFile(char* path) override;
    void DrawAverage() override;
    void DrawTarget() override;

protected:
    CRect m_rcAverage; ///< box of the average legend

private:
    MELKAR_LOCAL void LayAverageLegend(int right);
};
