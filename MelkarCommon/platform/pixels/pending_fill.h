#pragma once

#include <MelkarCommon/platform/seam/color.h>
#include <MelkarCommon/platform/types.h>

namespace melkar {

/// A part of a picture that was filled but isn't written yet: most of it is about to be covered by a second fill (a
/// canvas on its ground), and writing each pixel once is what a redraw is measured by.
struct PendingFill {
    Color color = 0;
    RECT rect{0, 0, 0, 0}; ///< empty: nothing waits
};

} // namespace melkar
