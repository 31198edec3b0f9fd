#include "command.h"
#include "options.h"

#include <algorithm>
#include <cctype>
#include <iostream>

namespace melkar::tool {
namespace {

struct CompletionOptions {
    const CLI::App* melkar = nullptr; ///< the parser whose commands are completed
    std::string shell;
};

void AddOptions(CLI::App& app, CompletionOptions& options) {
    options.melkar = app.get_parent();
    app.add_option("SHELL", options.shell, "The only one so far")->required()->type_name("bash");
    app.footer(Examples({"melkar completion bash", "melkar completion bash >melkar.bash && source melkar.bash"}));
}

bool IsKind(const CLI::Option& option) {
    return option.get_name(true) == "KIND" || option.get_type_name() == "KIND"; // stands alone, or behind --kind
}

std::string KindNames() {
    std::string names;
    for (const KindRow& kind : Catalogue())
        if (IsDrawn(kind))
            names.append(kind.kind).append(" ");
    return names;
}

/// What can stand in an option's place: the kinds, or the words of a type as in "png|svg". Types in capitals, such as
/// FILE, have none; there the shell completes names of files.
std::string WordsOf(const CLI::Option& option) {
    std::string type = option.get_type_name();
    const bool hasWords = type.find('|') != std::string::npos || std::islower(static_cast<unsigned char>(type[0])) != 0;
    std::replace(type.begin(), type.end(), '|', ' ');
    return IsKind(option) ? KindNames() : hasWords ? type : "";
}

std::string OptionNames(const CLI::App& app) {
    std::string names;
    for (const CLI::Option* option : app.get_options())
        for (const std::string& name : option->get_lnames())
            names += "--" + name + " ";
    return names;
}

/// The words after this one of that command.
void PrintCase(const std::string& command, const std::string& before, const std::string& words) {
    std::cout << "    " << command << ':' << before << ") words='" << words << "' ;;\n";
}

void PrintCases(const CLI::App& command) {
    const std::string& name = command.get_name();
    std::string first = OptionNames(command);
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_positional())
            first.insert(0, WordsOf(*option) + " ");
        if (option->get_items_expected_max() == 0) // a flag
            continue;
        for (const std::string& longName : option->get_lnames())
            PrintCase(name, "--" + longName, WordsOf(*option));
        for (const std::string& shortName : option->get_snames())
            PrintCase(name, "-" + shortName, WordsOf(*option));
    }
    PrintCase(name, name, first);
    PrintCase(name, "*", OptionNames(command));
}

int RunCompletion(const CompletionOptions& options) {
    if (options.shell != "bash")
        throw UsageError{"completion knows bash only: " + options.shell};
    std::string names;
    for (const Command& command : Commands())
        names.append(command.name).append(" ");
    std::cout << "# Completion of melkar for bash; melkar completion bash prints it.\n"
                 "_melkar() {\n"
                 "    local word=${COMP_WORDS[COMP_CWORD]} words=\n"
                 "    case $([[ $COMP_CWORD -eq 1 ]] || echo \"${COMP_WORDS[1]}\"):${COMP_WORDS[COMP_CWORD - 1]} in\n";
    PrintCase("", "*", names + OptionNames(*options.melkar));
    for (const Command& command : Commands())
        PrintCases(*options.melkar->get_subcommand(command.name));
    std::cout << "    esac\n"
                 "    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$word\")\n"
                 "}\n"
                 "complete -o default -F _melkar melkar\n";
    return kDone;
}

} // namespace

Run AddCompletion(CLI::App& app) { return WithOptions(app, AddOptions, RunCompletion); }

} // namespace melkar::tool
