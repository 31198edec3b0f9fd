#pragma once

#include <MelkarCommon/frame/contents.h>

#include <string>

/// @file
/// Contents as texts that a test can compare.

/// "left,top right,bottom"
inline std::string Text(const CRect& area) {
    return std::to_string(area.left) + "," + std::to_string(area.top) + " " + std::to_string(area.right) + "," +
           std::to_string(area.bottom);
}

/// "series:text@area" for each figure, an exclamation mark behind those that are clipped.
inline std::string Figures(const melkar::ShownItem& item) {
    std::string all;
    for (const melkar::ShownFigure& figure : item.figures)
        all += std::to_string(figure.series) + ":" + figure.text + "@" + Text(figure.area) +
               (figure.isClipped ? "!|" : "|");
    return all;
}

/// "label|text|area"
inline std::string Text(const melkar::ShownMark& mark) { return mark.label + "|" + mark.text + "|" + Text(mark.area); }
