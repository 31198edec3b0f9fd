// Profile and data files that others write while threads draw from them: pictures or codes, and nothing is left behind.

#include "trial.h"

#include <atomic>
#include <filesystem>
#include <thread>

namespace torture {
namespace {

constexpr int kPainters = 2;

/// Cuts, garbles or swaps a file, in place or by another one under its name.
void Change(const std::string& path, const std::string& whole) {
    std::string bytes = whole.substr(0, static_cast<std::size_t>(Random(static_cast<int>(whole.size()) + 1)));
    for (int i = Random(20); i > 0 && !bytes.empty(); --i)
        bytes[static_cast<std::size_t>(Random(static_cast<int>(bytes.size())))] = static_cast<char>(Random(256));
    if (Random(3) == 0)
        bytes = whole;
    if (Random(2) == 0) {
        WriteFile(path, bytes);
        return;
    }
    WriteFile(path + ".other", bytes);
    std::filesystem::rename(path + ".other", path);
}

} // namespace

Tally Changes(const Deadline& end) {
    const Host host;
    const auto kinds = Kinds();
    std::vector<std::pair<std::string, std::string>> files = {{"../conf/graph.cnf", ReadFile("../conf/graph.cnf")}};
    for (const melkar::KindRow* kind : kinds)
        files.emplace_back(DataOf(*kind), ReadFile(DataOf(*kind)));
    std::atomic<long> drawn = 0;
    std::atomic<long> faults = 0;
    std::vector<std::thread> painters;
    for (int i = 0; i < kPainters; ++i)
        painters.emplace_back([&] {
            for (; !end.IsOver(); ++drawn) {
                const melkar::KindRow& kind = *kinds[static_cast<std::size_t>(Random(static_cast<int>(kinds.size())))];
                const bool isDirect = Random(2) != 0;
                HDC surface = isDirect ? CreateRecordingSurface(kWidth, kHeight) : CreateMemorySurface(kWidth, kHeight);
                const long result = Draw(kind, surface, isDirect);
                faults += std::string_view(melkar::ResultText(result)) == "unknown result" ? 1 : 0;
                DeleteDC(surface);
            }
        });
    Tally tally;
    for (; !end.IsOver(); ++tally.tries) {
        const auto& [path, whole] = files[static_cast<std::size_t>(Random(static_cast<int>(files.size())))];
        Change(path, whole);
    }
    for (std::thread& painter : painters)
        painter.join();
    tally.faults = faults + static_cast<long>(LiveObjectCount());
    tally.says = "changes under " + std::to_string(drawn) + " draws of two threads";
    tally.tries = drawn > 0 ? tally.tries : 0;
    return tally;
}

} // namespace torture
