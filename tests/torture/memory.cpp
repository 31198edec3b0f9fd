// Memory that runs out at any piece: a code or a picture. Libraries below die of it in places that are theirs; who dies
// is told, and only what dies in this library is a fault.

#include "trial.h"

#include <atomic>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <map>
#include <sys/wait.h>
#include <unistd.h>

namespace torture {
namespace {

std::atomic<long> g_left{LONG_MAX}; ///< pieces until one is missing
std::atomic<bool> g_allBehind{false};

bool IsMissing() {
    if (g_left == LONG_MAX)
        return false;
    const long left = --g_left;
    return left == 0 || (left < 0 && g_allBehind);
}

/// Lets the n-th piece of memory that is asked for from now on be missing, and all behind it if `allBehind`.
void FailMemory(long n, bool allBehind) {
    g_allBehind = allBehind;
    g_left = n;
}

} // namespace
} // namespace torture

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

// In place of the system's, in all libraries of this process.
void* malloc(std::size_t size) { return torture::IsMissing() ? nullptr : __libc_malloc(size); }
void* calloc(std::size_t count, std::size_t size) {
    return torture::IsMissing() ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* memory, std::size_t size) { return torture::IsMissing() ? nullptr : __libc_realloc(memory, size); }
void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return torture::IsMissing() ? nullptr : __libc_memalign(alignment, size);
}
}

namespace torture {
namespace {

/// What a child exits with.
constexpr int kLeftOver = 91;
constexpr int kWrongLater = 92;
constexpr int kDeath = 99;

constexpr unsigned kLongest = 20; ///< seconds that a draw may take

constexpr const char* kDied = "../data/died";          ///< who did
constexpr const char* kPiece = "MELKAR_TORTURE_PIECE"; ///< of a cold process; negative: and all behind

/// The library whose code was at work: the innermost that isn't the system's, nor this program.
const char* WhoWasAtWork() {
    void* frames[64];
    const int count = backtrace(frames, 64);
    for (int i = 1; i < count; ++i) {
        Dl_info info{};
        if (dladdr(frames[i], &info) == 0 || info.dli_fname == nullptr)
            continue;
        const char* slash = std::strrchr(info.dli_fname, '/');
        const char* name = slash != nullptr ? slash + 1 : info.dli_fname;
        const bool isSystem = std::strncmp(name, "libc.", 5) == 0 || std::strncmp(name, "libstdc++", 9) == 0 ||
                              std::strncmp(name, "libgcc", 6) == 0 || std::strncmp(name, "ld-", 3) == 0;
        if (!isSystem && std::strstr(name, "torture") == nullptr)
            return name;
    }
    return "this program";
}

void Die(int signal) {
    FailMemory(LONG_MAX, false);
    const char* name = WhoWasAtWork();
    const int file = open(kDied, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const char* slow = signal == SIGALRM ? "a wait in " : "";
    [[maybe_unused]] const bool isTold =
        write(file, slow, std::strlen(slow)) >= 0 && write(file, name, std::strlen(name)) > 0;
    _exit(kDeath);
}

void CatchDeaths() {
    void* frame = nullptr;
    backtrace(&frame, 1); // loads what it needs while there is memory
    for (const int death : {SIGSEGV, SIGBUS, SIGABRT, SIGTRAP, SIGFPE, SIGILL, SIGALRM})
        std::signal(death, Die);
    alarm(kLongest);
}

void DrawOnAll(const melkar::KindRow& kind) {
    try {
        PixelsOf(kind);
        RecordOf(kind);
        PageOf(kind, PageFormat::Svg, "../data/poor.svg");
        PageOf(kind, PageFormat::Pdf, "../data/poor.pdf");
    } catch (const std::bad_alloc&) { // out of a constructor, or of this program's own strings
    }
}

/// Draws while memory is missing, then again with all of it. @return 0, or what is wrong
int DrawPoor(const melkar::KindRow& kind, long piece, const std::string& record) {
    CatchDeaths();
    FailMemory(std::abs(piece), piece < 0);
    DrawOnAll(kind);
    FailMemory(LONG_MAX, false);
    return LiveObjectCount() != 0 ? kLeftOver : RecordOf(kind) != record ? kWrongLater : 0;
}

std::string ListOf(const std::map<std::string, long>& deaths) {
    std::string list;
    for (const auto& [name, count] : deaths)
        list += (list.empty() ? "" : ", ") + name + " " + std::to_string(count);
    return list.empty() ? "none" : list;
}

} // namespace

int DrawColdAndPoor() {
    const char* piece = std::getenv(kPiece);
    const melkar::KindRow& kind = *melkar::FindKind("bar");
    return DrawPoor(kind, piece != nullptr ? std::atol(piece) : LONG_MAX, ReadFile("../data/record"));
}

Tally NoMemory(const Deadline& end) {
    const Host host;
    const auto kinds = Kinds();
    std::map<const melkar::KindRow*, std::string> records;
    DrawAll();
    for (const melkar::KindRow* kind : kinds)
        records[kind] = RecordOf(*kind);
    WriteFile("../data/record", records[melkar::FindKind("bar")]);
    Tally tally;
    long cold = 0;
    std::map<std::string, long> deaths;
    for (; !end.IsOver(); ++tally.tries) {
        const bool isCold = tally.tries % 8 == 0; // a hundred times as slow
        const melkar::KindRow* kind = kinds[static_cast<std::size_t>(tally.tries) % kinds.size()];
        const long piece = (1 + Random(isCold ? 40000 : tally.tries % 3 == 0 ? 5000 : 500)) * (Random(2) != 0 ? -1 : 1);
        cold += isCold ? 1 : 0;
        const int status = isCold ? InColdChild("draw-poor",
                                                [&] {
                                                    setenv(kPiece, std::to_string(piece).c_str(), 1);
                                                    [[maybe_unused]] const auto* quiet =
                                                        std::freopen("/dev/null", "w", stderr);
                                                })
                                  : InChild([&] { return DrawPoor(*kind, piece, records[kind]); });
        if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
            continue;
        const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
        const std::string what = code == kDeath        ? ReadFile(kDied)
                                 : code == kLeftOver   ? "objects left over"
                                 : code == kWrongLater ? "wrong later"
                                                       : "killed";
        ++deaths[what];
        if (code == kDeath && what.find("libMelkar") == std::string::npos)
            continue;
        ++tally.faults;
        std::fprintf(stderr, "no-memory: %s %s, piece %ld: %s\n", isCold ? "cold" : "warm", kind->kind, piece,
                     what.c_str());
    }
    tally.says = "draws, " + std::to_string(cold) + " of cold processes; ends: " + ListOf(deaths);
    return tally;
}

} // namespace torture
