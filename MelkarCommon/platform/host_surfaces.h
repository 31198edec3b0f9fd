#pragma once

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/surface.h>

#include <functional>
#include <string>
#include <string_view>
#include <utility>

/// @file
/// Surfaces on what a host has already: a context of cairo's in its window or its print dialog, memory for a page.

/// As cairo.h has it, which hosts without cairo don't need.
using cairo_t = struct _cairo;

namespace melkar {

/// Draws on a context that is the host's, as vectors, the way pages are drawn: texts as glyphs with their characters.
/// Units of the surface are those of the context as it stands (its matrix counts, turned ones too), from (0, 0) to
/// (width, height), within its clip; nothing is cleared before. `dpi` tells how many of them are an inch, for texts and
/// lines: a print context that counts in points takes the same layout as a screen of 96 an inch after `cairo_scale(cr,
/// 0.75, 0.75)`. A window of a whole number of pixels a unit is sharper by `WrapScaledPixels`.
///
/// Until `DeleteDC` the context is the surface's: the host draws nothing on it. Then its matrix, clip, path and all
/// else that is set on it are as they were, and it lives on; what was drawn is its only trace. `DeleteDC` is FALSE,
/// with a log line, if something is missing, for want of memory or because the context failed. Null also for a null
/// context and for one that has failed.
///
/// @code{.cpp}
/// inline void DrawPage(cairo_t* sheet, char* path) { // of a print dialog that counts in points
///     HDC surface = melkar::CreateContextSurface(sheet, 500, 300, 72);
///     CStepGraph(nullptr, surface, "STEPS", surface, nullptr, nullptr).Draw(CRect(0, 0, 500, 300), path);
///     DeleteDC(surface);
/// }
/// @endcode
MELKAR_API HDC CreateContextSurface(cairo_t* context, int width, int height, int dpi = 96);

/// Takes a piece of a page. It may throw. @return whether to go on
using PieceTaker = std::function<bool(std::string_view piece)>;

/// A page as `CreatePageSurface` makes one, byte for byte, for whoever keeps none in files: in a database, an answer of
/// a server. `take` gets it while `DeleteDC` runs, on its thread, in pieces of up to 64 KiB, and only if the page is
/// whole; until then it is kept in memory. `DeleteDC` is FALSE, with a log line, if the page came to nothing, and if
/// `take` returns false or throws, which is where its exception ends: then it gets no more.
///
/// @code{.cpp}
/// const auto print = [](std::string_view piece) { return std::fwrite(piece.data(), piece.size(), 1, stdout) == 1; };
/// HDC page = melkar::CreatePageFor(print, PageFormat::Svg, 900, 500, 96);
/// DeleteDC(page); // prints it
/// @endcode
MELKAR_API HDC CreatePageFor(PieceTaker take, PageFormat format, int width, int height, int dpi);

/// The same into a string, which must live until `DeleteDC`. If that is TRUE it is the whole page; what stood there
/// before goes when the first piece comes.
MELKAR_API HDC CreatePageInMemory(std::string& bytes, PageFormat format, int width, int height, int dpi);

/// A surface that goes with its scope: whatever returns or throws before, it is freed. A page becomes its file then,
/// and nobody hears whether it did: `Close` says it.
///
/// @code{.cpp}
/// melkar::ScopedSurface page(CreatePageSurface("week.pdf", PageFormat::Pdf, 900, 500, 96));
/// Ellipse(page, 10, 10, 90, 90);
/// if (!page.Close())
///     std::fprintf(stderr, "%s\n", melkar::LastFailure());
/// @endcode
class ScopedSurface {
public:
    /// Takes the surface over; null is none.
    explicit ScopedSurface(HDC surface) : m_surface(surface) {}
    ~ScopedSurface() { Close(); }
    ScopedSurface(const ScopedSurface&) = delete;
    ScopedSurface& operator=(const ScopedSurface&) = delete;

    operator HDC() const { return m_surface; } ///< for drawing calls; null once it is closed
    /// Frees it now. @return as `DeleteDC`; FALSE if it is closed already
    BOOL Close() { return DeleteDC(std::exchange(m_surface, nullptr)); }

private:
    HDC m_surface;
};

} // namespace melkar
