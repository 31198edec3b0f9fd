#pragma once

#include "geometry.h"
#include "kinds.h"

#include <CLI/CLI.hpp>

#include <initializer_list>
#include <string>

/// @file
/// Options and parts of the help that several commands share.

namespace melkar::tool {

/// The chart that a command is about, as it was typed.
struct ChartArguments {
    std::string kind;
    std::string data;
    std::string base = ".";
    ChartOptions options;
};

/// KIND, section, data file, base, and what a host decides.
void AddChartArguments(CLI::App& app, ChartArguments& chart);

/// Of the picture, in device units.
void AddSize(CLI::App& app, std::string& size);
/// Throws if it is none.
Size SizeOf(const std::string& text);

/// Throws if there is no such kind, or the kind draws a data file and none is named.
const KindRow& KindOf(const ChartArguments& chart);

/// Throws if the base is no directory, there is no profile from there, or no such section in it.
void CheckBase(const std::string& base, const std::string& section);

/// Throws if the standard output is a terminal: bytes of a picture are nothing to read there.
void RequireNoTerminal();

/// For the end of a help: the kinds that are drawn, or all, and what to type. Examples run from the project's root; a
/// test runs them.
std::string KindList();
std::string AllKinds();
std::string Examples(std::initializer_list<const char*> lines);

} // namespace melkar::tool
