#pragma once

#include <MelkarCommon/platform/pages/page_file.h>
#include <MelkarCommon/platform/printing/printer.h>
#include <MelkarCommon/platform/surfaces/picture.h>

#include <memory>
#include <optional>
#include <variant>

/// @file
/// Internal. What a surface draws on. The kinds are a variant, visited by a function for each: where a new one is
/// missing, nothing compiles.

namespace melkar {

/// A picture: one that came with the surface, or a bitmap that is selected.
class PictureTarget {
public:
    /// Without room until a bitmap is selected.
    PictureTarget() : m_bitmap(StockBitmap()) {}
    explicit PictureTarget(std::unique_ptr<Bitmap> own) : m_own(std::move(own)), m_bitmap(*m_own) {}

    Picture& Now() { return m_bitmap->picture; }
    const Picture& Now() const { return m_bitmap->picture; }
    /// @return the former one; null, with nothing changed, if this one is selected elsewhere.
    Bitmap* Select(Bitmap& bitmap);

private:
    std::unique_ptr<Bitmap> m_own;
    Selected<Bitmap> m_bitmap;
};

/// A page, finished with its surface.
struct PageTarget {
    std::unique_ptr<PageFile> page; ///< never null
    DeviceSize size;
};

/// Pages under way to a printer. Gone before it is handed over, it leaves nothing.
struct PrintedDocument {
    std::unique_ptr<PrintJob> job;
    std::unique_ptr<PageFile> pages;
    std::unique_ptr<Backend> grey; ///< in front of the pages, where they have no colours; else null
    bool hasPage = false;          ///< one is open

    Backend& Drawing() { return grey != nullptr ? *grey : *pages; }
};

/// A printer, and what is asked of it. Nothing is drawn between two documents.
struct PrinterTarget {
    std::unique_ptr<Printer> printer;
    JobTicket ticket;
    SheetLayout sheet;
    std::optional<PrintedDocument> document = std::nullopt; ///< the one under way
};

using Target = std::variant<PictureTarget, PageTarget, PrinterTarget>;

/// Of the room to draw on.
DeviceSize SizeOf(const Target& target);
/// Pixels a unit; 1 for what has none.
double ScaleOf(Target& target);
/// Null without room.
Backend* DrawingOn(Target& target);
/// What can be copied; null for pages.
Picture* PictureOf(Target& target);
/// Whether anybody may look at it after any call, so that nothing may wait.
bool IsExposed(const Target& target);
/// How much is drawn that `TakeBack` can take back again.
std::size_t DrawnOn(const Target& target);
/// A call failed in the middle: takes back what was drawn since. No file comes of a page, with a log line: it would
/// lack something. On pixels a part of what was to be drawn may stand.
void TakeBack(Target& target, std::size_t drawn);
/// @return the former bitmap; null, with nothing changed, for a bitmap that is selected elsewhere, and on pages.
Bitmap* SelectOn(Target& target, Bitmap& bitmap);
/// The surface goes. @return false if a file was to come of it and none did
bool Finish(Target& target);

} // namespace melkar
