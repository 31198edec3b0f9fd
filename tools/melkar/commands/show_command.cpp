#include "command.h"
#include "show_options.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <unistd.h>
#include <vector>

namespace melkar::tool {
namespace {

/// The window is a program of its own, so that the command needs no toolkit.
constexpr const char* kProgram = "melkar-show";

std::string ProgramPath() {
    return std::filesystem::read_symlink("/proc/self/exe").replace_filename(kProgram).string();
}

/// As they were typed behind the name of the command.
std::vector<std::string> TypedArguments() {
    std::ifstream typed("/proc/self/cmdline", std::ios::binary);
    std::vector<std::string> arguments;
    for (std::string word; std::getline(typed, word, '\0');)
        arguments.push_back(word);
    constexpr std::size_t kBefore = 2; // the program and the command
    arguments.erase(arguments.begin(),
                    arguments.begin() + static_cast<std::ptrdiff_t>(std::min(kBefore, arguments.size())));
    return arguments;
}

/// Returns only where the program isn't there.
void Become(std::string program, std::vector<std::string> arguments) {
    std::vector<char*> words{program.data()};
    for (std::string& argument : arguments)
        words.push_back(argument.data());
    words.push_back(nullptr);
    execv(program.c_str(), words.data());
}

int RunShow(const ShowOptions& options) {
    RequestOf(options);
    Become(ProgramPath(), TypedArguments());
    throw std::runtime_error(ProgramPath() +
                             " isn't installed: it comes with the widget for GTK 4 (MELKAR_BUILD_GTK4)");
}

} // namespace

Run AddShow(CLI::App& app) { return WithOptions(app, AddShowOptions, RunShow); }

} // namespace melkar::tool
