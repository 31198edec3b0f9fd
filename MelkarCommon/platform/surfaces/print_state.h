#pragma once

#include <MelkarCommon/platform/printing/printer.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>

namespace melkar {

/// Internal. What the surface of a printer keeps beside the drawing: the printer, what is asked of it, and the document
/// that is under way.
struct PrintState : SurfacePrinting {
    std::unique_ptr<Printer> printer;
    JobTicket ticket;
    SheetLayout sheet{};
    std::unique_ptr<PrintJob> job; ///< null between documents
    PageFile* document = nullptr;  ///< the surface's backend, or what stands behind it; null between documents
    bool hasPage = false;
};

/// Null for a surface that isn't a printer's.
inline PrintState* PrintStateOf(HDC surface) {
    return IsSurface(surface) ? static_cast<PrintState*>(surface->printing.get()) : nullptr;
}

} // namespace melkar
