#pragma once

#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/bars/bar_layout.h>
#include <MelkarCommon/frame/data_table.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/frame/scale.h>

#include <algorithm>
#include <optional>

// What a host writes to get a bar chart of another kind: blood pressure, a bar a day from the lowest diastolic to the
// highest systolic figure. It has keys, a data file, a layout and a painter of its own; scale, dates, axes, messages,
// clicks and balloons are those of `CBarGraph`. C++17 suffices.
//
// Data file: a row for each measurement; those of one date follow each other and make one day.
class CPressureGraph : public CBarGraph {
public:
    CPressureGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);

    long ReadIniFile(char* path) override;
    long ReadDataFile(char* path) override; // 0; 101 with everything kept, 102 without days, 103 after an exception
    long DrawBarChart() override;           // high days once more, in the second colour of bars
    void DrawTargetAverage() override;      // the bounds, over the bars and below their figures

    // The figures by their names and the bounds as marks, beside what the base class tells; `melkar::ShownBy` finds it.
    melkar::Contents Shown() const;
    static melkar::ClassKeys ProfileKeys();
    static melkar::DataTables DataFiles();
    static bool Register(); // adds the kind "pressure" to the library's; once, before threads draw

private:
    struct KeyRows;
    struct Measurement;
    struct File;
    enum Figure { Systolic, Diastolic, Figures };

    void AddMeasurement(const Measurement& measurement);
    bool IsMeasured(int day) const { return FigureOf(day, Diastolic) > 0; }
    bool IsHigh(int day) const;
    std::optional<int> BoundY(int figure) const;
    void DrawBound(int figure) const;
    void AddBoundTo(melkar::Contents& contents, int figure) const;

    int m_nHighSystolic = 0;
    int m_nHighDiastolic = 0;
    COLORREF m_crBound = 0;
    CString m_strSystolic;
    CString m_strDiastolic;
};

// Where a day stands, between its two figures and at least a pixel high, so that it can be seen and hit.
inline CRect PressureBarOf(const melkar::BarSpan& span, const melkar::ScalePixels& scale, double systolic,
                           double diastolic) {
    const int bottom = melkar::FigureY(scale, diastolic);
    return {span.left, std::min(melkar::FigureY(scale, systolic), bottom - 1), span.right, bottom};
}
