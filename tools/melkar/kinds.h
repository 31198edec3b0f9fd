#pragma once

#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/types.h>

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// @file
/// The kinds of charts that the command can draw: one row of a table for each.

namespace melkar::tool {

/// What a host decides beside the profile and the data file.
struct ChartOptions {
    std::string section;
    int series = 0;       ///< figures per day; 0 leaves the class's own number
    std::string target;   ///< the same target for every day; empty leaves the targets of the data file
    bool figures = true;  ///< figures above the bars
    int page = 0;         ///< of the printed sheet
    int moderateFrom = 4; ///< first and last level of the moderate class of the circle
    int moderateTo = 6;
    std::string key = "TEXT"; ///< key of the text of a text panel
    std::string date;         ///< the day of a weekly file to draw, YYYYMMDD; empty for its first one
};

/// The surfaces that a host hands to a graph.
struct Surfaces {
    HDC dc = nullptr; ///< with direct output what is painted on, else what the shared ones suit
    HDC shared = nullptr;
    HDC second = nullptr;
    HDC balloon = nullptr;
    bool isDirect = false;
};

/// A picture of any class as the command sees it. Results are those of the library.
class Chart {
public:
    virtual ~Chart() = default;

    /// Tries whether the data file can be read.
    virtual long Read(char* path) = 0;
    virtual void Bind(const Surfaces& surfaces) = 0;
    virtual long Paint(const CRect& area, char* path) = 0;

    /// @return the index of the day at the point, -1 if there is none
    virtual long Click(CPoint) { return -1; }
    /// Paints the balloon of the point, if it hits something, into the shared surface.
    virtual void Hover(CPoint) {}
    /// The date text of a day as the data file gave it.
    virtual std::string DateOf(long) const { return {}; }
};

/// Columns from one to another, both included, from 0; none by default.
struct ColumnRange {
    int first = 0;
    int last = -1;
};

/// What the data file of a kind looks like, for telling that a file is of another kind. Columns count from 0.
struct DataForm {
    static constexpr int kNone = -1;

    int headRows = 0;
    int rows = 0;                         ///< fewest behind the head rows
    int columns = 0;                      ///< fewest of a row with figures; 0: the file isn't text in columns
    std::array<ColumnRange, 5> figures{}; ///< hold numbers, or nothing
    int status = kNone;                   ///< holds the status of the day
    int color = kNone;                    ///< holds a colour, #RRGGBB
    bool isSeries = false;                ///< one more column for each further figure per day
    bool hasWeeks = false;                ///< a line of one column ends a week
};

struct Kind {
    const char* name;
    std::unique_ptr<Chart> (*make)(const ChartOptions& options);
    std::optional<DataForm> form;      ///< of the data file; none: all of the picture comes from the profile
    const char* description = nullptr; ///< null: as the catalogue of graph classes says
    const char* keysOf = nullptr;      ///< the kind of the catalogue that reads the same keys; null: that of its name
};

std::span<const Kind> Kinds();
const char* DescriptionOf(const Kind& kind);
const char* KeysOf(const Kind& kind); ///< the kind of the catalogue that reads the same keys

/// Null if there is no kind of that name.
const Kind* FindKind(std::string_view name);

} // namespace melkar::tool
