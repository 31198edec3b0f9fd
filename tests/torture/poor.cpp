// Too few descriptors, and no fonts: pictures and codes, never an end.

#include "trial.h"

#include <cstdlib>
#include <sys/resource.h>
#include <sys/wait.h>

namespace torture {

Tally Descriptors(const Deadline& end) {
    const Host host;
    Tally tally;
    for (; !end.IsOver(); ++tally.tries) {
        const auto room = static_cast<rlim_t>(4 + tally.tries % 8); // three are in use, and the loader needs one
        const int status = InColdChild("draw-all", [room] {
            const rlimit limit{room, room};
            setrlimit(RLIMIT_NOFILE, &limit);
        });
        tally.faults += WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 0 : 1;
    }
    tally.says = "cold processes that draw all kinds with 4 to 11 descriptors";
    return tally;
}

Tally NoFonts(const Deadline& end) {
    const Host host;
    WriteFile("../conf/fonts.conf", "<fontconfig/>");
    const std::string fonts = host.Path("conf/fonts.conf");
    Tally tally;
    do {
        const int status = InColdChild("draw-all", [&] { setenv("FONTCONFIG_FILE", fonts.c_str(), 1); });
        tally.faults += WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 0 : 1;
    } while (++tally.tries < 3 && !end.IsOver());
    tally.faults += ReadFile("../log/graph.log").find("this machine has no fonts") == std::string::npos ? 1 : 0;
    tally.says = "cold processes that draw all kinds; the log tells";
    return tally;
}

} // namespace torture
