#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/types.h>
#include <MelkarCommon/support/ini_reader.h>

#include <memory>

/// @file
/// A printed report.

/// The frame of a printed report: a printer's surface with the paper, orientation and colour of the report, and a page
/// that divides into a header, graphs and a footer. What stands on a page is a derived class's, which overrides the
/// three draw operations.
///
/// @code{.cpp}
/// class CMonthReport : public CReport {
/// public:
///     using CReport::CReport;
///
///     int DrawGraphs() override {
///         CStepGraph steps(nullptr, GetHDC(), "STEPS", nullptr, nullptr, nullptr);
///         steps.SetDirectOutput(1);
///         CString file = GetDataFile();
///         steps.Draw(m_rcGraphs, const_cast<char*>(file.GetString()));
///         return 0;
///     }
/// };
///
/// inline bool Print(char* printer, char* section, const char* data) {
///     CMonthReport report(printer, DMPAPER_A4, 0, section, nullptr, nullptr, nullptr, data, "", "");
///     report.CalcRects();
///     if (report.DocStart() <= 0)
///         return false;
///     report.PageStart(); // and so on for each page
///     report.Draw();
///     report.PageEnd();
///     return report.DocEnd() > 0;
/// }
/// @endcode
///
/// Without a usable printer `GetHDC` is null, the log says why, and everything above does nothing. Copies share the
/// surface; the last one frees it, and with it a document that hasn't ended.
class MELKAR_API CReport {
public:
    /// Reads "..\conf\graph.cnf" and "..\conf\config.cnf" and opens the printer.
    /// @param printer see printing.h @param paper a `DMPAPER_...` code; its low 16 bits reach the printer
    /// @param orientation degrees: 90 is landscape, all else portrait @param section the report's own section
    /// @param shared the application's surface, kept for a derived class @param second likewise @param balloon likewise
    /// @param dataFile a path, kept for a derived class @param headerFile likewise @param footerFile likewise
    CReport(char* const printer, int paper, int orientation, char* section, HDC shared, HDC second, HDC balloon,
            const char* dataFile, const char* headerFile, const char* footerFile);
    CReport(const CReport&) = default;            ///< shares the surface
    CReport& operator=(const CReport&) = default; ///< shares the surface
    virtual ~CReport() = default;

    virtual HDC GetHDC(); ///< the printer's surface, of the report; null if there is no such printer.
    /// Divides the page into bands, within a margin of a tenth of it. Nobody else calls it. @return 0.
    virtual int CalcRects();
    virtual int Draw();       ///< header, graphs, footer, whatever these return. @return 0.
    virtual int DrawHeader(); ///< nothing here: paints into `m_rcHeader`. @return 0
    virtual int DrawGraphs(); ///< nothing here: paints into `m_rcGraphs`. @return 0
    virtual int DrawFooter(); ///< nothing here: paints into `m_rcFooter`. @return 0

    /// @name What the constructor was given
    /// @{

    /// The member of that name.
    HDC GetGMemDC() { return m_hGMemDC; }
    HDC GetGMemDCCir() { return m_hGMemDCCir; }
    HDC GetGMemDCBalloon() { return m_hGMemDCBalloon; }
    void SetDataFile(const char* path) { m_strDataFile = path; }
    void SetHeaderFile(const char* path) { m_strHeaderFile = path; }
    void SetFooterFile(const char* path) { m_strFooterFile = path; }
    CString GetDataFile() const { return m_strDataFile; }
    CString GetHeaderFile() const { return m_strHeaderFile; }
    CString GetFooterFile() const { return m_strFooterFile; }
    /// @}

    int DocStart();  ///< @return the number of the print job; 0 or below on failure.
    int PageStart(); ///< starts a white page. @return 0.
    int PageEnd();   ///< @return 0.
    /// Ends the open page and hands the document to the printer. @return above 0; 0 or below, with a log line, on
    /// failure.
    int DocEnd();

    static melkar::ClassKeys ProfileKeys(); ///< the keys that this class reads
    /// Where its profile and its log are: where they were when it was made.
    const melkar::HostPlace& Host() const { return m_Ini.Host(); }

protected:
    short m_nColorMode = 0;   ///< `DMCOLOR_...`
    int m_nPaperSize;         ///< `DMPAPER_...`
    CRect m_rcPage;           ///< the printable page, device units from (0, 0)
    HDC m_hPrnDC = nullptr;   ///< the printer's surface; null without one
    CString m_strPrinterName; ///< as the constructor was given it
    DOCINFOA m_DocInfo{};     ///< of the next document
    CRect m_rcHeader;         ///< band at the top, set by `CalcRects`
    CRect m_rcGraphs;         ///< band in the middle
    CRect m_rcFooter;         ///< band at the bottom
    int m_nUserValue = 0;     ///< free for a derived class, as are the three texts
    CIniReader m_Ini;         ///< bound to the profile of all graphs
    CString m_strUser1;       ///< free for a derived class
    CString m_strFont;        ///< face of texts
    int m_nCharset = 0;       ///< character set of texts
    CString m_strUser2;       ///< free for a derived class
    CString m_strUser3;       ///< likewise
    CString m_strVersion;     ///< `VERSION` of the profile, for a derived class
    HDC m_hGMemDC;            ///< the application's shared surface
    HDC m_hGMemDCCir;         ///< its second one
    HDC m_hGMemDCBalloon;     ///< its surface of the clean picture
    CString m_strDataFile;    ///< a path, for a derived class
    CString m_strHeaderFile;  ///< likewise
    CString m_strFooterFile;  ///< likewise

private:
    struct KeyRows;
    struct Cycle;
    MELKAR_LOCAL void OpenSurface(int orientation);

    std::shared_ptr<HDC__> m_surface; ///< `m_hPrnDC`, which it frees with its last owner
};
