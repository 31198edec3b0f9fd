#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <memory>
#include <span>
#include <string>

/// @file
/// The subcommands of melkar: one row of a table for each, which `melkar --help` prints.

namespace melkar::tool {

enum ExitCode { kDone = 0, kFailed = 1, kUsage = 2 };

/// Thrown for wrong usage: a sentence for the error stream.
struct UsageError {
    std::string sentence;
};

/// Does what a command is for, once its options are read. @return an exit code
using Run = std::function<int()>;

struct Command {
    const char* name;
    const char* says;
    Run (*add)(CLI::App& app); ///< tells the parser the options and the end of the help
};

std::span<const Command> Commands();

/// For main(): what `run` returns. What it throws is said on the error stream. @return then kUsage or kFailed
int ExitCodeOf(const Run& run);

/// For a command with options of a type of its own: adds them, and keeps them for its run.
template <class Options>
Run WithOptions(CLI::App& app, void (*add)(CLI::App& app, Options& options), int (*run)(const Options& options)) {
    const auto options = std::make_shared<Options>();
    add(app, *options);
    return [options, run] { return run(*options); };
}

} // namespace melkar::tool
