#include "command.h"

#include "messages.h"

namespace melkar::tool {

// Each stands in a file of its own, as `AddDraw` in draw_command.cpp.
Run AddDraw(CLI::App& app);
Run AddShow(CLI::App& app);
Run AddDescribe(CLI::App& app);
Run AddExplain(CLI::App& app);
Run AddDiff(CLI::App& app);
Run AddPage(CLI::App& app);
Run AddBatch(CLI::App& app);
Run AddVerify(CLI::App& app);
Run AddReport(CLI::App& app);
Run AddNew(CLI::App& app);
Run AddKinds(CLI::App& app);
Run AddKeys(CLI::App& app);
Run AddData(CLI::App& app);
Run AddImport(CLI::App& app);
Run AddLog(CLI::App& app);
Run AddCheck(CLI::App& app);
Run AddCompletion(CLI::App& app);
Run AddMan(CLI::App& app);

std::span<const Command> Commands() {
    static constexpr Command kCommands[] = {
        {"draw", "Draw one chart into a picture", AddDraw},
        {"show", "Show a chart in a window that follows its files", AddShow},
        {"describe", "Say what a chart shows, in words or for programs", AddDescribe},
        {"explain", "Say what a pixel of a chart comes from", AddExplain},
        {"diff", "Say what two profiles make of a chart, and show it", AddDiff},
        {"page", "Draw charts into one page for a browser", AddPage},
        {"batch", "Draw all pictures of a manifest that aren't finished", AddBatch},
        {"verify", "Draw them again and tell which files differ", AddVerify},
        {"report", "Print a report of a month", AddReport},
        {"new", "Lay out an application's folder that draws at once", AddNew},
        {"kinds", "Print the kinds of charts as a Markdown page", AddKinds},
        {"keys", "Print the keys of a profile as a Markdown page", AddKeys},
        {"data", "Print what the data file of a kind looks like, or an example", AddData},
        {"import", "Make a data file from what a person has: CSV, health records, epochs", AddImport},
        {"log", "Print the log in the order of time", AddLog},
        {"check", "Tell the mistakes in profiles and data files", AddCheck},
        {"completion", "Print what completes the command in a shell", AddCompletion},
        {"man", "Print the manual page", AddMan},
    };
    return kCommands;
}

int ExitCodeOf(const Run& run) {
    try {
        return run();
    } catch (const CLI::ParseError& error) {
        Complain(error.what());
        return kUsage;
    } catch (const UsageError& error) {
        Complain(error.sentence);
        return kUsage;
    } catch (const std::exception& error) {
        Complain(error.what());
        return kFailed;
    }
}

} // namespace melkar::tool
