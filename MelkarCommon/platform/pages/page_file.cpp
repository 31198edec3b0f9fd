#include <MelkarCommon/platform/files/log_sink.h>
#include <MelkarCommon/platform/files/paths.h>
#include <MelkarCommon/platform/pages/page_formats.h>

#include <cerrno>
#include <cstring>

namespace melkar {

namespace {

void LogNotWritten(PageFormat format, const std::string& path, const char* reason) {
    const std::string name = format == PageFormat::Pdf ? "PDF" : "SVG";
    ReportFailure((name + " file [" + path + "] not written: " + reason).c_str());
}

} // namespace

std::unique_ptr<PageFile> MakePageFile(const char* path, PageFormat format, int width, int height, int dpi,
                                       const DocumentInfo& info) {
    const bool sensible = path != nullptr && *path != '\0' && width > 0 && height > 0 && dpi > 0;
    if (!sensible) {
        LogNotWritten(format, path != nullptr ? path : "", std::strerror(EINVAL));
        return nullptr;
    }
    const std::string resolved = ResolvePath(path);
    std::unique_ptr<NewFile> file = NewFile::Create(resolved);
    if (file == nullptr) {
        LogNotWritten(format, resolved, std::strerror(errno));
        return nullptr;
    }
    return MakePageFile(std::move(file), format, width, height, dpi, info);
}

std::unique_ptr<PageFile> MakePageFile(std::unique_ptr<NewFile> file, PageFormat format, int width, int height, int dpi,
                                       const DocumentInfo& info) {
    if (format == PageFormat::Pdf)
        return MakePdfPages(std::move(file), width, height, dpi, info);
    return MakeSvgPage(std::move(file), format, width, height, dpi, info);
}

bool FinishPage(NewFile& file, PageFormat format, const char* drawingError) {
    if (drawingError != nullptr)
        file.Abandon(); // a write error that came first is kept
    const int error = file.Commit();
    if (error != 0)
        LogNotWritten(format, file.Path(),
                      error == ECANCELED && drawingError != nullptr ? drawingError : std::strerror(error));
    errno = error != 0 ? error : errno; // the reason, for who asked
    return error == 0;
}

} // namespace melkar
