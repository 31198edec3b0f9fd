#pragma once

#include <MelkarCommon/frame/graph.h>

#include <memory>
#include <span>
#include <string>
#include <string_view>

/// @file
/// The kinds of charts that the command can draw: one row of a table for each.

namespace melkar::tool {

/// What a host decides beside the profile and the data file.
struct ChartOptions {
    std::string section;
    int series = 0;      ///< figures per day; 0 leaves the class's own number
    std::string target;  ///< the same target for every day; empty leaves the targets of the data file
    bool figures = true; ///< figures above the bars
};

/// A graph of any class as the command sees it.
class Chart {
public:
    virtual ~Chart() = default;

    virtual CGraph& Graph() = 0;
    /// @return the index of the day at the point, -1 if there is none
    virtual long Click(CPoint point) = 0;
    /// Paints the balloon of the point, if it hits something, into the shared surface.
    virtual void Hover(CPoint point) = 0;
    /// The date text of a day as the data file gave it.
    virtual std::string DateOf(long day) const = 0;
};

struct Kind {
    const char* name;
    const char* description;
    std::unique_ptr<Chart> (*make)(const ChartOptions& options);
};

std::span<const Kind> Kinds();

/// Null if there is no kind of that name.
const Kind* FindKind(std::string_view name);

} // namespace melkar::tool
