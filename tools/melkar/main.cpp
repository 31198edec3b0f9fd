// melkar: draws charts from a profile and a data file. Exit codes: 0 done, 1 failed, 2 wrong usage.

#include "commands/command.h"
#include "kinds.h"
#include "messages.h"
#include "output.h"

#include <MelkarCommon/platform/surface.h>

#include <vector>

namespace {

using namespace melkar::tool;

/// A command with its options in the parser.
struct Ready {
    const CLI::App* app;
    Run run;
};

std::vector<Ready> AddCommands(CLI::App& app) {
    std::vector<Ready> commands;
    for (const Command& command : Commands()) {
        CLI::App* added = app.add_subcommand(command.name, command.says);
        commands.push_back({added, command.add(*added)});
    }
    return commands;
}

/// A mistyped command is named, and a missing one told how to find; the parser would only tell that one is missing.
void RequireCommand(const CLI::App& app, int argc, char** argv) {
    if (argc < 2)
        throw UsageError{"no command (melkar --help lists them)"};
    const std::string word = argv[1];
    const auto isNamed = [&word](const CLI::App* command) { return command->check_name(word); };
    if (word.rfind('-', 0) != 0 && app.get_subcommands(isNamed).empty())
        throw UsageError{"unknown command: " + word + " (melkar --help lists them)"};
}

/// A picture is a picture without its texts, too; who asked for it should know.
void WarnOfFonts() {
    if (MissingFontCount() > 0)
        Warn("texts are missing, no font for them can be read; ../log/graph.log from the base directory tells more");
}

int RunCommand(int argc, char** argv) {
    RegisterSamples();
    CLI::App app{"Draws health charts from a profile and a data file", "melkar"};
    app.require_subcommand(1);
    app.set_version_flag("--version", "melkar " MELKAR_VERSION);
    app.option_defaults()->take_last();
    const std::vector<Ready> commands = AddCommands(app);
    RequireCommand(app, argc, argv);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& asked) { // help or version
        return app.exit(asked);
    }
    for (const Ready& command : commands)
        if (command.app->parsed())
            return command.run();
    return kUsage;
}

} // namespace

int main(int argc, char** argv) {
    return ExitCodeOf([&] {
        const int exitCode = RunCommand(argc, argv);
        WarnOfFonts();
        return exitCode != kDone ? exitCode : FlushStandardOutput();
    });
}
