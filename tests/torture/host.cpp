#include "trial.h"

#include <MelkarCommon/platform/host_surfaces.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

namespace torture {

namespace fs = std::filesystem;

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFile(const std::string& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

Host::Host() {
    char name[] = "/tmp/torture-XXXXXX";
    m_root = mkdtemp(name);
    for (const char* folder : {"bin", "conf", "log", "data"})
        fs::create_directory(Path(folder));
    fs::current_path(Path("bin"));
    std::string profile;
    for (const melkar::KindRow* kind : Kinds()) {
        profile += melkar::StarterProfile(kind->kind, kind->kind);
        for (const melkar::DataTable& table : melkar::FilesReadBy(*kind))
            WriteFile(DataOf(*kind) + table.suffix, melkar::ExampleFile(table));
    }
    WriteFile(Path("conf/graph.cnf"), profile);
}

Host::~Host() {
    fs::current_path("/");
    std::error_code ignored;
    fs::remove_all(m_root, ignored);
}

std::string Host::EmptyFolder(const std::string& name) const {
    fs::remove_all(Path(name));
    fs::create_directory(Path(name));
    return Path(name);
}

std::string DataOf(const melkar::KindRow& kind) { return std::string("../data/") + kind.kind + ".csv"; }

std::vector<const melkar::KindRow*> Kinds() {
    std::vector<const melkar::KindRow*> kinds;
    for (const melkar::KindRow& kind : melkar::Catalogue())
        if (kind.make != nullptr && *kind.kind != '\0')
            kinds.push_back(&kind);
    return kinds;
}

long Draw(const melkar::KindRow& kind, HDC surface, bool isDirect) {
    const auto graph = kind.make(nullptr, surface, kind.kind, surface, surface, surface);
    graph->SetDirectOutput(isDirect ? 1 : 0);
    std::string data = DataOf(kind);
    return graph->Draw(CRect(0, 0, kWidth, kHeight), data.data());
}

std::string PixelsOf(const melkar::KindRow& kind) {
    const melkar::ScopedSurface surface(CreateMemorySurface(kWidth, kHeight));
    Draw(kind, surface, false);
    const PixelView view = GetPixels(surface);
    std::string bytes;
    for (int row = 0; row < view.height; ++row)
        bytes.append(reinterpret_cast<const char*>(view.pixels + std::size_t{1} * row * view.stride),
                     std::size_t{4} * view.width);
    return bytes;
}

std::string RecordOf(const melkar::KindRow& kind) {
    const melkar::ScopedSurface surface(CreateRecordingSurface(kWidth, kHeight));
    Draw(kind, surface, true);
    return GetRecording(surface);
}

std::string PageOf(const melkar::KindRow& kind, PageFormat format, const std::string& path) {
    melkar::ScopedSurface surface(CreatePageSurface(path.c_str(), format, kWidth, kHeight, 96));
    Draw(kind, surface, true);
    return surface.Close() ? ReadFile(path) : "";
}

int Print(const melkar::KindRow& kind, const std::string& path) {
    constexpr DOCINFOA kJob{sizeof kJob, "torture", nullptr, nullptr, 0};
    HDC printer = CreateDCA("WINSPOOL", path.c_str(), nullptr, nullptr);
    StartDocA(printer, &kJob);
    for (int page = 0; page < 2; ++page) {
        StartPage(printer);
        Draw(kind, printer, true);
        EndPage(printer);
    }
    const int ended = EndDoc(printer);
    DeleteDC(printer);
    return ended;
}

namespace {
constexpr std::size_t kHead = 10;
constexpr std::size_t kRecord = 122;
} // namespace

bool IsWholeLog(const std::string& log) {
    if (log.size() < kHead)
        return log.empty();
    const std::size_t last = std::strtoul(log.substr(0, 8).c_str(), nullptr, 10);
    if (log.size() < kHead + last * kRecord)
        return false;
    for (std::size_t at = kHead; at < kHead + last * kRecord; at += kRecord)
        if (log[at] != '[' || log.compare(at + 120, 2, "\r\n") != 0)
            return false;
    return true;
}

bool HasEndMark(const std::string& log) {
    const std::size_t last = std::strtoul(log.substr(0, 8).c_str(), nullptr, 10);
    return log.size() >= kHead + (last + 1) * kRecord &&
           log.compare(kHead + last * kRecord, 119, std::string(119, '=')) == 0;
}

std::vector<std::string> LinesOf(const std::string& log) {
    std::vector<std::string> lines;
    for (std::size_t at = kHead; at + kRecord <= log.size(); at += kRecord) {
        const std::string record = log.substr(at, 120);
        if (const auto text = record.find("]  "); text != std::string::npos)
            lines.emplace_back(record.c_str() + text + 3);
    }
    return lines;
}

int InChild(const std::function<int()>& work) {
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

int InColdChild(const char* name, const std::function<void()>& prepare) {
    return InChild([&] {
        prepare();
        execl("/proc/self/exe", "melkar_torture", name, nullptr);
        return 127;
    });
}

int DrawAll() {
    for (const melkar::KindRow* kind : Kinds()) {
        const std::string name = "../data/" + std::string(kind->kind);
        PixelsOf(*kind);
        RecordOf(*kind);
        PageOf(*kind, PageFormat::Svg, name + ".svg");
        PageOf(*kind, PageFormat::Pdf, name + ".pdf");
    }
    return 0;
}

} // namespace torture
