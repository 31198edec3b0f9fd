#pragma once

#include "../draw.h"

#include <MelkarCommon/frame/contents.h>

#include <cstddef>
#include <string>
#include <vector>

/// @file
/// How a pixel of a picture came to its colour.

namespace melkar::tool {

/// An operation that drew on the pixel.
struct Layer {
    std::size_t number = 0; ///< of all that were drawn, from 1
    std::string text;       ///< as in a record
    std::string owner;      ///< class of the step that drew it; empty outside of all steps
    std::string step;       ///< empty where the table gives it no name
    COLORREF color = 0;     ///< of the pixel from then on

    bool operator==(const Layer& other) const {
        return text == other.text && owner == other.owner && step == other.step && color == other.color;
    }
};

struct PixelStory {
    long result = 0;             ///< of the drawing; nothing else is known if it isn't 0
    std::vector<Layer> layers;   ///< the last is what one sees
    std::vector<Contents> shown; ///< what the picture says

    const Layer* Top() const { return layers.empty() ? nullptr : &layers.back(); }
    COLORREF Color() const { return Top() ? Top()->color : kWhite; }
    /// Whether the same operation, of the same step, has given it the same colour.
    bool EndsLike(const PixelStory& other) const;
};

/// Draws, within a `HostDirectory`, as `Draw` does on pixels. Nothing is told of a failure.
PixelStory StoryOf(const Request& request, CPoint at);

/// A line for each operation of the picture: "  12 CBarGraph::DrawDate text ...". The result counts as above.
long ListOperations(const Request& request, std::string& list);

/// "CBarGraph::DrawDate".
std::string NameOfStep(const std::string& owner, const std::string& step);
/// "#7C92AC".
std::string HexOf(COLORREF color);

} // namespace melkar::tool
