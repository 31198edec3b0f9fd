#pragma once

#include <MelkarCommon/bars/activity_cal_graph.h>

/// @file
/// A weight plan over the activity calories.

namespace melkar {
struct LegendEntry;
}

/// The weight plan over the activity calories: a thick line for the target weight of each day and a square for each
/// weight measured, on a second scale at the right that shares the left one's grid lines. The plan lies beside the data
/// file, ".sim" behind its path.
class MELKAR_API CSimulation : public CActivityCalGraph {
public:
    /// Arguments as for `CGraph`.
    CSimulation(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);

    long ReadIniFile(char* path) override;
    /// @return 0, 201 without a device context, -999 after an exception while drawing.
    long Draw(CRect area, char* path) override;
    long DrawCanvas() override; ///< frame and right scale. @return 0
    void DrawSecExs() override; ///< the three legend entries above the canvas
    /// Reads the plan; the scale of the data file must stand already, since its number of steps is taken over.
    /// @return 0; 101 with everything kept; 102 without rows, and with the scale kept if the header is missing too; 103
    /// after an exception and for a left scale without a step.
    virtual long ReadWeightDataFile(char* path);
    long DrawWeightValue();                 ///< line and squares. @return 0
    melkar::Contents Shown() const;         ///< plan and weights as series behind the bars
    static melkar::ClassKeys ProfileKeys(); ///< the keys that this class reads
    static melkar::DataTables DataFiles();  ///< the data file and the plan beside it

protected:
    CString m_strWeightLabel;       ///< legend of the squares, label of the right scale
    CString m_strTargetWeightLabel; ///< legend of the line
    CStringArray m_saTargetWeights; ///< the plan, a weight for each row
    CStringArray m_saWeights;       ///< empty for a day without a measurement
    CStringArray m_saWeightDates;   ///< date of each row
    int m_nWeightInterval = 0;      ///< step of the right scale
    CString m_strWeightStart;       ///< first date of the plan
    CString m_strWeightField2;      ///< field 2 of its header, kept for the application
    int m_nWeightMax = 0;           ///< top of the right scale
    int m_nWeightMin = 0;           ///< its bottom
    COLORREF m_crOverweight = 0;    ///< a measured weight above the target
    COLORREF m_crUnderweight = 0;   ///< one at or below it
    COLORREF m_crTargetWeight = 0;  ///< the line of the plan

private:
    struct KeyRows;
    struct Plan;
    struct PlanHead;
    struct PlanColumns;
    struct Cycle;
    MELKAR_LOCAL long ReadPlan(char* path);
    MELKAR_LOCAL bool SetWeightScale(int highest, int lowest);
    MELKAR_LOCAL melkar::ScalePixels WeightScale() const;
    MELKAR_LOCAL bool HasStroke(int row) const;
    MELKAR_LOCAL void DrawTargetStroke(int row);
    MELKAR_LOCAL void AddRowTo(melkar::ShownItem& item, int row) const;
    MELKAR_LOCAL void DrawWeightSquare(int row);
    MELKAR_LOCAL void DrawLegendSquare(const CString& text, const melkar::LegendEntry& entry, COLORREF color);
};
