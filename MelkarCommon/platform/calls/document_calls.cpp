#include <MelkarCommon/platform/calls/failing.h>
#include <MelkarCommon/platform/page_words.h>
#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/seam/grey_backend.h>
#include <MelkarCommon/platform/surfaces/surface_state.h>
#include <MelkarCommon/platform/text/text_decode.h>

#include <atomic>
#include <climits>
#include <optional>

using namespace melkar; // NOLINT(google-build-using-namespace)

namespace {

/// Jobs count from 1 in this process; a server numbers them only when it gets them.
int NextJobNumber() {
    static std::atomic<unsigned> jobs{0};
    return static_cast<int>(jobs.fetch_add(1, std::memory_order_relaxed) % INT_MAX) + 1;
}

/// Null for a surface that isn't a printer's.
PrinterTarget* PrinterOf(HDC surface) {
    return IsSurface(surface) ? std::get_if<PrinterTarget>(&surface->target) : nullptr;
}

/// Null for a surface that isn't a page.
PageTarget* PageOf(HDC surface) { return IsSurface(surface) ? std::get_if<PageTarget>(&surface->target) : nullptr; }

/// Null between documents, and for what isn't a printer's surface.
PrintedDocument* DocumentOf(HDC surface) {
    PrinterTarget* printer = PrinterOf(surface);
    return printer != nullptr && printer->document ? &*printer->document : nullptr;
}

/// Nothing draws from here on.
PrintedDocument Leave(HDC surface) {
    surface->lines.Forget();
    std::optional<PrintedDocument>& document = PrinterOf(surface)->document;
    PrintedDocument left = std::move(*document);
    document.reset();
    return left;
}

/// The pages that a surface draws on; null for what has none.
PageFile* PagesOf(HDC surface) {
    if (PageTarget* page = PageOf(surface))
        return page->page.get();
    PrintedDocument* document = DocumentOf(surface);
    return document != nullptr ? document->pages.get() : nullptr;
}

/// As printers and documents take it: one that isn't UTF-8, or is too long, would cost the whole document.
std::string LineOf(const char* text) {
    constexpr std::size_t kMostBytes = 255; // of the name of a job
    return DecodeLine(text != nullptr ? text : "", DEFAULT_CHARSET, kMostBytes);
}

/// None, if it can't be begun.
std::optional<PrintedDocument> Begin(PrinterTarget& printer, const DOCINFOA& info) {
    JobTicket ticket = printer.ticket;
    ticket.name = LineOf(info.lpszDocName);
    auto job = info.lpszOutput != nullptr ? FindFileJob(info.lpszOutput) : printer.printer->Begin(ticket);
    auto file = job ? job->Document() : nullptr;
    if (!file)
        return std::nullopt;
    const SheetLayout& sheet = printer.sheet;
    DocumentInfo document;
    document.title = ticket.name;
    document.sheet = {sheet.width, sheet.height, sheet.left, sheet.top};
    auto pages =
        MakePageFile(std::move(file), PageFormat::Pdf, sheet.roomWidth, sheet.roomHeight, kUnitsPerInch, document);
    if (!pages)
        return std::nullopt;
    auto grey = ticket.isColored ? nullptr : MakeGreyBackend(*pages);
    return PrintedDocument{std::move(job), std::move(pages), std::move(grey)};
}

} // namespace

int StartDocA(HDC surface, const DOCINFOA* job) {
    PrinterTarget* printer = PrinterOf(surface);
    if (printer == nullptr || job == nullptr || printer->document)
        return SP_ERROR;
    return OrWords(
        [&] {
            printer->document = Begin(*printer, *job);
            return printer->document ? NextJobNumber() : SP_ERROR;
        },
        SP_ERROR);
}

int StartPage(HDC surface) {
    PrintedDocument* document = DocumentOf(surface);
    if (document == nullptr)
        return SP_ERROR;
    const int started = AfterLines(surface, [&] {
        document->hasPage = document->pages->BeginPage();
        return document->hasPage ? 1 : 0;
    });
    return started != 0 ? 1 : SP_ERROR;
}

int EndPage(HDC surface) {
    PrintedDocument* document = DocumentOf(surface);
    if (document == nullptr || !document->hasPage)
        return SP_ERROR;
    document->hasPage = false;
    const int ended = AfterLines(surface, [&] {
        document->pages->EndPage();
        return 1;
    });
    return ended != 0 ? 1 : SP_ERROR;
}

int EndDoc(HDC surface) {
    if (DocumentOf(surface) == nullptr)
        return SP_ERROR;
    AfterLines(surface, [] { return TRUE; });
    PrintedDocument document = Leave(surface);
    const bool isDelivered = OrWords([&] { return document.pages->Finish() && document.job->Deliver(); });
    return isDelivered ? 1 : SP_ERROR;
}

BOOL SetPageWords(HDC page, const PageWords& words) {
    PageFile* pages = PagesOf(page);
    if (pages == nullptr || !OrFailure([&] { return pages->SetWords(words); }))
        return FALSE;
    if (PageOf(page) != nullptr) // a picture is all of its document
        OrFailure([&] { return pages->SetTitle(words.title); });
    return TRUE;
}

BOOL BeginPagePart(HDC page, PageRole role, const RECT& area, const char* bookmark) {
    PrintedDocument* document = DocumentOf(page);
    if (document == nullptr || !document->hasPage)
        return FALSE;
    return AfterLines(page, [&] { return document->pages->BeginPart(role, area, LineOf(bookmark)) ? TRUE : FALSE; });
}

BOOL EndPagePart(HDC page) {
    PrintedDocument* document = DocumentOf(page);
    if (document == nullptr)
        return FALSE;
    return AfterLines(page, [&] { return document->pages->EndPart() ? TRUE : FALSE; });
}

BOOL SetDocumentTitle(HDC printer, const char* title) {
    PrintedDocument* document = DocumentOf(printer);
    if (document == nullptr)
        return FALSE;
    return OrFailure([&] { return document->pages->SetTitle(LineOf(title)) ? TRUE : FALSE; });
}

int AbortDoc(HDC surface) {
    if (PageTarget* page = PageOf(surface)) {
        surface->lines.Forget();
        page->page->Abandon();
        KeepFailure("the page was aborted");
        return 1;
    }
    if (DocumentOf(surface) == nullptr)
        return SP_ERROR;
    Leave(surface);
    return 1;
}
