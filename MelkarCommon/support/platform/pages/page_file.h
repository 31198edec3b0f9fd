#pragma once

#include <MelkarCommon/support/platform/seam/backend.h>
#include <MelkarCommon/support/platform/surface.h>

namespace melkar {

/// A page file in the making.
class PageFile : public Backend {
public:
    /// Finishes the file and gives it its name. @return false, with a log line and no file, if it couldn't be written.
    virtual bool Finish() = 0;
};

/// Null, with a log line, if the file can't be made.
std::unique_ptr<PageFile> MakePageBackend(const char* path, PageFormat format, int width, int height, int dpi);

} // namespace melkar
