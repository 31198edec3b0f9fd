#pragma once

#include <MelkarCommon/frame/frame_layout.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/types.h>
#include <MelkarCommon/support/activity_figures.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// @file
/// Where the parts of a day's sheet stand. Device units; divisions truncate towards zero, figures with a fraction do so
/// once they are a position.
///
///   graph.left         left panel                     right panel    graph.right
///    |   date                                         intensity        |
///    |  +---+------------------------------------+    +----------+     |     level 10, the panels' top
///    |  | V | summary            /\              |  9 |===       |     |     class strip: levels 0.5 to 9.5
///    |  | M |     /\      /\__/\/  \__           |  . |=====     |     |     bars: level - 0.5 to level + 0.5
///    |  | L |____/  \____/            \__________|  1 |========  |     |
///    |  +---+------------------------------------+    +----------+     |     level 0
///    |       0  1  2  3   ...            21 22 23     0   20    40     |     hours, minutes
///    |              ^ event                                     min    |

namespace melkar {

constexpr int kDayHours = 24;
constexpr int kDayMinutes = 1440;
constexpr int kDayValues = 720; ///< intensity values of a day: one for 2 minutes
constexpr int kMostEvents = 10; ///< of a day
constexpr int kValuesAnHour = kDayValues / kDayHours;
constexpr int kPanelLevels = 10; ///< levels from the bottom of a panel to its top

/// `LANG` of the profile, as far as the sheet's looks follow it.
constexpr int kLangExercise = 0; ///< a line for each level; the exercise amount in the summary
constexpr int kLangLeftOnly = 1; ///< no right panel

/// First and last intensity level of the moderate class.
struct ClassBounds {
    double from;
    double to;
};
/// Of a sheet whose data say nothing of them.
constexpr ClassBounds UsualBounds(int lang) {
    return lang == kLangExercise ? ClassBounds{4.0, 6.0} : ClassBounds{3.2, 6.8};
}

/// Classes of intensity, from the lowest.
enum class IntensityClass : std::uint8_t { Light, Moderate, Vigorous };
constexpr IntensityClass ClassOf(int level, ClassBounds bounds) {
    if (level < bounds.from)
        return IntensityClass::Light;
    return level <= bounds.to ? IntensityClass::Moderate : IntensityClass::Vigorous;
}

// Panels

/// @param classLine height of a line in the font of class labels @param dateLine in that of the date @param axisLine in
/// that of figures
CRect LeftPanelOf(const CRect& graph, int classLine, int dateLine, int axisLine, int lang);
/// @param figureWidth width of three digits
CRect RightPanelOf(const CRect& graph, const CRect& left, int figureWidth);

/// How high a panel's level lies above its bottom.
int LevelHeight(const CRect& panel, int level);

// Left panel

constexpr int kStripGap = 4; ///< between class strip and left panel

/// Lines on the borders of the moderate class, half a level outside of its bounds.
struct BorderLines {
    int lower;
    int upper;
};
BorderLines BorderLinesOf(const CRect& panel, ClassBounds bounds);

/// The class strip, from the graph's left edge to a gap before the panel. Bounds that lie outside of the scale or in
/// the wrong order give bands that do so, too.
struct ClassBands {
    CRect vigorous;
    CRect moderate;
    CRect light;
};
ClassBands ClassBandsOf(const CRect& graph, const CRect& panel, ClassBounds bounds, int lang);
/// Where a label that reads upwards begins, so that it stands centred on the band's height.
CPoint ClassLabelStart(const CRect& band, int labelWidth);

/// The outline of the day's profile: the panel's lower left corner, a point for each value, its lower right corner.
using ProfilePoints = std::array<POINT, kDayValues + 2>;
ProfilePoints ProfileOf(const CRect& panel, const double* intensity);

/// Where an hour's figure is measured: at the hour's x, from the panel's bottom on.
CRect HourBox(const CRect& panel, int hour);
/// The box once it is measured: centred on that x, half a line below the panel.
CRect HourFigureOf(const CRect& measured);
/// The tick above the figure, across the panel's bottom.
Tick HourTickOf(const CRect& panel, const CRect& figure);

/// The minute of the day of an event (hours x 100 + minutes), none for "" and "0".
std::optional<int> EventMinute(const char* event);
/// "06:32" for those to whom an event is told: the sheet marks its place and writes no time. Off the day it is as it
/// stands.
std::string EventTime(const char* event);
/// The box of an event's triangle, `size` wide and high, at its size below the panel but within the graph's bottom.
CRect EventBoxOf(const CRect& graph, const CRect& panel, int minute, int size);

// Right panel

constexpr double kFullBar = 40.0; ///< minutes at which a bar fills the panel
constexpr int kFigureGap = 3;     ///< between a bar and its figure, and between the panel and the level figures

/// Where a level's figure stands, left of the panel.
CRect LevelFigureOf(const CRect& panel, int level, int width, int height);
/// x of a number of minutes on a scale that ends at `max`; an empty scale puts everything at the left.
int MinuteX(const CRect& panel, int minutes, int max);
/// The scale lines: every `step` minutes above 0 and below `max`; none for a step of 0 or less, no more than the
/// panel's pixels, but one even in a panel without any, whose captions are there, too.
std::vector<int> MinuteLines(const CRect& panel, int step, int max);
/// A figure of the scale, measured from 0,0: centred on x, a fifth of its height below the panel.
CRect MinuteFigureOf(const CRect& panel, int x, const CRect& measured);
/// A level's bar; `minutes` that aren't a number count as 0.
CRect LevelBarOf(const CRect& panel, int level, double minutes);
/// A bar's figure.
CString MinutesText(double minutes);
/// Where it is measured: behind the bar, from the middle of its height on.
CRect BarFigureBox(const CRect& panel, const CRect& bar);
/// Where it is written.
struct BarFigure {
    CRect box;
    bool inside; ///< it doesn't fit behind the bar and stands at the bar's end, within it
};
BarFigure BarFigureOf(const CRect& panel, const CRect& bar, CRect measured);

/// The left panel, moved in by a twentieth of its height: where the summary begins.
CRect SummaryBox(const CRect& panel);

} // namespace melkar
