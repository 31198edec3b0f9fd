// melkar_torture TRIAL SECONDS: tries one thing for so long and prints a row of the table: trial, tries, faults,
// figures. Exit codes: 0 held, 1 faults, or nothing was tried. scripts/torture runs all of them.

#include "trial.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace torture;

struct Row {
    std::string_view name;
    Tally (*run)(const Deadline& end);
};
constexpr Row kRows[] = {
#ifndef MELKAR_SANITIZED
    {"no-memory", NoMemory},
#endif
    {"kills", Kills},        {"full-disks", FullDisks},    {"writers", Writers}, {"changes", Changes},
    {"no-fonts", NoFonts},   {"descriptors", Descriptors}, {"signals", Signals}, {"crowd", Crowd},
};

} // namespace

int main(int argc, char** argv) {
    const std::string_view name = argc > 1 ? argv[1] : "";
    if (name == "draw-all") // in the folder of who asks for it
        return DrawAll();
#ifndef MELKAR_SANITIZED
    if (name == "draw-poor")
        return DrawColdAndPoor();
#endif
    std::signal(SIGTTOU, SIG_IGN);       // last words of a child on a terminal that isn't ours must not stop us
    setenv("SOURCE_DATE_EPOCH", "0", 1); // the same bytes each time
    for (const Row& row : kRows) {
        if (row.name != name || argc < 3)
            continue;
        const Tally tally = row.run(Deadline(std::atof(argv[2])));
        std::printf("%-12s %8ld tries %4ld faults  %s\n", argv[1], tally.tries, tally.faults, tally.says.c_str());
        return tally.tries > 0 && tally.faults == 0 ? 0 : 1;
    }
    for (const Row& row : kRows)
        std::fprintf(stderr, "melkar_torture %s SECONDS\n", row.name.data());
    return 2;
}
