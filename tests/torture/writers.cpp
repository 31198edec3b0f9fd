// Processes that write one log at once: no line is lost, none torn.

#include "trial.h"

#include <map>
#include <sys/wait.h>
#include <unistd.h>

namespace torture {
namespace {

constexpr int kLines = 1000; ///< of one writer; all of them fit into a log

int WriteLines(const std::string& path, int writer) {
    int refused = 0;
    for (int line = 0; line < kLines; ++line)
        refused += writeLog(path.c_str(), "writer %d line %d", writer, line);
    return refused > 0 ? 1 : 0;
}

} // namespace

Tally Writers(const Deadline& end) {
    const Host host;
    Tally tally;
    std::map<int, long> lost;
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
        std::map<std::string, int> found;
        for (const std::string& line : LinesOf(log))
            ++found[line];
        for (int writer = 0; writer < writers; ++writer)
            for (int line = 0; line < kLines; ++line)
                lost[writers] +=
                    found["writer " + std::to_string(writer) + " line " + std::to_string(line)] == 1 ? 0 : 1;
        tally.tries += std::size_t{1} * writers * kLines;
        tally.faults += IsWholeLog(log) && HasEndMark(log) ? 0 : 1;
    }
    tally.faults += lost[2] + lost[8];
    tally.says = "lines; lost of two writers " + std::to_string(lost[2]) + ", of eight " + std::to_string(lost[8]);
    return tally;
}

} // namespace torture
