#pragma once

#include <MelkarCommon/platform/host_surfaces.h>
#include <MelkarCommon/platform/page_words.h>
#include <MelkarCommon/platform/seam/backend.h>

#include <ctime>
#include <memory>
#include <optional>
#include <string>

/// @file
/// Internal. A document of pages that goes to a file.

namespace melkar {

class NewFile;

/// A sheet of paper and the place of the room to draw on. Points.
struct Sheet {
    double width;
    double height;
    double left;
    double top;
};

/// What a document says about itself.
struct DocumentInfo {
    std::string title; ///< UTF-8
    /// When it was made, so that the same input gives the same bytes; without it SOURCE_DATE_EPOCH of the environment
    /// counts, else the present.
    std::optional<std::time_t> created;
    std::optional<Sheet> sheet = std::nullopt; ///< without it the room is the whole sheet
};

/// A document in the making. What is drawn between two pages is lost. Unless it is finished, no file comes of it.
class PageFile : public Backend {
public:
    /// Starts the next page: empty, the clip is the whole of it. A page that is still open ends.
    /// @return false, with nothing changed, if the document has ended or its format has room for one page only.
    virtual bool BeginPage() = 0;
    virtual void EndPage() = 0;
    /// Ends the open page, finishes the file and gives it its name. @return false, with a log line and no file, if it
    /// couldn't be written, has no page, or was abandoned.
    virtual bool Finish() = 0;
    /// @return false, with nothing changed, if its format has no place for them, or it has ended.
    virtual bool SetWords(const PageWords&) { return false; }
    /// A part of the open page begins, unless one has; the text is its bookmark's, UTF-8; empty: none @return false,
    /// with nothing begun, if its format knows of none.
    virtual bool BeginPart(PageRole, const RECT&, const std::string& /*name*/) { return false; }
    /// @return false if none has begun.
    virtual bool EndPart() { return false; }
    /// In place of that in `DocumentInfo`. @return false, with nothing changed, as for `SetWords`.
    virtual bool SetTitle(const std::string&) { return false; }
    /// No file comes of it.
    virtual void Abandon() = 0;
};

/// A document of pages of width x height device units at `dpi` units per inch; none of them is open yet. Null, with a
/// log line, if the file can't be made.
std::unique_ptr<PageFile> MakePageFile(const char* path, PageFormat format, int width, int height, int dpi,
                                       const DocumentInfo& info = {});

/// The same into a file that is open and empty.
std::unique_ptr<PageFile> MakePageFile(std::unique_ptr<NewFile> file, PageFormat format, int width, int height, int dpi,
                                       const DocumentInfo& info = {});

/// A page on a context of the host's, no document: its one page begins and ends, and there is no file. Null for one
/// that has failed.
std::unique_ptr<PageFile> MakeContextPage(cairo_t* context, int width, int height, int dpi);

} // namespace melkar
