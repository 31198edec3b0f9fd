#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/printing/ipp_exchange.h>
#include <MelkarCommon/platform/printing/printer.h>
#include <MelkarCommon/platform/text/text_decode.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <span>
#include <sys/mman.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace melkar {
namespace {

Message MakeRequest(const Address& address, ipp_op_t operation) {
    Message request(Cups().ippNewRequest(operation));
    Cups().ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, address.uri.c_str());
    Cups().ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr,
                        Cups().cupsUser());
    return request;
}

void AddWanted(const Message& request, std::span<const char* const> names) {
    Cups().ippAddStrings(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                         static_cast<int>(names.size()), nullptr, names.data());
}

bool IsDone(const Message& answer) { return Cups().ippGetStatusCode(answer.get()) <= IPP_STATUS_OK_EVENTS_COMPLETE; }

/// A server's own words for the log.
std::string WordsOf(const char* text) {
    constexpr std::size_t kMostBytes = 200;
    return DecodeLine(text != nullptr ? text : "", DEFAULT_CHARSET, kMostBytes);
}

std::string RefusalOf(const Message& answer) {
    const std::string code = Cups().ippErrorString(Cups().ippGetStatusCode(answer.get()));
    ipp_attribute_t* message = Cups().ippFindAttribute(answer.get(), "status-message", IPP_TAG_TEXT);
    return message != nullptr ? code + ": " + WordsOf(Cups().ippGetString(message, 0, nullptr)) : code;
}

/// The answer to a request; null, with a log line, if it failed. @param document a file to send along, -1 for none
Message Ask(const Address& address, const Message& request, int document, Clock::time_point deadline,
            const IppLimits& limits) {
    auto [answer, failure] =
        Exchange(address, request, document, std::min(deadline, Clock::now() + limits.exchange), limits.answer);
    if (answer != nullptr && IsDone(answer))
        return std::move(answer);
    LogPrinter(address.name, answer != nullptr ? RefusalOf(answer) : failure);
    return nullptr;
}

const Paper* PaperOf(ipp_t* facts) {
    ipp_attribute_t* media = Cups().ippFindAttribute(facts, "media-default", IPP_TAG_ZERO);
    const char* name = media != nullptr ? Cups().ippGetString(media, 0, nullptr) : nullptr;
    const Paper* paper = name != nullptr ? FindPaper(std::string_view(name)) : nullptr;
    return paper != nullptr ? paper : FindPaper(DMPAPER_A4);
}

/// A kind of sheet as a printer tells it.
struct Medium {
    int width; ///< upright, hundredths of a millimetre; 0 for sheets of any size
    int height;
    Margins margins;
};

int IntegerOf(ipp_t* collection, const char* name) {
    ipp_attribute_t* found = Cups().ippFindAttribute(collection, name, IPP_TAG_INTEGER);
    return found != nullptr ? Cups().ippGetInteger(found, 0) : 0;
}

/// A printer's word is not trusted further than three centimetres.
int MarginOf(ipp_t* medium, const char* name) { return std::clamp(IntegerOf(medium, name), 0, 3000); }

/// All zero for none.
Medium MediumOf(ipp_t* medium) {
    ipp_attribute_t* found = Cups().ippFindAttribute(medium, "media-size", IPP_TAG_BEGIN_COLLECTION);
    ipp_t* size = Cups().ippGetCollection(found, 0);
    return {IntegerOf(size, "x-dimension"),
            IntegerOf(size, "y-dimension"),
            {MarginOf(medium, "media-left-margin"), MarginOf(medium, "media-top-margin"),
             MarginOf(medium, "media-right-margin"), MarginOf(medium, "media-bottom-margin")}};
}

/// The printer's own sheet first, in any case; then those that lie in it and those that it can take, if it tells.
std::vector<Medium> MediaOf(ipp_t* facts) {
    const auto find = [facts](const char* name) {
        return Cups().ippFindAttribute(facts, name, IPP_TAG_BEGIN_COLLECTION);
    };
    std::vector<Medium> media = {MediumOf(Cups().ippGetCollection(find("media-col-default"), 0))};
    for (const char* name : {"media-col-ready", "media-col-database"}) {
        ipp_attribute_t* found = find(name);
        for (int i = 0; i < Cups().ippGetCount(found); ++i)
            media.push_back(MediumOf(Cups().ippGetCollection(found, i)));
    }
    return media;
}

