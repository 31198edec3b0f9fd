// No room on the disk, at any byte: a code, and the former file as it was.

#include "trial.h"

#include <csignal>
#include <cstdint>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace torture {
namespace {

constexpr int kNotAllowed = 77;

struct Files {
    std::string folder;
    std::string Path(const char* name) const { return folder + "/" + name; }
};

/// Writes a picture, two pages, a document and lines of the log. @return how many things came to be otherwise than
/// their call said
int WriteAll(const Files& files, int turn) {
    const melkar::KindRow& kind = *melkar::FindKind(turn == 0 ? "bar" : "steps");
    const auto isTold = [&](const char* name, const std::string& former, bool isDone) {
        const std::string now = ReadFile(files.Path(name));
        return isDone ? !now.empty() && (turn == 0 || now != former) : now == former;
    };
    int faults = 0;
    for (const char* name : {"a.svg", "a.pdf", "a.png", "printed.pdf"}) {
        const std::string path = files.Path(name);
        const std::string former = ReadFile(path);
        bool isDone = false;
        if (path.ends_with("printed.pdf")) {
            isDone = Print(kind, path) > 0;
        } else if (path.ends_with(".png")) {
            HDC surface = CreateMemorySurface(kWidth, kHeight);
            Draw(kind, surface, false);
            isDone = WritePng(surface, path.c_str()) == 0;
            DeleteDC(surface);
        } else {
            isDone = !PageOf(kind, path.ends_with("pdf") ? PageFormat::Pdf : PageFormat::Svg, path).empty();
        }
        faults += isTold(name, former, isDone) ? 0 : 1;
    }
    for (int line = 0; line < 20; ++line)
        writeLog(files.Path("a.log").c_str(), "line %d", line);
    return faults + (IsWholeLog(ReadFile(files.Path("a.log"))) ? 0 : 1);
}

/// Files end at `size`.
int WithLimit(const Files& files, std::uint64_t size) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{size, size};
    setrlimit(RLIMIT_FSIZE, &limit);
    return WriteAll(files, 1);
}

/// A disk of its own with some room left.
int OnSmallDisk(const Files& files) {
    if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("torture", files.folder.c_str(), "tmpfs", 0, "size=512k") != 0)
        return kNotAllowed;
    WriteAll(files, 0);
    std::string room(static_cast<std::size_t>(300 + Random(200)) * 1024, 'x');
    WriteFile(files.Path("full"), room);
    return WriteAll(files, 1);
}

} // namespace

Tally FullDisks(const Deadline& end) {
    const Host host;
    const Files files{host.EmptyFolder("out")};
    WriteAll(files, 0);
    WriteAll(files, 1); // fonts are there from here on
    Tally tally;
    long disks = 0;
    for (; !end.IsOver(); ++tally.tries) {
        const bool isDisk = tally.tries % 2 != 0;
        WriteAll(files, 0);
        const int status = InChild([&] { return isDisk ? OnSmallDisk(files) : WithLimit(files, Random(40000)); });
        const bool isAllowed = !WIFEXITED(status) || WEXITSTATUS(status) != kNotAllowed;
        disks += isDisk && isAllowed ? 1 : 0;
        if (isAllowed)
            tally.faults += WIFEXITED(status) ? WEXITSTATUS(status) : 1;
    }
    tally.says = std::to_string(disks) + " on disks of 512 kB, the others at a limit of size";
    return tally;
}

} // namespace torture
