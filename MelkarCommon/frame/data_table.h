#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/data_file.h>
#include <MelkarCommon/frame/day_status.h>
#include <MelkarCommon/platform/arrays.h>
#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/types.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

/// @file
/// The columns of a data file, stated once. A class keeps a table of rows; its reader walks the table over each line of
/// the file, and whoever documents, checks or writes such files walks the same rows.
///
/// @code{.cpp}
/// class CThermometers : public CBarGraph {
/// public:
///     using CBarGraph::CBarGraph;
///     long ReadDataFile(char* path) override {
///         return melkar::ReadFile(*this, "CThermometers::ReadDataFile", path, [this](melkar::DataFile& file) {
///             ForgetDays();
///             melkar::ReadHeads<File>(*this, file);
///             return melkar::ReadRows<File>(*this, file);
///         });
///     }
///
/// private:
///     struct File : melkar::Columns<CThermometers> {
///         static constexpr Form form{2, "day"}; // two head rows, then a row a day
///         static constexpr Row rows[] = {
///             Whole<&G::m_nChartMax>(7, "top", "degrees").Means("top of the scale").InHead(1).Example("40"),
///             DayStatus(0),
///             Caption(1),
///             Figure<&G::m_saValues>(2, "temperature", "degrees").Within(-50, 60).Needed().Example("21.5|22|19"),
///         };
///     };
/// };
/// @endcode
///
/// The columns of a line are taken in the order of the table, so the status of a day comes before what depends on it. A
/// record of a reader's own may stand in the place of the graph where a line needs more than to be put into members.

class CGraph;

namespace melkar {

/// What the values of a column are.
enum class ColumnKind : std::uint8_t {
    Text,      ///< any text
    Caption,   ///< a text that the chart shows for the day
    DayStatus, ///< as the enumeration of that name
    Date,      ///< YYYYMMDD
    Time,      ///< hours x 100 + minutes
    Figure,    ///< a number
    Whole,     ///< a number without decimals
    Color,     ///< `#RRGGBB`
};

constexpr int kEachRow = -1; ///< in the place of a head row: the column stands in all rows behind those

/// What a data file's author needs to know of a column.
struct ColumnInfo {
    ColumnKind kind;           ///< what its values are
    int index;                 ///< from 0
    const char* name;          ///< what people call it
    const char* unit = "";     ///< of its values
    const char* meaning = "";  ///< in a few words, where the name doesn't say it
    int head = kEachRow;       ///< the head row that holds it, from 0
    int count = 1;             ///< columns that are alike, from `index` on
    bool isSeries = false;     ///< one more for each further series; what is behind them moves on
    bool isNeeded = false;     ///< a row that ends before it belongs to another kind of file
    bool needsFigures = false; ///< counts only for a day with status 0
    int perUnit = 1;           ///< so many counts in the file make one of the unit
    double least = -std::numeric_limits<double>::infinity(); ///< smallest value of an ordinary file
    double most = std::numeric_limits<double>::infinity();   ///< largest value of an ordinary file
    const char* example = "";  ///< values that suit, "|" between them: row by row, or along columns that are alike
    const char* scale = "";    ///< profile key of the top of the scale that figures are drawn on
    const char* bigScale = ""; ///< the same of the one that stands in where a figure is above it
    bool isTop = false;        ///< it is the top of that scale, and takes the place of the key if it is above 0
};

constexpr std::size_t kHeadLimit = 1278; ///< characters of a head row, line end included
constexpr std::size_t kRowLimit = 1279;  ///< the same of a row behind them

/// The rows of a data file. One that is longer than its limit goes on as the next row.
struct DataForm {
    int heads = 0;        ///< head rows
    const char* row = ""; ///< what a row behind them stands for: "day"; empty where nothing is read behind them
    std::size_t headLimit = kHeadLimit; ///< characters of a head row, line end included
    std::size_t rowLimit = kRowLimit;   ///< the same of a row behind them
    int fewest = 0;                     ///< rows behind the heads; a file with less belongs to another kind
    bool hasWeeks = false;              ///< a row of one column ends a week
    const char* note = "";              ///< what else is to be said, in sentences
    const char* colorKey = "";          ///< numbered profile key that colours a row; one without it isn't shown

