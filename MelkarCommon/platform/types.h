#pragma once

#include <cstdint>

/// @file
/// Plain types of the drawing layer: handles, points, rectangles, colours and the constants that
/// the drawing calls take. No behaviour lives here.

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;

// Macros, for libraries have them as such (GLib, GTK, curses, jpeg): a constant of the name lives beside neither order.
#ifndef FALSE
#define FALSE 0
#endif
#ifndef TRUE
#define TRUE 1
#endif

/// Colour 0x00BBGGRR: red in the low byte.
using COLORREF = std::uint32_t;

/// Packs the low 8 bits of each channel.
constexpr COLORREF RGB(unsigned red, unsigned green, unsigned blue) {
    return (red & 0xFFU) | ((green & 0xFFU) << 8U) | ((blue & 0xFFU) << 16U);
}

namespace melkar {
constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
} // namespace melkar

/// Handles are pointers to structs that only the drawing layer knows; null is a valid "none" everywhere.
using HDC = struct HDC__*;
using HWND = struct HWND__*;
using HFONT = struct HFONT__*;
using HPEN = struct HPEN__*;
using HBRUSH = struct HBRUSH__*;
using HBITMAP = struct HBITMAP__*;
using HRGN = struct HRGN__*;
using HINSTANCE = struct HINSTANCE__*;
using HANDLE = void*;
using HGDIOBJ = void*; ///< any of pen, brush, font, bitmap, region

/// A point in device units, y growing downwards.
struct POINT {
    int x;
    int y;
};

/// A rectangle in device units: left and top belong to it, right and bottom don't.
struct RECT {
    int left;
    int top;
    int right;
    int bottom;
};

constexpr int LF_FACESIZE = 32;

/// Description of a font. Angles are tenths of a degree, counter-clockwise.
struct LOGFONTA {
    int lfHeight; ///< below 0: em height in pixels; above 0: cell height; 0: the default, 12 pixels at 96 dpi
    int lfWidth;
    int lfEscapement;
    int lfOrientation;
    int lfWeight; ///< 400 regular, 700 bold
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    char lfFaceName[LF_FACESIZE]; ///< NUL-terminated; a longer name is cut
};

struct LOGBRUSH {
    UINT lbStyle; ///< BS_SOLID or BS_NULL
    COLORREF lbColor;
    std::uintptr_t lbHatch; ///< unused
};

/// What `GetObjectA` tells of a bitmap.
struct BITMAP {
    int bmType;
    int bmWidth;
    int bmHeight;
    int bmWidthBytes;
    WORD bmPlanes;
    WORD bmBitsPixel;
    void* bmBits;
};

struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;     ///< 1 to 12
    WORD wDayOfWeek; ///< 0 is Sunday
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};

// Pens
constexpr int PS_SOLID = 0;
constexpr int PS_DASH = 1;
constexpr int PS_DOT = 2;
constexpr int PS_NULL = 5;
constexpr int PS_INSIDEFRAME = 6;
constexpr DWORD PS_STYLE_MASK = 0xF;
constexpr DWORD PS_GEOMETRIC = 0x10000;

// Brushes
constexpr UINT BS_SOLID = 0;
constexpr UINT BS_NULL = 1;

// Stock objects
constexpr int WHITE_BRUSH = 0;
constexpr int BLACK_BRUSH = 4;
constexpr int NULL_BRUSH = 5;
constexpr int WHITE_PEN = 6;
constexpr int BLACK_PEN = 7;
constexpr int NULL_PEN = 8;
constexpr int SYSTEM_FONT = 13;

// Background modes
constexpr int TRANSPARENT = 1;
constexpr int OPAQUE = 2;

// Polygon fill modes
constexpr int ALTERNATE = 1;
constexpr int WINDING = 2;

// Raster operations
constexpr DWORD SRCCOPY = 0x00CC0020;
constexpr DWORD SRCPAINT = 0x00EE0086; ///< destination OR source
constexpr DWORD SRCAND = 0x008800C6;   ///< destination AND source

// DrawTextExA
constexpr UINT DT_LEFT = 0x0;
constexpr UINT DT_CENTER = 0x1;
constexpr UINT DT_RIGHT = 0x2;
constexpr UINT DT_VCENTER = 0x4;
constexpr UINT DT_BOTTOM = 0x8;
constexpr UINT DT_WORDBREAK = 0x10;
constexpr UINT DT_SINGLELINE = 0x20;
constexpr UINT DT_CALCRECT = 0x400;
constexpr UINT DT_EDITCONTROL = 0x2000;

// Fonts
constexpr int FW_NORMAL = 400;
constexpr int FW_BOLD = 700;
constexpr BYTE DEFAULT_CHARSET = 1;
constexpr DWORD PROOF_QUALITY = 2;

// Device capabilities
constexpr int HORZRES = 8;
constexpr int VERTRES = 10;
constexpr int LOGPIXELSX = 88;
constexpr int LOGPIXELSY = 90;

// Images
constexpr UINT IMAGE_BITMAP = 0;
constexpr UINT LR_LOADFROMFILE = 0x10;
constexpr UINT LR_CREATEDIBSECTION = 0x2000;

// Desktop and locale queries
constexpr UINT SPI_GETWORKAREA = 0x30;
constexpr DWORD LOCALE_USER_DEFAULT = 0x400;
constexpr DWORD LOCALE_NOUSEROVERRIDE = 0x80000000;
constexpr DWORD LOCALE_SABBREVDAYNAME1 = 0x31; ///< Monday; six more follow, to Sunday
constexpr DWORD LOCALE_SABBREVDAYNAME7 = 0x37;
