#pragma once

#include <MelkarCommon/api.h>

/// @file
/// What graph operations and data readers return, by name.

namespace melkar {

constexpr long kOk = 0;             ///< success
constexpr long kNothingToDraw = -1; ///< a message was painted and nothing more is to be drawn, or nothing to print
constexpr long kNoFile = 101;       ///< the data file can't be opened; what was read before stays
constexpr long kNoDays = 102;       ///< the data file has no day rows
constexpr long kReadFailed = 103;   ///< an exception while reading
constexpr long kNoSurface = 201;    ///< no device context
constexpr long kNoWeekFile = 210;   ///< the weekly data file can't be opened
constexpr long kDrawFailed = -999;  ///< an exception while drawing, a rectangle beyond all bounds, no memory for it
constexpr long kImageFailed = 1200; ///< an exception while a picture file was drawn

/// A short English sentence for a code, without a full stop; "unknown result" for any other number.
MELKAR_API const char* ResultText(long code);

} // namespace melkar
