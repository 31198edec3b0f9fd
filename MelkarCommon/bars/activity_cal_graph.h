#pragma once

#include <MelkarCommon/bars/expenditure_graph.h>

/// @file
/// Activity calories of days or periods.

/// Activity calories: one bar per day or per period, with a target for each, no lines and no intake band. The scale
/// starts from the profile at each read and may go to the big one.
class MELKAR_API CActivityCalGraph : public CExpenditureGraph {
public:
    /// Arguments as for `CGraph`. On a desktop whose work area is 820 pixels wide or less the dates are 3 points
    /// smaller.
    CActivityCalGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);

    /// @return 0; 101 with everything kept but the scale; 102; 103.
    long ReadDataFile(char* path) override;
    void DrawSecExs() override;            ///< nothing
    static melkar::DataTables DataFiles(); ///< the data file that it reads

private:
    struct File;
    struct Period;
    struct PeriodColumns;
};
