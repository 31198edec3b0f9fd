#pragma once

#include <CLI/CLI.hpp>

#include <string>

/// @file
/// The paper of a report, as it was typed.

namespace melkar::tool {

struct PaperOptions {
    std::string paper = "A4";
    bool landscape = false;
};

void AddPaper(CLI::App& app, PaperOptions& options);
/// As `CReport` takes it, in any case. Throws if there is no such paper.
short PaperCode(const PaperOptions& options);
/// Degrees.
int Orientation(const PaperOptions& options);

} // namespace melkar::tool
