#pragma once

#include <MelkarCommon/quadrant/square_graph.h>

#include <vector>

namespace melkar {
struct ShownItem;
}

// What a host writes to get its own quadrant graph: steps across, minutes of brisk activity upwards, a mark for each
// day and one for their average. `CSquareGraph` reads the data file and draws the frame; it leaves open what its fields
// mean, which scales suit them and where a day belongs. Two overrides answer that.
//
// The host of this example writes into its data file:
//   field 5 of a day       steps
//   fields 15 to 23        time at each level, 15 counts a minute: `m_saDayLevelSum` holds minutes
//   target pair            steps, minutes: the dividing lines
//   averages 1 and 2       steps, minutes
class CQuadrantDays : public CSquareGraph {
public:
    using CSquareGraph::CSquareGraph;

    // 1. Runs when the data file has been read, before anything is drawn: the place for scales and counts.
    long GetGraphMeasure() override;

    // 2. Runs when the quadrants are painted, before the share box and the captions: the place for marks.
    long DrawTargetAverage() override;

    // 3. What the marks say, beside what `CSquareGraph` tells of the quadrants: for who can't see the picture, and for
    // pages that answer the pointer. `melkar::ShownBy` finds it by the row that `Register` adds, before threads draw.
    melkar::Contents Shown() const;
    static bool Register();

private:
    struct Day {
        double steps;
        double minutes;
    };
    struct Axis {
        int middle; // where the dividing line stands
        int max;
        int step; // from figure to figure
    };

    static Axis ChooseAxis(double target, double largest);
    void CountQuadrants();
    long DrawDay(const Day& day, const CString& mark);
    CPoint PlaceOf(const Day& day) const;
    CRect MarkAt(const Day& day) const;
    melkar::ShownItem DayShown(int day, int firstSeries) const;
    void AddMarksTo(melkar::Contents& contents) const;

    std::vector<Day> m_days;
};
