#pragma once

#include <MelkarCommon/gauges/bmi_graph_base.h>

/// @file
/// A gauge of the degree of obesity.

/// The degree of obesity in per cent: above, a band of three classes in two strips with captions; below, a disc at the
/// figure in the colour of its class, with the figure and a per cent sign beside it.
///
/// The upper bound of the third class is that of the profile, not `MAX`.
class MELKAR_API CHimandGraph : public CBMIGraph_Base {
public:
    /// Arguments as for `CGraph`. Three classes.
    CHimandGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);

    long ReadIniFile(char* path) override; ///< the keys of this class alone. @return 0
    /// Ground and strips; the canvas is what lies below the first strip. Leaves the transparent background mode behind.
    /// @return 0
    long DrawCanvas() override;
    long DrawValue() override; ///< @return 0

    melkar::Contents Shown() const; ///< the figure as an item, the borders of the classes as marks, captions as texts
    static melkar::ClassKeys ProfileKeys(); ///< the keys that this class reads

protected:
    COLORREF m_crClassName[kMostClasses] = {}; ///< second strip
    CStringArray m_saClassCaption2;            ///< second strip

private:
    struct KeyRows;
    static constexpr int kClasses = 3;
    MELKAR_LOCAL CRect FirstStripOf(int cls, int bottom) const;
    MELKAR_LOCAL void DrawStrip(const CRect& strip, COLORREF color, const CString& caption);
    MELKAR_LOCAL CString FigureText() const;
    MELKAR_LOCAL CRect DiscIn(const CRect& band) const;
    MELKAR_LOCAL void DrawDisc(const CRect& band, const CString& text);
};
