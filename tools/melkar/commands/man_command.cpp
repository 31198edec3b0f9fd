#include "command.h"
#include "options.h"

#include <iostream>
#include <sstream>

namespace melkar::tool {
namespace {

struct ManOptions {
    const CLI::App* melkar = nullptr; ///< the parser whose help becomes the page
};

void AddOptions(CLI::App& app, ManOptions& options) {
    options.melkar = app.get_parent();
    app.footer(Examples({"melkar man >melkar.1", "melkar man | gzip >melkar.1.gz"}));
}

/// As text that the formatter leaves alone.
std::string Plain(const std::string& text) {
    std::string plain = text.find_first_of(".'") == 0 ? "\\&" : "";
    for (const char letter : text)
        plain += letter == '\\' ? "\\e" : letter == '-' ? "\\-" : std::string(1, letter);
    return plain;
}

void PrintOption(const CLI::Option& option) {
    const bool isPositional = option.get_positional();
    std::cout << ".TP\n\\fB" << Plain(option.get_name(isPositional, !isPositional)) << "\\fR";
    if (!option.get_type_name().empty())
        std::cout << " \\fI" << Plain(option.get_type_name()) << "\\fR";
    std::cout << (option.get_required() ? " (needed)" : "") << '\n' << Plain(option.get_description()) << '\n';
}

/// Lines that stay lines.
void PrintLines(const std::string& text) {
    std::cout << ".PP\n.nf\n";
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        std::cout << Plain(line) << '\n';
    std::cout << ".fi\n";
}

void PrintCommand(const CLI::App& command) {
    std::cout << ".SS " << command.get_name() << '\n' << Plain(command.get_description()) << ".\n";
    for (const CLI::Option* option : command.get_options())
        if (!option->check_name("--help"))
            PrintOption(*option);
    PrintLines(command.get_footer());
}

int RunMan(const ManOptions& options) {
    std::cout << ".TH MELKAR 1\n"
                 ".SH NAME\n"
                 "melkar \\- "
              << Plain(options.melkar->get_description())
              << "\n"
                 ".SH SYNOPSIS\n"
                 "\\fBmelkar\\fR \\fICOMMAND\\fR [\\fIOPTIONS\\fR]\n"
                 ".br\n"
                 "\\fBmelkar\\fR [\\fICOMMAND\\fR] \\fB\\-\\-help\\fR\n"
                 ".SH COMMANDS\n";
    for (const Command& command : Commands())
        PrintCommand(*options.melkar->get_subcommand(command.name));
    std::cout
        << ".SH EXIT STATUS\n"
           "0 if all is done, 1 after a failure, 2 for wrong usage.\n"
           ".SH FILES\n"
           "The profile \\fI../conf/graph.cnf\\fR and the log \\fI../log/graph.log\\fR, from the base directory.\n"
           ".SH ENVIRONMENT\n"
           "\\fBNO_COLOR\\fR: complaints on a terminal have no colour.\n";
    return kDone;
}

} // namespace

Run AddMan(CLI::App& app) { return WithOptions(app, AddOptions, RunMan); }

} // namespace melkar::tool