/// Sizes in inches and in points come rounded.
bool IsOf(const Medium& medium, const Paper& paper) {
    constexpr int kHalfMillimetre = 50;
    return std::abs(medium.width - paper.width) <= kHalfMillimetre &&
           std::abs(medium.height - paper.height) <= kHalfMillimetre;
}

bool IsColored(ipp_t* facts) {
    ipp_attribute_t* modes = Cups().ippFindAttribute(facts, "print-color-mode-supported", IPP_TAG_KEYWORD);
    return modes == nullptr || Cups().ippContainsString(modes, "color") != 0;
}

Message PrintRequest(const Address& address, const JobTicket& ticket) {
    Message request = MakeRequest(address, IPP_OP_PRINT_JOB);
    ipp_t* ipp = request.get();
    Cups().ippAddString(ipp, IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr, ticket.name.c_str());
    Cups().ippAddString(ipp, IPP_TAG_OPERATION, IPP_TAG_MIMETYPE, "document-format", nullptr, "application/pdf");
    Cups().ippAddString(ipp, IPP_TAG_JOB, IPP_TAG_KEYWORD, "media", nullptr, ticket.paper->media);
    Cups().ippAddInteger(ipp, IPP_TAG_JOB, IPP_TAG_ENUM, "orientation-requested",
                         ticket.isLandscape ? IPP_ORIENT_LANDSCAPE : IPP_ORIENT_PORTRAIT);
    Cups().ippAddString(ipp, IPP_TAG_JOB, IPP_TAG_KEYWORD, "print-color-mode", nullptr,
                        ticket.isColored ? "color" : "monochrome");
    if (ticket.copies > 1)
        Cups().ippAddInteger(ipp, IPP_TAG_JOB, IPP_TAG_INTEGER, "copies", ticket.copies);
    return request;
}

/// A file in memory, which only this process sees: what is printed is private, and goes with who prints it.
class PrivateFile {
public:
    PrivateFile() : m_descriptor(memfd_create("document", MFD_CLOEXEC)) {}
    ~PrivateFile() {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    PrivateFile(const PrivateFile&) = delete;
    PrivateFile& operator=(const PrivateFile&) = delete;

    int Descriptor() const { return m_descriptor; } ///< -1 if there is none

private:
    int m_descriptor;
};

/// What a server tells of a job.
struct JobNews {
    int id = 0;                     ///< 0: it doesn't say
    int state = IPP_JSTATE_PENDING; ///< as long as it doesn't say; any number: servers say what they like
    std::string words;

    bool MayChange() const { return id != 0 && (state == IPP_JSTATE_PENDING || state == IPP_JSTATE_PROCESSING); }
    bool IsGivenUp() const { return state == IPP_JSTATE_ABORTED || state == IPP_JSTATE_CANCELED; }
};

JobNews NewsOf(const Message& answer) {
    JobNews news;
    news.id = IntegerOf(answer.get(), "job-id");
    if (ipp_attribute_t* state = Cups().ippFindAttribute(answer.get(), "job-state", IPP_TAG_ENUM))
        news.state = Cups().ippGetInteger(state, 0);
    for (const char* name : {"job-state-message", "job-printer-state-message", "job-state-reasons"}) {
        ipp_attribute_t* found = Cups().ippFindAttribute(answer.get(), name, IPP_TAG_ZERO);
        if (const char* words = Cups().ippGetString(found, 0, nullptr); words != nullptr && *words != '\0')
            news.words.append(news.words.empty() ? "" : "; ").append(WordsOf(words));
    }
    return news;
}

/// What it does of its own instead of what was asked for.
void LogSubstitutions(const Address& address, const Message& answer) {
    std::string names;
    for (ipp_attribute_t* attribute = Cups().ippFirstAttribute(answer.get()); attribute != nullptr;
         attribute = Cups().ippNextAttribute(answer.get()))
        if (Cups().ippGetGroupTag(attribute) == IPP_TAG_UNSUPPORTED_GROUP)
            names.append(names.empty() ? "" : ", ").append(WordsOf(Cups().ippGetName(attribute)));
    if (!names.empty() || Cups().ippGetStatusCode(answer.get()) != IPP_STATUS_OK)
        LogPrinter(address.name, "taken, but for " + (names.empty() ? "something that it doesn't name" : names));
}

/// The job is made when its document is whole, so that one that never ends is never seen by the server.
class IppJob : public PrintJob {
public:
    IppJob(Address address, JobTicket ticket, const IppLimits& limits)
        : m_address(std::move(address)), m_ticket(std::move(ticket)), m_limits(limits) {}

