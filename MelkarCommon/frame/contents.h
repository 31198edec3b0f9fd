#pragma once

#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// @file
/// What a picture says, as plain data: for people who can't see it, for pages that answer the pointer, and for whoever
/// asks why something is where it is. `ShownBy` (registry/shown_by.h) gives it of a graph that has drawn.
///
/// Texts are UTF-8 and those of the picture: a figure that the picture cuts or rounds is so here, and one that it only
/// draws is as the data say it. Areas are in the units of the surface that shows the picture, as clicks are; what has
/// no area of its own has an empty one. Colours are `COLORREF`.

namespace melkar {

/// Where an axis stands on its canvas.
enum class AxisSide : std::uint8_t {
    Left,   ///< upwards
    Right,  ///< upwards
    Bottom, ///< rightwards
};

/// An axis. One of captions, such as days, has no values: its ends and step are 0.
struct ShownAxis {
    AxisSide side = AxisSide::Left; ///< of the canvas
    std::string label;              ///< as painted; mostly the unit
    double from = 0;                ///< value at its low end
    double to = 0;                  ///< value at its high end
    double step = 0;                ///< from line to line

    bool HasValues() const { return to != from; } ///< whether it is a scale
};

/// Figures of one kind, over all items: bars of a colour, a line, a part of a stack.
struct ShownSeries {
    std::string name;               ///< of its legend or axis, or one that only its profile says; empty: none
    COLORREF color = 0;             ///< what it is painted in; of several colours the usual one
    AxisSide axis = AxisSide::Left; ///< that it is measured at
};

/// One figure of an item.
struct ShownFigure {
    int series = 0;         ///< index in `Contents::series`
    std::string text;       ///< as the picture, or else its balloon, or else the data file writes it
    double value = 0;       ///< the number that it is drawn by; 0 if there is none
    bool isClipped = false; ///< it lies off its scale and is drawn at the scale's end
    CRect area;             ///< of its bar, dot or slice
    std::string balloon;    ///< the text of the balloon over it; empty if it has none
};

/// What stands at one place of the picture: a day, a slice, a level, a class.
struct ShownItem {
    std::string caption;              ///< of the day, slice, level or class
    std::string text;                 ///< what the picture writes at it; empty if nothing
    double value = 0;                 ///< the number behind that: of a stack its sum
    long status = 0;                  ///< of a day: 0 figures, 1 excluded, 2 and 3 no data, 4 no records
    bool isMissing = false;           ///< it has no figure at all
    std::optional<bool> reached;      ///< whether it came up to its target; none if it has no target
    std::vector<ShownFigure> figures; ///< one for each series that it has a figure of
    CRect area;                       ///< of the whole item
};

/// What a mark stands for.
enum class MarkKind : std::uint8_t {
    Target,  ///< what is aimed at
    Average, ///< of the figures, or another average that is a band
    Event,   ///< something that happened at a time
    Border,  ///< between classes
};

/// A line, band or sign that isn't a figure of an item.
struct ShownMark {
    MarkKind kind = MarkKind::Target; ///< what it stands for
    std::string label;                ///< of its legend; empty if it has none
    std::string text;                 ///< its figure, as the picture or else the data file writes it; a time as 06:32
    double value = 0;                 ///< the number that it is drawn by; of a time minutes
    CRect area;                       ///< a line across is as high as it is thick
};

/// All that a picture says.
struct Contents {
    std::string kind;                  ///< what the command calls this kind of chart; empty if nothing is registered
    std::string title;                 ///< as painted
    std::string unit;                  ///< of the items' figures; empty if none, or written with each
    std::string whole;                 ///< what its legend calls the sum of a stack; empty if nothing
    CRect area;                        ///< of the whole picture
    std::vector<ShownAxis> axes;       ///< those that are painted
    std::vector<ShownSeries> series;   ///< what figures belong to
    std::vector<ShownItem> items;      ///< in the order of the data
    std::vector<ShownMark> marks;      ///< in the order of painting
    std::vector<std::string> texts;    ///< whatever else is written, such as the summary of a day
    std::vector<std::string> messages; ///< those that stand across the picture
};

/// Moves all areas.
inline void MoveAreas(Contents& contents, int x, int y) {
    contents.area.OffsetRect(x, y);
    for (ShownItem& item : contents.items) {
        item.area.OffsetRect(x, y);
        for (ShownFigure& figure : item.figures)
            figure.area.OffsetRect(x, y);
    }
    for (ShownMark& mark : contents.marks)
        mark.area.OffsetRect(x, y);
}

} // namespace melkar
