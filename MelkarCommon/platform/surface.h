#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/types.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// @file
/// What a host needs beside the drawing calls: surfaces to draw on, and what comes out of them. A new surface
/// has a black pen of width 1, a white brush, a sans font of 12 pixels at 96 dpi (scaled with dpi), black text, a white
/// background colour and opaque mode. All but recordings leave a text the room that it takes on pixels at 96 dpi,
/// scaled to their own, so that screen and paper break lines and place texts alike. All are freed with `DeleteDC`. A
/// side below 1 or above 32767, more than 2^27 pixels, a dpi below 1 and a lack of memory give null.
///
/// @code{.cpp}
/// std::vector<std::uint32_t> pixels(320 * 200, 0xFFFFFFFF); // what a window shows
/// HDC window = WrapPixels(pixels.data(), 320, 200, 320 * 4);
/// HDC page = CreatePageSurface("line.svg", PageFormat::Svg, 320, 200, 96);
/// for (HDC surface : {window, page}) {
///     MoveToEx(surface, 20, 180, nullptr);
///     LineTo(surface, 300, 20);
/// }
/// WritePng(window, "line.png");
/// DeleteDC(window);
/// if (!DeleteDC(page))
///     std::perror("line.svg");
/// @endcode

/// Pixels of its own, white at the start.
MELKAR_API HDC CreateMemorySurface(int width, int height, int dpi = 96);

/// The same for a screen of fine pixels: a picture of width x height units of 96 an inch whose pixels are `scale` times
/// as many, 1 to 8, fractions such as 1.25 too; null for another scale. All calls take and give units, `GetDeviceCaps`
/// among them, and what is drawn stands where it stands on a memory surface of that size, only sharper: a host keeps
/// its coordinates and its pointer. Only `GetPixels` and picture files have the real pixels, `std::lround(width *
/// scale)` in a row. Edges land on whole pixels; a line of width w is `std::lround(w * scale)` pixels wide, at least 1;
/// texts keep their room and have the glyphs of the real size. Compatible surfaces and bitmaps have the same scale, and
/// copies between surfaces of one scale copy pixels; others, and pictures from files, are scaled.
MELKAR_API HDC CreateScaledSurface(int width, int height, double scale);

/// Draws on the host's memory: 0xFFRRGGBB, top row first, `strideBytes` from row to row (a multiple of 4, at
/// least 4 x width). The memory stays the host's and must outlive the surface. All that was drawn stands there when a
/// call returns, to be read without any other; nothing is written between calls. A toolkit that has a picture of its
/// own on the same memory must hear of it on both sides: of cairo's, `cairo_surface_flush` before any call that may
/// draw
/// (`Draw`, `OnMouseMove`, a copy onto it), since it may still have to keep what was shown, and
/// `cairo_surface_mark_dirty` behind; without the first cairo ends the process in the second.
MELKAR_API HDC WrapPixels(void* pixels, int width, int height, int strideBytes, int dpi = 96);

/// The same with `scale` pixels a unit: the memory has `std::lround(height * scale)` rows of `std::lround(width *
/// scale)` pixels. A window of 400 x 300 on a screen of twice as many pixels: `WrapScaledPixels(memory, 400, 300, 800 *
/// 4, 2)`.
MELKAR_API HDC WrapScaledPixels(void* pixels, int width, int height, int strideBytes, double scale);

/// What a page surface writes.
enum class PageFormat {
    Pdf,         ///< texts as glyphs with their characters beside them, so that they can be searched and copied
    Svg,         ///< texts as texts: a reader's machine needs their fonts, or others stand in at the same length
    SvgOutlines, ///< texts as outlines, with unseen texts on top for those who search and copy
};

/// One page of width x height device units at `dpi` units per inch. The file appears under `path`, whole, when
/// the surface is deleted; until then, and after a failure, nothing stands there that wasn't there before. It takes the
/// place of a regular file, whose mode and, where possible, owner it keeps, or of nothing; a symlink is followed.
/// Null, with a log line and the reason in `errno`, if the file can't be made.
MELKAR_API HDC CreatePageSurface(const char* path, PageFormat format, int width, int height, int dpi);

/// Keeps what is drawn as a list of operations. Text is measured with a built-in font of fixed metrics (each
/// character 3/5 of the em height wide, Han and other wide ones an em, a line 5/4 of it high, rounded up), so that no
/// machine's fonts change a record.
MELKAR_API HDC CreateRecordingSurface(int width, int height, int dpi = 96);

/// The pixels of a memory surface.
struct PixelView {
    const std::uint32_t* pixels; ///< 0xFFRRGGBB, top row first
    int width;                   ///< pixels
    int height;                  ///< rows
    int stride;                  ///< pixels from row to row
};

/// Valid until the surface is deleted or another bitmap is selected into it. All zero without pixels, and
/// without memory to draw what waits.
MELKAR_API PixelView GetPixels(HDC surface);

/// Writes the pixels to a PNG file, as whole as a page's, in place of the same. @return 0, or -1, a log line, `errno`.
MELKAR_API int WritePng(HDC surface, const char* path);

/// A format of picture files.
struct PictureFormat {
    const char* suffix; ///< of file names: "png"
    const char* name;   ///< "PNG"
    const char* says;   ///< a line about it
};
/// All formats that this machine's build writes.
MELKAR_API std::vector<PictureFormat> PictureFormats();

/// The same in the format of the path's suffix, in any case. `errno` is ENOTSUP for a format that isn't listed, EFBIG
/// for more pixels than it takes, ELIBACC where its library is missing. @param surface with pixels @param path of the
/// file @param format a suffix that counts in the path's place
MELKAR_API int WritePicture(HDC surface, const char* path, const char* format = nullptr);

/// One drawing operation a line, in the order of drawing; empty for a surface that records nothing, and without memory.
MELKAR_API std::string GetRecording(HDC surface);

/// The version of a record's words, for who keeps records and compares them with those of another build. Another one: a
/// line may read otherwise for the same drawing. A new verb adds words and leaves it. It stands in no record.
MELKAR_API int RecordingVersion();

/// Surfaces, pens, brushes, fonts, bitmaps and regions alive in the process, stock objects left out.
MELKAR_API std::size_t LiveObjectCount();

/// Whether pictures and pages are on the disk before they take the place of former ones, in the whole process: then not
/// even a machine that loses its power loses both. It costs what the disk takes, some milliseconds a file. FALSE at the
/// start. The log isn't waited for.
MELKAR_API void SetDurableFiles(BOOL isDurable);

/// Fonts that were asked for since the process began and couldn't be had: the machine has none, or none of those that
/// suit can be read. Texts in them are missing from pictures that are drawn all the same; the log tells of each.
MELKAR_API std::size_t MissingFontCount();

/// Gives back what this thread keeps for its next drawing, for hosts that are about to be idle; the next drawing makes
/// it anew. Kept at most: 64 MiB of pixels in four buffers (those of the surfaces and bitmaps freed last), 8 MiB of
/// placed texts and 8 MiB of their coverage, 64 fonts with their figures and what the font libraries keep with them,
/// the coverage of 64 discs, 64 KiB of the profile read last. A thread that ends gives back all of it. Memory of
/// handles is never given back, but used again.
MELKAR_API void TrimMemory();

/// What `SPI_GETWORKAREA` answers from now on, in the whole process; (0, 0, 1920, 1080) at the start.
MELKAR_API void SetWorkArea(const RECT& area);
