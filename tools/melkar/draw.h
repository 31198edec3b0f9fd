#pragma once

#include "geometry.h"
#include "kinds.h"
#include "output.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace melkar::tool {

/// One picture, with all arguments checked and all paths absolute.
struct Request {
    const KindRow* kind = nullptr;
    ChartOptions chart;
    std::string base; ///< the host's directory
    std::string data; ///< empty for a kind that reads none
    std::string out;
    bool toStandardOutput = false; ///< the picture is printed, and `out` isn't used
    Output output;
    Size size{900, 500};
    int dpi = 96;
    bool isStrict = false;       ///< nothing is drawn of what is doubted
    double scale = 1;            ///< pixels a unit of a picture of pixels
    std::optional<CPoint> hover; ///< the balloon of this point goes into the picture; pixels only
    std::optional<CPoint> click; ///< the day at this point is printed
    bool isWalked = false;       ///< an SVG page has parts to walk through
    bool isRecorded = false;     ///< without an output: it is laid out as on a record, the same on every machine
    std::function<void(const std::vector<Contents>& parts)> shown; ///< is told what the picture shows
};

/// Draws and writes, within a `HostDirectory`: the library finds its profile from there.
/// @return 0, or 1 after a message on the error stream
int Draw(Request request);

/// The files from which the picture is drawn, whether they are there or not.
std::vector<std::string> FilesReadFor(const Request& request);

} // namespace melkar::tool
