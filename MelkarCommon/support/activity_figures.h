#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/arrays.h>

/// @file
/// Services for the host on its own kinds of figures: intensity levels and METs, sums of levels, and whether a data set
/// holds anything. No graph calls them; what levels and counts are, readers and sheets have in common with them.
///
/// @code{.cpp}
/// CStringArray minutes; // at the levels 1 to 9
/// for (const char* level : {"210", "95", "40", "60", "12", "4", "0", "0", "0"})
///     minutes.Add(level);
/// double light = 0, moderate = 0, vigorous = 0;
/// CalcLMV(&light, &moderate, &vigorous, minutes, 4, 6); // 345, 76 and 0
/// @endcode

namespace melkar {
constexpr int kLevels = 9;                                  ///< of intensity, from 1 on
constexpr int kCountsPerMinute = 15;                        ///< in which data files have the times at the levels
constexpr double kMinutesPerCount = 1.0 / kCountsPerMinute; ///< what one of them stands for
} // namespace melkar

/// METs, multiples of the energy spent at rest, of the levels 1 to 9: 1.8, 2.3, 2.9, 3.6, 4.3, 5.2, 6.1, 7.1, 8.3; -1
/// for any other.
MELKAR_API double Intensity2MetsDouble(int level);
/// The same rounded down.
MELKAR_API int Intensity2MetsInt(int level);
/// The level of whole METs from 2 to 8; -1 for any other. Not the inverse of the above: of two levels with the same
/// whole METs the lower answers, and 1 and 9 METs have none.
MELKAR_API int MetsInt2Intensity(int mets);
/// The same of METs rounded down.
MELKAR_API int MetsDouble2Intensity(double mets);

/// Light, moderate and vigorous: the sums of the levels below `p`, from `p` to `q`, and above `q`, each rounded to one
/// decimal; the largest (of equals the lightest) takes up what they differ from the rounded total, so that they add
/// up to it. `totals` holds the nine levels from 1 on, as text; entries that aren't there count as 0, bounds beyond
/// 1 to 9 as far as they reach. A null result is left out.
MELKAR_API void CalcLMV(double* light, double* moderate, double* vigorous, CStringArray& totals, int p, int q);

/// Position, from 1, of the first entry that isn't empty; 0 if there is none.
MELKAR_API int ExistData(CStringArray* entries);
/// Position, from 1, of the first row behind two head lines whose field `index` isn't 3; 0 if there is none or the
/// file can't be opened. With the index of the status: the first row not marked as without data. A line of more
/// than 1022 characters counts as several.
MELKAR_API int ExistData(const char* file, int index);
/// Position, from 1, of the first entry that isn't the text "0" (an empty one isn't); 0 if there is none.
MELKAR_API int ExistExcludedData(CStringArray* entries);
