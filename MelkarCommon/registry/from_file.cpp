#include <MelkarCommon/registry/from_file.h>

#include <MelkarCommon/circadian/circadian_layout.h>
#include <MelkarCommon/circadian/weekly_file.h>
#include <MelkarCommon/frame/data_table.h>

namespace melkar {

namespace {

constexpr float kLeastShare = 0.01F; ///< of a slice that is shown

} // namespace

// Lines

struct LineFromFile::File : Columns<LineFromFile> {
    static void TakeValues(G& graph, const CsvRow& line, const ColumnInfo& column) {
        const int first = column.index + graph.SeriesCount() - 1;
        for (int i = 0; i < graph.LineCount(); ++i)
            graph.m_saLineValues.Add(line.Field(first + i));
    }

    static constexpr Form form{2, "day"};
    static constexpr Row rows[] = {
        Figure<&G::m_saLineValues>(3, "line")
            .OnScale("CHARTLINEMAX")
            .Means("value of the line, on the scale at the right; empty for none")
            .Needed()
            .By(TakeValues)
            .Example("75|74.8|74.3||73.9|73.4|73.1"),
    };
};

DataTables LineFromFile::DataFiles() {
    DataTables tables = CBarGraph::DataFiles();
    detail::AddColumns<File>(tables.front());
    return tables;
}

long LineFromFile::ReadDataFile(char* path) {
    const long result = CLineGraph::ReadDataFile(path);
    if (result != kOk)
        return result;
    return ReadGuarded([&]() -> long {
        const HostDirectory here(Host());
        m_saLineValues.RemoveAll();
        DataFile file(path);
        ReadHeads<File>(*this, file);
        ReadRows<File>(*this, file);
        return kOk;
    });
}

// The day

long DayFromFile::ReadDataFile(char* path) {
    const long result = ReadFile(*this, "DayFromFile::ReadDataFile", path, [this](DataFile& file) -> long {
        WeekHead head;
        ReadScreenHead(file, head);
        const ClassBounds bounds = UsualBounds(m_nLang);
        DayRecord day;
        while (const CsvRow* line = file.Next(kScreenLineLimit)) {
            ReadScreenDay(*line, day);
            if (!m_date.IsEmpty() && day.date != m_date)
                continue;
            Set(m_hWnd, m_hDC, m_rcGraph, "", "", bounds.from, bounds.to, &day.levels, day.date, WeekdayOf(day.date), 0,
                &day.events, day.intensity.data(), day.status, day.steps, day.actCal, day.totalCal, day.time,
                day.toroken, day.exercise);
            return kOk;
        }
        return kNoDays;
    });
    return result == kNoFile ? kNoWeekFile : result;
}

long DayFromFile::Draw(CRect area, char* path) {
    ReadDataFile(path);
    return CCircadianGraph::Draw(area, path);
}

// Circles

struct CircleFromFile::Levels {
    CStringArray minutes;
};

struct CircleFromFile::File : Columns<Levels> {
    static constexpr Form form = Form{0, "level of intensity, from 1"}.Fewest(kLevels);
    static constexpr Row rows[] = {
        Figure<&G::minutes>(0, "minutes", "min").Needed().NotBelow(0).Example("62|48|36|41|22|12|14|16|6"),
    };
};

DataTables CircleFromFile::DataFiles() { return {TableOf<File>()}; }

long CircleFromFile::ReadDataFile(char* path) {
    return ReadFile(*this, "CircleFromFile::ReadDataFile", path, [this](DataFile& file) {
        Levels levels;
        ReadRows<File>(levels, file);
        return SetData(&levels.minutes);
    });
}

long CircleFromFile::Draw(CRect area, char* path) {
    ReadDataFile(path);
    return CCircleGraph::Draw(area, path);
}

long SeparateCircleFromFile::Draw(CRect area, char* path) {
    ReadDataFile(path);
    return DrawSeparate(area, path);
}

// Points

struct PlotFromFile::Point {
    float x = 0;
    float y = 0;
    int size = 0;
    COLORREF color = 0;
    int connect = 0;
};

struct PlotFromFile::File : Columns<Point> {
    static constexpr Form form = Form{1, "point"}.Fewest(1);
    static constexpr Row rows[] = {
        Figure<&G::x>(0, "x")
            .OnScale("GRAPH_HORIZONTAL_MAX")
            .Means("in units of the scale below")
            .Needed()
            .Example("0|4|8|12|16|20"),
        Figure<&G::y>(1, "y")
            .OnScale("GRAPH_VERTICAL_MAX_L")
            .Means("in units of the scale")
            .Needed()
            .Example("78.6|77.5|75.9|74.2|73.4|72.6"),
        Whole<&G::size>(2, "size", "px").Means("diameter").NotBelow(0).Needed().Example("12"),
        Color<&G::color>(3, "colour").Needed().Example("#264668"),
        Whole<&G::connect>(4, "connect").Means("1: joined to the point before it").Needed().Example("0|1|1|1|1|1"),
    };
};

DataTables PlotFromFile::DataFiles() { return {TableOf<File>()}; }

long PlotFromFile::ReadDataFile(char* path) {
    return ReadFile(*this, "PlotFromFile::ReadDataFile", path, [this](DataFile& file) {
        m_vecPlots.clear();
        Point point;
        ReadHeads<File>(point, file);
        return ReadRows<File>(point, file, [&](const CsvRow&) {
            AddPlot(CPlot(point.x, point.y, point.size, point.color, point.connect));
        });
    });
}

long PlotFromFile::Draw(CRect area, char* path) {
    char none[] = "";
    const long result = CPlotGraph::Draw(area, path, none);
    if (result == kOk)
        BitBlt();
    return result;
}

// Slices

struct PieFromFile::Value {
    float value = 0;
};

struct PieFromFile::File : Columns<Value> {
    static constexpr Form form = Form{0, "slice, in the order of the colours"}.Fewest(1).ColoredBy("GRAPH_VALUE_RGB%d");
    static constexpr Row rows[] = {Figure<&G::value>(0, "value").Needed().NotBelow(0).Example("312|164|96")};
};

PieFromFile::PieFromFile(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CCircleGraphBase(window, dc, section, shared, second, balloon, kLeastShare) {}

DataTables PieFromFile::DataFiles() { return {TableOf<File>()}; }

long PieFromFile::ReadDataFile(char* path) {
    return ReadFile(*this, "PieFromFile::ReadDataFile", path, [this](DataFile& file) {
        for (circle_value& slice : m_vecValues)
            slice.value = 0;
        Value one;
        int index = 0;
        return ReadRows<File>(one, file, [&](const CsvRow&) { SetValue(one.value, index++); });
    });
}

} // namespace melkar