    /// Limit of all rows.
    constexpr DataForm Limit(std::size_t characters) const {
        DataForm form = *this;
        form.headLimit = form.rowLimit = characters;
        return form;
    }
    /// A file with fewer rows behind the heads belongs to another kind.
    constexpr DataForm Fewest(int rows) const {
        DataForm form = *this;
        form.fewest = rows;
        return form;
    }
    /// A row of one column ends a week.
    constexpr DataForm WithWeeks() const {
        DataForm form = *this;
        form.hasWeeks = true;
        return form;
    }
    /// Each row is painted in the colour of that numbered key of the profile.
    constexpr DataForm ColoredBy(const char* key) const {
        DataForm form = *this;
        form.colorKey = key;
        return form;
    }
    /// What else is to be said of the file.
    constexpr DataForm Note(const char* sentences) const {
        DataForm form = *this;
        form.note = sentences;
        return form;
    }
};

namespace detail {

/// A figure that a float can hold.
inline float ToFloat(double value) {
    constexpr double most = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -most, most));
}
/// "#RRGGBB" as a colour; black for anything else.
MELKAR_API COLORREF ParseHexColor(const CString& text);
MELKAR_API std::string ShowHexColor(COLORREF color);
MELKAR_API std::string ShowNumber(double value);

/// Puts column `at` of a line into a member; what grows gets one more element.
template <class Target> void PutField(Target& target, const CsvRow& line, int at) {
    if constexpr (std::is_same_v<Target, CStringArray>)
        target.Add(line.Field(at));
    else if constexpr (std::is_same_v<Target, CDWordArray>)
        target.Add(static_cast<DWORD>(line.IntField(at)));
    else if constexpr (std::is_same_v<Target, float>)
        target = ToFloat(line.DoubleField(at));
    else if constexpr (std::is_floating_point_v<Target>)
        target = line.DoubleField(at);
    else if constexpr (std::is_integral_v<Target>)
        target = static_cast<Target>(line.IntField(at));
    else
        target = line.Field(at);
}

template <class Target> constexpr bool kIsArray = std::is_array_v<Target>;
template <class Item, std::size_t Size> constexpr bool kIsArray<std::array<Item, Size>> = true;

/// Puts all columns of the row, as far as an array has elements. Texts of columns that are alike take the place of
/// former ones, where one column alone adds a text.
template <class Target> void PutFields(Target& target, const CsvRow& line, const ColumnInfo& column) {
    if constexpr (kIsArray<Target>) {
        for (int i = 0; i < std::min(column.count, static_cast<int>(std::size(target))); ++i)
            PutField(target[static_cast<std::size_t>(i)], line, column.index + i);
    } else if constexpr (std::is_same_v<Target, CStringArray>) {
        if (column.count > 1)
            target.RemoveAll();
        for (int i = 0; i < column.count; ++i)
            PutField(target, line, column.index + i);
    } else {
        PutField(target, line, column.index);
    }
}

/// How a value stands in a member, for who checks a reader.
template <class Target> std::string ShowField(const Target& target, [[maybe_unused]] int element) {
    if constexpr (kIsArray<Target>)
        return ShowField(target[static_cast<std::size_t>(element)], 0);
    else if constexpr (std::is_same_v<Target, CStringArray> || std::is_same_v<Target, CDWordArray>)
        return ShowField(target[element], 0);
    else if constexpr (std::is_arithmetic_v<Target>)
        return ShowNumber(static_cast<double>(target));
    else
        return static_cast<const char*>(target);
}

/// Whether the day of this line has figures, as its status said.
template <class Record> bool HasFiguresNow([[maybe_unused]] const Record& record) {
    if constexpr (std::is_base_of_v<CGraph, Record>)
        return HasFigures(ToDayStatus(record.m_dwaStatus[record.m_dwaStatus.GetSize() - 1]));
    else
        return true;
}

constexpr const char* kExampleCaptions = "Mon 2|Tue 3|Wed 4|Thu 5|Fri 6|Sat 7|Sun 8";
constexpr const char* kExampleDates = "20260302|20260303|20260304|20260305|20260306|20260307|20260308";

} // namespace detail

