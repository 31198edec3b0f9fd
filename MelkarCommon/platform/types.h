#pragma once

#include <cstdint>

/// @file
/// Plain types of the drawing layer: handles, points, rectangles, colours and the constants that
/// the drawing calls take. No behaviour lives here.

/// @name Plain numbers
/// @{

/// A number of the width that its name has on the platform; a `BOOL` is 0 or not.
using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
/// @}

// Macros, for libraries have them as such (GLib, GTK, curses, jpeg): a constant of the name lives beside neither order.
#ifndef FALSE
#define FALSE 0 ///< of a `BOOL`
#endif
#ifndef TRUE
#define TRUE 1 ///< of a `BOOL`
#endif

/// Colour 0x00BBGGRR: red in the low byte.
using COLORREF = std::uint32_t;

/// Packs the low 8 bits of each channel.
constexpr COLORREF RGB(unsigned red, unsigned green, unsigned blue) {
    return (red & 0xFFU) | ((green & 0xFFU) << 8U) | ((blue & 0xFFU) << 16U);
}

namespace melkar {
constexpr COLORREF kNoColor = 0xFFFFFFFF;       ///< stands for no colour at all; drawing with it is white
constexpr COLORREF kBlack = RGB(0, 0, 0);       ///< of texts and pens, where nobody chose another
constexpr COLORREF kWhite = RGB(255, 255, 255); ///< of paper
} // namespace melkar

/// @name Handles
/// @{

/// Pointers to structs that only the drawing layer knows; null is a valid "none" everywhere.
using HDC = struct HDC__*;             ///< a surface: of pixels, a page, a record, a printer's; freed by `DeleteDC`
using HWND = struct HWND__*;           ///< a window of the host, which is kept and never looked at
using HFONT = struct HFONT__*;         ///< a font; freed by `DeleteObject`, as the four below
using HPEN = struct HPEN__*;           ///< a pen
using HBRUSH = struct HBRUSH__*;       ///< a brush
using HBITMAP = struct HBITMAP__*;     ///< a bitmap
using HRGN = struct HRGN__*;           ///< a region
using HINSTANCE = struct HINSTANCE__*; ///< unused: null
using HANDLE = void*;                  ///< a printer, a bitmap that was loaded, a piece of memory
using HGDIOBJ = void*;                 ///< any of pen, brush, font, bitmap, region
/// @}

/// A point in device units, y growing downwards.
struct POINT {
    int x; ///< to the right
    int y; ///< downwards
};

/// A rectangle in device units: left and top belong to it, right and bottom don't.
struct RECT {
    int left;   ///< first column
    int top;    ///< first row
    int right;  ///< column behind the last one
    int bottom; ///< row behind the last one
};

/// Room for the name of a face, in bytes with the NUL.
constexpr int LF_FACESIZE = 32;

/// Description of a font. Angles are tenths of a degree, counter-clockwise.
struct LOGFONTA {
    int lfHeight;          ///< below 0: em height in pixels; above 0: cell height; 0: the default, 12 pixels at 96 dpi
    int lfWidth;           ///< unused, as the other fields that say so: kept for `GetObjectA`
    int lfEscapement;      ///< by which a line of text is turned about its top-left corner
    int lfOrientation;     ///< unused
    int lfWeight;          ///< 400 regular, 700 bold
    BYTE lfItalic;         ///< not 0: italic
    BYTE lfUnderline;      ///< not 0: underlined
    BYTE lfStrikeOut;      ///< not 0: struck out
    BYTE lfCharSet;        ///< the code page of bytes that aren't UTF-8: 128 Japanese, 204 Cyrillic, ...; 0 Western
    BYTE lfOutPrecision;   ///< unused
    BYTE lfClipPrecision;  ///< unused
    BYTE lfQuality;        ///< unused
    BYTE lfPitchAndFamily; ///< unused
    char lfFaceName[LF_FACESIZE]; ///< NUL-terminated; a longer name is cut
};

/// Description of a brush.
struct LOGBRUSH {
    UINT lbStyle;           ///< `BS_SOLID`, or `BS_NULL` to fill nothing
    COLORREF lbColor;       ///< of the fill
    std::uintptr_t lbHatch; ///< unused
};

/// What `GetObjectA` tells of a bitmap.
struct BITMAP {
    int bmType;       ///< 0
    int bmWidth;      ///< pixels
    int bmHeight;     ///< pixels
    int bmWidthBytes; ///< bytes of a row
    WORD bmPlanes;    ///< 1
    WORD bmBitsPixel; ///< 32
    void* bmBits;     ///< the pixels, 0xFFRRGGBB; null without a picture of pixels
};

/// A day and a time of day.
struct SYSTEMTIME {
    WORD wYear;         ///< in full
    WORD wMonth;        ///< 1 to 12
    WORD wDayOfWeek;    ///< 0 is Sunday
    WORD wDay;          ///< of the month, from 1
    WORD wHour;         ///< 0 to 23
    WORD wMinute;       ///< 0 to 59
    WORD wSecond;       ///< 0 to 60
    WORD wMilliseconds; ///< 0 to 999
};

