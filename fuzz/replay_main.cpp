// Runs every target over its seeds and over what was found before: replay CORPUS [TARGET], where CORPUS has a directory
// for each target. Exits 1 for an input that takes too long or too much memory, and when nothing was tried.

#include "target.h"

#include <csignal>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sys/resource.h>
#include <unistd.h>

namespace {

using namespace melkar::fuzz;
namespace fs = std::filesystem;

constexpr double kMostTime = 10;       ///< of an input, seconds of a processor: one that waits is for ctest to end
constexpr long kMostMemory = 2L << 20; ///< of the process, KiB

/// By name: the seeds first.
std::map<std::string, std::string> InputsOf(const Target& target, const fs::path& corpus) {
    std::map<std::string, std::string> inputs;
    Seeds seeds;
    seeds.add = [&inputs](const std::string& name, const std::string& bytes) { inputs["seed " + name] = bytes; };
    target.seed(seeds);
    if (fs::is_directory(corpus / target.name))
        for (const fs::directory_entry& entry : fs::directory_iterator(corpus / target.name)) {
            std::ifstream file(entry.path(), std::ios::binary);
            inputs[entry.path()] = {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        }
    return inputs;
}

/// The input at hand, for who looks at a process that died of it.
std::string current;

void TellCurrent(int signal) {
    [[maybe_unused]] const ssize_t ignored = write(STDERR_FILENO, current.data(), current.size());
    std::signal(signal, SIG_DFL);
    raise(signal);
}

bool Run(const Target& target, const std::string& name, const std::string& bytes) {
    current = std::string(target.name) + ": " + name + "\n";
    const std::clock_t start = std::clock();
    target.run(bytes);
    const bool isInTime = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC < kMostTime;
    if (!isInTime)
        std::printf("took too long: %s", current.c_str());
    return isInTime;
}

} // namespace

int main(int count, char** arguments) {
    const fs::path corpus = fs::absolute(count > 1 ? arguments[1] : ".");
    for (const int signal : {SIGABRT, SIGSEGV, SIGFPE, SIGBUS})
        std::signal(signal, TellCurrent);
    Begin();
    std::size_t tried = 0;
    bool isWell = true;
    for (const Target& target : Targets()) {
        if (count > 2 && target.name != std::string_view(arguments[2]))
            continue;
        for (const auto& [name, bytes] : InputsOf(target, corpus)) {
            isWell = Run(target, name, bytes) && isWell;
            ++tried;
        }
    }
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    std::printf("%zu inputs, %ld MiB at most\n", tried, used.ru_maxrss >> 10);
    return isWell && tried > 0 && used.ru_maxrss < kMostMemory ? 0 : 1;
}
