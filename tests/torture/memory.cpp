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
#include <map>
#include <sys/mman.h>
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

} // namespace

void FailMemory(long n, bool allBehind) {
    g_allBehind = allBehind;
    g_left = n;
}

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

constexpr unsigned kLongest = 20; ///< seconds that a draw may take
constexpr std::size_t kNameRoom = 64;

char* g_died = nullptr; ///< who did, shared with the parent

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

void Die(int) {
    FailMemory(LONG_MAX, false);
    std::strncpy(g_died, WhoWasAtWork(), kNameRoom - 1);
    _exit(99);
}

void CatchDeaths() {
    void* frame = nullptr;
    backtrace(&frame, 1); // loads what it needs while there is memory
    for (const int death : {SIGSEGV, SIGBUS, SIGABRT, SIGTRAP, SIGFPE, SIGILL})
        std::signal(death, Die);
    alarm(kLongest);
}

/// Draws while memory is missing, then again with all of it. @return 0; 1 if objects are left over; 2 if the second
/// picture isn't whole
int DrawPoor(const melkar::KindRow& kind, long n, bool allBehind, const std::string& record) {
    CatchDeaths();
    FailMemory(n, allBehind);
    try {
        PixelsOf(kind);
        RecordOf(kind);
        PageOf(kind, PageFormat::Svg, "../data/poor.svg");
        PageOf(kind, PageFormat::Pdf, "../data/poor.pdf");
    } catch (const std::bad_alloc&) { // out of a constructor, or of this program's own strings
    }
    FailMemory(LONG_MAX, false);
    return LiveObjectCount() != 0 ? 1 : RecordOf(kind) != record ? 2 : 0;
}

std::string ListOf(const std::map<std::string, long>& deaths) {
    std::string list;
    for (const auto& [name, count] : deaths)
        list += (list.empty() ? "" : ", ") + name + " " + std::to_string(count);
    return list.empty() ? "none" : list;
}

} // namespace

Tally NoMemory(const Deadline& end) {
    const Host host;
    const auto kinds = Kinds();
    g_died = static_cast<char*>(mmap(nullptr, kNameRoom, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    std::map<const melkar::KindRow*, std::string> records;
    DrawAll();
    for (const melkar::KindRow* kind : kinds)
        records[kind] = RecordOf(*kind);
    Tally tally;
    std::map<std::string, long> deaths;
    long leaks = 0;
    long spoilt = 0;
    for (; !end.IsOver(); ++tally.tries) {
        const melkar::KindRow* kind = kinds[static_cast<std::size_t>(tally.tries) % kinds.size()];
        const long n = 1 + Random(tally.tries % 3 == 0 ? 5000 : 500);
        const bool allBehind = Random(2) != 0;
        *g_died = '\0';
        const int status = InChild([&] { return DrawPoor(*kind, n, allBehind, records[kind]); });
        if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
            continue;
        if (*g_died == '\0' || std::strstr(g_died, "Melkar") != nullptr)
            std::fprintf(stderr, "no-memory: %s, piece %ld%s: status %d %s\n", kind->kind, n,
                         allBehind ? " and all behind" : "", status, g_died);
        if (WIFEXITED(status) && WEXITSTATUS(status) <= 2)
            ++(WEXITSTATUS(status) == 1 ? leaks : spoilt);
        else
            ++deaths[*g_died != '\0' ? g_died : "too slow"];
    }
    for (const auto& [name, count] : deaths)
        tally.faults += name.starts_with("libMelkarCommon") || name == "too slow" ? count : 0;
    tally.faults += leaks + spoilt;
    tally.says = "draws of warm processes; ends in " + ListOf(deaths) + "; objects left " + std::to_string(leaks) +
                 ", wrong later " + std::to_string(spoilt);
    return tally;
}

} // namespace torture
