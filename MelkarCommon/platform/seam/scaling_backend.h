#pragma once

#include <MelkarCommon/platform/seam/backend.h>

namespace melkar {

/// Takes units and draws on `to` in its pixels, `scale` times as many. Texts go to it as they are: it paints them
/// larger by itself.
std::unique_ptr<Backend> MakeScalingBackend(std::unique_ptr<Backend> to, double scale);

} // namespace melkar
