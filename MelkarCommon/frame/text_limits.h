#pragma once

/// @file
/// The fixed room that texts from files have while they are measured and painted, in bytes; `CGraph::Limited` cuts
/// them.

namespace melkar {

constexpr int kCaptionBytes = 127;    ///< captions and legends
constexpr int kClassLabelBytes = 250; ///< classes of intensity along the sheet of a day
constexpr int kLabelBytes = 255;      ///< titles, labels along the canvas, balloons
constexpr int kMessageBytes = 511;    ///< status messages

} // namespace melkar
