#pragma once

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/types.h>

#include <memory>

namespace melkar::tool {

struct DeleteSurface {
    void operator()(HDC surface) const { DeleteDC(surface); }
};
/// A surface that goes with its scope.
using Surface = std::unique_ptr<HDC__, DeleteSurface>;

} // namespace melkar::tool
