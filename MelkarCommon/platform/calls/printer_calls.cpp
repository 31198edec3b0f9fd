#include <MelkarCommon/platform/calls/failing.h>
#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>

#include <algorithm>
#include <cstring>
#include <strings.h>

using namespace melkar; // NOLINT(google-build-using-namespace)

namespace {

/// What a printer's handle points to.
struct OpenPrinter : HandleHead, InHandleMemory<ObjectKind::Printer> {
    explicit OpenPrinter(std::unique_ptr<Printer> found) : HandleHead(ObjectKind::Printer), printer(std::move(found)) {}
    std::unique_ptr<Printer> printer;
};

OpenPrinter* PrinterOf(HANDLE handle) {
    auto* head = static_cast<HandleHead*>(handle);
    return head != nullptr && head->kind == ObjectKind::Printer ? static_cast<OpenPrinter*>(head) : nullptr;
}

DEVMODEA SettingsOf(const PrinterDefaults& defaults, const char* name) {
    DEVMODEA settings{};
    std::strncpy(reinterpret_cast<char*>(settings.dmDeviceName), name, sizeof settings.dmDeviceName - 1);
    settings.dmSize = sizeof settings;
    settings.dmFields = DM_ORIENTATION | DM_PAPERSIZE | DM_COPIES | DM_COLOR;
    settings.dmOrientation = DMORIENT_PORTRAIT;
    settings.dmPaperSize = defaults.paper->code;
    settings.dmCopies = 1;
    settings.dmColor = defaults.isColored ? DMCOLOR_COLOR : DMCOLOR_MONOCHROME;
    return settings;
}

const Paper* PaperOf(const DEVMODEA& settings, const Printer& printer, const char* name) {
    const Paper* own = printer.Defaults().paper;
    if ((settings.dmFields & DM_PAPERSIZE) == 0)
        return own;
    if (const Paper* paper = FindPaper(settings.dmPaperSize))
        return paper;
    LogPrinter(name, "no paper has the code " + std::to_string(settings.dmPaperSize) + "; " + own->media + " is taken");
    return own;
}

/// What the settings ask for, a field at a time; the rest is as the printer has it.
JobTicket TicketOf(const DEVMODEA* settings, const Printer& printer, const char* name) {
    const DEVMODEA wanted = settings != nullptr ? *settings : DEVMODEA{};
    const auto has = [&wanted](DWORD field) { return (wanted.dmFields & field) != 0; };
    JobTicket ticket;
    ticket.paper = PaperOf(wanted, printer, name);
    ticket.isLandscape = has(DM_ORIENTATION) && wanted.dmOrientation == DMORIENT_LANDSCAPE;
    ticket.isColored = has(DM_COLOR) ? wanted.dmColor == DMCOLOR_COLOR : printer.Defaults().isColored;
    ticket.copies = has(DM_COPIES) ? std::max<int>(1, wanted.dmCopies) : 1;
    return ticket;
}

HDC MakePrinterSurface(const char* name, const DEVMODEA* settings) {
    auto printer = FindPrinter(name);
    if (!printer)
        return nullptr;
    JobTicket ticket = TicketOf(settings, *printer, name);
    const SheetLayout sheet = LayOutSheet(*ticket.paper, printer->MarginsOf(*ticket.paper), ticket.isLandscape);
    return new HDC__({PaperDevice(), kUnitsPerInch, {sheet.roomWidth, sheet.roomHeight}},
                     std::in_place_type<PrinterTarget>, PrinterTarget{std::move(printer), std::move(ticket), sheet});
}

} // namespace

BOOL OpenPrinterA(char* name, HANDLE* printer, void*) {
    if (printer == nullptr)
        return FALSE;
    *printer = OrFailure([&]() -> HandleHead* {
        auto found = FindPrinter(name != nullptr ? name : "");
        return found ? new OpenPrinter(std::move(found)) : nullptr;
    });
    return *printer != nullptr ? TRUE : FALSE;
}

BOOL ClosePrinter(HANDLE printer) {
    const OpenPrinter* open = PrinterOf(printer);
    delete open;
    return open != nullptr ? TRUE : FALSE;
}

int DocumentPropertiesA(HWND, HANDLE printer, char* name, DEVMODEA* out, const DEVMODEA*, DWORD mode) {
    const OpenPrinter* open = PrinterOf(printer);
    if (open == nullptr)
        return -1;
    if (mode == 0)
        return sizeof(DEVMODEA);
    if (out != nullptr && (mode & DM_OUT_BUFFER) != 0)
        *out = SettingsOf(open->printer->Defaults(), name != nullptr ? name : "");
    return 1;
}

HDC CreateDCA(const char* driver, const char* printer, const char*, const DEVMODEA* settings) {
    if (driver == nullptr || strcasecmp(driver, "WINSPOOL") != 0 || printer == nullptr)
        return nullptr;
    return OrWords([&] { return MakePrinterSurface(printer, settings); });
}
