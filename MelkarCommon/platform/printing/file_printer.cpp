#include <MelkarCommon/platform/files/paths.h>
#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/printing/printer.h>

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace melkar {
namespace {

/// The document is where it belongs as soon as it is finished.
class FileJob : public PrintJob {
public:
    explicit FileJob(std::string path) : m_path(std::move(path)) {}
    std::unique_ptr<NewFile> Document() override {
        auto file = NewFile::Create(m_path);
        if (file == nullptr)
            LogPrinter(m_path, std::strerror(errno));
        return file;
    }
    bool Deliver() override { return true; }

private:
    std::string m_path;
};

/// A file takes ink up to its edges.
class FilePrinter : public Printer {
public:
    explicit FilePrinter(std::string path) : m_path(std::move(path)) {}
    const PrinterDefaults& Defaults() const override { return m_defaults; }
    Margins MarginsOf(const Paper&) const override { return {}; }
    std::unique_ptr<PrintJob> Begin(const JobTicket&) override { return std::make_unique<FileJob>(m_path); }

private:
    std::string m_path;
    PrinterDefaults m_defaults{FindPaper(DMPAPER_A4), true};
};

} // namespace

std::unique_ptr<PrintJob> FindFileJob(const char* path) { return std::make_unique<FileJob>(ResolvePath(path)); }

/// There, if its directory takes files.
std::unique_ptr<Printer> FindFilePrinter(const std::string& path) {
    const std::string resolved = ResolvePath(path.c_str());
    if (access(FolderOf(resolved).c_str(), W_OK) == 0)
        return std::make_unique<FilePrinter>(resolved);
    LogPrinter(path, std::strerror(errno));
    return nullptr;
}

} // namespace melkar
