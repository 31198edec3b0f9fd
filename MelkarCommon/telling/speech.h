#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/platform/page_words.h>
#include <MelkarCommon/telling/words.h>

#include <vector>

/// @file
/// What pages say to those who can't see them.
///
/// @code{.cpp}
/// HDC page = CreatePageSurface("month.svg", PageFormat::Svg, 900, 500, 96);
/// {
///     CBarGraph month(nullptr, page, "STEPS", page, nullptr, balloon);
///     month.SetDirectOutput(TRUE);
///     month.Draw(CRect(0, 0, 900, 500), path);
///     SetPageWords(page, melkar::WordsFor({melkar::ShownBy(month)}));
/// }
/// DeleteDC(page);
/// @endcode

namespace melkar {

/// Title, description and language of a picture for `SetPageWords`. A picture of several, such as the sheets of a week,
/// tells them one after the other.
MELKAR_API PageWords WordsFor(const std::vector<Contents>& pictures,
                              const DescriptionWords& words = DescriptionWords());

/// The same with a part for each item, which makes a page that can be walked. An item without an area, such as a day
/// without a figure, gets the place that its neighbours leave it.
MELKAR_API PageWords WalkedWordsFor(const std::vector<Contents>& pictures,
                                    const DescriptionWords& words = DescriptionWords());

/// Where somebody who walks from item to item is shown to be, an area for each: its own with some room around it, or
/// the place that its neighbours leave it; empty where nobody can tell. In the units of the contents.
MELKAR_API std::vector<CRect> WalkedPlaces(const Contents& contents);

} // namespace melkar
