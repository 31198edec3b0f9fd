#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/types.h>
#include <MelkarCommon/support/ini_reader.h>

#include <memory>

/// The frame of a printed report: a printer's surface with the paper, orientation and colour of the report, and a page
/// that divides into a header, graphs and a footer. What stands on a page is a derived class's, which overrides the
/// three draw operations.
///
///     CMonthReport report(printer, DMPAPER_A4, 0, section, shared, second, balloon, data, header, footer);
///     report.CalcRects();
///     report.DocStart();
///     for each page { report.PageStart(); report.Draw(); report.PageEnd(); }
///     report.DocEnd();
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
    CReport(const CReport&) = default;
    CReport& operator=(const CReport&) = default;
    virtual ~CReport() = default;

    virtual HDC GetHDC(); ///< the printer's surface, of the report; null if there is no such printer.
    /// Divides the page into bands, within a margin of a tenth of it. Nobody else calls it. @return 0.
    virtual int CalcRects();
    virtual int Draw(); ///< header, graphs, footer, whatever these return. @return 0.
    virtual int DrawHeader();
    virtual int DrawGraphs();
    virtual int DrawFooter();

    HDC GetGMemDC() { return m_hGMemDC; }
    HDC GetGMemDCCir() { return m_hGMemDCCir; }
    HDC GetGMemDCBalloon() { return m_hGMemDCBalloon; }
    void SetDataFile(const char* path) { m_strDataFile = path; }
    void SetHeaderFile(const char* path) { m_strHeaderFile = path; }
    void SetFooterFile(const char* path) { m_strFooterFile = path; }
    CString GetDataFile() const { return m_strDataFile; }
    CString GetHeaderFile() const { return m_strHeaderFile; }
    CString GetFooterFile() const { return m_strFooterFile; }

    int DocStart();  ///< @return the number of the print job; 0 or below on failure.
    int PageStart(); ///< starts a white page. @return 0.
    int PageEnd();   ///< @return 0.
    /// Ends the open page and hands the document to the printer. @return above 0; 0 or below, with a log line, on
    /// failure.
    int DocEnd();

    static melkar::ClassKeys ProfileKeys();

protected:
    short m_nColorMode = 0; ///< `DMCOLOR_...`
    int m_nPaperSize;
    CRect m_rcPage; ///< the printable page, device units from (0, 0)
    HDC m_hPrnDC = nullptr;
    CString m_strPrinterName;
    DOCINFOA m_DocInfo{};
    CRect m_rcHeader;
    CRect m_rcGraphs;
    CRect m_rcFooter;
    int m_nUserValue = 0; ///< free for a derived class, as are the three texts
    CIniReader m_Ini;
    CString m_strUser1;
    CString m_strFont;
    int m_nCharset = 0;
    CString m_strUser2, m_strUser3;
    CString m_strVersion;
    HDC m_hGMemDC, m_hGMemDCCir, m_hGMemDCBalloon; ///< the application's
    CString m_strDataFile, m_strHeaderFile, m_strFooterFile;

private:
    struct KeyRows;
    struct Cycle;
    MELKAR_LOCAL void OpenSurface(int orientation);

    std::shared_ptr<HDC__> m_surface; ///< `m_hPrnDC`, which it frees with its last owner
};