/// @name Pens
/// @{
constexpr int PS_SOLID = 0;             ///< a line without gaps
constexpr int PS_DASH = 1;              ///< dashes of 18 units with gaps of 6
constexpr int PS_DOT = 2;               ///< dots of 3 units with gaps of 3
constexpr int PS_NULL = 5;              ///< no line
constexpr int PS_INSIDEFRAME = 6;       ///< solid; the frame of a rectangle stays within it however wide it is
constexpr DWORD PS_STYLE_MASK = 0xF;    ///< the bits of a style of `ExtCreatePen` that are one of the above
constexpr DWORD PS_GEOMETRIC = 0x10000; ///< ignored: all pens scale
/// @}

/// @name Brushes
/// @{
constexpr UINT BS_SOLID = 0; ///< fills with its colour
constexpr UINT BS_NULL = 1;  ///< fills nothing
/// @}

/// @name Stock objects
/// @{

/// What `GetStockObject` gives for the number.
constexpr int WHITE_BRUSH = 0;
constexpr int BLACK_BRUSH = 4;
constexpr int NULL_BRUSH = 5;
constexpr int WHITE_PEN = 6;
constexpr int BLACK_PEN = 7;
constexpr int NULL_PEN = 8;
constexpr int SYSTEM_FONT = 13;
/// @}

/// @name Background modes
/// @{
constexpr int TRANSPARENT = 1; ///< texts and the gaps of patterns leave what is below them
constexpr int OPAQUE = 2;      ///< they stand on the background colour
/// @}

/// @name Polygon fill modes
/// @{
constexpr int ALTERNATE = 1; ///< what an odd number of edges surrounds
constexpr int WINDING = 2;   ///< what edges go around, however often
/// @}

/// @name Raster operations
/// @{

/// What a copied pixel does to the one below it, bit by bit.
constexpr DWORD SRCCOPY = 0x00CC0020;  ///< takes its place
constexpr DWORD SRCPAINT = 0x00EE0086; ///< destination OR source
constexpr DWORD SRCAND = 0x008800C6;   ///< destination AND source
/// @}

/// @name Formats of DrawTextExA
/// @{

/// Bits; those of one direction exclude each other.
constexpr UINT DT_LEFT = 0x0;           ///< each line begins at the left edge
constexpr UINT DT_CENTER = 0x1;         ///< each line is centred across
constexpr UINT DT_RIGHT = 0x2;          ///< each line ends at the right edge
constexpr UINT DT_VCENTER = 0x4;        ///< a single line stands half-way down
constexpr UINT DT_BOTTOM = 0x8;         ///< a single line stands on the bottom
constexpr UINT DT_WORDBREAK = 0x10;     ///< lines wrap at the rectangle's width
constexpr UINT DT_SINGLELINE = 0x20;    ///< line feeds break no line
constexpr UINT DT_CALCRECT = 0x400;     ///< measures, and draws nothing
constexpr UINT DT_EDITCONTROL = 0x2000; ///< ignored
/// @}

/// @name Fonts
/// @{
constexpr int FW_NORMAL = 400;      ///< weight of regular texts
constexpr int FW_BOLD = 700;        ///< weight of bold texts
constexpr BYTE DEFAULT_CHARSET = 1; ///< bytes that aren't UTF-8 are Western
constexpr DWORD PROOF_QUALITY = 2;  ///< ignored: all texts are drawn as well as can be
/// @}

/// @name Questions to GetDeviceCaps
/// @{
constexpr int HORZRES = 8;     ///< width, device units
constexpr int VERTRES = 10;    ///< height, device units
constexpr int LOGPIXELSX = 88; ///< dots per inch across
constexpr int LOGPIXELSY = 90; ///< dots per inch down, the same
/// @}

/// @name Loading images
/// @{
constexpr UINT IMAGE_BITMAP = 0;             ///< the one kind of image
constexpr UINT LR_LOADFROMFILE = 0x10;       ///< needed: images come from files
constexpr UINT LR_CREATEDIBSECTION = 0x2000; ///< ignored
/// @}

/// @name Desktop and locale queries
/// @{
constexpr UINT SPI_GETWORKAREA = 0x30;              ///< of `SystemParametersInfoA`
constexpr DWORD LOCALE_USER_DEFAULT = 0x400;        ///< the locale of the environment
constexpr DWORD LOCALE_NOUSEROVERRIDE = 0x80000000; ///< ignored beside a query
constexpr DWORD LOCALE_SABBREVDAYNAME1 = 0x31;      ///< Monday; six more follow, to Sunday
constexpr DWORD LOCALE_SABBREVDAYNAME7 = 0x37;      ///< Sunday
/// @}
