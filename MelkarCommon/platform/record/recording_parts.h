#pragma once

#include <MelkarCommon/platform/record/record.h>
#include <MelkarCommon/platform/seam/box.h>

/// @file
/// Internal. The room that recorded operations take.

namespace melkar {

/// The whole pixels that an operation may touch, its clip left aside.
Box BoxOf(const RecordedOp& op);

/// True if the operation carries a clip and part of it lies beyond: otherwise its clip changes nothing.
bool IsCut(const RecordedOp& op);

} // namespace melkar
