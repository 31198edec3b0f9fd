#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/telling/words.h>

#include <string>
#include <vector>

/// @file
/// Pictures with what they show, as a page for a browser.

namespace melkar {

/// A chart of a page.
struct PageChart {
    std::vector<Contents> pictures; ///< what it shows
    std::string svg;                ///< the whole file, with the words of `WalkedWordsFor`
};

/// A page of charts in one file: each picture with its description and its table, balloons at the pointer and at the
/// keyboard's focus where scripts run, light or dark as the desktop wishes, and fit to be printed. It loads nothing.
/// Without a title it has that of the first chart.
MELKAR_API std::string HtmlOf(const std::vector<PageChart>& charts, const std::string& title,
                              const DescriptionWords& words = DescriptionWords());

} // namespace melkar
