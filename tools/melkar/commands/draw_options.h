#pragma once

#include "draw.h"
#include "options.h"

#include <string>

/// @file
/// The arguments of a picture, as `melkar draw` takes them and as a row of a manifest holds them.

namespace melkar::tool {

constexpr int kScreenDpi = 96;

/// As they were typed.
struct DrawOptions {
    ChartArguments chart;
    std::string size = "900x500";
    int dpi = kScreenDpi;
    double scale = 1;
    std::string hover;
    std::string click;
    bool record = false;
    bool strict = false;
    bool svgOutlines = false;
    bool svgInteractive = false;
    std::string out;
    std::string format;
};

void AddDrawOptions(CLI::App& app, DrawOptions& options);

/// Throws for what doesn't make sense in itself; whether the files are there is for `Draw` to find out. The data file
/// isn't read, nor is the standard input.
Request RequestOf(const DrawOptions& options);

/// The same of a chart without an output.
Request RequestOf(const ChartArguments& chart, const std::string& size);

/// Draws and writes, with the profile of the base. Throws as `CheckBase` does. @return an exit code
int DrawFromBase(Request request);

} // namespace melkar::tool
