#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/declarative/graph_base.h>

#include <vector>

/// @file
/// A pie on a panel.

namespace melkar {
class FigureFormat;
struct PieSlice;
struct PieSquare;
} // namespace melkar

/// One slice.
struct circle_value {
    COLORREF color; ///< of the slice
    double value;   ///< any number; its share of the sum of all counts
};

/// A pie in the panel's graph area: colours from the profile, values from the host, each value half-way out in its
/// slice. No grid, no scale, no ground of the graph area.
///
/// @code{.cpp}
/// CCircleGraphBase pie(nullptr, view, "PIE", view, nullptr, balloon, 0.03F);
/// pie.ReadIniFile(nullptr);
/// pie.SetValue(210, 0);
/// pie.SetValue(60, 1);
/// pie.Draw(CRect(0, 0, 700, 400), nullptr);
/// @endcode
class MELKAR_API CCircleGraphBase : public CGraphBase {
public:
    /// Arguments as for `CGraph`, then the smallest share, 0 to 1, that is still shown.
    CCircleGraphBase(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon, float minRate);
    ~CCircleGraphBase() override;

    /// The panel's keys and the slices', whose values are 0 then. @return 0.
    long ReadIniFile(char* path) override;
    void DrawGraph(CRect graph) override;
    virtual void DrawValueLabel(CRect square); ///< the labels; `square` is the pie's

    /// Sets the value of slice `index`; with any other index a black slice is added.
    void SetValue(float value, int index);
    void ClearValue() { m_vecValues.clear(); }                                 ///< takes the colours away, too
    float GetRate(double value) { return static_cast<float>(value / m_dSum); } ///< share of the sum last drawn

    melkar::Contents Shown() const;         ///< an item for each slice, named by the note box
    static melkar::ClassKeys ProfileKeys(); ///< the keys that this class reads

protected:
    std::vector<circle_value> m_vecValues; ///< in the order of the keys
    double m_dSum = 0;                     ///< of all values, set by each drawing
    int m_nValueFont = 0;                  ///< cell height of labels, and half the height of a label's box
    CString m_strValueFormat;              ///< of one double
    CString m_strValueUnit;                ///< behind each label
    float m_fMinRate = 0;                  ///< smallest share that is shown, 0 to 1

private:
    struct KeyRows;
    MELKAR_LOCAL void CalcSum();
    MELKAR_LOCAL CRect CalcLabelRect(CPoint outer, CPoint centre, int size) const;
    MELKAR_LOCAL std::vector<double> Values() const;
    MELKAR_LOCAL CString LabelOf(const melkar::FigureFormat& format, int index) const;
    MELKAR_LOCAL void DrawSlice(const melkar::PieSquare& pie, const melkar::PieSlice& slice);
};