/// One row of the table: the column, and how its value gets into the record.
template <class Record> struct ColumnRow {
    /// Takes the column of a line into the record.
    using Store = void (*)(Record&, const CsvRow&, const ColumnInfo&);

    ColumnInfo info; ///< the column
    Store store;     ///< how its value gets into the record
    /// How the value stands there: of row `row` behind the heads, and of columns that are alike the one `i`. Null if it
    /// lands nowhere.
    std::string (*show)(const Record&, const ColumnInfo&, int row, int i);

    /// What the column holds, where its name doesn't say it.
    constexpr ColumnRow Means(const char* meaning) const {
        ColumnRow row = *this;
        row.info.meaning = meaning;
        return row;
    }
    /// The column stands in that head row, from 0.
    constexpr ColumnRow InHead(int head) const {
        ColumnRow row = *this;
        row.info.head = head;
        return row;
    }
    /// So many columns that are alike.
    constexpr ColumnRow Each(int count) const {
        ColumnRow row = *this;
        row.info.count = count;
        return row;
    }
    /// A row that ends before it belongs to another kind of file.
    constexpr ColumnRow Needed() const {
        ColumnRow row = *this;
        row.info.isNeeded = true;
        return row;
    }
    /// Counts only for a day with status 0, and stays empty for any other.
    constexpr ColumnRow WithFigures() const {
        ColumnRow row = *this;
        row.info.needsFigures = true;
        return row;
    }
    /// So many counts in the file make one of the unit.
    constexpr ColumnRow PerUnit(int counts) const {
        ColumnRow row = *this;
        row.info.perUnit = counts;
        return row;
    }
    /// Where the values of an ordinary file lie.
    constexpr ColumnRow Within(double least, double most) const {
        ColumnRow row = *this;
        row.info.least = least;
        row.info.most = most;
        return row;
    }
    /// The same without an upper end.
    constexpr ColumnRow NotBelow(double least) const { return Within(least, std::numeric_limits<double>::infinity()); }
    /// Values for the reference and for starting files, "|" between those of rows.
    constexpr ColumnRow Example(const char* values) const {
        ColumnRow row = *this;
        row.info.example = values;
        return row;
    }
    /// Drawn on the scale whose top is that key of the profile, or on a big one where a figure is above it.
    constexpr ColumnRow OnScale(const char* top, const char* bigTop = "") const {
        ColumnRow row = *this;
        row.info.scale = top;
        row.info.bigScale = bigTop;
        return row;
    }
    /// The top of a scale, in the place of that key of the profile.
    constexpr ColumnRow TopOf(const char* top) const {
        ColumnRow row = OnScale(top);
        row.info.isTop = true;
        return row;
    }
    /// Taken by a function of the class, which puts an ordinary value into the member as it stands, and mends others.
    constexpr ColumnRow By(Store take) const {
        ColumnRow row = *this;
        row.store = take;
        return row;
    }
};

/// Makes the rows of one table, which derives from it; each value may feed several members.
template <class Into> struct Columns {
    using Record = Into;         ///< what the values land in
    using G = Into;              ///< the same, for `&G::m_member`
    using Form = DataForm;       ///< type of the table's `form`
    using Row = ColumnRow<Into>; ///< type of the table's `rows`

    /// A text. @param index column, from 0 @param name what people call it, of all rows
    template <auto... Members> static constexpr Row Text(int index, const char* name) {
        return MakeRow<Members...>(ColumnKind::Text, index, name, "");
    }
    /// Lands nowhere: it is there for people, or the reader looks at it itself.
    static constexpr Row Unread(int index, const char* name) {
        return {{ColumnKind::Text, index, name}, [](Into&, const CsvRow&, const ColumnInfo&) {}, nullptr};
    }
    /// A date YYYYMMDD.
    template <auto... Members> static constexpr Row Date(int index, const char* name) {
        return MakeRow<Members...>(ColumnKind::Date, index, name, "").Example(detail::kExampleDates);
    }
    /// A time of day, hours x 100 + minutes.
    template <auto... Members> static constexpr Row Time(int index, const char* name) {
        return MakeRow<Members...>(ColumnKind::Time, index, name, "");
    }
    /// A number, into numeric members or as text.
    template <auto... Members> static constexpr Row Figure(int index, const char* name, const char* unit = "") {
        return MakeRow<Members...>(ColumnKind::Figure, index, name, unit);
    }
    /// A number without decimals.
    template <auto... Members> static constexpr Row Whole(int index, const char* name, const char* unit = "") {
        return MakeRow<Members...>(ColumnKind::Whole, index, name, unit);
    }
    /// A colour `#RRGGBB`; black for anything else.
    template <auto Member> static constexpr Row Color(int index, const char* name) {
        return {{ColumnKind::Color, index, name}, StoreColor<Member>, ShowColor<Member>};
    }
    /// The status of the day; of a graph without a member named, as the frame keeps it.
    template <auto... Members> static constexpr Row DayStatus(int index) {
        if constexpr (sizeof...(Members) == 0)
            return DayStatus<&Into::m_dwaStatus>(index);
        else
            return MakeRow<Members...>(ColumnKind::DayStatus, index, "status", "").Needed().Example("0");
    }
    /// What the chart shows below the day; likewise.
    template <auto... Members> static constexpr Row Caption(int index) {
        if constexpr (sizeof...(Members) == 0)
            return Caption<&Into::m_saDates>(index);
        else
            return MakeRow<Members...>(ColumnKind::Caption, index, "day", "")
                .Needed()
                .Example(detail::kExampleCaptions);
    }
    /// A figure for each of the day's series, as many as `Count` says.
    template <auto Array, auto Count> static constexpr Row Figures(int index, const char* name, const char* unit = "") {
        ColumnInfo info{ColumnKind::Figure, index, name, unit};
        info.isSeries = true;
        return {info, StoreSeries<Array, Count>, ShowSeries<Array, Count>};
    }

private:
    template <auto... Members>
    static constexpr Row MakeRow(ColumnKind kind, int index, const char* name, const char* unit) {
        return {{kind, index, name, unit}, StoreFields<Members...>, ShowFirst<Members...>};
    }
    template <auto... Members> static void StoreFields(Into& record, const CsvRow& line, const ColumnInfo& column) {
        static const CsvRow none;
        const CsvRow& from = column.needsFigures && !detail::HasFiguresNow(record) ? none : line;
        (detail::PutFields(record.*Members, from, column), ...);
    }
    template <auto First, auto... Rest>
    static std::string ShowFirst(const Into& record, const ColumnInfo& column, int row, int i) {
        return detail::ShowField(record.*First, column.count > 1 ? i : row);
    }
    template <auto Member> static void StoreColor(Into& record, const CsvRow& line, const ColumnInfo& column) {
        record.*Member = detail::ParseHexColor(line.Field(column.index));
    }
    template <auto Member> static std::string ShowColor(const Into& record, const ColumnInfo&, int, int) {
        return detail::ShowHexColor(record.*Member);
    }
    template <auto Array, auto Count>
    static void StoreSeries(Into& graph, const CsvRow& line, const ColumnInfo& column) {
        for (int series = 0; series < std::invoke(Count, graph); ++series)
            detail::PutField(graph.*Array, line, column.index + series);
    }
    template <auto Array, auto Count>
    static std::string ShowSeries(const Into& graph, const ColumnInfo&, int row, int i) {
        return detail::ShowField(graph.*Array, row * std::invoke(Count, graph) + i);
    }
};

