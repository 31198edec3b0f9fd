// A signal every millisecond, which breaks off what waits: the same bytes as without.

#include "trial.h"

#include <csignal>
#include <map>
#include <sys/time.h>

namespace torture {
namespace {

volatile std::sig_atomic_t g_signals = 0;

void SendEvery(long microseconds) {
    const itimerval every{{0, microseconds}, {0, microseconds}};
    setitimer(ITIMER_REAL, &every, nullptr);
}

std::string BytesOf(const melkar::KindRow& kind) {
    return PixelsOf(kind) + RecordOf(kind) + PageOf(kind, PageFormat::Svg, "../data/a.svg") +
           PageOf(kind, PageFormat::Pdf, "../data/a.pdf");
}

} // namespace

Tally Signals(const Deadline& end) {
    const Host host;
    const auto kinds = Kinds();
    std::map<const melkar::KindRow*, std::string> calm;
    for (const melkar::KindRow* kind : kinds)
        calm[kind] = BytesOf(*kind);
    struct sigaction action {};
    action.sa_handler = [](int) { g_signals = g_signals + 1; };
    sigaction(SIGALRM, &action, nullptr); // without SA_RESTART
    SendEvery(1000);
    Tally tally;
    for (; !end.IsOver(); ++tally.tries) {
        const melkar::KindRow* kind = kinds[static_cast<std::size_t>(tally.tries) % kinds.size()];
        tally.faults += BytesOf(*kind) == calm[kind] ? 0 : 1;
        tally.faults += writeLog("../log/own.log", "%ld", tally.tries) == 0 ? 0 : 1;
    }
    SendEvery(0);
    tally.faults += LinesOf(ReadFile("../log/own.log")).size() == static_cast<std::size_t>(tally.tries) ? 0 : 1;
    tally.says = "charts on four surfaces each under " + std::to_string(g_signals) + " signals";
    tally.tries = g_signals > 0 ? tally.tries : 0;
    return tally;
}

} // namespace torture
