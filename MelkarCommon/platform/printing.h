#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/types.h>

#include <cstddef>

/// @file
/// The printer calls, under their platform names. A printer's name is
///
/// - a path that ends in ".pdf": the document is written there, whole, when it ends;
/// - an address "ipp://..." or "ipps://...";
/// - else the name of a queue of this machine's print server (or of the one that CUPS_SERVER names).
///
/// A page is vector; its device units, 96 an inch, say nothing of how finely a printer prints. All calls are null-safe.
///
/// @code{.cpp}
/// HDC printer = CreateDCA("WINSPOOL", "sheet.pdf", nullptr, nullptr);
/// const DOCINFOA job{sizeof(DOCINFOA), "A sheet", nullptr, nullptr, 0};
/// if (StartDocA(printer, &job) > 0) {
///     StartPage(printer);
///     Rectangle(printer, 0, 0, GetDeviceCaps(printer, HORZRES), GetDeviceCaps(printer, VERTRES));
///     EndPage(printer);
///     EndDoc(printer);
/// }
/// DeleteDC(printer);
/// @endcode

/// The settings of a job. A field counts if its bit stands in `dmFields`.
struct DEVMODEA {
    BYTE dmDeviceName[32]; ///< the head of the printer's name
    WORD dmSpecVersion;    ///< unused
    WORD dmDriverVersion;  ///< unused
    WORD dmSize;           ///< bytes of this struct
    WORD dmDriverExtra;    ///< 0: nothing follows it
    DWORD dmFields;        ///< bits `DM_...`
    short dmOrientation;   ///< `DMORIENT_PORTRAIT` or `DMORIENT_LANDSCAPE`
    short dmPaperSize;     ///< one of `DMPAPER_...`; an unknown code stands for the printer's own paper
    short dmCopies;        ///< from 1
    short dmColor;         ///< `DMCOLOR_MONOCHROME` gives grey pages
};

/// A job for `StartDocA`.
struct DOCINFOA {
    int cbSize;               ///< bytes of this struct; unused
    const char* lpszDocName;  ///< the job's name and the document's title: UTF-8, else CP1252; up to 255 bytes count
    const char* lpszOutput;   ///< a file that the document goes to instead of the printer; null for none
    const char* lpszDatatype; ///< unused
    DWORD fwType;             ///< unused
};

/// @name Fields of a DEVMODEA
/// @{

/// Set in `dmFields`: the field of that name counts.
constexpr DWORD DM_ORIENTATION = 0x1;
constexpr DWORD DM_PAPERSIZE = 0x2;
constexpr DWORD DM_COPIES = 0x100;
constexpr DWORD DM_COLOR = 0x800;
/// @}

/// Lets `DocumentPropertiesA` write the settings.
constexpr DWORD DM_OUT_BUFFER = 2;

/// @name Values of a DEVMODEA
/// @{

/// Of `dmOrientation` and `dmColor`.
constexpr short DMORIENT_PORTRAIT = 1;
constexpr short DMORIENT_LANDSCAPE = 2;
constexpr short DMCOLOR_MONOCHROME = 1;
constexpr short DMCOLOR_COLOR = 2;
/// @}

/// @name Papers
/// @{

/// A value of `dmPaperSize`.
constexpr short DMPAPER_LETTER = 1;
constexpr short DMPAPER_TABLOID = 3;
constexpr short DMPAPER_LEGAL = 5;
constexpr short DMPAPER_STATEMENT = 6;
constexpr short DMPAPER_EXECUTIVE = 7;
constexpr short DMPAPER_A3 = 8;
constexpr short DMPAPER_A4 = 9;
constexpr short DMPAPER_A5 = 11;
constexpr short DMPAPER_B4 = 12; ///< JIS
constexpr short DMPAPER_B5 = 13; ///< JIS
constexpr short DMPAPER_JAPANESE_POSTCARD = 43;
constexpr short DMPAPER_A2 = 66;
constexpr short DMPAPER_A6 = 70;
/// @}

/// What calls on a document return when they fail.
constexpr int SP_ERROR = -1;

/// Asks the printer whether it is there, for 15 seconds at most. @param name see above @param printer gets a handle for
/// `ClosePrinter`, null on failure @param defaults unused. @return FALSE, with a log line, if there is no such printer.
MELKAR_API BOOL OpenPrinterA(char* name, HANDLE* printer, void* defaults);
/// Frees what `OpenPrinterA` gave. @return FALSE for null.
MELKAR_API BOOL ClosePrinter(HANDLE printer);
/// With mode 0 the size of the printer's settings, with `DM_OUT_BUFFER` those that it has by itself, into `out`.
/// @return 1 (or the size); -1 for a printer that isn't open.
MELKAR_API int DocumentPropertiesA(HWND window, HANDLE printer, char* name, DEVMODEA* out, const DEVMODEA* in,
                                   DWORD mode);

/// A surface for the pages of a printer; what is drawn outside of a page is lost. Freed with `DeleteDC`: a document
/// that hasn't ended by then leaves neither a file nor a job. @param driver "WINSPOOL" @param printer its name @param
/// port unused
/// @param settings null for the printer's own. @return null, with a log line, if there is no such printer.
MELKAR_API HDC CreateDCA(const char* driver, const char* printer, const char* port, const DEVMODEA* settings);
/// Begins a document. @return the number of the job, above 0; `SP_ERROR` if the document can't be begun or one is under
/// way.
MELKAR_API int StartDocA(HDC surface, const DOCINFOA* job);
/// Begins a page; one that is still open ends. @return above 0; `SP_ERROR` without a document.
MELKAR_API int StartPage(HDC surface);
MELKAR_API int EndPage(HDC surface); ///< @return above 0; `SP_ERROR` without an open page.
/// Ends the open page and hands the document over: within 45 seconds, whatever a print server does. @return above 0;
/// `SP_ERROR`, with a log line, if the printer didn't get it or gave it up within two seconds, or if it has no page.
/// The surface can start another one.
MELKAR_API int EndDoc(HDC surface);
/// Drops the document; of a page surface no file comes, and what stands under its name stays. @return above 0;
/// `SP_ERROR` without either.
MELKAR_API int AbortDoc(HDC surface);

// Memory by handles, as settings are kept in.

constexpr UINT GMEM_MOVEABLE = 0x2;  ///< ignored: memory stays where it is
constexpr UINT GMEM_ZEROINIT = 0x40; ///< ignored: all memory is zero-filled
/// Zero-filled whatever the flags. @return null for more than 16 MiB, which no settings need, and without memory.
MELKAR_API HANDLE GlobalAlloc(UINT flags, std::size_t bytes);
MELKAR_API void* GlobalLock(HANDLE memory);  ///< stays where it is until it is freed
MELKAR_API BOOL GlobalUnlock(HANDLE memory); ///< nothing to do. @return FALSE for what isn't such memory
MELKAR_API HANDLE GlobalFree(HANDLE memory); ///< @return null, or what isn't such memory.