    std::unique_ptr<NewFile> Document() override {
        const int descriptor = fcntl(m_document.Descriptor(), F_DUPFD_CLOEXEC, 0);
        auto file = descriptor >= 0 ? NewFile::WithoutName(descriptor, m_ticket.name) : nullptr;
        if (file == nullptr)
            LogPrinter(m_address.name, "no room for a document");
        return file;
    }
    bool Deliver() override {
        const Clock::time_point deadline = Clock::now() + m_limits.document;
        const Message answer =
            Ask(m_address, PrintRequest(m_address, m_ticket), m_document.Descriptor(), deadline, m_limits);
        if (answer == nullptr)
            return false;
        LogSubstitutions(m_address, answer);
        const JobNews news = Watch(NewsOf(answer), std::min(deadline, Clock::now() + m_limits.watch));
        if (!news.IsGivenUp())
            return true;
        LogPrinter(m_address.name, "job " + std::to_string(news.id) + " was given up: " + news.words);
        return false;
    }

private:
    /// Asks again and again, for a server that can't print a document says so a moment after it has taken it. Nothing
    /// is wrong with one that says no more: it has the document.
    JobNews Watch(JobNews news, Clock::time_point end) const {
        for (std::chrono::milliseconds pause{50}; news.MayChange() && Clock::now() + pause < end; pause *= 2) {
            std::this_thread::sleep_for(pause);
            const IppAnswer answer = Exchange(m_address, NewsRequest(news.id), -1, end, m_limits.answer);
            if (answer.message == nullptr || !IsDone(answer.message))
                break;
            news = NewsOf(answer.message);
        }
        return news;
    }

    Message NewsRequest(int job) const {
        constexpr std::array kWanted = {"job-id", "job-state", "job-state-message", "job-printer-state-message",
                                        "job-state-reasons"};
        Message request = MakeRequest(m_address, IPP_OP_GET_JOB_ATTRIBUTES);
        Cups().ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", job);
        AddWanted(request, kWanted);
        return request;
    }

    Address m_address;
    JobTicket m_ticket;
    IppLimits m_limits;
    PrivateFile m_document;
};

class IppPrinter : public Printer {
public:
    IppPrinter(Address address, const IppLimits& limits, const PrinterDefaults& defaults, std::vector<Medium> media)
        : m_address(std::move(address)), m_limits(limits), m_defaults(defaults), m_media(std::move(media)) {}
    const PrinterDefaults& Defaults() const override { return m_defaults; }
    /// Those of the first such sheet with any: borderless ones have to be asked for. For a paper that it doesn't tell
    /// of, those of the printer's own sheet.
    Margins MarginsOf(const Paper& paper) const override {
        const Medium* best = nullptr;
        for (const Medium& medium : m_media)
            if (IsOf(medium, paper) && (best == nullptr || best->margins == Margins{}))
                best = &medium;
        return best != nullptr ? best->margins : m_media.front().margins;
    }
    std::unique_ptr<PrintJob> Begin(const JobTicket& ticket) override {
        return std::make_unique<IppJob>(m_address, ticket, m_limits);
    }

private:
    Address m_address;
    IppLimits m_limits;
    PrinterDefaults m_defaults;
    std::vector<Medium> m_media; ///< its own sheet first
};

} // namespace

std::unique_ptr<Printer> FindIppPrinter(const std::string& name, const IppLimits& limits) {
    constexpr std::array kWanted = {"media-default", "media-col-ready", "media-col-database", "media-col-default",
                                    "print-color-mode-supported"};
    if (!Cups().IsWhole()) {
        LogPrinter(name, "no print library: " + Cups().Fault());
        return nullptr;
    }
    const std::optional<Address> address = ParseAddress(name);
    if (!address) {
        LogPrinter(name, "not the name of a printer");
        return nullptr;
    }
    const Message request = MakeRequest(*address, IPP_OP_GET_PRINTER_ATTRIBUTES);
    AddWanted(request, kWanted);
    const Message facts = Ask(*address, request, -1, Clock::time_point::max(), limits);
    if (!facts)
        return nullptr;
    const PrinterDefaults defaults{PaperOf(facts.get()), IsColored(facts.get())};
    return std::make_unique<IppPrinter>(*address, limits, defaults, MediaOf(facts.get()));
}

} // namespace melkar
