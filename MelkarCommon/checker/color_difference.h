#pragma once

#include <MelkarCommon/platform/types.h>

/// @file
/// Internal. How well colours stand out against each other.

namespace melkar {

/// Who looks at a picture, and by what.
enum class Sight {
    Usual,
    Protanopia,   ///< without the cones for long waves: red is dark
    Deuteranopia, ///< without those for middle ones
    Tritanopia,   ///< without those for short ones: blue and green are much alike
    Grey,         ///< by a printer without colours
};

/// How bright a colour is against another, from 1 (alike) to 21 (black and white): (L1 + 0.05) / (L2 + 0.05) of the
/// relative luminances, as the W3C's Web Content Accessibility Guidelines 2.1 define it, which ask 4.5 for texts and 3
/// for marks.
double ContrastOf(COLORREF a, COLORREF b);

/// The distance of two colours in CIE L*a*b* under D65 (CIE 76, Euclid's), as somebody sees them: the colour
/// blindnesses after Machado, Oliveira and Fernandes, "A Physiologically-based Model for Simulation of Color Vision
/// Deficiency", IEEE Transactions on Visualization and Computer Graphics 15(6), 2009, their matrices of full severity
/// on linear light. In grey it is the difference of L*.
double DistanceOf(COLORREF a, COLORREF b, Sight sight);

} // namespace melkar
