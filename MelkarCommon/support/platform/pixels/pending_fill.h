#pragma once

#include <MelkarCommon/support/platform/seam/color.h>

namespace melkar {

/// Rows of a picture that were filled over their whole width but aren't written yet: most of them are about to be
/// covered by a second fill (a canvas on its ground), and writing each pixel once is what a redraw is measured by.
struct PendingFill {
    Color color = 0;
    int top = 0;
    int bottom = 0; ///< the same as `top` if nothing is pending

    bool Any() const { return top < bottom; }
};

} // namespace melkar
