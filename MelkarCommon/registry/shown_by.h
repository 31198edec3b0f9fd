#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/contents.h>

#include <vector>

class CGraph;
class CGraphHeader;
class CWeeklyCircadian;

/// @file
/// What a graph that has drawn shows.
///
/// @code{.cpp}
/// CBarGraph month(nullptr, view, "STEPS", view, nullptr, balloon);
/// month.Draw(CRect(0, 0, 900, 500), path);
/// for (const melkar::ShownItem& day : melkar::ShownBy(month).items)
///     std::printf("%s: %s\n", day.caption.c_str(), day.text.c_str()); // "Mar 4: 9268"
/// @endcode

namespace melkar {

/// What the last `Draw` of a graph has put on its surface, without drawing and without touching the surface. It is told
/// by the catalogue's row of the graph's own class, or else of the nearest base that has one, so that a host's class is
/// told of as what it derives from until it registers more. Of a graph that never drew it is empty but for the kind.
MELKAR_API Contents ShownBy(const CGraph& graph);

/// The sheets of a week from Monday to Sunday, those that the last drawing has drawn.
MELKAR_API std::vector<Contents> ShownBy(const CWeeklyCircadian& week);

/// The block that opens a page of a report, for its `ShownPage`.
MELKAR_API Contents ShownBy(const CGraphHeader& block);

} // namespace melkar