/// Takes the columns of one line into the record: those of a head row, or of a row behind them.
template <class File> void TakeRow(typename File::Record& record, const CsvRow& line, int head = kEachRow) {
    for (const auto& row : File::rows)
        if (row.info.head == head)
            row.store(record, line, row.info);
}

/// Takes all head rows; one that isn't there is empty.
template <class File> void ReadHeads(typename File::Record& record, DataFile& file) {
    for (int head = 0; head < File::form.heads; ++head)
        TakeRow<File>(record, file.Head(File::form.headLimit), head);
}

/// Takes the rows behind the heads and hands each line to `use`, too. @return 0, or 102 if there was none
template <class File, class Use> long ReadRows(typename File::Record& record, DataFile& file, Use use) {
    long result = kNoDays;
    while (const CsvRow* line = file.Next(File::form.rowLimit)) {
        TakeRow<File>(record, *line);
        use(*line);
        result = kOk;
    }
    return result;
}
/// The same for who needs no more of a line.
template <class File> long ReadRows(typename File::Record& record, DataFile& file) {
    return ReadRows<File>(record, file, [](const CsvRow&) {});
}

/// How a value stands in the graph that has read a file, or in the record of its reader, which takes the line again: in
/// row `row` behind the heads, of columns that are alike the one `i`. The line's own value if it lands nowhere.
using ShowColumn = std::function<std::string(const CGraph* graph, const CsvRow& line, int row, int i)>;

/// A data file without the members that it lands in, for who documents, checks or writes such files.
struct DataTable {
    DataForm form;                   ///< its rows
    std::vector<ColumnInfo> columns; ///< in the order in which they are taken
    std::vector<ShowColumn> shown;   ///< likewise, for who checks a reader
    const char* suffix = "";         ///< behind the path of the data file, of a second file
};
using DataTables = std::vector<DataTable>; ///< the files of one class

/// The columns where they stand in a file of so many series, one column of figures for each of these.
MELKAR_API std::vector<ColumnInfo> ColumnsFor(const DataTable& table, int series);

namespace detail {

template <class Record> Record MakeRecord() {
    if constexpr (std::is_default_constructible_v<Record>)
        return {};
    else
        return Record("");
}

template <class File> ShowColumn ShowOf(const ColumnRow<typename File::Record>& column) {
    return [&column](const CGraph* graph, const CsvRow& line, int row, int i) -> std::string {
        using Record = typename File::Record;
        if (!column.show)
            return line.Field(column.info.index + i).GetString();
        if constexpr (std::is_base_of_v<CGraph, Record>) {
            return column.show(static_cast<const Record&>(*graph), column.info, row, i);
        } else {
            Record record = MakeRecord<Record>();
            TakeRow<File>(record, line, column.info.head);
            return column.show(record, column.info, 0, i);
        }
    };
}

template <class File> void AddColumns(DataTable& table) {
    for (const auto& column : File::rows) {
        table.columns.push_back(column.info);
        table.shown.push_back(ShowOf<File>(column));
    }
}

} // namespace detail

/// The table of a file. Where its rows land in several records it takes the columns of each, and the form of the first.
template <class File, class... More> DataTable TableOf(const char* suffix = "") {
    DataTable table{File::form, {}, {}, suffix};
    detail::AddColumns<File>(table);
    (detail::AddColumns<More>(table), ...);
    return table;
}

} // namespace melkar
