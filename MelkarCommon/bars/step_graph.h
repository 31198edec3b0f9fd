#pragma once

#include <MelkarCommon/bars/line_graph.h>

/// @file
/// Steps of days.

/// Steps per day. Unlike a bar graph its data file sets the scale and the average, and its legends stand in a row above
/// the canvas at the right: the average at the end, the target left of it.
class MELKAR_API CStepGraph : public CLineGraph {
public:
    /// Arguments as for `CGraph`.
    CStepGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);

    /// @return 0; 101 with everything kept; 102 with the header taken; 103.
    long ReadDataFile(char* path) override;
    void DrawAverage() override;
    void DrawTarget() override;
    static melkar::DataTables DataFiles(); ///< the data file that it reads

protected:
    CRect m_rcAverage; ///< box of the average legend

private:
    struct File;
    MELKAR_LOCAL void LayAverageLegend(int right);
};
