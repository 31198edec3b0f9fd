#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/types.h>

/// @file
/// The drawing calls. They keep their platform names and meanings. All of them are null-safe: on a null or
/// unsuitable handle they draw nothing and return 0 (null). A handle of another kind and one of something that was
/// deleted are unsuitable; a deleted handle is noticed until another object of its kind takes its memory, and a pointer
/// that never was a handle is not noticed. A returned object belongs to the caller, who
/// deletes it with `DeleteObject` (surfaces with `DeleteDC`); deleting an object that is selected into a
/// surface is refused, stock objects are never deleted.
///
/// No call throws. One that lacks memory fails like one on an unsuitable handle: it draws nothing and changes nothing,
/// and the surface goes on. Only on pixels may a part of what takes several strokes stand: a shape without its outline,
/// a text's ground. A page that would lack something comes to nothing, as `DeleteDC` and `EndDoc` tell.
///
/// Rectangles and fills cover left..right-1 and top..bottom-1. Pen widths and dash patterns scale with
/// dpi / 96, except that a pen of width 0 stays one pixel wide.
///
/// @code{.cpp}
/// const melkar::ScopedPen pen(view, PS_DASH, 1, RGB(176, 40, 40)); // see scoped.h
/// MoveToEx(view, 0, 100, nullptr);
/// LineTo(view, 320, 100);
/// char text[] = "Ten thousand steps";
/// RECT box{0, 0, 120, 0};
/// DrawTextExA(view, text, -1, &box, DT_WORDBREAK | DT_CALCRECT, nullptr); // measures: sets right and bottom
/// OffsetRect(&box, 10, 110);
/// DrawTextExA(view, text, -1, &box, DT_WORDBREAK, nullptr);
/// @endcode

// Surfaces and bitmaps

/// A memory surface that suits `surface` (its dpi, and its kind: what is drawn on one that suits a page or
/// a recording stays vector until it is copied there). It has no room until a bitmap is selected into it.
MELKAR_API HDC CreateCompatibleDC(HDC surface);
/// A black bitmap to select into a surface that suits `surface`. Null if a side is below 1
/// or above 32767, or for more than 2^27 pixels. Its memory is taken when somebody looks at its pixels: a picture that
/// is drawn once and copied once does without.
MELKAR_API HBITMAP CreateCompatibleBitmap(HDC surface, int width, int height);
/// Frees any surface and finishes the file of a page surface. @return FALSE for null, and for a page
/// whose file couldn't be written (then there is no file, and a log line).
MELKAR_API BOOL DeleteDC(HDC surface);

// Objects

/// Selects a pen, brush, font or bitmap. @return the former object of that kind; null, with nothing
/// changed, for a null or unsuitable one, for a bitmap that is selected elsewhere, and for any on a page or a printer.
MELKAR_API HGDIOBJ SelectObject(HDC surface, HGDIOBJ object);
/// @return FALSE for null, for a stock object and for one that is selected into a surface.
MELKAR_API BOOL DeleteObject(HGDIOBJ object);
/// Brushes, pens and the default font by the numbers in types.h; null for others. Never deleted.
MELKAR_API HGDIOBJ GetStockObject(int index);
/// Stores a `BITMAP` for a bitmap, a `LOGFONTA` for a font. @return the bytes stored, or 0.
MELKAR_API int GetObjectA(HGDIOBJ object, int size, void* out);

/// A font by its description in single values, which `LOGFONTA` explains; a null face is the machine's sans.
/// @return null without memory, as the other calls that make objects.
MELKAR_API HFONT CreateFontA(int height, int width, int escapement, int orientation, int weight, DWORD italic,
                             DWORD underline, DWORD strikeOut, DWORD charSet, DWORD outPrecision, DWORD clipPrecision,
                             DWORD quality, DWORD pitchAndFamily, const char* face);
/// A font by its description; null for none.
MELKAR_API HFONT CreateFontIndirectA(const LOGFONTA* description);
/// A pen of a style in types.h (an unknown one is solid) and a width in device units.
MELKAR_API HPEN CreatePen(int style, int width, COLORREF color);
/// The same with the colour of `brush`, null without one. Style bits beyond `PS_STYLE_MASK` and user patterns are
/// ignored.
MELKAR_API HPEN ExtCreatePen(DWORD style, DWORD width, const LOGBRUSH* brush, DWORD patternCount, const DWORD* pattern);
/// A brush that fills with a colour.
MELKAR_API HBRUSH CreateSolidBrush(COLORREF color);
/// A brush by its description; null for none.
MELKAR_API HBRUSH CreateBrushIndirect(const LOGBRUSH* brush);
/// A polygon; `mode` is `ALTERNATE` or `WINDING`. Null for fewer than three points.
MELKAR_API HRGN CreatePolygonRgn(const POINT* points, int count, int mode);
/// A bitmap from a file (`type` `IMAGE_BITMAP`, `flags` with `LR_LOADFROMFILE`), scaled to width x height
/// unless both are 0. BMP and PNG; JPEG, GIF, TIFF, SVG and WebP where the machine has loaders for them; at most 2^26
/// pixels. Null on failure.
MELKAR_API HANDLE LoadImageA(HINSTANCE instance, const char* name, UINT type, int width, int height, UINT flags);

