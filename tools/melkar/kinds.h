#pragma once

#include <MelkarCommon/frame/contents.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/types.h>
#include <MelkarCommon/registry/catalogue.h>

#include <memory>
#include <string>
#include <vector>

/// @file
/// The kinds of the catalogue as the command draws them: as any host draws a graph of the class, and some by an adapter
/// of the command's own.

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
    virtual bool HasBalloons() const { return false; }
    /// Paints the balloon of the point, if it hits something, into the shared surface. @return whether it does
    virtual bool Hover(CPoint) { return false; }
    /// The date text of a day as the data file gave it.
    virtual std::string DateOf(long) const { return {}; }
    /// What the picture shows that was painted last: one, or as many as it has sheets. None if nobody knows.
    virtual std::vector<Contents> Shown() const { return {}; }
};

/// Makes the examples in samples/hosts kinds like those of the library.
void RegisterSamples();
bool IsOfSamples(
    const KindRow& kind); ///< whether it is one of these, which another program knows only if it has it, too

bool IsDrawn(const KindRow& kind); ///< whether the command has a chart for it
/// What that chart shows, in a few words.
const char* SaysOf(const KindRow& kind);
std::unique_ptr<Chart> MakeChart(const KindRow& kind, const ChartOptions& options);

} // namespace melkar::tool
