#pragma once

#include <MelkarCommon/platform/geometry.h>

/// @file
/// The bands of a page: a tenth of it is margin on every side.
///
///   0.10 +--------+
///        | header |
///   0.28 +--------+
///   0.30 +--------+
///        | graphs |
///   0.73 +--------+
///   0.75 +--------+
///        | footer |
///   0.90 +--------+
///       0.1      0.9

namespace melkar {

struct ReportBands {
    CRect header;
    CRect graphs;
    CRect footer;
};

/// Products are cut towards zero.
inline ReportBands LayOutBands(int width, int height) {
    const auto band = [=](double top, double bottom) {
        return CRect(static_cast<int>(width * 0.1), static_cast<int>(height * top), static_cast<int>(width * 0.9),
                     static_cast<int>(height * bottom));
    };
    return {band(0.1, 0.28), band(0.3, 0.73), band(0.75, 0.9)};
}

} // namespace melkar
