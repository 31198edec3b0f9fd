#pragma once

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/surface.h>

#include <gtest/gtest.h>

#include <string>

/// What `draw` puts on a new recording surface, one operation a line. Texts have no ground and are
/// 8 x 15 a character until another font is selected. Every drawing object has to be handed back.
template <class Draw> std::string RecordOf(Draw draw) {
    const std::size_t before = LiveObjectCount();
    const HDC surface = CreateRecordingSurface(400, 300);
    SetBkMode(surface, TRANSPARENT);
    draw(surface);
    const std::string record = GetRecording(surface);
    DeleteDC(surface);
    EXPECT_EQ(LiveObjectCount(), before);
    return record;
}
