// Processes that write one log at once: none of two loses a line, and of eight, of which one may hold the log for
// longer than others wait, nobody loses one without being told.

#include "trial.h"

#include <cstdlib>
#include <map>
#include <sys/wait.h>
#include <unistd.h>

namespace torture {
namespace {

constexpr int kLines = 1000; ///< of one writer; all of them fit into a log

/// Leaves the number of lines that were refused beside the log.
int WriteLines(const std::string& path, int writer) {
    int refused = 0;
    for (int line = 0; line < kLines; ++line)
        refused += writeLog(path.c_str(), "writer %d line %d", writer, line);
    WriteFile(path + "." + std::to_string(writer), std::to_string(refused));
    return 0;
}

struct Losses {
    long lines = 0;
    long told = 0;
};

Losses LossesOf(const std::string& path, int writers) {
    std::map<std::string, int> found;
    for (const std::string& line : LinesOf(ReadFile(path)))
        ++found[line];
    Losses losses;
    for (int writer = 0; writer < writers; ++writer) {
        const std::string name = std::to_string(writer);
        losses.told += std::atol(ReadFile(path + "." + name).c_str());
        for (int line = 0; line < kLines; ++line)
            losses.lines += found["writer " + name + " line " + std::to_string(line)] == 1 ? 0 : 1;
    }
    return losses;
}

} // namespace

Tally Writers(const Deadline& end) {
    const Host host;
    Tally tally;
    long lostOfTwo = 0;
    long refusedOfEight = 0;
    long lostOfEight = 0;
    for (int round = 0; !end.IsOver(); ++round) {
        const int writers = round % 2 == 0 ? 2 : 8;
        const std::string path = host.EmptyFolder("out") + "/a.log";
        std::vector<pid_t> children;
        for (int writer = 0; writer < writers; ++writer)
            if (children.push_back(fork()); children.back() == 0)
                _exit(WriteLines(path, writer));
        for (const pid_t child : children)
            waitpid(child, nullptr, 0);
        const std::string log = ReadFile(path);
        const Losses losses = LossesOf(path, writers);
        lostOfTwo += writers == 2 ? losses.lines : 0;
        refusedOfEight += writers == 8 ? losses.told : 0;
        lostOfEight += writers == 8 ? losses.lines - losses.told : 0;
        tally.tries += std::size_t{1} * writers * kLines;
        tally.faults += IsWholeLog(log) && HasEndMark(log) ? 0 : 1;
    }
    tally.faults += lostOfTwo + std::abs(lostOfEight);
    tally.says = "lines; of two writers " + std::to_string(lostOfTwo) + " lost; of eight " +
                 std::to_string(lostOfEight) + " lost, " + std::to_string(refusedOfEight) + " refused";
    return tally;
}

} // namespace torture
