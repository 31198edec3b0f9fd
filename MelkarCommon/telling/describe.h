#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/report_contents.h>
#include <MelkarCommon/telling/words.h>

#include <string>

/// @file
/// What a picture shows, in words.
///
/// @code{.cpp}
/// CBarGraph month(nullptr, view, "STEPS", view, nullptr, balloon);
/// month.Draw(CRect(0, 0, 900, 500), path);
/// const melkar::DescriptionWords words; // of the profile of all graphs
/// std::puts(melkar::Describe(melkar::ShownBy(month), words).c_str());
/// @endcode

namespace melkar {

/// A paragraph: what is shown, from when to when, scales, highest, lowest and mean figures, how many items come up to
/// their target, which are excluded, have no figure or leave their scale, marks, and what else is written. Each figure
/// is one of the picture or made of these: sums of stacks, and means with as many decimals as the figures. Days that
/// are excluded or have no data count in none of them. UTF-8.
MELKAR_API std::string Describe(const Contents& contents, const DescriptionWords& words = DescriptionWords());

/// The same without the title, for what stands below it.
MELKAR_API std::string Details(const Contents& contents, const DescriptionWords& words = DescriptionWords());

/// What stands on a page of a report beside its pictures: its name, its heading, its texts.
MELKAR_API std::string Describe(const ShownPage& page, const DescriptionWords& words = DescriptionWords());

/// A name for an item: "Mar 4: 9268 steps".
MELKAR_API std::string NameOf(const Contents& contents, const ShownItem& item,
                              const DescriptionWords& words = DescriptionWords());

/// A name for the whole: its title, or a word in its place.
MELKAR_API std::string NameOf(const Contents& contents, const DescriptionWords& words = DescriptionWords());

} // namespace melkar
