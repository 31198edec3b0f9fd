#pragma once

#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/text/text_engine.h>

#include <variant>

/// @file
/// Internal. What is drawn for. The kinds are a variant, visited by a function for each: where a new one is missing,
/// nothing compiles.

namespace melkar {

/// In device units.
struct DeviceSize {
    int width;
    int height;
};

/// Pixels.
struct ScreenDevice {
    double scale = 1; ///< as many pixels as that has a unit of compatible bitmaps
};
/// Pages: what is drawn stays vector, a line as thin as a pixel would get lost.
struct PaperDevice {};
/// A list of operations, the same on every machine.
struct RecordDevice {};
/// A list of the operations that a screen would get, with the steps that drew them.
struct TraceDevice {};

/// What a surface is or, of a memory surface, what it suits; compatible surfaces and bitmaps take it over. What a
/// memory surface draws on may be of another kind: a screen's draws on a bitmap that suits a page, if that is selected.
struct Device {
    std::variant<ScreenDevice, PaperDevice, RecordDevice, TraceDevice> kind;
    int dpi = kScreenDpi;
    DeviceSize size{0, 0};
};

TextMedium TextsOf(const Device& device);
/// In device units.
int LeastPenWidth(const Device& device);
inline bool IsTraced(const Device& device) { return std::holds_alternative<TraceDevice>(device.kind); }

} // namespace melkar
