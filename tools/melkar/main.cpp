// melkar: draws one chart from a profile and a data file, or prints a report. Exit codes: 0 drawn, 1 failed, 2 wrong
// usage.

#include "requests.h"

#include <MelkarCommon/registry/key_reference.h>

#include <iostream>

namespace {

using namespace melkar::tool;

constexpr int kUsageError = 2;

int RunDraw(const Arguments& arguments) {
    Request request = DrawRequestOf(arguments);
    EnterBase(arguments.base, request.chart.section);
    return Draw(std::move(request));
}

int RunReport(const Arguments& arguments) {
    ReportRequest request = ReportRequestOf(arguments);
    EnterBase(arguments.base, request.section);
    return PrintReport(std::move(request));
}

std::string KeysText(const Arguments& arguments) {
    if (arguments.kind.empty())
        return arguments.profile ? throw UsageError{"--profile needs a kind"} : melkar::KeyReference();
    const Kind* kind = FindKind(arguments.kind);
    const std::string name = kind != nullptr ? KeysOf(*kind) : arguments.kind; // a report isn't drawn, but has keys
    const std::string section = arguments.chart.section.empty() ? "MY_CHART" : arguments.chart.section;
    const std::string text = arguments.profile ? melkar::StarterProfile(name, section) : melkar::KeyReferenceOf(name);
    return !text.empty() ? text
                         : throw UsageError{"no kind with keys of its own: " + arguments.kind +
                                            " (melkar keys --help lists them)"};
}

int RunKeys(const Arguments& arguments) {
    std::cout << KeysText(arguments);
    return FlushStandardOutput();
}

/// A subcommand, its options and what runs it.
struct Command {
    const char* name;
    const char* description;
    void (*addOptions)(CLI::App& command, Arguments& arguments);
    int (*run)(const Arguments& arguments);
};
constexpr Command kCommands[] = {
    {"draw", "Draw one chart into a picture", AddDrawOptions, RunDraw},
    {"report", "Print a report of a month", AddReportOptions, RunReport},
    {"keys", "Print the keys of a profile as a Markdown page", AddKeysOptions, RunKeys},
};

/// A mistyped command is named, and a missing one told how to find; the parser would only tell that one is missing.
void RequireCommand(const CLI::App& app, int argc, char** argv) {
    if (argc < 2)
        throw UsageError{"no command (melkar --help lists them)"};
    const std::string word = argv[1];
    const auto isNamed = [&word](const CLI::App* command) { return command->check_name(word); };
    if (word.rfind('-', 0) != 0 && app.get_subcommands(isNamed).empty())
        throw UsageError{"unknown command: " + word + " (melkar --help lists them)"};
}

int Run(int argc, char** argv) {
    CLI::App app{"Draws health charts from a profile and a data file"};
    app.require_subcommand(1);
    app.set_version_flag("--version", "melkar " MELKAR_VERSION);
    Arguments arguments;
    for (const Command& command : kCommands)
        command.addOptions(*app.add_subcommand(command.name, command.description), arguments);
    RequireCommand(app, argc, argv);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& asked) { // help or version
        app.exit(asked);
        return FlushStandardOutput();
    }
    for (const Command& command : kCommands)
        if (app.got_subcommand(command.name))
            return command.run(arguments);
    return kUsageError;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return Run(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::cerr << "melkar: " << error.what() << '\n';
        return kUsageError;
    } catch (const UsageError& error) {
        std::cerr << "melkar: " << error.sentence << '\n';
        return kUsageError;
    } catch (const std::exception& error) {
        std::cerr << "melkar: " << error.what() << '\n';
        return 1;
    }
}
