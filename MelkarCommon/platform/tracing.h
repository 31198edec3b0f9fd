#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/running_step.h>
#include <MelkarCommon/platform/types.h>

#include <cstddef>
#include <string>
#include <vector>

/// @file
/// What coloured a pixel: a surface that keeps what is drawn together with the step of the cycle that drew it.
///
/// @code{.cpp}
/// HDC trace = CreateTracingSurface(900, 500);
/// {
///     CBarGraph week(nullptr, trace, "STEPS", trace, nullptr, nullptr);
///     week.SetDirectOutput(1);
///     week.Draw(CRect(0, 0, 900, 500), path);
/// }
/// const std::vector<melkar::TracedLine> lines = melkar::TraceOf(trace);
/// for (const melkar::PixelLayer& layer : melkar::LayersAt(trace, POINT{480, 340}))
///     std::printf("%s: %s\n", std::string(lines[layer.line].step.operation).c_str(), lines[layer.line].text.c_str());
/// DeleteDC(trace);
/// @endcode

/// Keeps what is drawn as a list of operations, those that a memory surface of that dpi would draw: texts have the
/// machine's fonts, and what a later one covers stays. Each knows the step that drew it, lines that go on from each
/// other that of the first. Null as other surfaces; freed with `DeleteDC`. `GetRecording` gives the same lines without
/// steps.
MELKAR_API HDC CreateTracingSurface(int width, int height, int dpi = 96);

namespace melkar {

/// A line of such a list.
struct TracedLine {
    std::string text; ///< as in a record
    StepName step;    ///< that drew it; empty names outside of all steps
};

/// All lines, in the order of drawing; none of another surface, and without memory.
MELKAR_API std::vector<TracedLine> TraceOf(HDC surface);

/// What drew on a pixel.
struct PixelLayer {
    std::size_t line; ///< of the list, from 0
    COLORREF color;   ///< that the pixel had from then on
};

/// All that drew on a pixel, in the order of drawing: the last is what one sees, also where it has the colour of what
/// lies below. Where two lines of a path meet, the first one that alone would draw there counts. It is exact, for the
/// operations are drawn again on pixels, and takes memory and time for that. None of another surface, of a pixel beyond
/// it and without memory.
MELKAR_API std::vector<PixelLayer> LayersAt(HDC surface, POINT pixel);

} // namespace melkar
