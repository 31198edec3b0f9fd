#pragma once

#include <MelkarCommon/gauges/bmi_graph_base.h>

/// @file
/// A bar gauge of one figure.

/// A horizontal bar from the left edge to the figure, in the colour of the figure's class, with the figure written in
/// it or, where it is too short, behind it.
///
/// @code{.cpp}
/// CBMIGraph_Eng bmi(nullptr, view, "BMI", view, nullptr, balloon);
/// bmi.Draw(CRect(0, 0, 300, 40), path); // the file holds the figure
/// @endcode
class MELKAR_API CBMIGraph_Eng : public CBMIGraph_Base {
public:
    using CBMIGraph_Base::CBMIGraph_Base;

    /// Black is the colour of texts after a figure in its bar or whole behind it; else it stays what it was. @return 0
    long DrawValue() override;
    melkar::Contents Shown() const; ///< the figure as an item

private:
    MELKAR_LOCAL CRect BarIn(const CRect& band) const;
    MELKAR_LOCAL void WriteFigure(const CRect& band, int end);
};
