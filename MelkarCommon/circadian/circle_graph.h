#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/graph.h>

/// @file
/// A pie of light, moderate and vigorous time.

namespace melkar {
struct ClassFigures;
struct CircleSlice;
} // namespace melkar

/// How a person's active time divides into light, moderate and vigorous: a pie of three slices and a legend with the
/// share and the minutes of each. The shares add up to 100.0.
///
/// The graph reads no file: `SetData` hands it the minutes of the intensity levels, and `m_nModerateFrom` and
/// `m_nModerateTo` say which of them are moderate.
///
/// @code{.cpp}
/// CCircleGraph circle(nullptr, view, "INTENSITY", view, nullptr, balloon);
/// CStringArray minutes;
/// for (const char* level : {"210", "95", "40", "60", "12", "4", "0", "0", "0"})
///     minutes.Add(level);
/// circle.SetData(&minutes);
/// circle.DrawSeparate(CRect(0, 0, 480, 300), nullptr); // pie at the left, legend beside it
/// @endcode
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
    void DrawSecExs();                      ///< the legend
    void CalcCircleRect();                  ///< lays out `m_rcCircle` and `m_rcLegend`
    melkar::Contents Shown() const;         ///< a slice for each class, minutes at it and its share as its figure
    static melkar::ClassKeys ProfileKeys(); ///< the keys that this class reads

    int m_nModerateFrom = 4; ///< first level of the moderate class, from 1; the caller's
    int m_nModerateTo = 6;   ///< its last level, at least the first one less 1; bounds beyond the data stop there

protected:
    int m_bSeparate = 0;           ///< 1: the legend stands beside the pie
    CRect m_rcLegend;              ///< where the legend stands
    CRect m_rcCircle;              ///< where the pie stands
    COLORREF m_crLight = 0;        ///< slice of the light class
    COLORREF m_crModerate = 0;     ///< slice of the moderate class
    COLORREF m_crVigorous = 0;     ///< slice of the vigorous class
    CString m_strLightLabel;       ///< caption of the light class
    CString m_strModerateLabel;    ///< caption of the moderate class
    CString m_strVigorousLabel;    ///< caption of the vigorous class
    double m_dLightRate = 0;       ///< per cent
    double m_dModerateRate = 0;    ///< per cent
    double m_dVigorousRate = 0;    ///< per cent
    double m_dLightMinutes = 0;    ///< minutes in the light class
    double m_dModerateMinutes = 0; ///< minutes in the moderate class
    double m_dVigorousMinutes = 0; ///< minutes in the vigorous class
    CString m_strMinLabel;         ///< unit behind the minutes

private:
    struct KeyRows;
    struct Cycle;
    MELKAR_LOCAL void PutLegendBelow();
    MELKAR_LOCAL void PutLegendBeside();
    MELKAR_LOCAL void DrawLegendUnlessExcluded();
    MELKAR_LOCAL void TakeShares(const melkar::ClassFigures& shares);
    MELKAR_LOCAL bool IsLegendShown() const;
    MELKAR_LOCAL melkar::ClassFigures MinutesOfClasses() const;
    MELKAR_LOCAL bool IsPieShown(const melkar::ClassFigures& minutes) const;
    MELKAR_LOCAL void DrawSlice(const melkar::CircleSlice& slice, COLORREF color);
    MELKAR_LOCAL static CString ShareText(double share);
    MELKAR_LOCAL CString MinutesText(double minutes) const;
    MELKAR_LOCAL void AddClassTo(melkar::Contents& contents, const CString& label, COLORREF color, double minutes,
                                 double share, const CRect& area) const;
    MELKAR_LOCAL int WidestOf(const CString (&texts)[3]) const;
};
