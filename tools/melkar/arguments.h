#pragma once

#include "kinds.h"

#include <CLI/CLI.hpp>

#include <string>

/// @file
/// The words after the command's name, as they were typed.

namespace melkar::tool {

struct Arguments {
    std::string kind;
    std::string base = ".";
    std::string data;
    std::string out;
    std::string format;
    std::string size = "900x500";
    std::string hover;
    std::string click;
    int dpi = 96;
    bool record = false;
    bool noFigures = false;
    bool svgOutlines = false;
    ChartOptions chart;
    std::string printer;
    std::string paper = "A4";
    std::string header;
    bool landscape = false;
    bool profile = false;
};

/// Tell the parser what each command takes and where it goes.
void AddDrawOptions(CLI::App& draw, Arguments& arguments);
void AddReportOptions(CLI::App& report, Arguments& arguments);
void AddKeysOptions(CLI::App& keys, Arguments& arguments);

} // namespace melkar::tool
