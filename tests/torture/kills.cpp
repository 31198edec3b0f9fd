// Killed while it writes: what stands under a name is whole, the former one or the new one, and nothing else is left.

#include "trial.h"

#include <atomic>
#include <csignal>
#include <filesystem>
#include <set>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace torture {
namespace {

namespace fs = std::filesystem;

struct Job {
    const char* file;
    std::function<void(int turn, const std::string& path)> write;
    std::set<std::string> wholes = {}; ///< what may stand under the name; none: a log
};

/// In turns two charts, so that one takes the place of another.
std::vector<Job> MakeJobs(const std::string& folder) {
    static const melkar::KindRow* const kinds[] = {melkar::FindKind("bar"), melkar::FindKind("steps")};
    static HDC const pictures[] = {CreateMemorySurface(kWidth, kHeight), CreateMemorySurface(kWidth, kHeight)};
    for (int turn : {0, 1})
        Draw(*kinds[turn], pictures[turn], false);
    std::vector<Job> jobs = {
        {"a.log", [](int turn, const std::string& path) { writeLog(path.c_str(), "line %d", turn); }},
        {"a.png", [](int turn, const std::string& path) { WritePng(pictures[turn], path.c_str()); }},
        {"a.svg", [](int turn, const std::string& path) { PageOf(*kinds[turn], PageFormat::Svg, path); }},
        {"a.pdf", [](int turn, const std::string& path) { PageOf(*kinds[turn], PageFormat::Pdf, path); }},
        {"printed.pdf", [](int turn, const std::string& path) { Print(*kinds[turn], path); }},
    };
    for (Job& job : jobs)
        for (int turn : {0, 1}) {
            const std::string path = folder + "/" + job.file;
            job.write(turn, path);
            if (&job != jobs.data())
                job.wholes.insert(ReadFile(path));
        }
    return jobs;
}

/// Of a log also the next line tells.
bool IsWhole(const Job& job, const std::string& path) {
    if (!job.wholes.empty())
        return job.wholes.contains(ReadFile(path));
    const bool isWhole = IsWholeLog(ReadFile(path));
    job.write(0, path);
    const std::string log = ReadFile(path);
    return isWhole && IsWholeLog(log) && HasEndMark(log);
}

} // namespace

Tally Kills(const Deadline& end) {
    const Host host;
    const std::string folder = host.EmptyFolder("out");
    const std::vector<Job> jobs = MakeJobs(folder);
    auto* written = static_cast<std::atomic<long>*>(
        mmap(nullptr, sizeof(std::atomic<long>), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    Tally tally;
    long left = 0;
    for (; !end.IsOver(); ++tally.tries) {
        const Job& job = jobs[static_cast<std::size_t>(tally.tries) % jobs.size()];
        const std::string path = folder + "/" + job.file;
        const pid_t child = fork();
        if (child == 0)
            for (int turn = 0;; turn = 1 - turn, ++*written)
                job.write(turn, path);
        usleep(static_cast<useconds_t>(500 + Random(20000)));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        tally.faults += IsWhole(job, path) ? 0 : 1;
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() != ".new")
                continue;
            ++left; // between two names; swept by a later writer
            fs::remove(entry.path());
        }
    }
    tally.says = std::to_string(written->load()) + " files and lines written, " + std::to_string(left) +
                 " times a temporary name left";
    tally.tries = written->load() > 0 ? tally.tries : 0;
    return tally;
}

} // namespace torture
