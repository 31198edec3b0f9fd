#include <MelkarCommon/reports/report.h>

#include <MelkarCommon/frame/cycle.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/reports/report_layout.h>
#include <MelkarCommon/support/dates.h>
#include <MelkarCommon/support/ring_log.h>
#include <MelkarCommon/support/support.h>

#include <string>

namespace {

constexpr char kDriver[] = "WINSPOOL";
constexpr int kLandscapeDegrees = 90;
constexpr int kDocInfoSize = 20; ///< as callers know the record, whatever it takes here

/// The settings of a printer, in memory of their own.
class Settings {
public:
    /// Those that the printer has by itself; none if there is no such printer.
    explicit Settings(std::string printer) {
        char* name = printer.data();
        HANDLE handle = nullptr;
        OpenPrinterA(name, &handle, nullptr);
        const int size = DocumentPropertiesA(nullptr, handle, name, nullptr, nullptr, 0);
        m_memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, static_cast<std::size_t>(size));
        m_settings = static_cast<DEVMODEA*>(GlobalLock(m_memory));
        if (m_settings != nullptr)
            DocumentPropertiesA(nullptr, handle, name, m_settings, nullptr, DM_OUT_BUFFER);
        ClosePrinter(handle);
    }
    ~Settings() {
        GlobalUnlock(m_memory);
        GlobalFree(m_memory);
    }
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    DEVMODEA* Get() { return m_settings; }

private:
    HANDLE m_memory = nullptr;
    DEVMODEA* m_settings = nullptr;
};

} // namespace

struct CReport::KeyRows : melkar::Keys<CReport> {
    static constexpr Row rows[] = {
        Text<&G::m_strFont>(Common, "FONT", "face; kept for a host").Example("DejaVu Sans"),
        Number<&G::m_nCharset>(Common, "CHARSET", 0, "character set; kept for a host"),
        Text<&G::m_strVersion>(Own, "VERSION", "kept for a host"),
    };
};

melkar::ClassKeys CReport::ProfileKeys() { return {"CReport", melkar::InfoOf(KeyRows::rows)}; }

CReport::CReport(char* const printer, int paper, int orientation, char* section, HDC shared, HDC second, HDC balloon,
                 const char* dataFile, const char* headerFile, const char* footerFile)
    : m_nPaperSize(paper), m_strPrinterName(printer), m_Ini(melkar::kGraphProfile), m_hGMemDC(shared),
      m_hGMemDCCir(second), m_hGMemDCBalloon(balloon), m_strDataFile(dataFile), m_strHeaderFile(headerFile),
      m_strFooterFile(footerFile) {
    melkar::ReadKeys(KeyRows::rows, *this, melkar::kGraphProfile, section);
    if (m_strPrinterName.IsEmpty()) {
        writeLog(kLogFile, "CReport::CReport() PrinterName is Null!");
        return;
    }
    const bool isColored = m_Ini.ReadString(melkar::kSystemProfile, "OTHER", "MONOCHROME", "") == "1";
    m_nColorMode = isColored ? DMCOLOR_COLOR : DMCOLOR_MONOCHROME;
    m_DocInfo = {kDocInfoSize, "Ovra", nullptr, nullptr, 1};
    OpenSurface(orientation);
}

/// The first surface only tries whether the printer can be opened.
void CReport::OpenSurface(int orientation) {
    Settings settings(m_strPrinterName.GetString());
    DEVMODEA* wanted = settings.Get();
    if (wanted == nullptr) {
        writeLog(kLogFile, "CReport::CReport() pDevOutput is NULL!");
        return;
    }
    HDC trial = CreateDCA(kDriver, m_strPrinterName, nullptr, nullptr);
    if (trial == nullptr) {
        writeLog(kLogFile, "CReport::CReport() m_hPrnDC is NULL!");
        return;
    }
    SetTextColor(trial, 0);
    wanted->dmFields |= DM_ORIENTATION | DM_PAPERSIZE | DM_COLOR;
    wanted->dmOrientation = orientation == kLandscapeDegrees ? DMORIENT_LANDSCAPE : DMORIENT_PORTRAIT;
    wanted->dmColor = m_nColorMode;
    wanted->dmPaperSize = static_cast<short>(m_nPaperSize);
    DeleteDC(trial);
    m_surface.reset(CreateDCA(kDriver, m_strPrinterName, nullptr, wanted), DeleteDC);
    m_hPrnDC = m_surface.get();
    m_rcPage = CRect(0, 0, GetDeviceCaps(m_hPrnDC, HORZRES), GetDeviceCaps(m_hPrnDC, VERTRES));
}

HDC CReport::GetHDC() { return m_hPrnDC; }

int CReport::CalcRects() {
    const melkar::ReportBands bands = melkar::LayOutBands(m_rcPage.Width(), m_rcPage.Height());
    m_rcHeader = bands.header;
    m_rcGraphs = bands.graphs;
    m_rcFooter = bands.footer;
    return 0;
}

struct CReport::Cycle : melkar::Steps<CReport> {
    static constexpr Step steps[] = {Do<&G::DrawHeader>, Do<&G::DrawGraphs>, Do<&G::DrawFooter>};
};

int CReport::Draw() {
    RunSteps(*this, Cycle::steps);
    return 0;
}

int CReport::DrawHeader() { return 0; }
int CReport::DrawGraphs() { return 0; }
int CReport::DrawFooter() { return 0; }

int CReport::DocStart() {
    const melkar::HostDirectory here(Host());
    return StartDocA(m_hPrnDC, &m_DocInfo);
}

int CReport::PageStart() {
    const melkar::HostDirectory here(Host());
    StartPage(m_hPrnDC);
    DrawRectangle(m_hPrnDC, m_rcPage, melkar::kWhite, melkar::kWhite, 0);
    return 0;
}

int CReport::PageEnd() {
    const melkar::HostDirectory here(Host());
    EndPage(m_hPrnDC);
    return 0;
}

int CReport::DocEnd() {
    const melkar::HostDirectory here(Host());
    return EndDoc(m_hPrnDC);
}
