#pragma once

#include <MelkarCommon/bars/line_graph.h>
#include <MelkarCommon/circadian/circadian_graph.h>
#include <MelkarCommon/circadian/circle_graph.h>
#include <MelkarCommon/declarative/circle_graph_base.h>
#include <MelkarCommon/declarative/plot_graph.h>

/// @file
/// Graphs that read from a file what a host hands to their classes, so that a tool can draw any kind by `Draw`. The
/// constructors take the arguments of `CGraph`.

namespace melkar {

/// Bars, and a value for each line behind the figures of a day.
class MELKAR_API LineFromFile : public CLineGraph {
public:
    using CLineGraph::CLineGraph;
    long ReadDataFile(char* path) override; ///< @return as `CBarGraph`
    static DataTables DataFiles();          ///< the file that it reads

private:
    struct File;
};

/// A day of a weekly file.
class MELKAR_API DayFromFile : public CCircadianGraph {
public:
    using CCircadianGraph::CCircadianGraph;
    void SetDate(const CString& date) { m_date = date; } ///< YYYYMMDD; empty for the first day of the file
    long ReadDataFile(char* path) override; ///< @return 0; 210 if the file can't be opened; 102 without such a day
    long Draw(CRect area, char* path) override;

private:
    CString m_date;
};

/// A line of minutes for each level.
class MELKAR_API CircleFromFile : public CCircleGraph {
public:
    using CCircleGraph::CCircleGraph;
    long ReadDataFile(char* path) override; ///< @return 0; 101; 103
    long Draw(CRect area, char* path) override;
    static DataTables DataFiles(); ///< the file that it reads

private:
    struct Levels;
    struct File;
};

/// The same with the legend beside the pie.
class MELKAR_API SeparateCircleFromFile : public CircleFromFile {
public:
    using CircleFromFile::CircleFromFile;
    long Draw(CRect area, char* path) override;
};

/// A line for each point. The picture is copied out with the points.
class MELKAR_API PlotFromFile : public CPlotGraph {
public:
    using CPlotGraph::CPlotGraph;
    using CPlotGraph::Draw;
    long ReadDataFile(char* path) override; ///< in the place of the former points. @return 0; 101; 102 without points
    long Draw(CRect area, char* path) override;
    static DataTables DataFiles(); ///< the file that it reads

private:
    struct Point;
    struct File;
};

/// A line for each slice. One below a hundredth of the sum isn't shown.
class MELKAR_API PieFromFile : public CCircleGraphBase {
public:
    /// Arguments as for `CGraph`.
    PieFromFile(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon);
    long ReadDataFile(char* path) override; ///< @return 0; 101; 102 without values
    static DataTables DataFiles();          ///< the file that it reads

private:
    struct Value;
    struct File;
};

} // namespace melkar
