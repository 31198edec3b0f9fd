#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/seam/grey_backend.h>
#include <MelkarCommon/platform/surfaces/print_state.h>

#include <atomic>
#include <climits>

using namespace melkar; // NOLINT(google-build-using-namespace)

namespace {

/// Jobs count from 1 in this process; a server numbers them only when it gets them.
int NextJobNumber() {
    static std::atomic<unsigned> jobs{0};
    return static_cast<int>(jobs.fetch_add(1, std::memory_order_relaxed) % INT_MAX) + 1;
}

/// Nothing draws from here on. @return the job, if there was one
std::unique_ptr<PrintJob> Leave(HDC surface, PrintState& state) {
    surface->lines.points.clear();
    surface->backend.reset();
    state.document = nullptr;
    state.hasPage = false;
    return std::move(state.job);
}

bool Begin(HDC surface, PrintState& state, const DOCINFOA& info) {
    JobTicket ticket = state.ticket;
    ticket.name = info.lpszDocName != nullptr ? info.lpszDocName : "";
    auto job = info.lpszOutput != nullptr ? FindFileJob(info.lpszOutput) : state.printer->Begin(ticket);
    if (!job)
        return false;
    DocumentInfo document;
    document.title = ticket.name;
    document.sheet = {state.sheet.width, state.sheet.height, state.sheet.left, state.sheet.top};
    auto pages = MakePageFile(job->Path().c_str(), PageFormat::Pdf, state.sheet.roomWidth, state.sheet.roomHeight,
                              kUnitsPerInch, document);
    if (!pages)
        return false;
    state.job = std::move(job);
    state.document = pages.get();
    surface->backend = ticket.isColored ? std::move(pages) : MakeGreyBackend(std::move(pages));
    return true;
}

} // namespace

int StartDocA(HDC surface, const DOCINFOA* job) {
    PrintState* state = PrintStateOf(surface);
    if (state == nullptr || job == nullptr || state->document != nullptr)
        return SP_ERROR;
    try {
        return Begin(surface, *state, *job) ? NextJobNumber() : SP_ERROR;
    } catch (...) {
        return SP_ERROR; // no memory
    }
}

int StartPage(HDC surface) {
    PrintState* state = PrintStateOf(surface);
    if (state == nullptr || state->document == nullptr)
        return SP_ERROR;
    surface->FlushLines();
    state->hasPage = state->document->BeginPage();
    return state->hasPage ? 1 : SP_ERROR;
}

int EndPage(HDC surface) {
    PrintState* state = PrintStateOf(surface);
    if (state == nullptr || !state->hasPage)
        return SP_ERROR;
    surface->FlushLines();
    state->document->EndPage();
    state->hasPage = false;
    return 1;
}

int EndDoc(HDC surface) {
    PrintState* state = PrintStateOf(surface);
    if (state == nullptr || state->document == nullptr)
        return SP_ERROR;
    surface->FlushLines();
    const bool isWritten = state->document->Finish();
    const std::unique_ptr<PrintJob> job = Leave(surface, *state);
    return isWritten && job->Deliver() ? 1 : SP_ERROR;
}

int AbortDoc(HDC surface) {
    PrintState* state = PrintStateOf(surface);
    if (state == nullptr || state->document == nullptr)
        return SP_ERROR;
    Leave(surface, *state);
    return 1;
}