// State

/// Whether texts and the gaps of patterns stand on the background colour: `OPAQUE`, or `TRANSPARENT`.
/// @return the former mode, 0 on failure
MELKAR_API int SetBkMode(HDC surface, int mode);
/// The colour under texts and in the gaps of patterns. @return the former one
MELKAR_API COLORREF SetBkColor(HDC surface, COLORREF color);
/// The colour of texts. @return the former one
MELKAR_API COLORREF SetTextColor(HDC surface, COLORREF color);
/// `LOGPIXELSX`, `LOGPIXELSY`: dots per inch; 96 for a null surface. `HORZRES`, `VERTRES`: width and height in device
/// units, of a compatible surface those of the one that it suits. Other queries give 0.
MELKAR_API int GetDeviceCaps(HDC surface, int query);

// Drawing

/// Where the next line begins; restarts the pen's pattern. @param surface drawn on @param x of the point @param y of
/// the point @param former gets the position before, if it isn't null @return FALSE for a null surface
MELKAR_API BOOL MoveToEx(HDC surface, int x, int y, POINT* former);
/// A line from the position to (x, y), where the next one begins; it leaves out its end point. Lines that follow each
/// other wait to be drawn as one path with whole corners, until something else is drawn or looked at; on memory that
/// was handed out each is drawn at once. A line may fail for want of memory; the next one starts at its end
/// nevertheless. One for which that shows only later makes the later call fail, and waits on. @return FALSE if nothing
/// was drawn
MELKAR_API BOOL LineTo(HDC surface, int x, int y);
/// A rectangle, filled by the brush and framed by the pen; edges may stand in any order. @return FALSE if nothing was
/// drawn, as of the calls below
MELKAR_API BOOL Rectangle(HDC surface, int left, int top, int right, int bottom);
/// The ellipse in a rectangle, filled by the brush and outlined by the pen within it.
MELKAR_API BOOL Ellipse(HDC surface, int left, int top, int right, int bottom);
/// The slice of the ellipse in the rectangle from the radial through (x1, y1) counter-clockwise to the
/// radial through (x2, y2); equal radials give the whole disc.
MELKAR_API BOOL Pie(HDC surface, int left, int top, int right, int bottom, int x1, int y1, int x2, int y2);
/// Fills a region with a brush, which needn't be selected.
MELKAR_API BOOL FillRgn(HDC surface, HRGN region, HBRUSH brush);
/// Copies width x height pixels of one surface to another, or to another place on the same. What was recorded stays
/// vector under `SRCCOPY`. Nothing for a size below 1 and for an unknown operation.
MELKAR_API BOOL BitBlt(HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY, DWORD operation);
/// Scales: `SRCCOPY` smoothly, `SRCAND` and `SRCPAINT` by the nearest pixel; what was recorded is played at pixels.
MELKAR_API BOOL StretchBlt(HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY, int fromWidth,
                           int fromHeight, DWORD operation);

// Text is NUL-terminated; a length is a limit, at which no character is cut in two. Valid UTF-8 is UTF-8; other bytes
// are read in the code page of the font's character set.

/// The top-left corner of the text stands at (x, y); the font's escapement turns it about that point.
MELKAR_API BOOL TextOutA(HDC surface, int x, int y, const char* text, int length);
/// Draws or, with `DT_CALCRECT`, measures text in a rectangle. Lines break at CR LF and LF (not with
/// `DT_SINGLELINE`), with `DT_WORDBREAK` also at the rectangle's width. Vertical placement counts only with
/// `DT_SINGLELINE`. Drawing is clipped to the rectangle; measuring sets right and bottom and nothing else.
/// An empty text has no width; with `DT_SINGLELINE` it is one line high, else of no height.
/// @param surface drawn on, in its font and colour of texts @param text is never written to
/// @param length bytes of the text, -1 for all of it @param rect in device units
/// @param format `DT_...` @param parameters unused: null @return the height of the text, 0 on failure.
MELKAR_API int DrawTextExA(HDC surface, char* text, int length, RECT* rect, UINT format, void* parameters);
