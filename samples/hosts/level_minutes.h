#pragma once

#include <MelkarCommon/platform/arrays.h>
#include <MelkarCommon/support/numbers.h>

// The minutes of a day at that level and above. A weekly print file has no such figure, and the library takes the
// minutes of one level in its place; a host that prints words like "minutes of exercise" passes its own.
inline double MinutesFromLevel(const CStringArray& levels, double lowest) {
    double sum = 0;
    for (int i = 0; i < levels.GetSize(); ++i)
        if (i + 1 >= lowest)
            sum += melkar::ToDouble(levels[i]);
    return sum;
}
