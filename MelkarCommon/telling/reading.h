#pragma once

#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/telling/words.h>

#include <optional>
#include <string>
#include <vector>

/// @file
/// Internal. Contents as a reader takes them: names for what has none, sums of stacks, and which figures count.

namespace melkar {

/// Without line feeds and blanks at its ends: labels break where the picture has no room. Scripts without blanks get
/// none.
std::string OnOneLine(const std::string& text);

/// As painted, or a word in its place.
std::string TitleOf(const Contents& contents, const DescriptionWords& words);
/// Of its legend or axis; one series alone is named after the unit.
std::string NameOfSeries(const Contents& contents, std::size_t series, const DescriptionWords& words);

/// Whether items stand along an axis, from a first to a last one.
bool IsRow(const Contents& contents);
/// The items of a row. Those whose series have no other figure stand beside it: shares of a quadrant among its days.
std::vector<const ShownItem*> EntriesOf(const Contents& contents);
/// Its caption, or else its place among the entries, from 1.
std::string CaptionOf(const ShownItem& item, const std::vector<const ShownItem*>& entries);
/// Whether the figures of an item are parts of one sum.
bool IsStack(const Contents& contents);
/// Whether a figure counts: that of an excluded day doesn't, nor one that isn't to be taken for data.
bool Counts(const ShownItem& item);
/// Whether it stands there and doesn't count on purpose.
bool IsExcluded(const ShownItem& item);
/// Whether it has nothing that counts, and on no purpose.
bool IsWithout(const ShownItem& item);
/// Whether one of its figures that count leaves its scale.
bool IsBeyond(const ShownItem& item);
/// What is to be said of an item beside its figures; mostly nothing.
std::string NoteOn(const ShownItem& item, const DescriptionWords& words);
/// Null if the item has none of that series.
const ShownFigure* FigureOfSeries(const ShownItem& item, std::size_t series);
/// Of a stack, as the picture writes it or else as its parts are written.
std::string SumText(const ShownItem& item);

/// A figure and where it stands.
struct ToldFigure {
    std::string text;
    double value;
    std::string at; ///< caption of its item, or else its place
};

/// Figures that count, in the order of the items.
std::vector<ToldFigure> FiguresOf(const Contents& contents, std::size_t series);
std::vector<ToldFigure> SumsOf(const Contents& contents);

/// With as many decimals as the figure among them that has the most.
std::string MeanOf(const std::vector<ToldFigure>& figures);

} // namespace melkar
