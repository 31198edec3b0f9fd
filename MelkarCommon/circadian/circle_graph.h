#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/graph.h>

namespace melkar {
struct ClassFigures;
struct CircleMarks;
} // namespace melkar

/// How a person's active time divides into light, moderate and vigorous: a pie of three slices and a legend with the
/// share and the minutes of each. The shares add up to 100.0.
///
/// The graph reads no file: `SetData` hands it the minutes of the intensity levels, and `m_nModerateFrom` and
/// `m_nModerateTo` say which of them are moderate.
class MELKAR_API CCircleGraph : public CGraph {
public:
    /// Arguments as for `CGraph`.
    CCircleGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);
    ~CCircleGraph() override;

    long ReadIniFile(char* path) override;
    /// Pie in the middle, legend centred below it; the path isn't used.
    /// @return 0, 201 without a device context, -999 after an exception while drawing.
    long Draw(CRect area, char* path) override;
    /// Pie at the left, legend beside it, without the legend if the day is excluded. @return as `Draw`
    virtual long DrawSeparate(CRect area, char* path);
    virtual void DrawCircle(); ///< works out the shares and paints the pie; none below 0.01 minutes

    /// Takes the minutes at the levels 1, 2, ... as text; they are copied. Without data `Draw` shows the message for no
    /// records. @return 0; 103 after an exception, with what was copied until then. Null counts as empty.
    long SetData(CStringArray* values);
    void DrawSecExs();     ///< the legend
    void CalcCircleRect(); ///< lays out `m_rcCircle` and `m_rcLegend`
    static melkar::ClassKeys ProfileKeys();

    int m_nModerateFrom = 4; ///< first level of the moderate class, from 1; the caller's
    int m_nModerateTo = 6;   ///< its last level, at least the first one less 1; bounds beyond the data stop there

protected:
    int m_bSeparate = 0; ///< 1: the legend stands beside the pie
    CRect m_rcLegend;
    CRect m_rcCircle;
    COLORREF m_crLight = 0;
    COLORREF m_crModerate = 0;
    COLORREF m_crVigorous = 0;
    CString m_strLightLabel;
    CString m_strModerateLabel;
    CString m_strVigorousLabel;
    double m_dLightRate = 0; ///< per cent
    double m_dModerateRate = 0;
    double m_dVigorousRate = 0;
    double m_dLightMinutes = 0;
    double m_dModerateMinutes = 0;
    double m_dVigorousMinutes = 0;
    CString m_strMinLabel;

private:
    struct KeyRows;
    struct Cycle;
    MELKAR_LOCAL void PutLegendBelow();
    MELKAR_LOCAL void PutLegendBeside();
    MELKAR_LOCAL void DrawLegendUnlessExcluded();
    MELKAR_LOCAL void TakeShares(const melkar::ClassFigures& shares);
    MELKAR_LOCAL void DrawSlice(CPoint from, CPoint to, double share, COLORREF color);
    MELKAR_LOCAL int WidestOf(const CString (&texts)[3]) const;
};
